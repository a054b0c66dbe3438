// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/secret_hunt.h"

#include <elf.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace {

constexpr char leftOut[] = ", left out of cores";
constexpr std::size_t beginning = sizeof(std::uint64_t);

std::uint64_t first(const char* bytes)
{
    std::uint64_t number = 0;
    std::memcpy(&number, bytes, beginning);
    return number;
}

std::uint64_t mixed(std::uint64_t number)
{
    number ^= number >> 32;
    number *= 0x9e3779b97f4a7c15;
    number ^= number >> 29;
    number *= 0xbf58476d1ce4e5b9;
    return number ^ number >> 32;
}

std::uint64_t hashOf(const char* bytes, std::size_t length)
{
    std::uint64_t hash = mixed(first(bytes) + length);
    for (std::size_t i = beginning; i < length; ++i)
        hash = mixed(hash ^ static_cast<unsigned char>(bytes[i]));
    return hash;
}

/** Memory for what is looked at: given back to the system, so that the hunt leaves no copy of what it found. */
class Room {
public:
    explicit Room(std::size_t size)
        : m_size(size)
        , m_memory(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))
    {
        if (m_memory == MAP_FAILED)
            throw std::runtime_error("no memory to search in");
    }
    ~Room() { munmap(m_memory, m_size); }
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;

    char* data() const { return static_cast<char*>(m_memory); }
    std::size_t size() const { return m_size; }

private:
    std::size_t m_size;
    void* m_memory;
};

/** What smaps tells of a mapping in its first line. */
struct Mapping {
    std::uintptr_t start = 0;
    std::uintptr_t end = 0;
    std::array<char, 5> mode{};
    std::string name;

    /** Leaves it as it is for a line that is not the first of one. */
    void read(const char* line)
    {
        Mapping fresh;
        std::array<char, 256> path{"memory without a name"};
        const int fields = std::sscanf(line, "%lx-%lx %4s %*s %*s %*s%*[ ]%255[^\n]", &fresh.start, &fresh.end,
            fresh.mode.data(), path.data());
        if (fields < 3)
            return;
        fresh.name = path.data();
        *this = fresh;
    }
    bool isWritable() const { return mode[1] == 'w'; }
};

/** A copy of this process as it is right here, traced and stopped, its registers too. The C library's fork would overwrite
 *  what was released on the stack and what the registers hold. */
[[gnu::always_inline]] inline pid_t copyOfThisProcess()
{
    long child = 0;
    asm volatile("syscall\n\t"
                 "test %%rax, %%rax\n\t"
                 "jnz 1f\n\t"
                 "mov %[trace], %%eax\n\t" // PTRACE_TRACEME is 0, as are its arguments
                 "xor %%edi, %%edi\n\t"
                 "xor %%esi, %%esi\n\t"
                 "xor %%edx, %%edx\n\t"
                 "xor %%r10d, %%r10d\n\t"
                 "syscall\n\t"
                 "int3\n\t"
                 "ud2\n\t" // never goes on
                 "1:"
                 : "=a"(child)
                 : "0"(static_cast<long>(SYS_fork)), [trace] "i"(SYS_ptrace)
                 : "rcx", "rdx", "rsi", "rdi", "r10", "r11", "cc", "memory");
    return static_cast<pid_t>(child);
}

/** Ends with the object. */
class StoppedCopy {
public:
    explicit StoppedCopy(pid_t process)
        : m_process(process)
    {
        int status = 0;
        if (process < 0 || waitpid(process, &status, __WALL) != process || !WIFSTOPPED(status))
            throw std::runtime_error("processes cannot be traced");
    }
    ~StoppedCopy()
    {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, __WALL);
    }
    StoppedCopy(const StoppedCopy&) = delete;
    StoppedCopy& operator=(const StoppedCopy&) = delete;

    pid_t id() const { return m_process; }

private:
    pid_t m_process;
};

} // namespace

/** One look at one process. */
class SecretHunt::Search {
public:
    Search(const SecretHunt& hunt, pid_t process)
        : m_hunt(hunt)
        , m_process(process)
    {
        memory();
        registers("general registers", NT_PRSTATUS);
        registers("vector registers", NT_X86_XSTATE);
    }
    std::vector<std::string> lines;

private:
    void memory()
    {
        const std::string folder = "/proc/" + std::to_string(m_process);
        const int file = open((folder + "/mem").c_str(), O_RDONLY | O_CLOEXEC);
        std::ifstream mappings(folder + "/smaps");
        Mapping mapping;
        for (std::string line; std::getline(mappings, line);) {
            mapping.read(line.c_str());
            if (!line.starts_with("VmFlags:") || !mapping.isWritable()) // the last line of each mapping
                continue;
            const Room room(mapping.end - mapping.start);
            if (pread(file, room.data(), room.size(), static_cast<off_t>(mapping.start)) !=
                static_cast<ssize_t>(room.size()))
                throw std::runtime_error("cannot read " + mapping.name);
            if (line.find(" dd") != std::string::npos)
                mapping.name += leftOut;
            look({room.data(), room.size()}, mapping.start, mapping.name.c_str());
            ++m_mappings;
        }
        close(file);
        if (m_mappings == 0)
            throw std::runtime_error("no memory to look at");
    }

    void registers(const char* name, int kind)
    {
        constexpr std::size_t most = 64 << 10; // a number of registers, and what the processor has
        const Room room(most);
        iovec part{room.data(), room.size()};
        if (ptrace(PTRACE_GETREGSET, m_process, kind, &part) != 0)
            throw std::runtime_error(std::string("cannot read the ") + name);
        look({room.data(), part.iov_len}, 0, name);
    }

    void look(std::string_view bytes, std::uintptr_t start, const char* where)
    {
        std::size_t end = 0; // of the piece that was found last
        for (std::size_t at = 0; at + beginning <= bytes.size(); ++at) {
            const Piece* const piece = m_hunt.pieceAt(&bytes[at], bytes.size() - at);
            if (!piece)
                continue;
            if (at >= end) {
                tell(end);
                m_piece = piece;
                m_start = at;
                m_place = start + at;
                m_where = where;
            }
            end = at + piece->length;
        }
        tell(end);
    }

    void tell(std::size_t end)
    {
        if (!m_piece)
            return;
        std::array<char, 512> line{};
        static_cast<void>(std::snprintf(line.data(), line.size(), "%zu bytes of the %s%s from %zu on at %#lx in %s",
            end - m_start, m_hunt.m_names.at(m_piece->secret).c_str(), m_piece->backwards ? " backwards" : "",
            m_piece->at, m_place, m_where));
        lines.emplace_back(line.data());
        m_piece = nullptr;
    }

    const SecretHunt& m_hunt;
    pid_t m_process;
    int m_mappings = 0;
    const Piece* m_piece = nullptr;
    std::size_t m_start = 0;
    std::uintptr_t m_place = 0;
    const char* m_where = nullptr;
};

SecretHunt::SecretHunt(std::initializer_list<std::pair<const char*, std::string_view>> secrets)
{
    for (const auto& [name, secret] : secrets)
        add(name, secret);
}

void SecretHunt::add(const std::string& name, std::string_view secret)
{
    if (secret.size() < beginning)
        throw std::invalid_argument(name + " is too short to hunt for");
    m_names.push_back(name);
    for (const bool backwards : {false, true})
        addPieces(secret, backwards);
}

void SecretHunt::addPieces(std::string_view secret, bool backwards)
{
    std::array<char, window> piece{};
    const std::size_t length = std::min(window, secret.size());
    for (std::size_t at = 0; at + length <= secret.size(); ++at) {
        for (std::size_t i = 0; i < length; ++i)
            piece[i] = secret[backwards ? at + length - 1 - i : at + i];
        m_filter.set(mixed(first(piece.data())) >> (64 - filterBits));
        m_pieces.emplace(hashOf(piece.data(), length), Piece{m_names.size() - 1, at, length, backwards});
    }
    explicit_bzero(piece.data(), piece.size());
}

const SecretHunt::Piece* SecretHunt::pieceAt(const char* bytes, std::size_t left) const
{
    if (!m_filter.test(mixed(first(bytes)) >> (64 - filterBits)))
        return nullptr;
    for (std::size_t length = std::min(window, left); length >= beginning; --length) {
        const auto found = m_pieces.find(hashOf(bytes, length));
        if (found != m_pieces.end() && found->second.length == length)
            return &found->second;
    }
    return nullptr;
}

std::vector<std::string> SecretHunt::places() const
{
    const StoppedCopy copy(copyOfThisProcess());
    return placesIn(copy.id());
}

std::string SecretHunt::foundInCore() const
{
    std::vector<std::string> lines = places();
    std::erase_if(lines, [](const std::string& line) { return line.ends_with(leftOut); });
    return joined(lines);
}

std::vector<std::string> SecretHunt::placesIn(pid_t process) const { return Search(*this, process).lines; }

std::string SecretHunt::joined(const std::vector<std::string>& lines)
{
    std::string all;
    for (const std::string& line : lines)
        all += line + "\n";
    return all;
}
