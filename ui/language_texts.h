// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The texts of the dialogs: looked up in a language file and converted for Qt.
 */
#pragma once

#include <QString>
#include <memory>
#include <string>
#include <string_view>

namespace sigil {

class ProfileFile;

/** Text of the library (EUC-KR bytes) as Qt shows it. */
QString fromEucKr(std::string_view text);

/** UTF-8 of @p text in at most @p capacity bytes, cut between two characters. */
std::string toUtf8(const QString& text, std::size_t capacity);

/** Puts @p value in the place of the one "%s" of @p format. Language files are input, not code: a format that does not
 *  hold exactly one "%s" and otherwise only "%%" is returned as it is. */
std::string formatOneText(std::string_view format, std::string_view value);

/** Path of the dialogs' language file in @p folder, cut to what a path field holds. */
std::string languageFile(std::string_view folder, int language);

/** One language file, which is read once. A missing file or key gives an empty text. Copies share what was read. */
class LanguageTexts {
public:
    /** No texts at all. */
    LanguageTexts() = default;
    explicit LanguageTexts(const std::string& file);

    QString ui(const char* key) const;      ///< from section "UserInterface"
    QString message(const char* key) const; ///< from section "Message"
    /** As message(), still in the encoding of the file: for formats. */
    std::string messageBytes(const char* key) const;

private:
    std::string_view bytes(const char* section, const char* key) const;

    std::shared_ptr<const ProfileFile> m_file;
};

} // namespace sigil
