// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import com.sun.jna.Memory;
import com.sun.jna.Native;
import com.sun.jna.Pointer;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import java.lang.ref.Cleaner;
import java.util.List;
import java.util.function.ToIntBiFunction;
import java.util.function.ToIntFunction;
import java.util.stream.IntStream;

/** A session of the library. Close it: its keys are wiped then. One thread at a time is inside; others wait.
 *
 *  <p>Whatever fails throws {@link SigilException}; the use of a closed session has the code 1008. */
public final class Session implements AutoCloseable {
    private static final CLibrary LIBRARY = CLibrary.INSTANCE;
    private static final Cleaner CLEANER = Cleaner.create();

    /** What is left to close when nobody has a session any more. */
    private static final class Handle implements Runnable {
        Pointer pointer;

        @Override
        public void run() {
            LIBRARY.sigil_close(pointer);
            pointer = null;
        }
    }

    private final Handle handle = new Handle();
    private final Cleaner.Cleanable cleanable = CLEANER.register(this, handle);
    private final Language language;
    private int listing;

    /** A session with the installed library folder. */
    public Session() {
        this(null, Toolkit.MAKER, Language.ENGLISH);
    }

    /** @param folder the library folder with toolkits and settings; null takes the installed one */
    public Session(String folder, Toolkit toolkit, Language language) {
        this.language = language;
        CLibrary.OpenOptions options = new CLibrary.OpenOptions();
        PointerByReference made = new PointerByReference();
        try (Texts.In text = new Texts.In(folder)) {
            options.folder = text.memory;
            options.toolkit = toolkit.number;
            options.language = language.number;
            int code = LIBRARY.sigil_open(options, made);
            handle.pointer = made.getValue();
            check(code);
        }
    }

    /** The version of the library. */
    public static String version() {
        return Texts.out(LIBRARY.sigil_version());
    }

    /** Wipes the keys and ends the session. Closing twice is harmless. */
    @Override
    public synchronized void close() {
        cleanable.clean();
    }

    /** The certificates of a store. Those listed before are locked, and answer 1001 from now on. */
    public synchronized List<Entry> list(Filter filter) {
        IntByReference count = new IntByReference();
        try (Texts.In medium = new Texts.In(filter.medium); Texts.In issuer = new Texts.In(filter.issuer);
             Texts.In policy = new Texts.In(filter.policy); Texts.In subject = new Texts.In(filter.subject);
             Texts.In serial = new Texts.In(filter.serial)) {
            CLibrary.ListOptions options = new CLibrary.ListOptions();
            options.medium = medium.memory;
            options.issuer = issuer.memory;
            options.policy = policy.memory;
            options.subject = subject.memory;
            options.serial = serial.memory;
            options.families = filter.families;
            options.expiresWithin = filter.expiresWithin;
            options.valid = filter.valid ? 1 : 0;
            options.expired = filter.expired ? 1 : 0;
            ++listing;
            call(session -> LIBRARY.sigil_list(session, options, count));
        }
        return IntStream.range(0, count.getValue()).mapToObj(number -> new Entry(this, listing, number)).toList();
    }

    /** Verifies a signed message that holds its content. */
    public Verified verify(byte[] message) {
        return verify(message, null);
    }

    /** Verifies a signed message over data that it does not hold. */
    public synchronized Verified verify(byte[] message, byte[] data) {
        IntByReference count = new IntByReference();
        byte[] content = bytes((session, bytes) -> LIBRARY.sigil_verify(
            session, message, message.length, data, data == null ? 0 : data.length, bytes, count));
        return new Verified(content, IntStream.range(0, count.getValue()).mapToObj(this::signer).toList());
    }

    /** Verifies a signature value with a certificate. */
    public void verifyRaw(byte[] certificate, byte[] data, byte[] signature) {
        call(session -> LIBRARY.sigil_verify_raw(
            session, certificate, certificate.length, data, data.length, signature, signature.length));
    }

    /** Encrypts for the holders of these certificates (DER or PEM). */
    public byte[] encrypt(Cipher cipher, byte[] data, byte[]... recipients) {
        Recipients array = new Recipients(recipients);
        return bytes((session, message) -> LIBRARY.sigil_encrypt(
            session, cipher.number, array.records, recipients.length, data, data.length, message));
    }

    /** What any certificate (DER or PEM) says. */
    public Fields fields(byte[] certificate) {
        return fields((session, told) -> LIBRARY.sigil_certificate_fields(session, certificate, certificate.length, told));
    }

    synchronized Fields fields(ToIntBiFunction<Pointer, CLibrary.FieldsRecord> function) {
        CLibrary.FieldsRecord told = new CLibrary.FieldsRecord();
        call(session -> function.applyAsInt(session, told));
        return Fields.of(told);
    }

    synchronized byte[] bytes(ToIntBiFunction<Pointer, CLibrary.Bytes> function) {
        CLibrary.Bytes bytes = new CLibrary.Bytes();
        try {
            call(session -> function.applyAsInt(session, bytes));
            return Texts.bytes(bytes.data, bytes.size);
        } finally {
            LIBRARY.sigil_free(bytes);
        }
    }

    synchronized void call(ToIntFunction<Pointer> function) {
        check(function.applyAsInt(handle.pointer));
    }

    /** The entry's number, as long as the list is the last; a closed session refuses any. */
    synchronized int number(int ofListing, int number) {
        if (handle.pointer != null && ofListing != listing)
            throw new SigilException(CLibrary.BAD_ARGUMENT, language, "the session has listed anew");
        return number;
    }

    private Signer signer(int index) {
        CLibrary.SignerRecord told = new CLibrary.SignerRecord();
        call(session -> LIBRARY.sigil_signer(session, index, told));
        byte[] certificate = Texts.bytes(told.certificate, told.certificateSize);
        return Signer.of(told, certificate, fields(certificate));
    }

    private void check(int code) {
        if (code != 0)
            throw new SigilException(code, language, Texts.out(LIBRARY.sigil_error_text(handle.pointer)));
    }

    /** Certificates as the library takes several: an array of pointers and sizes. */
    private static final class Recipients {
        private static final int STRIDE = Native.POINTER_SIZE + Native.SIZE_T_SIZE;
        private final Memory[] kept;
        final Memory records;

        Recipients(byte[][] certificates) {
            kept = new Memory[certificates.length];
            records = new Memory(Math.max(1, certificates.length) * (long)STRIDE);
            for (int i = 0; i < certificates.length; ++i) {
                kept[i] = new Memory(Math.max(1, certificates[i].length));
                kept[i].write(0, certificates[i], 0, certificates[i].length);
                records.setPointer((long)i * STRIDE, kept[i]);
                records.setLong((long)i * STRIDE + Native.POINTER_SIZE, certificates[i].length);
            }
        }
    }
}
