// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Let the user choose a certificate. The dialog closes when the time
// that the last word gives is over. The words: library folder, ...,
// milliseconds.
#include <sigildesk/dialogs.h>

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

int main(int count, char** words)
{
    QApplication application(count, words);
    QTimer patience;
    QObject::connect(&patience, &QTimer::timeout, &application,
        &QApplication::closeAllWindows);
    patience.start(std::atoi(words[9]));

    tagINITOPT init = {};
    std::string(words[1]).copy(
        init.szLibraryFolder, sizeof init.szLibraryFolder - 1);
    init.nLanguage = SIGIL_LANGUAGE_ENGLISH;
    std::unique_ptr<tagLOADSELECTCERTOPTION> load(
        new tagLOADSELECTCERTOPTION());
    load->nPKITypes = SIGIL_FAMILY_NPKI;
    std::unique_ptr<tagEXTRAOPTION> extra(new tagEXTRAOPTION());
    std::unique_ptr<tagSELCERTINFO> chosen(new tagSELCERTINFO());
    const int status = ShowUserCert_T(
        &init, load.get(), nullptr, extra.get(), chosen.get());
    if (status == 0)
        std::printf("%s\n", chosen->szSubjectDN);
    explicit_bzero(
        chosen.get(), sizeof *chosen); // it holds the private key
    return status == 0 || status == SIGIL_CANCELLED ? 0 : 1;
}
