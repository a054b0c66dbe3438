// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// example-five-steps-cpp [FOLDER]: list, unlock, sign, verify, decrypt, with the first certificate of the home folder or of
// the disk that is mounted at FOLDER. The first line of the input is its password.

#include <sigil.h>

#include <cstring>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

/** Bytes that go, overwritten, with the block that they are in. */
struct Bytes : SigilBytes {
    Bytes()
        : SigilBytes{}
    {
    }
    ~Bytes() { sigil_free(this); }
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;
    std::string_view text() const { return {reinterpret_cast<const char*>(data), size}; }
};

void check(const SigilSession* session, int code)
{
    if (code != SIGIL_SUCCESS)
        throw std::runtime_error(std::to_string(code) + ": " + sigil_error_text(session));
}

void fiveSteps(SigilSession* session, const SigilListOptions& where, const std::string& password)
{
    const std::string text = "동해물과 백두산이";
    int certificates = 0;
    int signers = 0;
    Bytes recipient, message, content, secret, opened;
    check(session, sigil_list(session, &where, &certificates));
    check(session, sigil_unlock(session, 0, password.c_str()));
    check(session, sigil_sign(session, 0, nullptr, text.data(), text.size(), &message));
    check(session, sigil_verify(session, message.data, message.size, nullptr, 0, &content, &signers));
    check(session, sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &recipient));
    check(session, sigil_encrypt(session, SIGIL_CIPHER_AES256, &recipient, 1, text.data(), text.size(), &secret));
    check(session, sigil_decrypt(session, 0, secret.data, secret.size, &opened));
    std::cout << "listed " << certificates << ", verified \"" << content.text() << "\", decrypted \""
              << opened.text() << "\"\n";
}

} // namespace

int main(int argc, char** argv)
{
    SigilListOptions where = {};
    where.size = sizeof where;
    where.medium = argc > 1 ? argv[1] : nullptr;
    std::string password;
    std::getline(std::cin, password);
    int status = 0;
    try {
        SigilSession* opened = nullptr;
        check(nullptr, sigil_open(nullptr, &opened));
        const std::unique_ptr<SigilSession, void (*)(SigilSession*)> session(opened, sigil_close);
        fiveSteps(session.get(), where, password);
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        status = 1;
    }
    explicit_bzero(&password[0], password.size());
    return status;
}
