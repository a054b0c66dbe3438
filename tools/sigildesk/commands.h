/** @file
 *  The commands, one file each. Each prints what it found and answers what the shell is told; what keeps it from its job
 *  is a Failure.
 */
#pragma once

#include "session.h"

namespace host {

int runCodes(Session& session);
int runDoctor(Session& session);
int runList(Session& session);
int runShow(Session& session);
int runPick(Session& session);

} // namespace host
