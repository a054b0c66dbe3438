// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/modules.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/late_library.h"
#include "toolkit/engine/tokens/module_probe.h"

#include <p11-kit/p11-kit.h>

#include <algorithm>
#include <cstdlib>

namespace toolkit {
namespace {

/** More than any reader has: a module that lists more slots lies. */
constexpr unsigned long maximumSlots = 1024;

struct P11Kit {
    LateLibrary library{SIGIL_P11KIT_LIBRARY};
    SIGIL_LATE_FUNCTION(p11_kit_, modules_load);
    SIGIL_LATE_FUNCTION(p11_kit_, modules_release);
    SIGIL_LATE_FUNCTION(p11_kit_, module_initialize);
    SIGIL_LATE_FUNCTION(p11_kit_, module_finalize);
    SIGIL_LATE_FUNCTION(p11_kit_, module_get_name);
    SIGIL_LATE_FUNCTION(p11_kit_, module_get_filename);
    SIGIL_LATE_FUNCTION(p11_kit_, config_option);
    SIGIL_LATE_FUNCTION(p11_kit_, message);
};

const P11Kit& p11Kit()
{
    try {
        static const P11Kit loaded;
        return loaded;
    } catch (const Error& error) {
        requireMemory(error);
        failAs(SIGIL_TK_TOKEN_MODULE, error);
    }
}

Cryptoki** loadModules()
{
    Cryptoki** const modules = p11Kit().modules_load(nullptr, 0);
    if (!modules) {
        const char* const why = p11Kit().message();
        fail(SIGIL_TK_TOKEN_MODULE, why ? why : "p11-kit cannot load them");
    }
    return modules;
}

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};
using TextHandle = std::unique_ptr<char, FreeText>;

std::string nameOf(Cryptoki* module)
{
    const TextHandle name(p11Kit().module_get_name(module));
    return name ? name.get() : "a module";
}

/** Whether p11-kit has the module for the roots that the system trusts: their store calls itself a token, and is none. */
bool isTrustStore(Cryptoki* module)
{
    const TextHandle policy(p11Kit().config_option(module, "trust-policy"));
    return policy && std::string_view(policy.get()) == "yes";
}

/** What is wrong with a module before it is used; empty for a good one. One that p11-kit runs elsewhere has no file. */
std::string flawOf(Cryptoki* module)
{
    const TextHandle file(p11Kit().module_get_filename(module));
    const TextHandle reserved(p11Kit().config_option(module, "x-init-reserved"));
    return file ? probeModule(file.get(), reserved.get()) : std::string();
}

void addFailure(std::string& failures, Cryptoki* module, std::string_view what)
{
    failures.append(failures.empty() ? "" : ", ").append(nameOf(module)).append(" ").append(what);
}

/** The slots of a module that hold a token. The list may grow between its two questions. */
std::vector<CK_SLOT_ID> slotsOf(Cryptoki* module)
{
    for (;;) {
        unsigned long count = 0;
        checkAnswer(module->C_GetSlotList(CK_TRUE, nullptr, &count), "C_GetSlotList");
        require(count <= maximumSlots, SIGIL_TK_TOKEN_MODULE, "too many slots");
        std::vector<CK_SLOT_ID> ids(count);
        const CK_RV answer = count == 0 ? CKR_OK : module->C_GetSlotList(CK_TRUE, ids.data(), &count);
        if (answer == CKR_BUFFER_TOO_SMALL)
            continue;
        checkAnswer(answer, "C_GetSlotList");
        ids.resize(std::min<std::size_t>(count, ids.size()));
        return ids;
    }
}

} // namespace

std::shared_ptr<TokenModules> TokenModules::instance()
{
    static std::mutex mutex;
    static std::weak_ptr<TokenModules> current;
    const std::lock_guard lock(mutex);
    auto modules = current.lock();
    if (!modules) {
        modules = std::make_shared<TokenModules>();
        current = modules;
    }
    return modules;
}

TokenModules::TokenModules()
    : m_loaded(loadModules())
{
    for (Cryptoki** module = m_loaded; *module; ++module)
        start(*module);
}

TokenModules::~TokenModules()
{
    for (Cryptoki* module : m_usable)
        p11Kit().module_finalize(module);
    p11Kit().modules_release(m_loaded);
}

void TokenModules::start(Cryptoki* module)
{
    if (isTrustStore(module))
        return;
    std::string flaw = flawOf(module);
    if (flaw.empty() && p11Kit().module_initialize(module) != CKR_OK)
        flaw = "does not start";
    if (flaw.empty())
        m_usable.push_back(module);
    else
        addFailure(m_failures, module, flaw);
}

std::vector<Slot> TokenModules::presentSlots()
{
    std::vector<Slot> present;
    std::string failures = m_failures;
    for (Cryptoki* module : m_usable) {
        try {
            for (const CK_SLOT_ID id : slotsOf(module))
                present.push_back({module, id});
        } catch (const Error& error) {
            requireMemory(error);
            addFailure(failures, module, error.detail());
        }
    }
    require(!present.empty() || failures.empty(), SIGIL_TK_TOKEN_MODULE, failures);
    return present;
}

unsigned long TokenModules::numberOf(const Slot& slot)
{
    const auto known = std::find(m_numbered.begin(), m_numbered.end(), slot);
    const auto number = static_cast<unsigned long>(known - m_numbered.begin());
    if (known == m_numbered.end())
        m_numbered.push_back(slot);
    return number;
}

std::vector<unsigned long> TokenModules::slots()
{
    const std::vector<Slot> present = presentSlots();
    const std::lock_guard lock(m_mutex);
    std::vector<unsigned long> numbers;
    numbers.reserve(present.size());
    for (const Slot& slot : present)
        numbers.push_back(numberOf(slot));
    return numbers;
}

Slot TokenModules::slot(unsigned long number)
{
    slots();
    const std::lock_guard lock(m_mutex);
    require(number < m_numbered.size(), SIGIL_TK_TOKEN_ABSENT, "slot " + std::to_string(number));
    return m_numbered[number];
}

CK_TOKEN_INFO tokenInfo(const Slot& slot)
{
    CK_TOKEN_INFO info{};
    checkAnswer(slot.module->C_GetTokenInfo(slot.id, &info), "C_GetTokenInfo");
    return info;
}

std::string fieldText(View field)
{
    const std::string text(field.begin(), field.end());
    const std::size_t end = text.find_last_not_of(std::string_view(" \0", 2));
    return text.substr(0, end + 1);
}

} // namespace toolkit
