// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a symbol of a recording toolkit is made of.
 */
#pragma once

#include "tests/doubles/recorder.h"

#include <cstdint>

#define TOOLKIT extern "C" __attribute__((visibility("default")))

namespace doubles {

/** Records a call and answers it. */
int answered(Call call);

inline Argument argument(int value) { return {Argument::Kind::Integer, value}; }
inline Argument argument(bool value) { return {Argument::Kind::Flag, value}; }
inline Argument argument(unsigned long value) { return {Argument::Kind::Long, static_cast<std::intptr_t>(value)}; }
inline Argument argument(std::intptr_t value) { return {Argument::Kind::Long, value}; }
template <class T>
Argument argument(T* value)
{
    return {Argument::Kind::Pointer, reinterpret_cast<std::intptr_t>(value)};
}

template <class... A>
int note(const char* symbol, void* context, A... arguments)
{
    return answered({symbol, true, context, {argument(arguments)...}});
}

template <class... A>
int noteWithoutContext(const char* symbol, A... arguments)
{
    return answered({symbol, false, nullptr, {argument(arguments)...}});
}

} // namespace doubles
