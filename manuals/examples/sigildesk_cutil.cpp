// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The common name of a certificate's holder, and what the dialogs call
// something. The words: library folder.
#include <sigildesk/util.h>

#include <cstdio>

int main(int, char** words)
{
    CUtil util(2, words[1]); // ENG.ini
    char dn[] = "cn=Hong Gildong,ou=Sales,o=Shop,c=KR", name[64] = "";
    char key[] = "DLG_SELCERT_CAPITON", caption[128] = "";
    util.GetCNString(dn, sizeof name, name);
    util.GetLanguageUIText(
        util.m_szLangFile, key, sizeof caption - 1, caption);
    std::printf("%s; %s\n", name, caption);
    return *name && *caption ? 0 : 1;
}
