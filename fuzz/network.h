// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The network of the fuzz programs. No connection leaves the process, and no name is looked up: without a Server everybody is refused.
 */
#pragma once

#include "fuzz/target.h"

namespace fuzz {

/** What is answered to whoever connects anywhere, as long as this lives: the bytes, and then the end. */
class Server {
public:
    explicit Server(Input answer);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
};

} // namespace fuzz
