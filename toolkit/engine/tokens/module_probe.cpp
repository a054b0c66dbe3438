#include "toolkit/engine/tokens/module_probe.h"

#include "toolkit/engine/base/error.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>

namespace toolkit {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds patience{10};
constexpr char started = '+';

/** The program beside the library that this code is in. */
std::string probeProgram()
{
    Dl_info library{};
    require(dladdr(reinterpret_cast<const void*>(&probeModule), &library) != 0 && library.dli_fname,
        SIGIL_TK_TOKEN_MODULE);
    const std::string path = library.dli_fname;
    return path.substr(0, path.rfind('/') + 1) + "token-probe";
}

class Pipe {
public:
    Pipe() { require(pipe2(m_ends.data(), O_CLOEXEC) == 0, SIGIL_TK_TOKEN_MODULE, "no pipe"); }
    ~Pipe()
    {
        close(m_ends[0]);
        closeWriting();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int reading() const { return m_ends[0]; }
    int writing() const { return m_ends[1]; }
    void closeWriting()
    {
        if (m_ends[1] >= 0)
            close(m_ends[1]);
        m_ends[1] = -1;
    }

private:
    std::array<int, 2> m_ends{};
};

/** Where the streams of the program lead: nowhere, but for the answer. */
class Streams {
public:
    explicit Streams(int answer)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&m_actions, answer, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~Streams() { posix_spawn_file_actions_destroy(&m_actions); }
    Streams(const Streams&) = delete;
    Streams& operator=(const Streams&) = delete;

    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/** How a process that was waited for for @p patience behaves. */
enum class Answer { Started, Ended, Silent };

Answer answerFrom(int stream)
{
    const auto end = Clock::now() + patience;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd waiting{stream, POLLIN, 0};
        const int ready = left > 0 ? poll(&waiting, 1, static_cast<int>(left)) : 0;
        if (ready == 0)
            return Answer::Silent;
        char byte = 0;
        const ssize_t length = ready > 0 ? read(stream, &byte, 1) : -1;
        if (length >= 0)
            return length == 1 && byte == started ? Answer::Started : Answer::Ended;
        if (errno != EINTR)
            return Answer::Ended;
    }
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

std::string probeModule(const std::string& file, const char* reserved)
{
    Pipe pipe;
    std::string program = probeProgram();
    std::string module = file;
    std::string argument = reserved ? reserved : "";
    std::array<char*, 4> arguments{program.data(), module.data(), reserved ? argument.data() : nullptr, nullptr};
    pid_t process = 0;
    if (posix_spawn(&process, program.c_str(), Streams(pipe.writing()).get(), nullptr, arguments.data(), environ) !=
        0)
        return "cannot be tried out: " + program + " does not run";
    pipe.closeWriting();
    const Answer answer = answerFrom(pipe.reading());
    if (answer == Answer::Silent)
        kill(process, SIGKILL);
    const bool crash = crashed(process);
    if (answer == Answer::Started)
        return {};
    return answer == Answer::Silent ? "hangs while it starts"
        : crash                     ? "crashes while it starts"
                                    : "does not start";
}

} // namespace toolkit
