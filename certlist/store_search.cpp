// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/store_search.h"

#include "certlist/codes.h"
#include "certlist/store_layout.h"

#include <system_error>

namespace sigil {

void StoreSearch::look(const Family& family, const std::vector<std::string>& folders, const Judge& judge,
    const Keep& keep, ListObserver* observer)
{
    ScratchEntry entry;
    for (auto path = folders.begin(); path != folders.end() && goesOn(); ++path) {
        m_folder = SearchedFolder(*path);
        if (observer && !path->empty())
            observer->searches(family, *path, m_folder.openError());
        while (const dirent* item = nextItem()) {
            if (!isCandidate(family, m_folder, *item))
                continue;
            const int rc = judged(family, item->d_name, judge, entry);
            if (observer)
                observer->judged(*entry, rc, m_log);
            if (rc == SIGIL_SUCCESS)
                keep(*entry);
        }
        if (m_folder.error() != 0)
            noteUnreadFolder();
    }
    m_folder = SearchedFolder();
}

const dirent* StoreSearch::nextItem() { return goesOn() ? m_folder.next() : nullptr; }

bool StoreSearch::goesOn()
{
    if (!m_givenUp && m_pause)
        m_givenUp = !m_pause();
    return !m_givenUp;
}

int StoreSearch::judged(const Family& family, const char* name, const Judge& judge, ScratchEntry& entry)
{
    entry.clear();
    entry->nPKIType = family.code;
    setPaths(family, m_folder, name, *entry);
    m_log.begin();
    return judge(*entry);
}

void StoreSearch::noteUnreadFolder()
{
    const std::string reason = std::generic_category().message(m_folder.error());
    m_log.refused("CLoadDISK::LoadCertList()", error::getData, "readdir()", SIGIL_FILE_NOT_READ, reason.c_str());
    m_folderUnread = true;
}

int StoreSearch::nothingFound() const { return m_folderUnread ? SIGIL_FILE_NOT_READ : SIGIL_NO_CERTIFICATE; }

} // namespace sigil
