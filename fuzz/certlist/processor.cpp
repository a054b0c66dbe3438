// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The certificate list's functions in any order, over stores of any files, with the open toolkit.

#include "fuzz/machine.h"

#include <sigildesk/certlist.h>
#include <sigildesk/handles.h>

#include <array>
#include <memory>

namespace {

constexpr int mostSteps = 20;

/** A buffer that a function hands out. */
class Buffer {
public:
    explicit Buffer(void* list)
        : m_list(list)
    {
    }
    ~Buffer() { CLP_MemFree(m_list, reinterpret_cast<void**>(&m_bytes)); }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    char** bytes() { return &m_bytes; }
    int* length() { return &m_length; }
    void check() const { require(!m_bytes || m_bytes[m_length] == '\0', "a zero byte stands behind every buffer"); }

private:
    void* m_list;
    char* m_bytes = nullptr;
    int m_length = 0;
};

/** Everything that a step can want. */
struct Session {
    const fuzz::Machine& machine;
    void* list;
    fuzz::Script script;

    int index() { return static_cast<int>(script.number(4)) - 1; }
    int medium() { return static_cast<int>(script.number(8)); }
    std::string word() { return fuzz::password(script); }
    std::string pfx() const { return machine.path("pairs.pfx"); }
};

int setType(Session& session)
{
    tagLOADCERTOPT options{};
    options.nPKITypes = static_cast<int>(session.script.number(16));
    options.nKeyPairType = static_cast<int>(session.script.number(3));
    options.bExcludeExpired = static_cast<unsigned char>(session.script.number(2));
    fuzz::fileName(session.script).copy(options.szPolicyIDs, sizeof options.szPolicyIDs - 1);
    return CLP_SetType(session.list, &options);
}

int setMedium(Session& session)
{
    return CLP_SetMediaType(session.list, session.medium(), session.machine.disk().data(), 0);
}

int loadFromMemory(Session& session)
{
    std::array<std::string, 4> parts;
    for (std::string& part : parts)
        part = fuzz::content(session.script);
    const auto length = [&](std::size_t i) { return static_cast<int>(parts.at(i).size()); };
    const auto call = session.script.number(2) == 0 ? CLP_LoadMemoryCert : CLP_CopyforSetData;
    return call(session.list, parts[0].data(), length(0), parts[1].data(), length(1), parts[2].data(), length(2),
        parts[3].data(), length(3));
}

int readEntry(Session& session)
{
    const auto entry = std::make_unique<tagCERTINFO>();
    return CLP_GetCertInfo(session.list, session.index(), entry.get());
}

int decrypt(Session& session)
{
    Buffer sign(session.list);
    Buffer km(session.list);
    const int code = CLP_DecryptPriKey(
        session.list, session.index(), session.word().data(), sign.bytes(), sign.length(), km.bytes(), km.length());
    sign.check();
    km.check();
    return code;
}

int readRandom(Session& session)
{
    Buffer random(session.list);
    return CLP_GetPriKeyRandom(
        session.list, session.index(), session.word().data(), random.bytes(), random.length());
}

int verifyNumber(Session& session)
{
    std::string number = "1";
    return CLP_VerifyVID(session.list, session.index(), number.data(), nullptr, session.word().data());
}

int importPairs(Session& session)
{
    writeFile(session.pfx(), fuzz::content(session.script));
    std::array<Buffer, 4> parts{
        Buffer(session.list), Buffer(session.list), Buffer(session.list), Buffer(session.list)};
    return CLP_ImportPFX(session.list, session.pfx().data(), session.word().data(), parts[0].bytes(),
        parts[0].length(), parts[1].bytes(), parts[1].length(), parts[2].bytes(), parts[2].length(),
        parts[3].bytes(), parts[3].length());
}

int exportPairs(Session& session)
{
    return CLP_ExportPFX(session.list, session.index(), session.word().data(), session.pfx().data());
}

int copyEntry(Session& session)
{
    const int from = session.medium();
    const int index = session.index();
    return CLP_CopySelCertToDISK(
        session.list, from, index, session.medium(), session.machine.disk().data(), session.word().data());
}

int copyStaged(Session& session)
{
    return CLP_CopyCertToDISK(session.list, session.medium(), session.machine.disk().data(), session.word().data());
}

int remove(Session& session)
{
    return CLP_DeleteCert(session.list, session.index(), nullptr, session.word().data());
}

int verify(Session& session)
{
    std::string certificate = fuzz::content(session.script);
    std::array<char, 64> why{};
    return CLP_VerifyCert(session.list, certificate.data(), static_cast<int>(certificate.size()),
        static_cast<int>(why.size()), why.data());
}

int addFile(Session& session)
{
    fuzz::addStoreFile(session.machine, session.script);
    return 0;
}

int list(Session& session) { return CLP_LoadCertList(session.list); }

int count(Session& session)
{
    require(CLP_GetCertCount(session.list) >= 0, "there are some certificates or none");
    return 0;
}

/** What is wanted most often stands here more often. */
constexpr std::array steps{addFile, addFile, addFile, addFile, list, list, setMedium, setMedium, setType,
    loadFromMemory, readEntry, count, decrypt, readRandom, verifyNumber, importPairs, exportPairs, copyEntry,
    copyStaged, remove, verify};

} // namespace

FUZZ_TARGET(certlist_processor, input)
{
    const fuzz::Machine machine;
    fuzz::Script script(input);
    sigildesk::ProcessorHandle handle;
    const int type = static_cast<int>(script.number(2));
    require(
        sigildesk::initialise(handle, type, SIGIL_LANGUAGE_ENGLISH, fuzz::libraryFolder().data()) == SIGIL_SUCCESS,
        "a list can be had");
    Session session{machine, handle.get(), script};
    for (int i = 0; i < mostSteps && !session.script.atEnd(); ++i)
        fuzz::requireStated(session.script.oneOf(steps)(session), "a step");
}
