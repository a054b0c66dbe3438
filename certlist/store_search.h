// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The search for certificates in the folders of a disk.
 */
#pragma once

#include "certlist/entry.h"
#include "certlist/error_log.h"
#include "certlist/list_observer.h"
#include "certlist/listing_pause.h"
#include "certlist/searched_folder.h"
#include "foundation/families.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace sigil {

/** Part of the disk loader, under whose operations' names it reports trouble. */
class StoreSearch {
public:
    /** Reads and judges an entry that has a family and paths. @return 0 keep it; 1122 unreadable; else leave it out */
    using Judge = std::function<int(tagCERTINFO& entry)>;
    /** Receives an entry that was judged to be kept. */
    using Keep = std::function<void(const tagCERTINFO& entry)>;

    explicit StoreSearch(ErrorLog& log)
        : m_log(log)
    {
    }

    /** What later listings call between folders and between files. */
    void setPause(ListingPause pause) { m_pause = std::move(pause); }
    /** A new listing begins: no folder of it has been unreadable so far, and nobody has given it up. */
    void begin() { m_folderUnread = m_givenUp = false; }
    /** Pauses. @return false: the listing is given up */
    bool goesOn();
    /** Whether a pause ended the listing: what was found is not all. */
    bool isGivenUp() const { return m_givenUp; }
    /** Looks through @p folders, in this order, for certificates of @p family. @param observer  null for none */
    void look(const Family& family, const std::vector<std::string>& folders, const Judge& judge, const Keep& keep,
        ListObserver* observer);
    /** Where there are the files of the entry that is judged; no folder outside of a search. */
    const SearchedFolder& folder() const { return m_folder; }
    /** Code of a listing that found nothing. @return 1115; 1123 a folder was not read to its end (logged): there may be
     *  certificates that nobody saw */
    int nothingFound() const;

private:
    const dirent* nextItem();
    int judged(const Family& family, const char* name, const Judge& judge, ScratchEntry& entry);
    void noteUnreadFolder();

    ErrorLog& m_log;
    SearchedFolder m_folder;
    ListingPause m_pause;
    bool m_folderUnread = false;
    bool m_givenUp = false;
};

} // namespace sigil
