// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/sigil/sigil_test.h"

namespace sigil_test {

Session open(int toolkit, int language)
{
    auto options = sized<SigilOpenOptions>();
    options.folder = SIGILDESK_LIBRARY_FOLDER;
    options.toolkit = toolkit;
    options.language = language;
    SigilSession* session = nullptr;
    EXPECT_EQ(sigil_open(&options, &session), SIGIL_SUCCESS);
    return Session(session);
}

int list(SigilSession* session, const std::string& disk)
{
    auto options = sized<SigilListOptions>();
    options.medium = disk.c_str();
    int count = 0;
    EXPECT_EQ(sigil_list(session, &options, &count), SIGIL_SUCCESS) << sigil_error_text(session);
    return count;
}

SigilFields fieldsOf(SigilSession* session, int entry)
{
    auto fields = sized<SigilFields>();
    EXPECT_EQ(sigil_fields(session, entry, &fields), SIGIL_SUCCESS) << sigil_error_text(session);
    return fields;
}

int entryWithKm(SigilSession* session, bool wanted)
{
    int entry = 0;
    while (fieldsOf(session, entry).has_km != static_cast<int>(wanted))
        ++entry;
    return entry;
}

} // namespace sigil_test
