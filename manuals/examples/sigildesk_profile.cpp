// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Read a text and a number of a settings file.
// The words: library folder.
#include <sigildesk/profile.h>

#include <cstdio>
#include <string>

int main(int, char** words)
{
    std::string file = std::string(words[1]) + "/Issuer_ENG.conf";
    char counts[] = "Info_count", count[] = "Issuer_Info",
         first[] = "Issuer_Info1";
    char key[] = "name", none[] = "", name[260];
    const int issuers =
        FileGetPrivateProfileInt(counts, count, 0, &file[0]);
    FileGetPrivateProfileString(
        first, key, none, name, sizeof name, &file[0]);
    std::printf("%d issuers, the first is %s\n", issuers, name);
    return issuers > 0 ? 0 : 1;
}
