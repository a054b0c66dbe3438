// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The one function that cannot be forwarded argument by argument: the message is made here and goes on as a text.

#include <sigildesk/flat.h>

#include <stdarg.h>
#include <stdio.h>

#define LONGEST_MESSAGE 4095

SIGIL_EXPORT void flat_LOG_LEVEL(const char* level, const char* file, long line, const char* func, const char* fmt,
    ...) __asm__("LOG_LEVEL") __attribute__((format(printf, 5, 6)));

void flat_LOG_LEVEL(const char* level, const char* file, long line, const char* func, const char* fmt, ...)
{
    char message[LONGEST_MESSAGE + 1] = "";
    va_list arguments;
    va_start(arguments, fmt);
    if (fmt)
        (void)vsnprintf(message, sizeof message, fmt, arguments);
    va_end(arguments);
    LOG_LEVEL(level, file, line, func, "%s", message);
}
