// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Join two buffers, show them in hexadecimal, and overwrite them before
// they go.
#include <sigildesk/binary.h>

#include <cstdio>

int main()
{
    char left[] = "sec", right[] = "ret";
    CBinary first(left, 3), second(right, 3);
    CBinary both = first + second;
    std::printf("%s is %s\n", both.toString(), both.toHexString());
    const bool done = both.m_nLength == 6;
    both.zeroEmpty();
    return done && both.isEmpty() ? 0 : 1;
}
