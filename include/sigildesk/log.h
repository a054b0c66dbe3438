// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The debug trace: one line for every event, in a file of the day under /tmp. It is always on.
 *
 *  ShowUserCert writes it: a line with the result of its initialisation, and one when the selection ends. A host may
 *  add lines of its own. The crypto façade writes nothing; the certificate list writes its failures to a log of
 *  its own, which is off unless "TWAPI_LOG.ini" names a file (see CLP_Initalize).
 */
#ifndef SIGILDESK_LOG_H
#define SIGILDESK_LOG_H

#include <sigildesk/export.h>

/** Appends one line to "tarnwick_YYYYMMDD.log" in /tmp:
 *  "[tw4np][HH:MM:SS.mmm][level][file:line][function] message", in local time.
 *
 *  The file is created readable and writable for its owner only. A link, a file of another user and anything that is
 *  not a regular file are refused. A line that cannot be written is lost silently, also when memory runs out; errno
 *  stays what it was.
 *
 *  @param level  for example "DEBUG"; null: nothing is written (also for @p file and @p func)
 *  @param file   source file; cut to what follows its last "/" or else its last backslash
 *  @param line   line in the source file
 *  @param func   function; cut to what follows its last ":"
 *  @param fmt    printf format of the message and its arguments; at most 4095 bytes of the message are kept */
SIGIL_EXPORT void LOG_LEVEL(const char* level, const char* file, long line, const char* func, const char* fmt, ...)
    __attribute__((format(printf, 5, 6)));

#endif
