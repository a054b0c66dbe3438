/** @file
 *  Which certificate is meant: CERT and the options that every command takes which lists or looks up.
 */
#pragma once

#include "certificate.h"

#include <string>
#include <vector>

namespace host {

/** The certificates of the medium that the options name, of which the options take some. Indices are those of the
 *  whole list, so that a certificate keeps its index whatever else is asked for. */
std::vector<Certificate> listed(const Session& session);

/** Where listed() looks. */
std::vector<std::string> searchedFolders(const Session& session);

/** The one certificate that a CERT names. Throws Failure (no) when none does, or several do. */
Certificate chosen(const Session& session, const std::string& cert);

} // namespace host
