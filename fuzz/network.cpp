// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "fuzz/network.h"

#include <sigildesk/export.h>

#include <cerrno>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::optional<fuzz::Input> answer;
std::vector<int> peers; ///< the servers' ends: what clients send there is never read

/** Puts one end of a channel, on whose other end the answer waits, in the place of the socket. */
int connectToServer(int socket)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return -1;
    const int flags = fcntl(socket, F_GETFL);
    dup3(ends[0], socket, O_CLOEXEC);
    fcntl(socket, F_SETFL, flags);
    close(ends[0]);
    peers.push_back(ends[1]);
    // What does not fit into the channel is cut: fuzzers do not write so much.
    static_cast<void>(!send(ends[1], answer->data(), answer->size(), MSG_DONTWAIT | MSG_NOSIGNAL));
    shutdown(ends[1], SHUT_WR);
    return 0;
}

} // namespace

// In the place of the C library's, for the libraries that are loaded too.

extern "C" SIGIL_EXPORT int connect(int socket, const sockaddr* address, socklen_t length)
{
    if (address->sa_family == AF_UNIX)
        return static_cast<int>(syscall(SYS_connect, socket, address, length));
    if (answer)
        return connectToServer(socket);
    errno = ECONNREFUSED;
    return -1;
}

extern "C" SIGIL_EXPORT int getaddrinfo(const char*, const char*, const addrinfo*, addrinfo**)
{
    return EAI_NONAME;
}

// libldap forgets its buffer when a server's message cannot be begun; no function of it gives that back.
extern "C" SIGIL_EXPORT const char* __lsan_default_suppressions()
{
    return "leak:ber_memcalloc_x\nleak:ber_memalloc_x\n";
}

namespace fuzz {

Server::Server(Input said) { answer = said; }

Server::~Server()
{
    answer.reset();
    for (const int peer : peers)
        close(peer);
    peers.clear();
}

} // namespace fuzz
