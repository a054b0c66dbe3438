// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import com.sun.jna.Memory;
import com.sun.jna.Native;
import com.sun.jna.Pointer;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import java.lang.ref.Cleaner;
import java.time.Instant;
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

    /** Lets the user choose a certificate in the dialog: its entry, unlocked; null when the user gave up. The entries of the list
     *  stay. 1606 without the dialogs, 1607 without a display. */
    public synchronized Entry pick(PickFilter filter) {
        IntByReference entry = new IntByReference();
        try (Texts.In policies = new Texts.In(filter.policies); Texts.In subject = new Texts.In(filter.subject);
             Texts.In serial = new Texts.In(filter.serial)) {
            CLibrary.PickOptions options = new CLibrary.PickOptions();
            options.policies = policies.memory;
            options.subject = subject.memory;
            options.serial = serial.memory;
            options.families = filter.families;
            options.withKm = filter.withKm ? 1 : 0;
            options.noExpired = filter.noExpired ? 1 : 0;
            options.lockExpired = filter.lockExpired ? 1 : 0;
            int code = LIBRARY.sigil_pick(handle.pointer, options, entry);
            if (code == CLibrary.CANCELLED)
                return null;
            check(code);
        }
        return new Entry(this, listing, entry.getValue());
    }

    /** Wipes the private keys of all entries. */
    public void lock() {
        call(session -> LIBRARY.sigil_lock(session, CLibrary.ALL_ENTRIES));
    }

    /** Brings the pairs of a PKCS#12 file into a mounted disk's folder, null for the home folder, where {@link #list} finds them, under
     *  the password of the file.
     *  @param replace those in the same place */
    public void importPairs(byte[] pkcs12, String password, String medium, boolean replace) {
        try (Texts.In secret = new Texts.In(password); Texts.In folder = new Texts.In(medium)) {
            call(session -> LIBRARY.sigil_import(
                session, pkcs12, pkcs12.length, secret.memory, folder.memory, replace ? 1 : 0));
        }
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
        Certificates array = new Certificates(recipients);
        return bytes((session, message) -> LIBRARY.sigil_encrypt(
            session, cipher.number, array.records, recipients.length, data, data.length, message));
    }

    /** What any certificate (DER or PEM) says. */
    public Fields fields(byte[] certificate) {
        return fields((session, told) -> LIBRARY.sigil_certificate_fields(session, certificate, certificate.length, told));
    }

    /** Verifies path, validity, policies, purpose and revocation (DER or PEM): 3200 to 3208 when it is not valid. */
    public void verifyCertificate(byte[] certificate, Judge judge) {
        withOptions(judge, (session, options) -> LIBRARY.sigil_verify_certificate(
            session, options, certificate, certificate.length));
    }

    /** Asks whether a certificate is revoked: the responder, else its revocation list. 1605 when nobody can tell. */
    public Status status(byte[] certificate, Judge judge) {
        CLibrary.StatusRecord told = new CLibrary.StatusRecord();
        withOptions(judge, (session, options) -> LIBRARY.sigil_status(
            session, options, certificate, certificate.length, told));
        return new Status(told.revoked != 0, told.byList != 0,
            told.revokedAt == 0 ? null : Instant.ofEpochSecond(told.revokedAt));
    }

    /** A time-stamp token for the data from this authority (RFC 3161), verified. */
    public byte[] timestamp(String url, byte[] data) {
        try (Texts.In address = new Texts.In(url)) {
            return bytes(
                (session, token) -> LIBRARY.sigil_timestamp(session, address.memory, data, data.length, token));
        }
    }

    /** Verifies a time-stamp token over the data that it is for, and reads it. */
    public synchronized Stamp stamp(byte[] token, byte[] data) {
        CLibrary.StampRecord told = new CLibrary.StampRecord();
        call(session -> LIBRARY.sigil_stamp(session, token, token.length, data, data.length, told));
        return new Stamp(Instant.ofEpochSecond(told.time), Texts.out(told.policy), Texts.out(told.serial));
    }

    /** The tokens (PKCS#11) and the certificates on them. Nobody logs in. */
    public synchronized List<Token> tokens() {
        IntByReference count = new IntByReference();
        call(session -> LIBRARY.sigil_tokens(session, count));
        return IntStream.range(0, count.getValue()).mapToObj(this::token).toList();
    }

    /** Why certificates of a mounted disk's folder, null for the home folder, are listed or not. */
    public synchronized List<Finding> examine(String medium) {
        IntByReference count = new IntByReference();
        try (Texts.In folder = new Texts.In(medium)) {
            call(session -> LIBRARY.sigil_examine(session, folder.memory, count));
        }
        return IntStream.range(0, count.getValue()).mapToObj(this::finding).toList();
    }

    private Token token(int index) {
        CLibrary.TokenRecord told = new CLibrary.TokenRecord();
        call(session -> LIBRARY.sigil_token(session, index, told));
        List<byte[]> certificates = IntStream.range(0, told.certificates).mapToObj(number -> bytes(
            (session, bytes) -> LIBRARY.sigil_token_certificate(session, index, number, bytes))).toList();
        return new Token(told.slot.longValue(), told.initialised != 0, Texts.out(told.label), Texts.out(told.maker),
            Texts.out(told.model), Texts.out(told.serial), certificates);
    }

    private Finding finding(int index) {
        CLibrary.FindingRecord told = new CLibrary.FindingRecord();
        call(session -> LIBRARY.sigil_finding(session, index, told));
        return new Finding(told.listed != 0, Texts.out(told.path), Texts.out(told.rule), Texts.out(told.detail),
            Texts.out(told.mend));
    }

    private void withOptions(Judge judge, ToIntBiFunction<Pointer, CLibrary.JudgeOptions> function) {
        Certificates trusted = new Certificates(judge.trusted);
        try (Texts.In responder = new Texts.In(judge.responder)) {
            CLibrary.JudgeOptions options = new CLibrary.JudgeOptions();
            options.trusted = judge.trusted.length == 0 ? null : trusted.records;
            options.trustedCount = judge.trusted.length;
            options.purpose = judge.purpose.number;
            options.time = judge.time == null ? 0 : judge.time.getEpochSecond();
            options.noRevocation = judge.noRevocation ? 1 : 0;
            options.responder = responder.memory;
            call(session -> function.applyAsInt(session, options));
        }
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
    private static final class Certificates {
        private static final int STRIDE = Native.POINTER_SIZE + Native.SIZE_T_SIZE;
        private final Memory[] kept;
        final Memory records;

        Certificates(byte[][] certificates) {
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
