// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "command_line.h"
#include "secrets.h"

int main(int count, char** words)
{
    const host::NotDumpable notDumpable;
    host::prepareProcess();
    return host::runCommandLine(count, words);
}
