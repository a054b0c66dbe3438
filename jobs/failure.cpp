// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/failure.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace host {

namespace {

/** Results that answer a question with no. All others but success are failures. */
constexpr int answersNo[] = {SIGIL_CANCELLED, SIGIL_WRONG_PASSWORD, SIGIL_NO_CERTIFICATE, SIGIL_NOT_VERIFIED,
    SIGIL_IDENTITY_MISMATCH, SIGIL_FILTERED_OUT, SIGIL_PAIR_MISMATCH, SIGIL_TK_KEY_WRONG_PASSWORD,
    SIGIL_TK_KEY_MISMATCH, SIGIL_TK_VERIFY_FAILED, SIGIL_TK_VERIFY_NO_ISSUER, SIGIL_TK_VERIFY_EXPIRED,
    SIGIL_TK_VERIFY_NOT_YET, SIGIL_TK_VERIFY_REVOKED, SIGIL_TK_VERIFY_SIGNATURE, SIGIL_TK_VERIFY_USAGE,
    SIGIL_TK_VERIFY_POLICY, SIGIL_TK_VERIFY_NO_CRL, SIGIL_TK_SIGNATURE, SIGIL_TK_VID_MISMATCH, SIGIL_TK_CMS_CONTENT,
    SIGIL_TK_CMS_NOBODY, SIGIL_TK_TSP_IMPRINT, SIGIL_TK_PFX_WRONG_PASSWORD};

constexpr Words codeWords{"{} (code {})", "{} (코드 {})"};
constexpr Words codeWordsWithDetail{"{} (code {}: {})", "{} (코드 {}: {})"};

SigilCodeText textOf(int code, Language language)
{
    SigilCodeText text{};
    sigil_code_text(code, static_cast<int>(language), &text);
    return text;
}

} // namespace

ExitCode exitOf(int code)
{
    if (code == SIGIL_SUCCESS)
        return done;
    return std::find(std::begin(answersNo), std::end(answersNo), code) == std::end(answersNo) ? failed : no;
}

std::string nameOfCode(int code) { return textOf(code, Language::English).name; }

Failure::Failure(ExitCode exit, const char* name, const Words& words, std::vector<std::string> values)
    : m_exit(exit)
    , m_code(exit)
    , m_name(name)
    , m_words(words)
    , m_values(std::move(values))
{
}

Failure Failure::ofCode(int code, const std::string& detail)
{
    std::string name = nameOfCode(code);
    if (name.empty())
        name = "toolkit_code";
    Failure failure(exitOf(code), name.c_str(), detail.empty() ? codeWords : codeWordsWithDetail);
    failure.m_code = code;
    failure.m_values = {"", std::to_string(code)}; // the sentence comes with the language
    if (!detail.empty())
        failure.m_values.push_back(detail);
    return failure;
}

std::string Failure::message(Language language) const
{
    std::vector<std::string> values = m_values;
    if (m_words.english == codeWords.english || m_words.english == codeWordsWithDetail.english)
        values.front() = textOf(m_code, language).sentence;
    return filled(m_words.in(language), values);
}

Failure& Failure::with(const char* key, const Json& value)
{
    if (!m_more)
        m_more = std::make_shared<Json>(Json::object());
    (*m_more)[key] = value;
    return *this;
}

Failure& Failure::withLines(std::vector<std::string> lines)
{
    m_lines = std::move(lines);
    return *this;
}

Json Failure::json(Language language) const
{
    Json error{{"code", m_code}, {"name", m_name}, {"message", message(language)}};
    if (m_more)
        error.update(*m_more);
    return error;
}

} // namespace host
