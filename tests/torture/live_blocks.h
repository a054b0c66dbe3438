// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The blocks of memory that the project's own code holds. What other libraries take is theirs to keep.
 */
#pragma once

namespace torture {

/** Notes a block that was taken from @p site, when that lies in own code. @return the block */
void* noted(void* block, const void* site) noexcept;
void forget(const void* block) noexcept;
long liveBlocks() noexcept;

} // namespace torture
