// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import com.sun.jna.Pointer;
import java.util.function.ToIntBiFunction;

/** A certificate of a list, with its private key. Of a newer list there are newer ones. */
public final class Entry {
    private static final CLibrary LIBRARY = CLibrary.INSTANCE;

    private final Session session;
    private final int listing;
    private final int place;

    Entry(Session session, int listing, int place) {
        this.session = session;
        this.listing = listing;
        this.place = place;
    }

    /** What the certificate says. */
    public Fields fields() {
        return session.fields((handle, told) -> LIBRARY.sigil_fields(handle, number(), told));
    }

    /** The certificate, DER. */
    public byte[] certificate(Pair pair) {
        return session.bytes((handle, bytes) -> LIBRARY.sigil_certificate(handle, number(), pair.number, bytes));
    }

    /** Opens the private keys; they stay in the session until it is closed, locks them or lists anew. */
    public void unlock(String password) {
        withText(password, (handle, secret) -> LIBRARY.sigil_unlock(handle, number(), secret));
    }

    /** Wipes the private keys that unlock opened. */
    public void lock() {
        session.call(handle -> LIBRARY.sigil_lock(handle, number()));
    }

    /** The unlocked private key, PKCS#8, as it is ({@code newPassword} null) or encrypted; overwrite it after use. */
    public byte[] privateKey(Pair pair, String newPassword) {
        try (Texts.In secret = new Texts.In(newPassword)) {
            return session.bytes(
                (handle, key) -> LIBRARY.sigil_private_key(handle, number(), pair.number, secret.memory, key));
        }
    }

    /** Checks that the holder has this identity number: 1132 when not. */
    public void identity(String identityNumber) {
        withText(identityNumber, (handle, secret) -> LIBRARY.sigil_identity(handle, number(), secret));
    }

    /** Signs with the unlocked key. */
    public byte[] sign(byte[] data, Form form) {
        return sign(data, form, null);
    }

    /** Signs, and puts the time stamp of this authority into the message. */
    public byte[] sign(byte[] data, Form form, String stampUrl) {
        try (Texts.In url = new Texts.In(stampUrl)) {
            CLibrary.SignOptions options = new CLibrary.SignOptions();
            options.form = form.number;
            options.stampUrl = url.memory;
            return session.bytes(
                (handle, signature) -> LIBRARY.sigil_sign(handle, number(), options, data, data.length, signature));
        }
    }

    /** Decrypts a message with the unlocked key. */
    public byte[] decrypt(byte[] message) {
        return session.bytes(
            (handle, content) -> LIBRARY.sigil_decrypt(handle, number(), message, message.length, content));
    }

    /** A PKCS#12 file with all unlocked pairs, under this password. */
    public byte[] export(Protection protection, String password) {
        try (Texts.In secret = new Texts.In(password)) {
            return session.bytes((handle, pkcs12) ->
                LIBRARY.sigil_export(handle, number(), protection.number, secret.memory, pkcs12));
        }
    }

    /** Copies the files as they are to a mounted disk's folder; null is the home folder.
     *  @param replace those in the same place */
    public void copy(String medium, boolean replace) {
        withText(medium, (handle, folder) -> LIBRARY.sigil_copy(handle, number(), folder, replace ? 1 : 0));
    }

    /** Deletes the files. The entry stays in the list, and its keys if it is unlocked. */
    public void delete() {
        session.call(handle -> LIBRARY.sigil_delete(handle, number()));
    }

    /** Puts all keys under a new password, in their files. */
    public void changePassword(String oldPassword, String newPassword) {
        try (Texts.In old = new Texts.In(oldPassword); Texts.In next = new Texts.In(newPassword)) {
            session.call(handle -> LIBRARY.sigil_change_password(handle, number(), old.memory, next.memory));
        }
    }

    private int number() {
        return session.number(listing, place);
    }

    private void withText(String text, ToIntBiFunction<Pointer, Pointer> function) {
        try (Texts.In kept = new Texts.In(text)) {
            session.call(handle -> function.applyAsInt(handle, kept.memory));
        }
    }
}
