// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the three loaders of the certificate list share: the toolkit, the error log, the names of policies and issuers.
 */
#pragma once

#include "certlist/error_log.h"
#include "certlist/issuer_table.h"
#include "certlist/policy_table.h"
#include "foundation/text_field.h"

#include <sigildesk/binary.h>
#include <sigildesk/util.h>

#include <string>

namespace sigil {

/** Names under which a loader reports trouble with its settings files. */
struct SettingsReporter {
    const char* policyOpen; ///< a policy file that does not open
    const char* policyRead; ///< a policy file that cannot be read
    const char* issuer;     ///< an issuer file that lacks a key
};

/** Base of the loaders; not used through a pointer to it. */
class Loader {
public:
    /** @param language  English takes the English settings files, any other the Korean ones
     *  @param folder    library folder with the settings files */
    Loader(int language, const char* folder, const SettingsReporter& reporter);
    Loader(const Loader&) = delete;
    Loader& operator=(const Loader&) = delete;

    /** Hands over the toolkit and the error log (null or empty: none). */
    void bind(void* toolkit, const char* logPath);

    /** Reads the policy names and then the issuer names.
     *  @return 0; 1100; 1102 */
    int SetInitalize();
    /** Takes over the names that another loader of the same language and folder has just read. */
    void shareNames(const Loader& other);
    /** @return 0; 1100 the policy file does not open; 1102 it is empty or cannot be read */
    int SetPolicyIDNameList();
    /** Fills the table of policy names from the contents of the policy file. */
    void PolicyParingData(const CBinary& content);
    /** @return 0, also without an issuer file; 1100 an issuer without "cn" or "name" */
    int SetIssuerNameList();

    /** The toolkit's last error text. @return 0; a code of the façade, @p out unchanged */
    int GetErrInfo(CBinary* out);
    /** Overwrites and releases a buffer made with `new[]` and clears the pointer. @return 0; 1001 nothing to release */
    static int MemFree(void** ppBuf);

protected:
    ~Loader() = default;

    void* m_hToolkit = nullptr; // the processor's
    ErrorLog m_log;
    char m_szPolicyConfPath[pathCapacity];
    char m_szIssuerConfPath[pathCapacity];
    PolicyTable m_policies;
    IssuerTable m_issuers;
    CUtil m_Util{0, nullptr}; ///< its language file is not asked for, so that no home folder is looked up

private:
    const SettingsReporter& m_reporter;
};

/** True for null and for an empty text. */
inline bool isEmpty(const char* text) { return !text || !*text; }

/** Writes "folder/name" (cut to its size) into @p path. */
void formPath(char (&path)[pathCapacity], const char* folder, const std::string& name);

} // namespace sigil
