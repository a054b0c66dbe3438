// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/certlist/scenario.h"

#include "certlist/processor.h"
#include "foundation/text_field.h"
#include "tests/certlist/scripted.h"

#include <memory>

SessionTexts::SessionTexts(const std::filesystem::path& libraryFolder, const std::filesystem::path& diskFolder)
{
    const std::string cert = fake::certificate();
    sigil::copyText(library, libraryFolder.string());
    sigil::copyText(disk, diskFolder.string());
    sigil::copyText(exported, (diskFolder / "exported.pfx").string());
    sigil::copyText(imported, (diskFolder / "imported.pfx").string());
    sigil::copyText(certificate, cert);
    certificateLength = static_cast<int>(cert.size());
    sigil::copyText(key, fake::key());
    keyLength = static_cast<int>(fake::key().size());
}

namespace {

char password[] = "Abcd1234!@";
char newPassword[] = "new";
char identity[] = "0000001111111";

tagLOADCERTOPT allFamilies()
{
    tagLOADCERTOPT options{};
    options.nPKITypes = 15;
    sigil::copyText(options.szPolicyIDs, "1 2 410 200005 1 1 1|1 2 410 200004 5 1 1 5|1 2 410 200004 5 2 1 2|");
    return options;
}

void listAndRead(void* clp, Codes& codes)
{
    static tagLOADCERTOPT options = allFamilies();
    static tagCERTINFO info;
    codes.add(CLP_SetType(clp, &options));
    codes.add(CLP_SetMediaType(clp, 1, nullptr, 0));
    codes.add(CLP_LoadCertList(clp));
    codes.add(CLP_GetCertInfo(clp, 0, &info));
}

void useKeys(void* clp, Codes& codes)
{
    Buffer sign, km, random;
    codes.add(CLP_DecryptPriKey(clp, 1, password, sign.to(), sign.length(), km.to(), km.length()));
    codes.add(CLP_GetPriKeyRandom(clp, 0, password, random.to(), random.length()));
    codes.add(CLP_VerifyVID(clp, 1, identity, nullptr, password));
}

void transfer(void* clp, SessionTexts& t, Codes& codes)
{
    Buffer cert, key, kmCert, kmKey;
    codes.add(CLP_ExportPFX(clp, 0, password, t.exported));
    codes.add(CLP_ExportPFX(clp, 1, password, t.exported));
    codes.add(CLP_ImportPFX(clp, t.imported, password, cert.to(), cert.length(), key.to(), key.length(),
        kmCert.to(), kmCert.length(), kmKey.to(), kmKey.length()));
    codes.add(
        CLP_CopyforSetData(clp, t.certificate, t.certificateLength, t.key, t.keyLength, nullptr, 0, nullptr, 0));
    codes.add(CLP_CopyCertToDISK(clp, 2, t.disk, password));
    codes.add(CLP_CopySelCertToDISK(clp, 1, 1, 2, t.disk, password));
}

void verifyAndTakeFromMemory(void* clp, SessionTexts& t, Codes& codes)
{
    static char message[64];
    codes.add(CLP_VerifyCert(clp, t.certificate, t.certificateLength, sizeof message, message));
    codes.add(CLP_SetMediaType(clp, 6, nullptr, 0));
    codes.add(
        CLP_LoadMemoryCert(clp, t.certificate, t.certificateLength, t.key, t.keyLength, nullptr, 0, nullptr, 0));
    codes.add(CLP_SetMediaType(clp, 1, nullptr, 0));
}

void changeAndDelete(void* clp, Codes& codes)
{
    auto* processor = static_cast<CCertListProcInterface*>(clp);
    try { // no export leads here
        if (processor && processor->ready())
            codes.add(processor->ChangePassword(1, password, newPassword));
    } catch (const std::bad_alloc&) {
        codes.add(1000);
    }
    codes.add(CLP_DeleteCert(clp, 1, nullptr, newPassword));
}

} // namespace

Codes runSession(SessionTexts& texts)
{
    Codes codes;
    void* clp = nullptr;
    codes.add(CLP_Initalize(&clp, nullptr, 0, 1, texts.library));
    listAndRead(clp, codes);
    useKeys(clp, codes);
    transfer(clp, texts, codes);
    verifyAndTakeFromMemory(clp, texts, codes);
    changeAndDelete(clp, codes);
    CLP_UnInitalize(clp);
    return codes;
}
