// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/sessions.h"

#include <sigildesk/crypto.h>
#include <sigildesk/open_toolkit.h>

#include <array>
#include <memory>

namespace torture {
namespace {

/** What the calls are given, ready before the session. */
struct Inputs {
    explicit Inputs(Materials& m)
        : cert(recordOf(m.signCert))
        , key(recordOf(m.signKey))
        , kmCert(recordOf(m.kmCert))
        , plainKey(recordOf(m.plainKey))
        , plainKmKey(recordOf(m.plainKmKey))
        , random(recordOf(m.random))
        , content(recordOf(m.content))
        , signature(recordOf(m.signature))
        , message(recordOf(m.message))
        , envelope(recordOf(m.envelope))
        , pfx(recordOf(m.pfx))
        , identity(m.identity)
        , library(m.library)
        , certPath(m.certificate().at("signing_certificate"))
        , keyPath(m.certificate().at("signing_key"))
        , written(m.store().folder() / "written")
    {
    }
    BINSTR cert, key, kmCert, plainKey, plainKmKey, random, content, signature, message, envelope, pfx;
    std::string identity, library, certPath, keyPath, written;
    void* handle = nullptr;
    std::array<char, 4096> text{};
    std::array<char, 64> time{};
    int number = 0;
};

/** Byte strings that a call hands out, given back after it. */
template <std::size_t count>
class Outputs {
public:
    explicit Outputs(void* handle)
        : m_handle(handle)
    {
    }
    ~Outputs()
    {
        for (BINSTR& record : m_records)
            HV_BINSTR_Delete(m_handle, &record);
    }
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;
    BINSTR* operator[](std::size_t i) { return &m_records.at(i); }

private:
    void* m_handle;
    std::array<BINSTR, count> m_records{};
};

class Facade {
public:
    Facade(Materials& materials, int toolkit)
        : m_in(std::make_shared<Inputs>(materials))
    {
        add("HV_Initalize", [toolkit](Inputs& in) { return HV_Initalize(&in.handle, toolkit, in.library.data()); });
        readCertificate();
        useKeys();
        encryptAndSign();
        exchangeMessages();
        useFiles();
        add("HV_GetErrInfo",
            [](Inputs& in) { return HV_GetErrInfo(in.handle, static_cast<int>(in.text.size()), in.text.data()); });
        add("HV_Finish", [](Inputs& in) {
            HV_Finish(in.handle);
            return 0;
        });
    }

    std::vector<Step> steps;

private:
    template <class Call>
    void add(const char* name, Call call)
    {
        steps.push_back({name, [call, in = m_in] { return call(*in); }});
    }
    /** For a call that hands out byte strings. */
    template <std::size_t count = 1, class Call>
    void gives(const char* name, Call call)
    {
        add(name, [call](Inputs& in) {
            Outputs<count> out(in.handle);
            return call(in, out);
        });
    }
    void reads(const char* name, int (*read)(void*, int, char*))
    {
        add(name, [read](Inputs& in) { return read(in.handle, static_cast<int>(in.text.size()), in.text.data()); });
    }

    void readCertificate()
    {
        add("CertLoad", [](Inputs& in) { return CertLoad(in.handle, &in.cert); });
        reads("CertGetSubjectName", CertGetSubjectName);
        reads("CertGetIssuerName", CertGetIssuerName);
        reads("CertGetCertPolicy", CertGetCertPolicy);
        reads("CertGetSubjectAltName", CertGetSubjectAltName);
        reads("CertGetCRLDP", CertGetCRLDP);
        reads("CertGetSignature", CertGetSignature);
        add("CertGetRemainDays", [](Inputs& in) { return CertGetRemainDays(in.handle, &in.cert, &in.number); });
        add("CertAddTrustedCert", [](Inputs& in) { return CertAddTrustedCert(in.handle, &in.cert); });
        add("CertVerify2", [](Inputs& in) { return CertVerify2(in.handle, &in.cert, 0, nullptr, nullptr); });
        add("CertUnLoad", [](Inputs& in) { return CertUnLoad(in.handle); });
    }
    void useKeys()
    {
        gives("PriKeyDecrypt",
            [](Inputs& in, auto& out) { return PriKeyDecrypt(in.handle, password, &in.key, out[0]); });
        gives("PriKeyDecrypt, wrong password",
            [](Inputs& in, auto& out) { return PriKeyDecrypt(in.handle, wrongPassword, &in.key, out[0]); });
        gives("PriKeyEncrypt", [](Inputs& in, auto& out) {
            return PriKeyEncrypt(in.handle, SIGIL_TK_KEY_PBES2_ARIA256, password, &in.plainKey, out[0]);
        });
        gives("PriKeyChangePasswd", [](Inputs& in, auto& out) {
            return PriKeyChangePasswd(in.handle, password, otherPassword, &in.key, out[0]);
        });
        add("PriKeyCheckKeyPair", [](Inputs& in) { return PriKeyCheckKeyPair(in.handle, &in.cert, &in.plainKey); });
        gives("VIDGetRandomFromPriKey",
            [](Inputs& in, auto& out) { return VIDGetRandomFromPriKey(in.handle, &in.plainKey, out[0]); });
        add("VIDVerify", [](Inputs& in) { return VIDVerify(in.handle, &in.cert, &in.random, in.identity.data()); });
    }
    void encryptAndSign()
    {
        gives("CRYPTGenRandom", [](Inputs& in, auto& out) { return CRYPTGenRandom(in.handle, 20, out[0]); });
        gives("CRYPTHash",
            [](Inputs& in, auto& out) { return CRYPTHash(in.handle, SIGIL_TK_HASH_SHA256, &in.content, out[0]); });
        add("CRYPTGenKeyAndIV", [](Inputs& in) { return CRYPTGenKeyAndIV(in.handle, SIGIL_TK_CIPHER_SEED); });
        gives<2>("CRYPTEncrypt and CRYPTDecrypt", [](Inputs& in, auto& out) {
            const int code = CRYPTEncrypt(in.handle, &in.content, out[0]);
            return code == 0 ? CRYPTDecrypt(in.handle, out[0], out[1]) : code;
        });
        gives("CRYPTSign", [](Inputs& in, auto& out) {
            return CRYPTSign(in.handle, &in.cert, &in.plainKey, 0, &in.content, out[0]);
        });
        add("CRYPTVerify",
            [](Inputs& in) { return CRYPTVerify(in.handle, &in.cert, 0, &in.content, &in.signature); });
        gives("CRYPTGenMAC", [](Inputs& in, auto& out) {
            return CRYPTGenMAC(in.handle, SIGIL_TK_HASH_SHA256, password, &in.content, out[0]);
        });
        gives("Base64Encode", [](Inputs& in, auto& out) { return Base64Encode(in.handle, &in.content, out[0]); });
        gives("PEMEncode", [](Inputs& in, auto& out) { return PEMEncode(in.handle, 0, &in.cert, out[0]); });
    }
    void exchangeMessages()
    {
        gives("CMSMakeSignedData", [](Inputs& in, auto& out) {
            return CMSMakeSignedData(in.handle, 0, &in.cert, &in.plainKey, &in.content, signingTime, out[0]);
        });
        gives("CMSProcessSignedData", [](Inputs& in, auto& out) {
            return CMSProcessSignedData(in.handle, 0, &in.message, out[0], &in.number);
        });
        gives("CMSGetSignerCert",
            [](Inputs& in, auto& out) { return CMSGetSignerCert(in.handle, 0, out[0], in.time.data()); });
        gives("CMSMakeEnvelopedData", [](Inputs& in, auto& out) {
            return CMSMakeEnvelopedData(in.handle, 0, &in.kmCert, &in.content, SIGIL_TK_CIPHER_AES256, out[0]);
        });
        gives("CMSProcessEnvelopedData", [](Inputs& in, auto& out) {
            return CMSProcessEnvelopedData(in.handle, &in.kmCert, &in.plainKmKey, &in.envelope, out[0]);
        });
        gives("PFXExport", [](Inputs& in, auto& out) {
            BINSTR none{};
            return PFXExport(in.handle, 0, password, &in.cert, &in.plainKey, &none, &none, out[0]);
        });
        gives<5>("PFXImport", [](Inputs& in, auto& out) {
            return PFXImport(in.handle, password, &in.pfx, out[0], out[1], out[2], out[3], out[4]);
        });
    }
    void useFiles()
    {
        gives("MediaDiskReadFile",
            [](Inputs& in, auto& out) { return MediaDiskReadFile(in.handle, in.certPath.data(), out[0]); });
        gives("MediaDiskReadPriKey", [](Inputs& in, auto& out) {
            return MediaDiskReadPriKey(in.handle, in.keyPath.data(), password, 0, out[0]);
        });
        add("MediaDiskWriteFile",
            [](Inputs& in) { return MediaDiskWriteFile(in.handle, in.written.data(), &in.content); });
        add("MediaDiskWritePriKey", [](Inputs& in) {
            return MediaDiskWritePriKey(in.handle, SIGIL_TK_KEY_SEED, in.written.data(), 0, password, &in.plainKey);
        });
        add("MediaDiskDeleteCert", [](Inputs& in) { return MediaDiskDeleteCert(in.handle, in.written.data(), 0); });
    }

    std::shared_ptr<Inputs> m_in;
};

} // namespace

Session facadeSession(Materials& materials, int toolkit)
{
    Facade facade(materials, toolkit);
    return {std::move(facade.steps),
        {{SIGIL_NO_MEMORY, SIGIL_TK_NO_MEMORY},
            {SIGIL_BAD_ARGUMENT, SIGIL_NO_HANDLE, SIGIL_MAKER_LIBRARY_MISSING, SIGIL_GPKI_LIBRARY_MISSING,
                SIGIL_TK_ARGUMENT, SIGIL_TK_CONTEXT, SIGIL_TK_VERIFY_NO_ISSUER, SIGIL_TK_CERT_NOT_LOADED,
                SIGIL_TK_NO_SESSION_KEY, SIGIL_TK_CMS_NOBODY, SIGIL_TK_INDEX, SIGIL_TK_FILE_NOT_FOUND},
            isStated},
        materials.store().folder()};
}

} // namespace torture
