// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/sessions.h"

#include "foundation/environment.h"

#include <sigildesk/certlist.h>
#include <sigildesk/open_toolkit.h>

#include <array>
#include <memory>

namespace torture {
namespace {

std::string home; ///< what the injected environment answers

/** What the calls are given, ready before the session. */
struct Inputs {
    explicit Inputs(Materials& m)
        : cert(m.signCert)
        , key(m.plainKey)
        , identity(m.identity)
        , library(m.library)
    {
        options.nPKITypes = SIGIL_FAMILY_NPKI | SIGIL_FAMILY_GPKI;
    }
    std::string cert, key, identity, library;
    tagLOADCERTOPT options{};
    tagCERTINFO entry{};
    std::array<char, 256> reason{};
    void* list = nullptr;
};

/** A buffer that the list hands out. */
class Buffer {
public:
    explicit Buffer(void* list)
        : m_list(list)
    {
    }
    ~Buffer() { CLP_MemFree(m_list, reinterpret_cast<void**>(&m_data)); }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    char** data() { return &m_data; }
    int* length() { return &m_length; }

private:
    void* m_list;
    char* m_data = nullptr;
    int m_length = 0;
};

int unlock(Inputs& in, char* with)
{
    Buffer key(in.list), kmKey(in.list);
    return CLP_DecryptPriKey(in.list, 0, with, key.data(), key.length(), kmKey.data(), kmKey.length());
}

int size(const std::string& bytes) { return static_cast<int>(bytes.size()); }

} // namespace

void useStore(const Materials& materials)
{
    home = materials.store().folder();
    sigil::environment().homeFolder = [] { return home; };
    sigil::environment().traceFolder = home;
    sigil::environment().pluginFolder = home;
}

const Codes& listCodes()
{
    // Without its loaders a processor has no handle. A certificate that cannot be read is left out: there may be fewer than
    // four.
    static const Codes codes{{SIGIL_NO_MEMORY, SIGIL_TK_NO_MEMORY, SIGIL_NO_HANDLE, 1, 2, 3},
        {0, SIGIL_BAD_ARGUMENT, SIGIL_NOT_MEMORY_MEDIUM, SIGIL_NO_CERTIFICATE, SIGIL_NO_DECRYPTED_KEY,
            SIGIL_IDENTITY_MISMATCH},
        isStated};
    return codes;
}

Session listSession(Materials& materials, int toolkit)
{
    useStore(materials);
    std::vector<Step> steps;
    const auto add = adderOf(steps, std::make_shared<Inputs>(materials));
    add("CLP_Initalize", [toolkit](Inputs& in) {
        return CLP_Initalize(&in.list, nullptr, toolkit, SIGIL_LANGUAGE_KOREAN, in.library.data());
    });
    add("CLP_SetType", [](Inputs& in) { return CLP_SetType(in.list, &in.options); });
    add("CLP_SetMediaType",
        [](Inputs& in) { return CLP_SetMediaType(in.list, SIGIL_MEDIUM_HARD_DISK, nullptr, 0); });
    add("CLP_LoadCertList", [](Inputs& in) { return CLP_LoadCertList(in.list); });
    add("CLP_GetCertCount", [](Inputs& in) { return CLP_GetCertCount(in.list); });
    add("CLP_GetCertInfo", [](Inputs& in) { return CLP_GetCertInfo(in.list, 0, &in.entry); });
    add("CLP_DecryptPriKey, wrong password", [](Inputs& in) { return unlock(in, wrongPassword); });
    add("CLP_DecryptPriKey", [](Inputs& in) { return unlock(in, password); });
    add("CLP_GetPriKeyRandom", [](Inputs& in) {
        Buffer random(in.list);
        return CLP_GetPriKeyRandom(in.list, 0, password, random.data(), random.length());
    });
    add("CLP_VerifyVID",
        [](Inputs& in) { return CLP_VerifyVID(in.list, 0, in.identity.data(), nullptr, password); });
    add("CLP_VerifyCert", [](Inputs& in) {
        return CLP_VerifyCert(in.list, in.cert.data(), size(in.cert), sizeof in.reason, in.reason.data());
    });
    add("CLP_SetMediaType, memory",
        [](Inputs& in) { return CLP_SetMediaType(in.list, SIGIL_MEDIUM_MEMORY, nullptr, 0); });
    add("CLP_LoadMemoryCert", [](Inputs& in) {
        return CLP_LoadMemoryCert(
            in.list, in.cert.data(), size(in.cert), in.key.data(), size(in.key), nullptr, 0, nullptr, 0);
    });
    add("CLP_UnInitalize", [](Inputs& in) { return CLP_UnInitalize(in.list); });
    return {std::move(steps), listCodes(), home};
}

} // namespace torture
