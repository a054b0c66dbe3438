// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/helper_program.h"

#include "toolkit/engine/base/error.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

namespace toolkit {
namespace {

using Clock = std::chrono::steady_clock;

/** Larger than any answer: a program that writes more has gone astray. */
constexpr std::size_t maximumAnswer = 64UL * 1024 * 1024;

/** Path of a program beside the library that this code is in. */
std::string besideLibrary(const std::string& program)
{
    Dl_info library{};
    require(dladdr(reinterpret_cast<const void*>(&askHelper), &library) != 0 && library.dli_fname,
        SIGIL_TK_INTERNAL, "no folder of the library");
    const std::string path = library.dli_fname;
    return path.substr(0, path.rfind('/') + 1) + program;
}

/** A connection with the program. */
class Channel {
public:
    Channel()
    {
        require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_ends.data()) == 0, SIGIL_TK_INTERNAL,
            "no channel to another program");
    }
    ~Channel()
    {
        close(m_ends[0]);
        closeOther();
    }
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    int own() const { return m_ends[0]; }
    int other() const { return m_ends[1]; }
    void closeOther()
    {
        if (m_ends[1] >= 0)
            close(m_ends[1]);
        m_ends[1] = -1;
    }

private:
    std::array<int, 2> m_ends{};
};

/** Where the streams of the program lead: to this process, but for its complaints. */
class Streams {
public:
    explicit Streams(int channel)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_adddup2(&m_actions, channel, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, channel, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~Streams() { posix_spawn_file_actions_destroy(&m_actions); }
    Streams(const Streams&) = delete;
    Streams& operator=(const Streams&) = delete;

    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/** Starts the program; 0 when it cannot be run. */
pid_t start(const std::string& program, const std::vector<std::string>& arguments, int channel)
{
    std::vector<std::string> texts{besideLibrary(program)};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers(texts.size() + 1); // the last is the null pointer that ends them
    std::transform(texts.begin(), texts.end(), pointers.begin(), [](std::string& text) { return text.data(); });
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, texts.front().c_str(), Streams(channel).get(), nullptr, pointers.data(), environ);
    return failure == 0 ? process : 0;
}

/** Waits until something can be done; false when the time is over. */
bool waitFor(int channel, short events, Clock::time_point end)
{
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd waiting{channel, events, 0};
        const int ready = left > 0 ? poll(&waiting, 1, static_cast<int>(left)) : 0;
        if (ready >= 0 || errno != EINTR)
            return ready != 0;
    }
}

bool isPassing(ssize_t result) { return result < 0 && (errno == EINTR || errno == EAGAIN); }

/** A program that does not read any more gets no more. False when the time is over. */
bool sendAll(int channel, View request, Clock::time_point end)
{
    while (!request.empty()) {
        if (!waitFor(channel, POLLOUT, end))
            return false;
        const ssize_t sent = send(channel, request.data(), request.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && !isPassing(sent))
            break;
        request = request.subspan(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
    }
    shutdown(channel, SHUT_WR);
    return true;
}

/** False when the time is over, or the answer never ends. */
bool receiveAll(int channel, Secret& answer, Clock::time_point end)
{
    std::array<unsigned char, 16384> some{};
    while (answer.size() <= maximumAnswer && waitFor(channel, POLLIN, end)) {
        const ssize_t length = recv(channel, some.data(), some.size(), MSG_DONTWAIT);
        if (isPassing(length))
            continue;
        if (length <= 0)
            return true;
        answer.insert(answer.end(), some.begin(), some.begin() + length);
    }
    return false;
}

/** The host may have taken the process's status already: then it only counts that the process is gone. */
bool crashed(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            return false;
    return WIFSIGNALED(status);
}

} // namespace

HelperAnswer askHelper(const std::string& program, const std::vector<std::string>& arguments, View request,
    std::chrono::seconds patience)
{
    Channel channel;
    const pid_t process = start(program, arguments, channel.other());
    if (process == 0)
        return {HelperEnd::Absent, {}};
    channel.closeOther();
    const auto end = Clock::now() + patience;
    HelperAnswer answer{HelperEnd::Answered, {}};
    const bool whole = sendAll(channel.own(), request, end) && receiveAll(channel.own(), answer.bytes, end);
    if (!whole)
        kill(process, SIGKILL);
    const bool crash = crashed(process);
    answer.end = !whole ? HelperEnd::Silent : crash ? HelperEnd::Crashed : HelperEnd::Answered;
    return answer;
}

} // namespace toolkit
