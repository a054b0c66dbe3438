// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import com.sun.jna.Library;
import com.sun.jna.Native;
import com.sun.jna.Pointer;
import com.sun.jna.Structure;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;

/** What {@code <sigil.h>} declares, of the jobs that the package does. The header documents every function. */
interface CLibrary extends Library {
    CLibrary INSTANCE = Native.load("libsigil.so.1", CLibrary.class);

    int BAD_ARGUMENT = 1001;

    @Structure.FieldOrder({"data", "size"})
    class Bytes extends Structure {
        public Pointer data;
        public long size;
    }

    @Structure.FieldOrder({"code", "name", "layer", "sentence", "advice"})
    class CodeText extends Structure {
        public int code;
        public Pointer name, layer, sentence, advice;
    }

    @Structure.FieldOrder({"size", "folder", "toolkit", "language"})
    class OpenOptions extends Structure {
        public long size = size();
        public Pointer folder;
        public int toolkit, language;
    }

    @Structure.FieldOrder({"size", "medium", "issuer", "policy", "subject", "serial", "families", "expiresWithin", "valid",
        "expired"})
    class ListOptions extends Structure {
        public long size = size();
        public Pointer medium, issuer, policy, subject, serial;
        public int families, expiresWithin, valid, expired;
    }

    @Structure.FieldOrder({"size", "validFrom", "validTo", "daysLeft", "expired", "expiresSoon", "family", "hasKey", "hasKm",
        "unlocked", "name", "subject", "issuer", "issuerName", "serial", "use", "policy", "version", "signatureAlgorithm",
        "keyAlgorithm", "keyLength", "keyUsage", "policies", "alternativeName", "authorityKeyId", "subjectKeyId",
        "revocationList", "authorityAccess", "certificateFile", "keyFile", "kmCertificateFile", "kmKeyFile"})
    class FieldsRecord extends Structure {
        public long size = size();
        public long validFrom, validTo;
        public int daysLeft, expired, expiresSoon, family, hasKey, hasKm, unlocked;
        public Pointer name, subject, issuer, issuerName, serial, use, policy, version, signatureAlgorithm, keyAlgorithm,
            keyLength, keyUsage, policies, alternativeName, authorityKeyId, subjectKeyId, revocationList, authorityAccess,
            certificateFile, keyFile, kmCertificateFile, kmKeyFile;
    }

    @Structure.FieldOrder({"size", "form", "stampUrl"})
    class SignOptions extends Structure {
        public long size = size();
        public int form;
        public Pointer stampUrl;
    }

    @Structure.FieldOrder({"size", "signingTime", "stampTime", "stampCode", "certificate", "certificateSize"})
    class SignerRecord extends Structure {
        public long size = size();
        public long signingTime, stampTime;
        public int stampCode;
        public Pointer certificate;
        public long certificateSize;
    }

    int sigil_code_text(int code, int language, CodeText text);

    void sigil_free(Bytes bytes);

    Pointer sigil_version();

    int sigil_open(OpenOptions options, PointerByReference session);

    void sigil_close(Pointer session);

    Pointer sigil_error_text(Pointer session);

    int sigil_list(Pointer session, ListOptions options, IntByReference count);

    int sigil_fields(Pointer session, int entry, FieldsRecord fields);

    int sigil_certificate_fields(Pointer session, byte[] certificate, long size, FieldsRecord fields);

    int sigil_certificate(Pointer session, int entry, int pair, Bytes certificate);

    int sigil_unlock(Pointer session, int entry, Pointer password);

    int sigil_lock(Pointer session, int entry);

    int sigil_private_key(Pointer session, int entry, int pair, Pointer newPassword, Bytes key);

    int sigil_identity(Pointer session, int entry, Pointer number);

    int sigil_sign(Pointer session, int entry, SignOptions options, byte[] data, long size, Bytes signature);

    int sigil_verify(Pointer session, byte[] message, long messageSize, byte[] data, long dataSize, Bytes content,
        IntByReference signers);

    int sigil_signer(Pointer session, int index, SignerRecord signer);

    int sigil_verify_raw(Pointer session, byte[] certificate, long certificateSize, byte[] data, long dataSize,
        byte[] signature, long signatureSize);

    int sigil_encrypt(Pointer session, int cipher, Pointer recipients, int count, byte[] data, long size, Bytes message);

    int sigil_decrypt(Pointer session, int entry, byte[] message, long size, Bytes content);
}
