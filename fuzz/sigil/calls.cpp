// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The C library's functions in any order, over stores of any files, with the open toolkit.

#include "fuzz/machine.h"
#include "tests/sigil/owners.h"

#include <array>
#include <filesystem>

using namespace sigil_test;

namespace {

constexpr int mostSteps = 20;

/** @return @p code, of the call that had @p bytes to fill */
int checked(int code, const Bytes& bytes)
{
    require(code == SIGIL_SUCCESS || !bytes.data(), "after a failure nothing is handed out");
    require(!bytes.data() || bytes.data()[bytes.size()] == 0, "a zero byte stands behind what is handed out");
    return code;
}

/** Everything that a step can want; what a step makes is what the next one may take. */
struct Steps {
    const fuzz::Machine& machine;
    SigilSession* session;
    fuzz::Script script;
    std::string disk = machine.disk();

    int entry() { return static_cast<int>(script.number(4)) - 1; }
    int pair() { return static_cast<int>(script.number(3)); }
    std::string word() { return fuzz::password(script); }
    std::string bytes() { return fuzz::content(script); }
};

int addFile(Steps& steps)
{
    fuzz::addStoreFile(steps.machine, steps.script);
    return SIGIL_SUCCESS;
}

int list(Steps& steps)
{
    auto options = sized<SigilListOptions>();
    options.medium = steps.script.number(2) == 0 ? steps.disk.c_str() : nullptr;
    options.families = static_cast<int>(steps.script.number(16));
    options.valid = static_cast<int>(steps.script.number(4)) / 3;
    const std::string words = fuzz::text(steps.script.word()).c_str();
    options.issuer = steps.script.number(4) == 3 ? words.c_str() : nullptr;
    int count = -1;
    const int code = sigil_list(steps.session, &options, &count);
    require((code == SIGIL_SUCCESS) == (count >= 0), "a list that was made has a length");
    return code;
}

int fields(Steps& steps)
{
    auto told = sized<SigilFields>();
    const int code = sigil_fields(steps.session, steps.entry(), &told);
    require(code != SIGIL_SUCCESS || (told.name && told.key_file), "every text is there");
    return code;
}

int certificateFields(Steps& steps)
{
    auto told = sized<SigilFields>();
    const std::string bytes = steps.bytes();
    return sigil_certificate_fields(steps.session, bytes.data(), bytes.size(), &told);
}

int certificate(Steps& steps)
{
    Bytes der;
    const int entry = steps.entry();
    return checked(sigil_certificate(steps.session, entry, steps.pair(), der.out()), der);
}

int unlock(Steps& steps)
{
    const int entry = steps.entry();
    return sigil_unlock(steps.session, entry, steps.word().c_str());
}

int lock(Steps& steps) { return sigil_lock(steps.session, steps.entry()); }

int key(Steps& steps)
{
    Bytes der;
    const int entry = steps.entry();
    const std::string word = steps.word();
    return checked(
        sigil_private_key(steps.session, entry, steps.pair(), word.empty() ? nullptr : word.c_str(), der.out()),
        der);
}

int identity(Steps& steps) { return sigil_identity(steps.session, steps.entry(), "1"); }

int sign(Steps& steps)
{
    auto options = sized<SigilSignOptions>();
    options.form = static_cast<int>(steps.script.number(4));
    Bytes message;
    const int entry = steps.entry();
    const std::string data = steps.bytes();
    return checked(sigil_sign(steps.session, entry, &options, data.data(), data.size(), message.out()), message);
}

int verify(Steps& steps)
{
    Bytes content;
    int signers = 0;
    const std::string message = steps.bytes();
    const std::string data = steps.bytes();
    const int code = checked(sigil_verify(steps.session, message.data(), message.size(), data.data(), data.size(),
                                 content.out(), &signers),
        content);
    auto signer = sized<SigilSigner>();
    fuzz::requireStated(sigil_signer(steps.session, steps.entry(), &signer), "sigil_signer");
    return code;
}

int verifyRaw(Steps& steps)
{
    const std::string certificate = steps.bytes();
    const std::string data = steps.bytes();
    const std::string signature = steps.bytes();
    return sigil_verify_raw(steps.session, certificate.data(), certificate.size(), data.data(), data.size(),
        signature.data(), signature.size());
}

int encrypt(Steps& steps)
{
    std::string certificate = steps.bytes();
    const std::string data = steps.bytes();
    const SigilBytes recipient{reinterpret_cast<unsigned char*>(certificate.data()), certificate.size()};
    Bytes message;
    return checked(sigil_encrypt(steps.session, static_cast<int>(steps.script.number(9)), &recipient, 1,
                       data.data(), data.size(), message.out()),
        message);
}

int decrypt(Steps& steps)
{
    Bytes content;
    const int entry = steps.entry();
    const std::string message = steps.bytes();
    return checked(sigil_decrypt(steps.session, entry, message.data(), message.size(), content.out()), content);
}

int exportPairs(Steps& steps)
{
    Bytes file;
    const int entry = steps.entry();
    const int protection = static_cast<int>(steps.script.number(4));
    return checked(sigil_export(steps.session, entry, protection, steps.word().c_str(), file.out()), file);
}

int importPairs(Steps& steps)
{
    const std::string file = steps.bytes();
    const std::string word = steps.word();
    return sigil_import(
        steps.session, file.data(), file.size(), word.c_str(), steps.disk.c_str(), steps.script.number(2) == 0);
}

int copy(Steps& steps)
{
    const int entry = steps.entry();
    return sigil_copy(steps.session, entry, steps.disk.c_str(), steps.script.number(2) == 0);
}

int remove(Steps& steps) { return sigil_delete(steps.session, steps.entry()); }

int changePassword(Steps& steps)
{
    const int entry = steps.entry();
    const std::string before = steps.word();
    return sigil_change_password(steps.session, entry, before.c_str(), steps.word().c_str());
}

int judge(Steps& steps)
{
    auto options = sized<SigilJudgeOptions>();
    std::string root = steps.bytes();
    const SigilBytes trusted{reinterpret_cast<unsigned char*>(root.data()), root.size()};
    options.trusted = &trusted;
    options.trusted_count = 1;
    options.purpose = static_cast<int>(steps.script.number(8));
    options.no_revocation = 1;
    const std::string bytes = steps.bytes();
    return sigil_verify_certificate(steps.session, &options, bytes.data(), bytes.size());
}

int stamp(Steps& steps)
{
    auto told = sized<SigilStamp>();
    const std::string token = steps.bytes();
    const std::string data = steps.bytes();
    return sigil_stamp(steps.session, token.data(), token.size(), data.data(), data.size(), &told);
}

int examine(Steps& steps)
{
    int count = 0;
    const int code = sigil_examine(steps.session, steps.disk.c_str(), &count);
    auto finding = sized<SigilFinding>();
    fuzz::requireStated(sigil_finding(steps.session, steps.entry(), &finding), "sigil_finding");
    return code;
}

/** What is wanted most often stands here more often. */
constexpr std::array steps{addFile, addFile, addFile, addFile, list, list, list, fields, certificateFields,
    certificate, unlock, unlock, lock, key, identity, sign, verify, verifyRaw, encrypt, decrypt, exportPairs,
    importPairs, copy, remove, changePassword, judge, stamp, examine};

} // namespace

FUZZ_TARGET(sigil_calls, input)
{
    const fuzz::Machine machine;
    std::filesystem::create_directory(machine.disk());
    fuzz::Script script(input);
    auto options = sized<SigilOpenOptions>();
    options.folder = fuzz::libraryFolder().c_str();
    options.toolkit = static_cast<int>(script.number(2));
    SigilSession* opened = nullptr;
    require(sigil_open(&options, &opened) == SIGIL_SUCCESS, "a session can be had");
    const Session session(opened);
    Steps all{machine, opened, script};
    for (int i = 0; i < mostSteps && !all.script.atEnd(); ++i) {
        const int code = all.script.oneOf(steps)(all);
        fuzz::requireStated(code, sigil_error_text(opened));
        require(code == SIGIL_SUCCESS || *sigil_error_text(opened), "a failure is told in words");
    }
}
