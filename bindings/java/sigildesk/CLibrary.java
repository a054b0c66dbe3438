// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

package sigildesk;

import com.sun.jna.Library;
import com.sun.jna.Native;
import com.sun.jna.NativeLong;
import com.sun.jna.Pointer;
import com.sun.jna.Structure;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;

/** What {@code <sigil.h>} declares. The header documents every function. */
interface CLibrary extends Library {
    CLibrary INSTANCE = Native.load("libsigil.so.1", CLibrary.class);

    int BAD_ARGUMENT = 1001;
    int CANCELLED = -1;
    int ALL_ENTRIES = -1;

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

    @Structure.FieldOrder({"size", "policies", "subject", "serial", "families", "withKm", "noExpired", "lockExpired"})
    class PickOptions extends Structure {
        public long size = size();
        public Pointer policies, subject, serial;
        public int families, withKm, noExpired, lockExpired;
    }

    @Structure.FieldOrder({"size", "trusted", "trustedCount", "purpose", "time", "noRevocation", "responder"})
    class JudgeOptions extends Structure {
        public long size = size();
        public Pointer trusted;
        public int trustedCount, purpose;
        public long time;
        public int noRevocation;
        public Pointer responder;
    }

    @Structure.FieldOrder({"size", "revoked", "byList", "revokedAt"})
    class StatusRecord extends Structure {
        public long size = size();
        public int revoked, byList;
        public long revokedAt;
    }

    @Structure.FieldOrder({"size", "time", "policy", "serial"})
    class StampRecord extends Structure {
        public long size = size();
        public long time;
        public Pointer policy, serial;
    }

    @Structure.FieldOrder({"size", "slot", "initialised", "certificates", "label", "maker", "model", "serial"})
    class TokenRecord extends Structure {
        public long size = size();
        public NativeLong slot;
        public int initialised, certificates;
        public Pointer label, maker, model, serial;
    }

    @Structure.FieldOrder({"size", "listed", "path", "rule", "detail", "mend"})
    class FindingRecord extends Structure {
        public long size = size();
        public int listed;
        public Pointer path, rule, detail, mend;
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

    int sigil_pick(Pointer session, PickOptions options, IntByReference entry);

    int sigil_export(Pointer session, int entry, int protection, Pointer password, Bytes pkcs12);

    int sigil_import(Pointer session, byte[] pkcs12, long size, Pointer password, Pointer medium, int replace);

    int sigil_copy(Pointer session, int entry, Pointer medium, int replace);

    int sigil_delete(Pointer session, int entry);

    int sigil_change_password(Pointer session, int entry, Pointer oldPassword, Pointer newPassword);

    int sigil_verify_certificate(Pointer session, JudgeOptions options, byte[] certificate, long size);

    int sigil_status(Pointer session, JudgeOptions options, byte[] certificate, long size, StatusRecord status);

    int sigil_timestamp(Pointer session, Pointer url, byte[] data, long size, Bytes token);

    int sigil_stamp(Pointer session, byte[] token, long tokenSize, byte[] data, long dataSize, StampRecord stamp);

    int sigil_tokens(Pointer session, IntByReference count);

    int sigil_token(Pointer session, int index, TokenRecord token);

    int sigil_token_certificate(Pointer session, int token, int index, Bytes certificate);

    int sigil_examine(Pointer session, Pointer medium, IntByReference count);

    int sigil_finding(Pointer session, int index, FindingRecord finding);
}
