// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/work_budget.h"

#include "toolkit/engine/base/error.h"

#include <ctime>

namespace toolkit {
namespace {

constexpr std::int64_t second = 1'000'000'000;

/** Of this thread: a busy machine makes no file more expensive. */
std::int64_t processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * second + now.tv_nsec;
}

} // namespace

WorkBudget::WorkBudget()
    : m_end(processorTime() + 2 * second)
{
}

void WorkBudget::look() const { require(processorTime() < m_end, SIGIL_TK_KEY_MALFORMED, "it takes too long"); }

} // namespace toolkit
