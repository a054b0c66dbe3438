#include "certlist/store_search.h"

#include "certlist/codes.h"
#include "certlist/store_layout.h"

#include <system_error>

namespace sigil {

void StoreSearch::look(
    const Family& family, const std::vector<std::string>& folders, const Judge& judge, const Keep& keep)
{
    ScratchEntry entry;
    for (const std::string& path : folders) {
        m_folder = SearchedFolder(path);
        while (const dirent* item = m_folder.next())
            if (isCandidate(family, m_folder, *item) && judged(family, item->d_name, judge, entry) == SIGIL_SUCCESS)
                keep(*entry);
        if (m_folder.error() != 0)
            noteUnreadFolder();
    }
    m_folder = SearchedFolder();
}

int StoreSearch::judged(const Family& family, const char* name, const Judge& judge, ScratchEntry& entry)
{
    entry.clear();
    entry->nPKIType = family.code;
    setPaths(family, m_folder, name, *entry);
    const int rc = judge(*entry);
    if (rc != SIGIL_CERTIFICATE_UNREADABLE || !UndoableFiles::undoInterrupted(pairsOf(family, m_folder, name)))
        return rc;
    setPaths(family, m_folder, name, *entry);
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
