// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/materials.h"

#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace torture {
namespace {

void must(bool done, const std::string& what)
{
    if (!done)
        throw std::runtime_error("what the sessions work on cannot be made: " + what);
}

/** Lets a toolkit make something in a process of its own. */
std::string made(const std::string& what, const std::function<int(void*, BINSTR*)>& make)
{
    const TemporaryFolder folder;
    const pid_t process = fork();
    if (process == 0) {
        sigildesk::CryptoHandle toolkit;
        std::string library = SIGILDESK_LIBRARY_FOLDER;
        BINSTR record{};
        const bool isMade = sigildesk::initialise(toolkit, SIGIL_TOOLKIT_MAKER, library.data()) == 0 &&
            make(toolkit.get(), &record) == 0;
        if (isMade)
            writeFile(folder.path("made"),
                {reinterpret_cast<const char*>(record.pData), static_cast<std::size_t>(record.nLength)});
        _exit(isMade ? 0 : 1);
    }
    int status = 0;
    must(waitpid(process, &status, 0) == process && status == 0, what);
    return readFile(folder.path("made"));
}

std::string opened(std::string& key)
{
    BINSTR file = recordOf(key);
    return made("key", [&](void* h, BINSTR* out) { return PriKeyDecrypt(h, password, &file, out); });
}

/** The library's folder, but for the addresses of directories: nobody listens at this one. */
void fillLibraryFolder(const std::filesystem::path& folder)
{
    const char* const settings = "HVCToolkitV30.conf";
    std::filesystem::create_directory(folder);
    for (const auto& file : std::filesystem::directory_iterator(SIGILDESK_LIBRARY_FOLDER))
        if (file.path().filename() != settings)
            std::filesystem::create_symlink(file.path(), folder / file.path().filename());
    writeFile(folder / settings,
        "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN=cn=Root,c=KR\nDIR_URL=ldap://127.0.0.1:9\n");
}

bool isWanted(const Certificate& certificate)
{
    return certificate.at("pairs") == "both" && !certificate.at("identity").empty();
}

} // namespace

Materials::Materials()
    : m_store({"--count", "4", "--state", "valid", "--pairs", "both", "--families", "npki,gpki", "--keys", "4",
          "--pfx"})
{
    const auto& all = m_store.certificates();
    const auto found = std::find_if(all.begin(), all.end(), isWanted);
    must(found != all.end(), "a certificate with both pairs and an identity");
    m_certificate = &*found;
    signCert = readFile(found->at("signing_certificate"));
    signKey = readFile(found->at("signing_key"));
    kmCert = readFile(found->at("km_certificate"));
    kmKey = readFile(found->at("km_key"));
    pfx = readFile(found->at("pfx"));
    identity = found->at("identity");
    library = m_store.folder() / "library";
    fillLibraryFolder(library);
    plainKey = opened(signKey);
    plainKmKey = opened(kmKey);
    BINSTR cert = recordOf(signCert), key = recordOf(plainKey), kmCertificate = recordOf(kmCert);
    BINSTR data = recordOf(content);
    random = made("random value", [&](void* h, BINSTR* out) { return VIDGetRandomFromPriKey(h, &key, out); });
    signature = made("signature", [&](void* h, BINSTR* out) { return CRYPTSign(h, &cert, &key, 0, &data, out); });
    message = made("message",
        [&](void* h, BINSTR* out) { return CMSMakeSignedData(h, 0, &cert, &key, &data, signingTime, out); });
    envelope = made("envelope", [&](void* h, BINSTR* out) {
        return CMSMakeEnvelopedData(h, 0, &kmCertificate, &data, SIGIL_TK_CIPHER_SEED, out);
    });
}

} // namespace torture
