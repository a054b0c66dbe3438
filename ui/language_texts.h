/** @file
 *  The texts of the dialogs: looked up in a language file and converted for Qt.
 */
#pragma once

#include <sigildesk/util.h>

#include <QString>
#include <string>
#include <string_view>

namespace sigil {

/** Text of the library (EUC-KR bytes) as Qt shows it. */
QString fromEucKr(std::string_view text);

/** UTF-8 of @p text in at most @p capacity bytes, cut between two characters. */
std::string toUtf8(const QString& text, std::size_t capacity);

/** Puts @p value in the place of the one "%s" of @p format. Language files are input, not code: a format that does not
 *  hold exactly one "%s" and otherwise only "%%" is returned as it is. */
std::string formatOneText(std::string_view format, std::string_view value);

/** Path of the dialogs' language file in @p folder, cut to what a path field holds. */
std::string languageFile(std::string_view folder, int language);

/** One language file. Every lookup reads the file anew; a missing file or key gives an empty text. */
class LanguageTexts {
public:
    LanguageTexts(CUtil& util, std::string_view file)
        : m_util(util)
        , m_file(file)
    {
    }

    QString ui(const char* key) const;      ///< from section "UserInterface"
    QString message(const char* key) const; ///< from section "Message"
    /** As message(), still in the encoding of the file: for formats. */
    std::string messageBytes(const char* key) const;

private:
    CUtil& m_util;
    std::string m_file;
};

} // namespace sigil
