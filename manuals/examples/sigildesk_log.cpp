// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A line of the host's own in the trace of the day.
#include <sigildesk/log.h>

int main()
{
    LOG_LEVEL(
        "DEBUG", __FILE__, __LINE__, __func__, "%d certificates", 3);
    return 0;
}
