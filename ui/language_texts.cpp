// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/language_texts.h"

#include "foundation/language_file.h"
#include "foundation/profile_file.h"
#include "foundation/text_field.h"

#include <QtGlobal>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#else
#include <QStringConverter>
#endif

namespace sigil {

namespace {

/** What a text has at most, in bytes: language files are input. */
constexpr std::size_t longestText = 1023;

/** Whether every "%" of @p format begins "%%", but for one that begins "%s". */
bool holdsOneText(std::string_view format)
{
    int texts = 0;
    for (std::size_t at = format.find('%'); at != std::string_view::npos; at = format.find('%', at + 2)) {
        const char kind = at + 1 < format.size() ? format[at + 1] : '\0';
        if (kind != 's' && kind != '%')
            return false;
        texts += kind == 's';
    }
    return texts == 1;
}

} // namespace

QString fromEucKr(std::string_view text)
{
    const int size = static_cast<int>(text.size());
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    static QTextCodec* const codec = QTextCodec::codecForName("EUC-KR");
    return codec ? codec->toUnicode(text.data(), size) : QString::fromLatin1(text.data(), size);
#else
    // The name that means with Qt 6 what "EUC-KR" means with Qt 5: with the syllables that the standard left out.
    QStringDecoder decoder("windows-949");
    return decoder.isValid() ? QString(decoder(QByteArrayView(text.data(), size)))
                             : QString::fromLatin1(text.data(), size);
#endif
}

std::string toUtf8(const QString& text, std::size_t capacity)
{
    std::string utf8 = text.toStdString();
    if (utf8.size() > capacity) {
        auto isInsideCharacter = [&](std::size_t at) {
            return (static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80;
        };
        while (capacity > 0 && isInsideCharacter(capacity))
            --capacity;
        utf8.resize(capacity);
    }
    return utf8;
}

std::string formatOneText(std::string_view format, std::string_view value)
{
    if (!holdsOneText(format))
        return std::string(format);
    std::string text;
    for (std::size_t at = 0; at < format.size(); ++at) {
        if (format[at] != '%')
            text += format[at];
        else if (format[++at] == 's')
            text += value;
        else
            text += '%';
    }
    return text;
}

std::string languageFile(std::string_view folder, int language)
{
    return languageFile(folder, language, SIGIL_LANGUAGE_ENGLISH).substr(0, pathCapacity - 1);
}

LanguageTexts::LanguageTexts(const std::string& file)
    : m_file(std::make_shared<ProfileFile>(file.c_str()))
{
}

QString LanguageTexts::ui(const char* key) const { return fromEucKr(bytes("UserInterface", key)); }

QString LanguageTexts::message(const char* key) const { return fromEucKr(bytes("Message", key)); }

std::string LanguageTexts::messageBytes(const char* key) const { return std::string(bytes("Message", key)); }

std::string_view LanguageTexts::bytes(const char* section, const char* key) const
{
    return m_file ? m_file->value(section, key).substr(0, longestText) : std::string_view();
}

} // namespace sigil
