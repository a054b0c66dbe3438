// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// codes: what a result code means, in words, and what to do.
#include "commands.h"

#include "foundation/ascii.h"
#include "foundation/code_table.h"

#include <nlohmann/json.hpp>

#include <charconv>

namespace host {

namespace {

constexpr Words noCode{
    "{} is neither the number nor the name of a result code", "{}은(는) 결과 코드의 번호도 이름도 아닙니다"};

Json jsonOf(const SigilCodeText& text)
{
    return {{"code", text.code}, {"name", text.name}, {"layer", text.layer}, {"sentence", text.sentence},
        {"advice", text.advice}};
}

SigilCodeText textOf(const Session& session, int code)
{
    SigilCodeText text{};
    sigil_code_text(code, static_cast<int>(session.language()), &text);
    return text;
}

/** The code that was asked for, by number or by name. Throws Failure for what is neither. */
int codeOf(const std::string& asked)
{
    int code = 0;
    const auto [end, error] = std::from_chars(asked.data(), asked.data() + asked.size(), code);
    if (error == std::errc() && end == asked.data() + asked.size())
        return code;
    for (const sigil::CodeRow& row : sigil::codeRows())
        if (sigil::equalsIgnoringCase(row.name, asked))
            return row.code;
    throw Failure(wrongUse, "wrong_use", noCode, {asked});
}

} // namespace

int runCodes(Session& session)
{
    const std::string asked = session.arguments.text("N");
    std::vector<SigilCodeText> texts;
    if (!asked.empty())
        texts.push_back(textOf(session, codeOf(asked)));
    else
        for (const sigil::CodeRow& row : sigil::codeRows())
            texts.push_back(textOf(session, row.code));
    Json codes = Json::array();
    for (const SigilCodeText& text : texts) {
        codes.push_back(jsonOf(text));
        session.output.line(std::to_string(text.code) + "  " + text.name);
        session.output.line(std::string("    ") + text.sentence);
        session.output.line(std::string("    ") + text.advice);
    }
    session.output.document({{"codes", codes}});
    return texts.front().name[0] == '\0' ? no : done; // a licensed toolkit's own
}

} // namespace host
