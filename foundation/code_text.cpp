// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/code_table.h"

#include <sigildesk/codes.h>

#include <algorithm>

namespace {

// A licensed toolkit has codes of its own.
constexpr sigil::CodeRow unknown{0, "", "",
    {"The toolkit answered a code of its own.",
        "Look the code up in the toolkit's documents; the text of HV_GetErrInfo2 may say more."},
    {"툴킷이 자체 코드를 반환했습니다.",
        "툴킷 문서에서 이 코드를 찾아보십시오. HV_GetErrInfo2가 돌려주는 문장에 더 자세한 내용이 있을 수 "
        "있습니다."}};

const sigil::CodeRow* rowOf(int code)
{
    const auto rows = sigil::codeRows();
    const auto row = std::ranges::lower_bound(rows, code, {}, &sigil::CodeRow::code);
    return row != rows.end() && row->code == code ? &*row : nullptr;
}

} // namespace

int sigil_code_text(int code, int language, struct SigilCodeText* text)
{
    if (!text)
        return SIGIL_BAD_ARGUMENT;
    const sigil::CodeRow* known = rowOf(code);
    const sigil::CodeRow& row = known ? *known : unknown;
    const sigil::CodeWords& words = language == SIGIL_LANGUAGE_KOREAN ? row.korean : row.english;
    *text = {code, row.name, row.layer, words.sentence, words.advice};
    return known ? SIGIL_SUCCESS : SIGIL_BAD_ARGUMENT;
}
