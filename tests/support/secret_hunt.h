// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Finding pieces of secrets in the memory and in the registers of processes.
 */
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <sys/types.h>

/** Finds every piece of a secret that is as long as the window, without being one: of the secrets it keeps hashes alone.
 *  Looks at all memory that a process can write to, its stacks and what was released included, and at the registers, and
 *  so at what a core would hold. */
class SecretHunt {
public:
    /** Bytes that are a find; of a shorter secret the whole. */
    static constexpr std::size_t window = 12;

    SecretHunt() = default;
    SecretHunt(std::initializer_list<std::pair<const char*, std::string_view>> secrets);

    /** Both orders of the bytes count: numbers to be reckoned with lie backwards.
     *  @param secret of 8 bytes at least */
    void add(const std::string& name, std::string_view secret);

    /** What is left in this process, a line for each piece:
     *  "24 bytes of the key from 17 on at 0x5581d0e2f010 in [heap]". Registers are those of this thread. */
    std::vector<std::string> places() const;
    /** The same of a process that is traced and stopped. */
    std::vector<std::string> placesIn(pid_t process) const;
    /** The lines as one text, empty without any. */
    std::string found() const { return joined(places()); }
    /** The same without what the system was told to leave out of cores. */
    std::string foundInCore() const;
    std::string foundIn(pid_t process) const { return joined(placesIn(process)); }

protected:
    static std::string joined(const std::vector<std::string>& lines);

private:
    struct Piece {
        std::size_t secret;
        std::size_t at;
        std::size_t length;
        bool backwards;
    };
    class Search;

    void addPieces(std::string_view secret, bool backwards);
    const Piece* pieceAt(const char* bytes, std::size_t left) const;

    static constexpr int filterBits = 20;
    std::vector<std::string> m_names;
    std::unordered_map<std::uint64_t, Piece> m_pieces;
    std::bitset<1U << filterBits> m_filter; ///< of what the pieces begin with
};
