// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The trace by its plain name. The program defines the library's function itself and keeps what reaches it.

#include <sigildesk/flat.h>

#include <dlfcn.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>

typedef void (*Trace)(const char* level, const char* file, long line, const char* func, const char* fmt, ...)
    __attribute__((format(printf, 5, 6)));

static char record[8192];

void LOG_LEVEL(const char* level, const char* file, long line, const char* func, const char* fmt, ...)
{
    va_list arguments;
    va_start(arguments, fmt);
    const int length = snprintf(record, sizeof record, "%s %s %ld %s ", level ? level : "-", file, line, func);
    (void)vsnprintf(record + length, sizeof record - (size_t)length, fmt, arguments);
    va_end(arguments);
}

static int differs(const char* expected)
{
    if (strcmp(record, expected) == 0)
        return 0;
    fprintf(stderr, "expected %s\nreceived %s\n", expected, record);
    return 1;
}

int main(void)
{
    void* library = dlopen(FLAT_LIBRARY, RTLD_NOW);
    void* symbol = library ? dlsym(library, "LOG_LEVEL") : NULL;
    if (!symbol) {
        fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    Trace trace;
    memcpy(&trace, &symbol, sizeof trace);

    trace("DEBUG", "a.c", 7L, "f", "%d of %s, %.1f%%", 42, "100", 42.0);
    int failures = differs("DEBUG a.c 7 f 42 of 100, 42.0%");
    trace(NULL, "a.c", 8L, "f", "100%% sure");
    failures += differs("- a.c 8 f 100% sure");
    trace("DEBUG", "a.c", 9L, "f", "%5000d", 1);
    failures += strlen(record) != strlen("DEBUG a.c 9 f ") + 4095;
    return failures;
}
