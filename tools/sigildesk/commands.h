/** @file
 *  The commands of the sigildesk host program. Each one shows one face of the library.
 */
#pragma once

#include <string>

namespace host {

/** What the program tells the shell. */
enum ExitCode {
    done = 0,
    no = 1,       ///< cancelled
    wrongUse = 2, ///< unknown option, missing argument
    failed = 3,   ///< a toolkit's code, a file, no display: said on standard error
};

/** What every command needs to know. Each command answers with an ExitCode. */
struct Setting {
    std::string folder; ///< library folder: toolkits, settings files and language files
    int language = 1;   ///< 1 Korean, 2 English, as the library counts them
};

/** Opens the selection dialog. Prints the chosen certificate; signs @p textFile when one is named. */
int selectCertificate(const Setting& setting, const std::string& textFile, const std::string& signatureFile,
    const std::string& certificateFile);

/** Prints the certificates in the user's home folder that belong to the families in @p pkiTypes (bits 1, 2, 4, 8). */
int listCertificates(const Setting& setting, int pkiTypes);

/** Prints the fields of one DER certificate file through the toolkit of @p toolkitType (0 or 1). */
int showCertificate(const Setting& setting, int toolkitType, const std::string& file);

} // namespace host
