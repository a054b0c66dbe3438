// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/net/web.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/late_library.h"
#include "toolkit/engine/x509/text.h"

#include <curl/curl.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <new>
#include <optional>
#include <pthread.h>
#include <signal.h>
#include <strings.h>
#include <system_error>
#include <thread>
#include <utility>

namespace toolkit {
namespace {

constexpr long connectSeconds = 5;
constexpr int maximumRedirections = 3;

struct Curl {
    LateLibrary library{SIGIL_CURL_LIBRARY};
    SIGIL_LATE_FUNCTION(curl_, global_init);
    SIGIL_LATE_FUNCTION(curl_, easy_init);
    SIGIL_LATE_FUNCTION(curl_, easy_cleanup);
    SIGIL_LATE_FUNCTION(curl_, easy_setopt);
    SIGIL_LATE_FUNCTION(curl_, easy_perform);
    SIGIL_LATE_FUNCTION(curl_, easy_getinfo);
    SIGIL_LATE_FUNCTION(curl_, easy_strerror);
    SIGIL_LATE_FUNCTION(curl_, slist_append);
    SIGIL_LATE_FUNCTION(curl_, slist_free_all);
};

const Curl& curl()
{
    static const Curl loaded;
    return loaded;
}

struct CloseTransfer {
    void operator()(CURL* transfer) const { curl().easy_cleanup(transfer); }
};
using Transfer = std::unique_ptr<CURL, CloseTransfer>;

struct ReleaseHeaders {
    void operator()(curl_slist* headers) const { curl().slist_free_all(headers); }
};
using Headers = std::unique_ptr<curl_slist, ReleaseHeaders>;

/** What the server answers, as far as it is wanted. */
struct Answer {
    std::size_t maximumSize;
    Bytes body;
    bool outOfMemory = false;
};

/** What is thrown must not pass through libcurl. */
std::size_t append(char* data, std::size_t, std::size_t size, void* target)
{
    auto& answer = *static_cast<Answer*>(target);
    if (answer.body.size() + size > answer.maximumSize)
        return 0;
    try {
        const View piece = view({data, size});
        answer.body.insert(answer.body.end(), piece.begin(), piece.end());
        return size;
    } catch (const std::bad_alloc&) {
        answer.outOfMemory = true;
        return 0;
    }
}

/** Addresses are formed from names, so blanks and Korean letters are met in them. */
std::string encodedUrl(const std::string& url)
{
    std::string encoded;
    for (const char c : url) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x20 && byte < 0x7F)
            encoded += c;
        else
            encoded += "%" + hexText({&byte, 1});
    }
    return encoded;
}

/** Whether an address is one of TLS. */
bool isSecure(const std::string& url)
{
    constexpr std::string_view scheme = "https:";
    return strncasecmp(url.c_str(), scheme.data(), scheme.size()) == 0;
}

/** The system's authorities, or those of the file that the environment names in their place, as with OpenSSL's programs. */
void setAuthorities(CURL* transfer)
{
    const char* const file = secure_getenv("SSL_CERT_FILE");
    if (!file)
        return;
    curl().easy_setopt(transfer, CURLOPT_CAINFO, file);
    curl().easy_setopt(transfer, CURLOPT_CAPATH, nullptr);
}

Transfer openTransfer(const std::string& url, const Visits& visits)
{
    static const bool ready = curl().global_init(CURL_GLOBAL_NOTHING) == CURLE_OK;
    Transfer transfer(ready ? curl().easy_init() : nullptr);
    require(transfer != nullptr, SIGIL_TK_NO_MEMORY);
    curl().easy_setopt(transfer.get(), CURLOPT_URL, url.c_str());
    curl().easy_setopt(transfer.get(), CURLOPT_PROTOCOLS_STR, "http,https");
    curl().easy_setopt(transfer.get(), CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    curl().easy_setopt(transfer.get(), CURLOPT_NOSIGNAL, 1L);
    curl().easy_setopt(transfer.get(), CURLOPT_CONNECTTIMEOUT, connectSeconds);
    curl().easy_setopt(transfer.get(), CURLOPT_TIMEOUT_MS, static_cast<long>(visits.remaining().count()));
    return transfer;
}

Transfer makeTransfer(const std::string& url, Answer& answer, const Visits& visits)
{
    Transfer transfer = openTransfer(encodedUrl(url), visits);
    setAuthorities(transfer.get());
    curl().easy_setopt(transfer.get(), CURLOPT_FAILONERROR, 1L);
    curl().easy_setopt(transfer.get(), CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(answer.maximumSize));
    curl().easy_setopt(transfer.get(), CURLOPT_WRITEFUNCTION, append);
    curl().easy_setopt(transfer.get(), CURLOPT_WRITEDATA, &answer);
    return transfer;
}

/** libcurl's TLS uses the process's OpenSSL. In a thread of its own it leaves the host's error queue alone, and the signal of
 *  a connection that a server closes reaches nobody. */
CURLcode performApart(CURL* transfer)
{
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::optional<CURLcode> result;
    try {
        std::thread([&] { result = curl().easy_perform(transfer); }).join();
    } catch (const std::system_error&) {
        result.reset(); // no thread, no result
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    require(result.has_value(), SIGIL_TK_NO_MEMORY, "thread");
    return *result;
}

/** Throws unless the exchange went well. @return the status of the answer */
long perform(CURL* transfer, const std::string& url, const Answer& answer, Visits& visits)
{
    const CURLcode result = isSecure(url) ? performApart(transfer) : curl().easy_perform(transfer);
    require(!answer.outOfMemory,
        SIGIL_TK_NO_MEMORY); // libcurl's own code for that is one of lines that are too long too
    long status = 0;
    long redirections = 0;
    curl().easy_getinfo(transfer, CURLINFO_RESPONSE_CODE, &status);
    curl().easy_getinfo(transfer, CURLINFO_REDIRECT_COUNT, &redirections);
    visits.countRedirections(static_cast<int>(redirections));
    require(status != 404 && status != 410, SIGIL_TK_NOT_FOUND, url);
    require(result == CURLE_OK, SIGIL_TK_FETCH, curl().easy_strerror(result));
    return status;
}

} // namespace

Bytes getFromWeb(const std::string& url, Visits& visits)
{
    Answer answer{maximumFetchSize, {}};
    const Transfer transfer = makeTransfer(url, answer, visits);
    const int redirections = std::min(visits.left(), maximumRedirections);
    curl().easy_setopt(transfer.get(), CURLOPT_REDIR_PROTOCOLS_STR, isSecure(url) ? "https" : "http");
    curl().easy_setopt(transfer.get(), CURLOPT_FOLLOWLOCATION, 1L);
    curl().easy_setopt(transfer.get(), CURLOPT_MAXREDIRS, static_cast<long>(redirections));
    perform(transfer.get(), url, answer, visits);
    return std::move(answer.body);
}

Bytes postToWeb(
    const std::string& url, const std::string& contentType, View body, std::size_t maximumSize, Visits& visits)
{
    Answer answer{maximumSize, {}};
    const Transfer transfer = makeTransfer(url, answer, visits);
    const Headers headers(curl().slist_append(nullptr, ("Content-Type: " + contentType).c_str()));
    require(headers != nullptr, SIGIL_TK_NO_MEMORY);
    curl().easy_setopt(transfer.get(), CURLOPT_HTTPHEADER, headers.get());
    curl().easy_setopt(transfer.get(), CURLOPT_POSTFIELDSIZE, static_cast<long>(body.size()));
    curl().easy_setopt(transfer.get(), CURLOPT_POSTFIELDS, body.data());
    const long status = perform(transfer.get(), url, answer, visits);
    require(status == 200, SIGIL_TK_FETCH, "status " + std::to_string(status));
    return std::move(answer.body);
}

int connectTo(const std::string& hostAndPort, const Visits& visits)
{
    const Transfer transfer = openTransfer("http://" + hostAndPort, visits);
    curl().easy_setopt(transfer.get(), CURLOPT_CONNECT_ONLY, 1L);
    curl().easy_setopt(transfer.get(), CURLOPT_PROXY, "");
    const CURLcode result = curl().easy_perform(transfer.get());
    require(result == CURLE_OK, SIGIL_TK_FETCH, curl().easy_strerror(result));
    curl_socket_t connection = CURL_SOCKET_BAD;
    curl().easy_getinfo(transfer.get(), CURLINFO_ACTIVESOCKET, &connection);
    const int own = fcntl(connection, F_DUPFD_CLOEXEC, 0);
    require(own >= 0, SIGIL_TK_FETCH, "connection");
    return own;
}

} // namespace toolkit
