// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

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
int runVerify(Session& session);
int runStatus(Session& session);
int runUnlock(Session& session);
int runSign(Session& session);
int runVerifyFile(Session& session);
int runEncrypt(Session& session);
int runDecrypt(Session& session);
int runTimestamp(Session& session);
int runExport(Session& session);
int runIdentity(Session& session);
int runTokens(Session& session);
int runPick(Session& session);
int runImport(Session& session);
int runCopy(Session& session);
int runDelete(Session& session);
int runPasswd(Session& session);
int runCompletion(Session& session);
int runManual(Session& session);

} // namespace host
