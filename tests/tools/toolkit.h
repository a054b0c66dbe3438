// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The open toolkit as the library reaches it: opened by its file, called by its symbols.
 */
#pragma once

#include <sigildesk/binstr.h>

#include <string>
#include <utility>

class Toolkit {
public:
    Toolkit();
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    /** Plain private key of a key file; empty when the toolkit refuses. */
    std::string decryptKey(const std::string& file, const std::string& password);
    /** Identity random value of a plain key; empty when it has none. */
    std::string randomOf(const std::string& key);
    /** Certificate and plain key of the signing pair of a PKCS#12 file; empty when the toolkit refuses. */
    std::pair<std::string, std::string> importPfx(const std::string& file, const std::string& password);
    /** Result codes of the checks; 0 is success. */
    int checkPair(const std::string& certificate, const std::string& key);
    int verifyIdentity(const std::string& certificate, const std::string& random, std::string number);

private:
    template <class... Arguments>
    int call(const char* symbol, Arguments... arguments);
    std::string take(BINSTR& bytes);

    void* m_library;
    void* m_context = nullptr;
};
