// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/torture.h"

#include "tests/torture/events.h"
#include "tests/torture/live_blocks.h"
#include "tests/torture/own_code.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <new>
#include <numeric>
#include <optional>
#include <utility>

namespace torture {
namespace {

namespace fs = std::filesystem;

/** One event of one step that fails. */
struct Choice {
    std::size_t step = 0;
    Fault fault;
};

/** What a process tells of the session that it ran. Lies in memory that its parent shares. */
struct Outcome {
    static constexpr std::size_t mostSteps = 100;
    std::array<int, mostSteps> codes;
    std::array<Counts, mostSteps> events; ///< of the steps, where nothing fails
    std::size_t done;                     ///< steps of the way that was gone
    bool finished;
    long kept;       ///< blocks of memory that the project's own code holds at the end and did not at the beginning
    int descriptors; ///< that are open
    bool openSslLacked;  ///< the fault befell OpenSSL's own allocation
    bool openSslCrashed; ///< in its own code
};

/** What the processes of a run count together. */
struct Tally {
    long faults;
    long findings;
    long ofOpenSsl; ///< what it does after it lacked memory that no caller can make good
};

template <class T>
T* shared()
{
    void* const memory = mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? throw std::bad_alloc() : new (memory) T{};
}

std::FILE* report = stdout; ///< what the sessions print is lost

/** Runs @p work in a process of its own, which an exception ends. @return how that ended, as waitpid() tells it */
int inChild(const std::function<void()>& work)
{
    std::fflush(report);
    const pid_t process = fork();
    if (process == 0) {
        [&]() noexcept { work(); }();
        std::fflush(report);
        _exit(0);
    }
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) { }
    return status;
}

int openDescriptors()
{
    constexpr int most = 256;
    int count = 0;
    for (int descriptor = 0; descriptor < most; ++descriptor)
        count += fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
    return count;
}

void printStack()
{
    std::array<void*, 60> frames{};
    std::fflush(report);
    backtrace_symbols_fd(frames.data(), backtrace(frames.data(), frames.size()), fileno(report));
}

bool inOpenSsl(const void* address)
{
    Dl_info info{};
    return address && dladdr(address, &info) != 0 && std::strstr(info.dli_fname, "libcrypto");
}

/** Of events to which the same stack leads, the first. Lies in memory that a parent shares. */
class Places {
public:
    /** Looks at the stack of each event from now on. */
    void look()
    {
        s_looking = this;
        void* frame = nullptr;
        backtrace(&frame, 1); // loads what it needs
        onEvent = [](Kind kind, long number) { s_looking->note(kind, number); };
    }
    void enter(std::size_t step) { m_step = step; }

    const Choice* begin() const { return m_first.data(); }
    const Choice* end() const { return m_first.data() + m_count; }
    long count() const { return static_cast<long>(m_count); }

private:
    void note(Kind kind, long number)
    {
        if (m_count < m_first.size() && isNew(stack()))
            m_first[m_count++] = {m_step, {kind, number}};
    }
    static std::uint64_t stack()
    {
        constexpr std::uint64_t prime = 0x100000001B3;
        std::array<void*, 24> frames{};
        const auto depth = static_cast<std::size_t>(backtrace(frames.data(), frames.size()));
        std::uint64_t mix = 1;
        for (std::size_t i = 0; i < depth; ++i)
            mix = (mix ^ reinterpret_cast<std::uintptr_t>(frames[i])) * prime;
        return mix ^ mix >> 32;
    }
    bool isNew(std::uint64_t stack)
    {
        std::size_t place = stack % m_stacks.size();
        while (m_stacks[place] != 0 && m_stacks[place] != stack)
            place = (place + 1) % m_stacks.size();
        return std::exchange(m_stacks[place], stack) == 0;
    }

    static constexpr std::size_t most = 1U << 15;
    static inline Places* s_looking = nullptr;
    std::array<std::uint64_t, 2 * most> m_stacks; ///< 0 for none
    std::array<Choice, most> m_first;
    std::size_t m_count;
    std::size_t m_step;
};

Outcome* outcomeOfChild = nullptr;
bool tellsStacks = false;

void onFaultMet(const void* site)
{
    outcomeOfChild->openSslLacked = inOpenSsl(site);
    if (!tellsStacks)
        return;
    std::fprintf(report, "the fault is in\n");
    printStack();
}

void onCrash(int number, siginfo_t*, void* context)
{
    stopWatching();
    const auto at = static_cast<std::uintptr_t>(static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_RIP]);
    outcomeOfChild->openSslCrashed =
        inOpenSsl(reinterpret_cast<const void*>(at)); // NOLINT(performance-no-int-to-ptr)
    if (tellsStacks) {
        std::fprintf(report, "%s in\n", strsignal(number));
        printStack();
    }
    std::signal(number, SIG_DFL);
    static_cast<void>(raise(number));
}

/** Looks where the fault and a crash, which may have used up its stack, happen. */
void lookWhere(Outcome& outcome, bool tells)
{
    static std::array<char, 65536> room;
    outcomeOfChild = &outcome;
    outcome.openSslLacked = outcome.openSslCrashed = false;
    tellsStacks = tells;
    onFault = onFaultMet;
    const stack_t stack{room.data(), 0, room.size()};
    sigaltstack(&stack, nullptr);
    struct sigaction action { };
    action.sa_sigaction = onCrash;
    action.sa_flags = static_cast<int>(SA_ONSTACK | SA_NODEFER | SA_SIGINFO);
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        sigaction(number, &action, nullptr);
    if (tells)
        printStack(); // loads what it needs before memory runs out
}

/** Of the files in a folder: which they are, how long, and when they were written. */
std::size_t stateOf(const std::string& folder)
{
    std::size_t state = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        struct stat status { };
        lstat(entry.path().c_str(), &status);
        for (const auto number : {status.st_ino, static_cast<ino_t>(status.st_size),
                 static_cast<ino_t>(status.st_ctim.tv_sec), static_cast<ino_t>(status.st_ctim.tv_nsec)})
            state = (state ^ number) * 0x9E3779B97F4A7C15;
    }
    return state;
}

/** The folder of a session as it was at some time. */
class Snapshot {
public:
    Snapshot(const std::string& folder, const char* when)
        : m_folder(folder)
        , m_kept(folder + when)
    {
        take();
    }
    ~Snapshot() { fs::remove_all(m_kept); }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    void take()
    {
        copy(m_folder, m_kept);
        m_state = stateOf(m_folder);
    }
    void bringBack()
    {
        if (stateOf(m_folder) == m_state)
            return;
        copy(m_kept, m_folder);
        m_state = stateOf(m_folder);
    }

private:
    static void copy(const std::string& from, const std::string& to)
    {
        fs::remove_all(to);
        fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    }

    std::string m_folder;
    std::string m_kept;
    std::size_t m_state = 0;
};

struct Options {
    long faults = 0;
    long seconds = 0;
    std::uint64_t seed = 0;
    std::string session; ///< the only one; empty for all
    bool places = false; ///< of events to which the same stack leads, one fails
    std::optional<Choice> only;
};

std::string nameOf(const std::string& session, const Choice& choice)
{
    return session + ":" + std::to_string(choice.step) + ":" +
        kindNames[static_cast<std::size_t>(choice.fault.kind)] + ":" + std::to_string(choice.fault.number) +
        (choice.fault.lasting ? ":lasting" : ":once");
}

/** A part of all faults, each of which has its place between 0 and 1. */
struct Share {
    double from;
    double to;
};

/** A session under its faults. */
class Run {
public:
    Run(const NamedSession& session, const Options& options, Tally& tally)
        : m_named(session)
        , m_ofName(std::hash<std::string>()(session.name))
        , m_options(options)
        , m_tally(tally)
        , m_outcome(*shared<Outcome>())
        , m_expected(*shared<std::array<Outcome, Outcome::mostSteps>>())
        , m_places(*shared<Places>())
    {
        const int status = inChild([this] {
            begin();
            Snapshot start(m_session.folder, ".start");
            Way whole(m_session.steps.size());
            std::iota(whole.begin(), whole.end(), 0);
            if (m_options.places)
                m_places.look();
            go(whole, nullptr);
            start.bringBack();
            print();
        });
        m_whole = m_outcome;
        if (status != 0 || !m_whole.finished)
            throw std::runtime_error("a session fails without a fault");
    }

    long faults() const
    {
        if (m_options.places)
            return 2 * m_places.count();
        long all = 0;
        for (const Counts& events : m_whole.events)
            for (const long count : events)
                all += 2 * count;
        return all;
    }

    void run(const Share& share)
    {
        const int status = inChild([&] {
            begin();
            Snapshot start(m_session.folder, ".start");
            Snapshot snapshot(m_session.folder, ".step");
            for (std::size_t step = 0; step < m_session.steps.size(); ++step) {
                snapshot.take();
                const std::vector<Choice> chosen = choices(step, share);
                if (!chosen.empty() && !m_expected[step].finished) {
                    expect(step);
                    snapshot.bringBack();
                }
                for (const Choice& choice : chosen) {
                    meet(choice);
                    snapshot.bringBack();
                }
                runStep(step);
            }
            start.bringBack();
        });
        if (status != 0) {
            std::fprintf(report, "FOUND a run that ended with %d\n", status);
            ++m_tally.findings;
        }
    }

private:
    /** Steps, one after the other. */
    using Way = std::vector<std::size_t>;

    /** How far a fault in a step is followed: through that step, the two after it, and the last one, which gives everything
     *  back. */
    Way wayFrom(std::size_t step) const
    {
        constexpr std::size_t followed = 3;
        const std::size_t count = m_session.steps.size();
        Way way(m_session.ofProcesses ? 1 : std::min(followed, count - step));
        std::iota(way.begin(), way.end(), step);
        if (!m_session.ofProcesses && way.back() + 1 < count)
            way.push_back(count - 1);
        return way;
    }

    void begin()
    {
        findOwnCode();
        m_session = m_named.make();
    }

    void print() const
    {
        Counts all{};
        for (const Counts& events : m_outcome.events)
            for (std::size_t kind = 0; kind < all.size(); ++kind)
                all[kind] += events[kind];
        std::fprintf(report, "%s: %zu steps; events:", m_named.name.c_str(), m_session.steps.size());
        for (std::size_t kind = 0; kind < all.size(); ++kind)
            std::fprintf(report, " %s %ld", kindNames[kind], all[kind]);
        std::fprintf(report, "\n");
        for (std::size_t step = 0; m_options.only && step < m_session.steps.size(); ++step)
            std::fprintf(report, "   %zu %s: %d, %ld of memory\n", step, m_session.steps[step].name.c_str(),
                m_outcome.codes[step], m_outcome.events[step][0]);
    }

    void runStep(std::size_t step) { m_outcome.codes[step] = m_session.steps[step].run(); }

    /** The first of the steps meets the fault. Without one, events are counted. */
    void go(const Way& way, const Fault* fault)
    {
        constexpr unsigned longest = 60;
        alarm(longest);
        m_outcome.done = 0;
        m_outcome.finished = false;
        const long before = liveBlocks();
        if (fault)
            watch(*fault);
        for (const std::size_t step : way) {
            m_places.enter(step);
            if (!fault)
                watch({});
            runStep(step);
            if (!fault)
                m_outcome.events[step] = stopWatching();
            ++m_outcome.done;
        }
        stopWatching();
        m_outcome.kept = liveBlocks() - before;
        m_outcome.descriptors = openDescriptors();
        m_outcome.finished = true;
    }

    /** Goes the way of faults in a step without one. */
    void expect(std::size_t step)
    {
        if (inChild([&] { go(wayFrom(step), nullptr); }) != 0 || !m_outcome.finished)
            throw std::runtime_error("a session that leaves steps out fails without a fault");
        m_expected[step] = m_outcome;
    }

    std::uint64_t mixed(const Choice& choice) const
    {
        std::uint64_t mix = m_options.seed;
        for (const std::uint64_t value :
            {m_ofName, std::uint64_t{choice.step}, static_cast<std::uint64_t>(choice.fault.kind),
                static_cast<std::uint64_t>(choice.fault.number), std::uint64_t{choice.fault.lasting}}) {
            mix = (mix ^ value) + 0x9E3779B97F4A7C15;
            mix = (mix ^ mix >> 30) * 0xBF58476D1CE4E5B9;
            mix = (mix ^ mix >> 27) * 0x94D049BB133111EB;
            mix ^= mix >> 31;
        }
        return mix;
    }
    bool isIn(const Share& share, const Choice& choice) const
    {
        const double place = static_cast<double>(mixed(choice) >> 11) * 0x1p-53;
        return place >= share.from && place < share.to;
    }

    std::vector<Choice> choices(std::size_t step, const Share& share) const
    {
        constexpr std::array errors{ENOSPC, EIO, EACCES, EMFILE, ETIMEDOUT};
        std::vector<Choice> chosen;
        const auto consider = [&](Choice choice) {
            const bool is =
                m_options.only ? nameOf("", choice) == nameOf("", *m_options.only) : isIn(share, choice);
            if (!is)
                return;
            choice.fault.error = errors.at(mixed(choice) % errors.size());
            chosen.push_back(choice);
        };
        const auto considerBoth = [&](Kind kind, long number) {
            for (const bool lasting : {false, true})
                consider({step, {kind, number, lasting}});
        };
        if (m_options.places) {
            for (const Choice& place : m_places)
                if (place.step == step)
                    considerBoth(place.fault.kind, place.fault.number);
            return chosen;
        }
        for (std::size_t kind = 0; kind < kindNames.size(); ++kind)
            for (long number = 0; number < m_whole.events[step][kind]; ++number)
                considerBoth(static_cast<Kind>(kind), number);
        return chosen;
    }

    void meet(const Choice& choice)
    {
        const Way way = wayFrom(choice.step);
        const int status = inChild([&] {
            lookWhere(m_outcome, m_options.only.has_value());
            go(way, &choice.fault);
        });
        ++m_tally.faults;
        const std::string what = symptom(choice, status);
        for (std::size_t i = 0; m_options.only && i < m_outcome.done; ++i)
            std::fprintf(report, "   %s: %d\n", m_session.steps[way[i]].name.c_str(), m_outcome.codes[way[i]]);
        if (what.empty())
            return;
        const bool isOpenSsls = m_outcome.openSslLacked && (m_outcome.openSslCrashed || failsLater(choice));
        ++(isOpenSsls ? m_tally.ofOpenSsl : m_tally.findings);
        std::fprintf(report, isOpenSsls ? "OpenSSL: %s   --only %s\n" : "FOUND %s   --only %s\n", what.c_str(),
            nameOf(m_named.name, choice).c_str());
    }

    std::string symptom(const Choice& choice, int status) const
    {
        const Way way = wayFrom(choice.step);
        const Outcome& expected = m_expected[choice.step];
        const std::string last =
            m_outcome.done < way.size() ? m_session.steps[way[m_outcome.done]].name : "the end";
        if (WIFSIGNALED(status))
            return last + (WTERMSIG(status) == SIGALRM ? " hangs" : " crashes: ") + strsignal(WTERMSIG(status));
        if (!m_outcome.finished && choice.fault.kind == Kind::Memory && WEXITSTATUS(status) == m_session.codes.end)
            return {};
        if (!m_outcome.finished)
            return last + " ends the process with " + std::to_string(WEXITSTATUS(status));
        if (std::string code = wrongCode(choice); !code.empty())
            return code;
        const long more = m_outcome.kept - expected.kept;
        if (more > m_session.mayKeep && !m_session.ofProcesses)
            return "memory is kept: " + std::to_string(more) + " blocks";
        if (m_outcome.descriptors > expected.descriptors)
            return "a file stays open";
        return {};
    }

    /** Whether a code is wrong, and not that of the call that meets the fault: OpenSSL keeps in what it makes once for the
     *  process that memory was short. A process of its own makes many calls after that. */
    bool failsLater(const Choice& choice) const
    {
        const int code = m_outcome.codes[choice.step];
        return m_outcome.finished && !wrongCode(choice).empty() &&
            (m_session.ofProcesses || code == m_expected[choice.step].codes[choice.step] ||
                mayAnswer(choice.fault.kind, code, false));
    }

    std::string wrongCode(const Choice& choice) const
    {
        bool failed = false;
        const Way way = wayFrom(choice.step);
        for (std::size_t i = 0; i < m_outcome.done; ++i) {
            const std::size_t step = way[i];
            const int code = m_outcome.codes[step];
            if (code == m_expected[choice.step].codes[step])
                continue;
            const bool leftOut = m_session.steps[step].leftOut.count(code) > 0;
            if (!leftOut && !mayAnswer(choice.fault.kind, code, failed))
                return m_session.steps[step].name + " answers " + std::to_string(code);
            failed = true;
        }
        return {};
    }
    bool mayAnswer(Kind kind, int code, bool failedBefore) const
    {
        const Codes& codes = m_session.codes;
        return codes.shortage.count(code) > 0 || (failedBefore && codes.consequences.count(code) > 0) ||
            (kind == Kind::Toolkit && code == toolkitFailure) || (kind != Kind::Memory && codes.stated(code));
    }

    const NamedSession& m_named;
    const std::uint64_t m_ofName; ///< a number that differs from session to session
    const Options& m_options;
    Tally& m_tally;
    Outcome& m_outcome;                                  ///< of the last way that was gone
    Outcome m_whole;                                     ///< of the session from its first step to its last
    std::array<Outcome, Outcome::mostSteps>& m_expected; ///< of the way from each step, once it was gone
    Places& m_places;
    Session m_session;
};

/** The day of the month: others tomorrow, and few enough for all to be tried before a release. */
std::uint64_t seedOfToday()
{
    const std::time_t now = std::time(nullptr);
    std::tm day{};
    gmtime_r(&now, &day);
    return static_cast<std::uint64_t>(day.tm_mday);
}

/** SESSION:STEP:KIND:NUMBER:once|lasting */
void readOnly(std::string text, Options& options)
{
    std::vector<std::string> parts;
    for (std::size_t end = 0; (end = text.find(':')) != text.npos; text.erase(0, end + 1))
        parts.push_back(text.substr(0, end));
    const auto* const kind = std::find(kindNames.begin(), kindNames.end(), parts.at(2));
    options.session = parts.at(0);
    options.only = Choice{std::stoul(parts.at(1)),
        {static_cast<Kind>(kind - kindNames.begin()), std::stol(parts.at(3)), text == "lasting"}};
}

Options read(int count, char** words)
{
    Options options;
    options.seed = seedOfToday();
    const std::map<std::string, std::function<void(const std::string&)>> known{
        {"--faults", [&](const std::string& value) { options.faults = std::stol(value); }},
        {"--seconds", [&](const std::string& value) { options.seconds = std::stol(value); }},
        {"--seed", [&](const std::string& value) { options.seed = std::stoull(value); }},
        {"--session", [&](const std::string& value) { options.session = value; }},
        {"--which", [&](const std::string& value) { options.places = value == "places"; }},
        {"--only", [&](const std::string& value) { readOnly(value, options); }},
    };
    for (int i = 1; i < count; i += 2)
        known.at(words[i])(i + 1 < count ? words[i + 1] : "");
    return options;
}

void loseOutput()
{
    report = fdopen(dup(STDOUT_FILENO), "w");
    const int nothing = open("/dev/null", O_RDWR);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, descriptor);
    close(nothing);
}

/** Goes through all sessions several times, so that a run that is out of time has tried something of each of their steps. */
int torture(const Options& options, const std::vector<NamedSession>& sessions)
{
    constexpr int rounds = 3;
    Tally& tally = *shared<Tally>();
    const auto start = std::chrono::steady_clock::now();
    const auto seconds = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    std::vector<std::unique_ptr<Run>> runs;
    long all = 0;
    for (const NamedSession& session : sessions)
        if (options.session.empty() || options.session == session.name)
            all += runs.emplace_back(std::make_unique<Run>(session, options, tally))->faults();
    if (runs.empty())
        throw std::runtime_error("no session is called " + options.session);
    const double share =
        options.faults > 0 ? std::min(1.0, static_cast<double>(options.faults) / static_cast<double>(all)) : 1;
    for (int round = 0; round < (options.only ? 1 : rounds); ++round)
        for (const auto& run : runs)
            if (options.seconds == 0 || seconds() < static_cast<double>(options.seconds))
                run->run({share * round / rounds, share * (round + 1) / rounds});
    std::fprintf(report, "%ld faults of %ld, %ld findings, %ld of OpenSSL, %.0f seconds, seed %llu\n", tally.faults,
        all, tally.findings, tally.ofOpenSsl, seconds(), static_cast<unsigned long long>(options.seed));
    return tally.findings == 0 ? 0 : 1;
}

} // namespace

int run(int count, char** words, const std::vector<NamedSession>& sessions)
{
    constexpr rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    try {
        const Options options = read(count, words);
        loseOutput();
        const int code = torture(options, sessions);
        std::fflush(report);
        return code;
    } catch (const std::exception& error) {
        std::fprintf(report, "%s\n", error.what());
        std::fflush(report);
        return 2;
    }
}

} // namespace torture
