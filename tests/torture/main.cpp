// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/sessions.h"

#include "foundation/code_table.h"

#include <sigildesk/codes.h>

#include <algorithm>
#include <string_view>
#include <utility>

bool torture::isStated(int code)
{
    const auto rows = sigil::codeRows();
    const auto row =
        std::find_if(rows.begin(), rows.end(), [=](const sigil::CodeRow& r) { return r.code == code; });
    return row != rows.end() && !std::string_view(row->name).ends_with("_MALFORMED");
}

int main(int count, char** words)
{
    torture::Materials materials;
    std::vector<torture::NamedSession> sessions;
    using Make = torture::Session (*)(torture::Materials&, int toolkit);
    const std::pair<const char*, Make> all[] = {{"facade", torture::facadeSession}, {"list", torture::listSession},
        {"transfer", torture::transferSession}, {"command", torture::commandSession}};
    for (const auto& [name, make] : all)
        for (const int toolkit : {SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI})
            sessions.push_back({name + std::string(toolkit == SIGIL_TOOLKIT_MAKER ? "-maker" : "-gpki"),
                [make = make, toolkit, &materials] { return make(materials, toolkit); }});
    sessions.push_back({"dialogs-own", [&] { return torture::ownDialogSession(materials); }});
    sessions.push_back({"dialogs-shared", [&] { return torture::sharedDialogSession(materials); }});
    return torture::run(count, words, sessions);
}
