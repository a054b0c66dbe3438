#include "ui/language_texts.h"

#include "foundation/language_file.h"
#include "foundation/text_field.h"

#include <QtGlobal>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#else
#include <QStringConverter>
#endif
#include <algorithm>
#include <array>

namespace sigil {

namespace {

/** Room for one looked-up text, and for the terminator of a text that fills it. */
using TextBuffer = std::array<char, 1024 + 1>;

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

QString LanguageTexts::ui(const char* key) const
{
    TextBuffer text{};
    std::string file = m_file;
    std::string name = key;
    m_util.GetLanguageUIText(file.data(), name.data(), static_cast<int>(text.size()) - 1, text.data());
    return fromEucKr(text.data());
}

QString LanguageTexts::message(const char* key) const { return fromEucKr(messageBytes(key)); }

std::string LanguageTexts::messageBytes(const char* key) const
{
    TextBuffer text{};
    std::string file = m_file;
    std::string name = key;
    m_util.GetLanguageMessageText(file.data(), name.data(), static_cast<int>(text.size()) - 1, text.data());
    return text.data();
}

} // namespace sigil
