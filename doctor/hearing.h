// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the list said of each candidate while it was built.
 */
#pragma once

#include "certlist/list_observer.h"
#include "doctor/report.h"
#include "doctor/rules.h"

#include <sys/stat.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace sigil {

/** A rule with the values of its texts. */
struct Diagnosis {
    const Rule* rule;
    std::vector<std::string> values;
};

inline Diagnosis by(std::string_view rule, std::vector<std::string> values = {})
{
    return {&ruleNamed(rule), std::move(values)};
}

/** A candidate that the list judged. */
struct Judged {
    std::string certificate; ///< path, also of one that is missing
    std::string key;
    bool listed;
    Diagnosis diagnosis;
    /** Trouble with files that did not keep the certificate out of the list, by path. */
    std::vector<std::pair<std::string, Diagnosis>> troubles;
    /** A file of the pair is there, under whatever name the layout gives it. */
    bool hasFiles;
};

class Hearing : public ListObserver {
public:
    using LeftOut = std::function<const char*(const tagCERTINFO&)>;

    explicit Hearing(LeftOut leftOut)
        : m_leftOut(std::move(leftOut))
    {
    }

    void searches(const Family& family, const std::string& path, int error) override;
    void judged(const tagCERTINFO& entry, int result, ErrorLog& log) override;

    const std::vector<Judged>& candidates() const { return m_candidates; }
    std::vector<SearchedPlace>& places() { return m_places; }
    /** The candidate whose certificate is this file or would lie here; null for none. */
    const Judged* of(const std::string& certificate) const;

private:
    using FileId = std::pair<dev_t, ino_t>;

    std::vector<Judged> m_candidates;
    std::map<std::string, std::size_t> m_byPath;
    std::map<FileId, std::size_t> m_byFile; // some disks find a file by more than one spelling
    std::vector<SearchedPlace> m_places;
    LeftOut m_leftOut;
};

/** Name of a family for scripts, "npki". */
const char* familyName(int code);

} // namespace sigil
