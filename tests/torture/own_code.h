// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  To whom the code belongs that an event happens to.
 */
#pragma once

namespace torture {

/** Looks where code lies: asked at the beginning and when a module was loaded. */
void findOwnCode() noexcept;
/** The project's own code, and the standard library, which works for it. */
bool inOwnCode(const void* site) noexcept;
/** The project's own code, and what that stands on: OpenSSL, the libraries of the network. What such code asks the libraries
 *  of C and C++ for counts too. A toolkit of windows does not, nor what it loads: it ends the process when it lacks memory. */
bool worksForUs(const void* site) noexcept;

} // namespace torture
