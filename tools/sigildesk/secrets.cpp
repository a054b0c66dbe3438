// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "secrets.h"

#include "foundation/file.h"
#include "jobs/failure.h"
#include "text.h"

#include <sigildesk/open_toolkit.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <malloc.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace host {

namespace {

using sigil::Descriptor;
using sigil::SecretBytes;

constexpr std::size_t longest = 1024;

constexpr Words passwordPrompt{"Password for {}: ", "{} 비밀번호: "};
constexpr Words newPasswordPrompt{"New password for {}: ", "{} 새 비밀번호: "};
constexpr Words againPrompt{"The same once more: ", "한 번 더: "};
constexpr Words identityPrompt{"Identity number of {}: ", "{}의 식별번호(주민등록번호 등): "};
constexpr Words noSource{"a password is needed, and there is no terminal to ask at; give {}",
    "비밀번호가 필요하지만 물어볼 터미널이 없습니다. {} 옵션을 쓰십시오"};
constexpr Words noTerminal{
    "there is no terminal to ask at; give {}", "물어볼 터미널이 없습니다. {} 옵션을 쓰십시오"};
constexpr Words badDescriptor{
    "nothing can be read from descriptor {}: {}", "{}번 디스크립터에서 읽을 수 없습니다: {}"};
constexpr Words badFile{"cannot read {}: {}", "{} 파일을 읽을 수 없습니다: {}"};
constexpr Words openToOthers{"{} can be read by others; make it yours alone with chmod 600",
    "{} 파일을 다른 사용자가 읽을 수 있습니다. chmod 600으로 막으십시오"};
constexpr Words tooLong{
    "the secret is longer than 1024 bytes or holds a zero byte", "1024바이트보다 길거나 0 바이트가 들어 있습니다"};
constexpr Words askpassFailed{"{} gave no password", "{} 프로그램이 비밀번호를 주지 않았습니다"};
constexpr Words cancelled{"cancelled", "취소했습니다"};
constexpr Words differ{"the two passwords differ", "두 비밀번호가 다릅니다"};
constexpr Words emptyPassword{"a new password cannot be empty", "새 비밀번호는 비워 둘 수 없습니다"};

/** What a yes begins with; the last is the key of "y" on a Korean keyboard. */
constexpr std::array<std::string_view, 5> yes{"y", "Y", "예", "네", "ㅛ"};

std::string reason(int error) { return std::generic_category().message(error); }

/** What is read of a line: nothing beyond it, so that the next secret may stand on the next line. */
enum class LineEnd { Line, Nothing, Error };

LineEnd readLine(int descriptor, SecretBytes& line)
{
    line.reserve(longest + 2);
    for (;;) {
        char byte = 0;
        const ssize_t count = ::read(descriptor, &byte, 1);
        if (count < 0)
            return LineEnd::Error;
        if (count == 0)
            return line.empty() ? LineEnd::Nothing : LineEnd::Line;
        if (byte == '\n')
            break;
        if (byte == '\0' || line.size() == longest)
            throw Failure(wrongUse, "bad_secret", tooLong);
        line.push_back(byte);
        sigil::wipe(&byte, 1);
    }
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return LineEnd::Line;
}

Secret fromDescriptor(int descriptor)
{
    SecretBytes line;
    const LineEnd end = readLine(descriptor, line);
    if (end != LineEnd::Line)
        throw Failure(wrongUse, "no_secret", badDescriptor,
            {std::to_string(descriptor), reason(end == LineEnd::Error ? errno : ENODATA)});
    return Secret(std::move(line));
}

Secret fromFile(const std::string& path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    struct stat status { };
    if (file.get() < 0 || fstat(file.get(), &status) != 0)
        throw Failure(failed, "file_not_read", badFile, {path, reason(errno)});
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    const bool ofAnother = status.st_uid != geteuid() && status.st_uid != 0 && geteuid() != 0;
    if ((status.st_mode & others) != 0 || ofAnother)
        throw Failure(failed, "secret_file_open_to_others", openToOthers, {path});
    SecretBytes line;
    const LineEnd end = readLine(file.get(), line);
    if (end != LineEnd::Line)
        throw Failure(failed, "file_not_read", badFile, {path, reason(end == LineEnd::Error ? errno : ENODATA)});
    return Secret(std::move(line));
}

/** The first line that a program prints. */
Secret fromProgram(const std::string& program, const std::string& prompt)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw Failure(failed, "askpass_failed", askpassFailed, {program});
    const Descriptor reading(ends[0]);
    std::optional<Descriptor> writing(std::in_place, ends[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, writing->get(), STDOUT_FILENO);
    std::string name = program;
    std::string question = prompt;
    const std::array<char*, 3> words{name.data(), question.data(), nullptr};
    pid_t child = -1;
    const int error = posix_spawnp(&child, name.c_str(), &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw Failure(failed, "askpass_failed", badFile, {program, reason(error)});
    writing.reset();
    SecretBytes line;
    const LineEnd end = readLine(reading.get(), line);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        ;
    // A program that goes on to write after its first line ends with a signal; only one that says no has failed.
    const bool refused = WIFEXITED(status) && WEXITSTATUS(status) != 0;
    if (end != LineEnd::Line || refused)
        throw Failure(no, "cancelled", askpassFailed, {program});
    return Secret(std::move(line));
}

volatile std::sig_atomic_t caughtSignal = 0;

extern "C" void noteSignal(int number) { caughtSignal = number; }

/** The terminal without echo. Signals that would end or stop the process wait until it echoes again; they are let through
 *  while it waits for input alone, so that none comes between the question whether one came and the waiting. */
class SilentTerminal {
public:
    explicit SilentTerminal(int terminal)
        : m_terminal(terminal)
    {
        caughtSignal = 0;
        struct sigaction note { };
        note.sa_handler = noteSignal; // no SA_RESTART: reading is interrupted
        sigset_t all;
        sigemptyset(&all);
        for (std::size_t i = 0; i < signals.size(); ++i) {
            sigaction(signals.at(i), &note, &m_before.at(i));
            sigaddset(&all, signals.at(i));
        }
        sigprocmask(SIG_BLOCK, &all, &m_maskBefore);
        tcgetattr(m_terminal, &m_settings);
        termios silent = m_settings;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHOE | ECHOK | ECHONL);
        tcsetattr(m_terminal, TCSAFLUSH, &silent);
    }
    ~SilentTerminal()
    {
        tcsetattr(m_terminal, TCSAFLUSH, &m_settings);
        for (std::size_t i = 0; i < signals.size(); ++i)
            sigaction(signals.at(i), &m_before.at(i), nullptr);
        sigprocmask(SIG_SETMASK, &m_maskBefore, nullptr);
        if (caughtSignal != 0)
            static_cast<void>(raise(caughtSignal));
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;

    /** Waits for a line. @return false when a signal came instead */
    bool waitForLine() const
    {
        pollfd input{m_terminal, POLLIN, 0};
        return ppoll(&input, 1, nullptr, &m_maskBefore) > 0;
    }

private:
    static constexpr std::array<int, 5> signals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};
    int m_terminal;
    termios m_settings{};
    std::array<struct sigaction, signals.size()> m_before{};
    sigset_t m_maskBefore{};
};

void print(int terminal, const std::string& text)
{
    const std::string encoded = Charset().encode(harmless(text));
    static_cast<void>(!::write(terminal, encoded.data(), encoded.size())); // who cannot be asked does not answer
}

void printLineEnd(int terminal) { static_cast<void>(!::write(terminal, "\n", 1)); }

std::optional<Secret> fromTerminal(const std::string& prompt)
{
    const Descriptor terminal(::open("/dev/tty", O_RDWR | O_CLOEXEC));
    if (terminal.get() < 0)
        return std::nullopt;
    SecretBytes line;
    LineEnd end = LineEnd::Nothing;
    {
        const SilentTerminal silent(terminal.get());
        print(terminal.get(), prompt);
        if (silent.waitForLine())
            end = readLine(terminal.get(), line);
        printLineEnd(terminal.get());
    }
    if (end != LineEnd::Line)
        throw Failure(no, "cancelled", cancelled);
    return Secret(std::move(line));
}

/** By "--NAME-fd" or "--NAME-file", whichever is given. */
std::optional<Secret> fromOptions(const Session& session, const std::string& name)
{
    const std::string descriptor = name + "-fd";
    const std::string file = name + "-file";
    if (session.arguments.has(descriptor))
        return fromDescriptor(session.arguments.number(descriptor));
    if (session.arguments.has(file))
        return fromFile(session.arguments.text(file));
    return std::nullopt;
}

Secret required(std::optional<Secret> secret, const Words& otherwise, const std::string& options)
{
    if (!secret)
        throw Failure(wrongUse, "no_terminal", otherwise, {options});
    return std::move(*secret);
}

/** Overwrites where all calls had their frames. */
[[gnu::noinline]] void wipeStack()
{
    std::array<char, 0x40000> frames; // NOLINT(cppcoreguidelines-pro-type-member-init): deeper than calls go
    sigil::wipe(frames.data(), frames.size());
}

} // namespace

NotDumpable::NotDumpable()
{
    prctl(PR_SET_DUMPABLE, 0);
    mallopt(M_PERTURB, 0x5a); // what libraries release unwiped is overwritten: OpenSSL's decoders copy keys
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
}

// By now every secret is wiped, and a leak checker may want to look.
NotDumpable::~NotDumpable()
{
    sigil::clearRegisters();
    wipeStack();
    sigil::clearRegisters();
    prctl(PR_SET_DUMPABLE, 1);
}

Answer askPassword(const Session& session, const std::string& name)
{
    const std::string prompt = session.say(passwordPrompt, {name});
    if (std::optional<Secret> given = fromOptions(session, "--password"))
        return {std::move(*given), false};
    if (const char* program = std::getenv("SIGILDESK_ASKPASS"); program && *program)
        return {fromProgram(program, prompt), false};
    return {required(fromTerminal(prompt), noSource, "--password-fd, --password-file, SIGILDESK_ASKPASS"), true};
}

Secret askNewPassword(const Session& session, const std::string& name)
{
    std::optional<Secret> secret = fromOptions(session, "--new-password");
    if (!secret) {
        secret = required(fromTerminal(session.say(newPasswordPrompt, {name})), noSource,
            "--new-password-fd, --new-password-file");
        const Secret again = required(fromTerminal(session.say(againPrompt)), noSource, "--new-password-fd");
        if (!secret->equals(again))
            throw Failure(no, "passwords_differ", differ);
    }
    if (secret->empty())
        throw Failure(wrongUse, "bad_secret", emptyPassword);
    return std::move(*secret);
}

Secret askIdentity(const Session& session, const std::string& name)
{
    if (std::optional<Secret> given = fromOptions(session, "--identity"))
        return std::move(*given);
    return required(
        fromTerminal(session.say(identityPrompt, {name})), noTerminal, "--identity-fd, --identity-file");
}

bool confirm(const std::string& question)
{
    const Descriptor terminal(::open("/dev/tty", O_RDWR | O_CLOEXEC));
    if (terminal.get() < 0)
        throw Failure(wrongUse, "no_terminal", noTerminal, {"--yes"});
    print(terminal.get(), question + " ");
    SecretBytes line;
    if (readLine(terminal.get(), line) != LineEnd::Line)
        return false;
    const std::string_view answer(line.data(), line.size());
    return std::any_of(yes.begin(), yes.end(), [&](std::string_view word) { return answer.starts_with(word); });
}

bool isWrongPassword(int code) { return code == SIGIL_WRONG_PASSWORD || code == SIGIL_TK_KEY_WRONG_PASSWORD; }

} // namespace host
