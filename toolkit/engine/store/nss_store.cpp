// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// nss-store list|add|import FOLDER: does one thing with the NSS database in a folder, in a process of its own: the module that opens
// it is one for a whole process, and the database may be anybody's work.
//
// In: nothing for list; a certificate for add; SEQUENCE { OCTET STRING password, OCTET STRING PKCS#12 file } for import.
// Out: the result code in decimal and a line feed; then the certificates one after another, or what the failure says.

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/store/nss_database.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <iterator>
#include <new>
#include <string_view>

using namespace toolkit;

namespace {

using Access = NssDatabase::Access;

Secret wholeInput()
{
    Secret all;
    std::array<unsigned char, 16384> some{};
    ssize_t length = 0;
    while ((length = read(STDIN_FILENO, some.data(), some.size())) > 0)
        all.insert(all.end(), some.begin(), some.begin() + length);
    OPENSSL_cleanse(some.data(), some.size());
    return all;
}

void writeAll(View bytes)
{
    ssize_t length = 0;
    while (!bytes.empty() && (length = write(STDOUT_FILENO, bytes.data(), bytes.size())) > 0)
        bytes = bytes.subspan(static_cast<std::size_t>(length));
}

Bytes list(const std::string& folder)
{
    const Library library;
    Bytes all;
    for (const Bytes& certificate : NssDatabase(library, folder, Access::Reading).certificates())
        all.insert(all.end(), certificate.begin(), certificate.end());
    return all;
}

/** What is to be added is judged before the database is touched. */
void add(const std::string& folder)
{
    const Library library;
    const Certificate certificate(library, wholeInput());
    NssDatabase(library, folder, Access::Writing).add({{}, {certificate.der()}});
}

void import(const std::string& folder)
{
    const Library library;
    const Secret request = wholeInput();
    der::Reader fields(der::Reader(request).take(der::Sequence).value_or(View()));
    const View password = fields.take(der::OctetString).value_or(View());
    const View file = fields.take(der::OctetString).value_or(View());
    const Pkcs12Content content =
        readPkcs12(library, file, {chars(password), password.size()}, SIGIL_TK_PFX_STRICT);
    NssDatabase(library, folder, Access::Writing).add(content);
}

Bytes perform(std::string_view operation, const std::string& folder)
{
    if (operation == "list")
        return list(folder);
    require(operation == "add" || operation == "import", SIGIL_TK_ARGUMENT, operation);
    if (operation == "add")
        add(folder);
    else
        import(folder);
    return {};
}

void answer(int code, View text)
{
    writeAll(view(std::to_string(code) + "\n"));
    writeAll(text);
}

/** What the module refuses is the store's failure, but for the password that nobody can give. */
void answerFailure(const Error& error)
{
    const bool ofModule = error.code() >= SIGIL_TK_TOKEN_ABSENT && error.code() <= SIGIL_TK_TOKEN_MODULE &&
        error.code() != SIGIL_TK_TOKEN_LOGIN;
    answer(ofModule ? SIGIL_TK_MEDIUM : error.code(), view(ofModule ? error.what() : error.detail()));
}

} // namespace

int main(int argc, char** argv)
{
    umask(S_IRWXG | S_IRWXO);
    try {
        answer(SIGIL_TK_OK, perform(argc > 1 ? argv[1] : "", argc > 2 ? argv[2] : ""));
    } catch (const Error& error) {
        answerFailure(error);
    } catch (const std::bad_alloc&) {
        answer(SIGIL_TK_NO_MEMORY, {});
    } catch (const std::exception& error) {
        answer(SIGIL_TK_INTERNAL, view(error.what()));
    }
    // Ends without the module's own clean-up; what it was told to write is on the disk.
    _exit(0);
}
