// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sigildesk/text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

TEST(Text, AByteThatIsNoCharacterBecomesAQuestionMark)
{
    const std::pair<const char*, const char*> texts[] = {
        {"\x80", "?"},                // begins none
        {"\xC1\x81", "??"},           // a letter in two bytes
        {"\xE0\x80\x80", "???"},      // in three
        {"\xF0\x80\x80\x80", "????"}, // in four
        {"\xE1\x88", "??"},           // cut short
        {"\xE1\x41\x88", "?A?"},      // a letter within
        {"\xE1\x88\x41", "??A"},      // at the end
        {"\xED\xA0\x80", "???"},      // half of a pair of UTF-16
        {"\xED\xBF\xBF", "???"},      // the other half
        {"\xF4\x90\x80\x80", "????"}, // beyond the last
        {"\xF5\x80\x80\x80", "????"},
        {"\xED\x9F\xBF|\xEE\x80\x80|\xF4\x8F\xBF\xBF",
            "\xED\x9F\xBF|\xEE\x80\x80|\xF4\x8F\xBF\xBF"}, // the neighbours
    };
    for (const auto& [text, shown] : texts)
        EXPECT_EQ(host::harmless(text), shown);
}

TEST(Text, WhatSteersIsNumberedInADocument)
{
    EXPECT_EQ(host::harmlessJson("{\n\"a\u202eb\"}\n"), "{\n\"a\\u202eb\"}\n");
    EXPECT_EQ(host::harmlessJson("\"\U000E0001\U0001F600\""), "\"\\udb40\\udc01\U0001F600\"");
    EXPECT_EQ(host::harmlessJson("\"\xFF\""), "\"?\"");
}

TEST(Text, LettersHaveTheirColumns)
{
    const std::pair<const char*, std::size_t> texts[] = {{"abc", 3}, {"홍길동", 6}, {"e\u0301", 1},
        {"\U0001F600", 2}, {"\U00020000", 2}, {"\U000F0000", 1}, {"\U0010FFFF", 1}};
    for (const auto& [text, columns] : texts)
        EXPECT_EQ(host::columns(text), columns) << text;
}

} // namespace
