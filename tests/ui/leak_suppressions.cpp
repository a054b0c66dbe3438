// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the leak sanitizer is told to overlook: what fontconfig (its cache) and D-Bus (the connection of the X platform
// for assistive tools) keep until the process ends.

extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\nleak:libdbus-1.so\n"; }
