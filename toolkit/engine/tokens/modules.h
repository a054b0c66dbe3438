// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The token modules that the machine has registered with p11-kit, loaded together at the first use of a token.
 */
#pragma once

#include "toolkit/engine/tokens/cryptoki.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace toolkit {

/** A reader with its module. Two modules may number their slots alike, so slots have a number of the toolkit's own. */
struct Slot {
    Cryptoki* module;
    CK_SLOT_ID id;

    friend bool operator==(const Slot&, const Slot&) = default;
};

/** The modules, for all contexts of the process; released with the last of them that used a token. Threads may share
 *  them. */
class TokenModules {
public:
    /** The modules in use, loaded when there are none yet. */
    static std::shared_ptr<TokenModules> instance();

    TokenModules();
    ~TokenModules();
    TokenModules(const TokenModules&) = delete;
    TokenModules& operator=(const TokenModules&) = delete;

    /** The numbers of the slots that hold a token. A number stays with its slot. Throws SIGIL_TK_TOKEN_MODULE when there is
     *  none and a module could not be used: the token may be one of its own. */
    std::vector<unsigned long> slots();
    /** Throws SIGIL_TK_TOKEN_ABSENT for a number that was never handed out. */
    Slot slot(unsigned long number);

private:
    void start(Cryptoki* module);
    unsigned long numberOf(const Slot& slot);
    std::vector<Slot> presentSlots();

    Cryptoki** m_loaded;
    std::vector<Cryptoki*> m_usable;
    std::string m_failures; ///< what became of the others
    std::mutex m_mutex;     ///< for what follows
    std::vector<Slot> m_numbered;
};

/** What a token says of itself. */
CK_TOKEN_INFO tokenInfo(const Slot& slot);
/** Text of a field of CK_TOKEN_INFO, without the blanks behind it. */
std::string fieldText(View field);

} // namespace toolkit
