// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/dialog_support.h"
#include "ui/language_texts.h"

#include "tests/ui/driver.h"
#include "tests/ui/scripted_processor.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QKeyEvent>
#include <QScreen>
#include <QTemporaryDir>

using namespace sigil;

TEST(FormatOneText, PutsTheTextInPlaceOfTheOnePlaceholder)
{
    EXPECT_EQ(formatOneText("expired on %s.", "2025-10-31"), "expired on 2025-10-31.");
    EXPECT_EQ(formatOneText("100%% of %s", "a%sb"), "100% of a%sb");
}

TEST(FormatOneText, LeavesEveryOtherFormatAlone)
{
    for (const char* format :
        {"", "no placeholder", "%s and %s", "%d", "%n %s", "%5s", "ends with %", "%%s", "%s %"})
        EXPECT_EQ(formatOneText(format, "text"), format);
}

TEST(Utf8, IsCutBetweenTwoCharacters)
{
    EXPECT_EQ(toUtf8("가나", 6), "가나");
    EXPECT_EQ(toUtf8("가나", 5), "가");
    EXPECT_EQ(toUtf8("가나", 4), "가");
    EXPECT_EQ(toUtf8("가나", 2), "");
    EXPECT_EQ(toUtf8("ab", 1), "a");
}

TEST(EucKr, IsShownAsHangul)
{
    EXPECT_EQ(fromEucKr("\xC8\xAB\xB1\xE6\xB5\xBF"), QStringLiteral("홍길동"));
    EXPECT_EQ(fromEucKr(""), QString());
}

TEST(LanguageFile, IsKoreanForOneAndEnglishForAllElse)
{
    EXPECT_EQ(languageFile("/opt/sd", 1), "/opt/sd/KOR.ini");
    for (int language : {2, 0, -1, 7})
        EXPECT_EQ(languageFile("/opt/sd", language), "/opt/sd/ENG.ini");
    EXPECT_EQ(languageFile(std::string(300, 'x'), 1).size(), 259u);
}

TEST(LanguageTexts, AreFoundInTheirSectionOnly)
{
    const LanguageTexts texts(SIGILDESK_LIBRARY_FOLDER "/KOR.ini");
    EXPECT_EQ(texts.ui("DLG_GROUPBOX_MEDIA"), QStringLiteral("저장매체 선택"));
    EXPECT_EQ(texts.message("DLG_GROUPBOX_MEDIA"), QString());
    EXPECT_EQ(texts.message("MSG_SELECTCERT_NOTSELECTCERT"), QStringLiteral("인증서를 선택하십시오."));
    EXPECT_EQ(texts.ui("MSG_SELECTCERT_NOTSELECTCERT"), QString());
}

TEST(LanguageTexts, AreEmptyWithoutAFile)
{
    const LanguageTexts texts("/nowhere/KOR.ini");
    EXPECT_EQ(texts.ui("DLG_BUTTON_OK"), QString());
    EXPECT_EQ(texts.message("MSG_SELECTCERT_NOCERT"), QString());
}

TEST(LanguageTexts, OfAHostileFileDoNotPassTheirBuffer)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("KOR.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[UserInterface]\nDLG_BUTTON_OK = " + QByteArray(3000, 'x') + "\n");
    file.close();
    EXPECT_LE(LanguageTexts(file.fileName().toStdString()).ui("DLG_BUTTON_OK").size(), 1024);
}

namespace {

const LanguageTexts noTexts;

} // namespace

TEST(Information, HasItsButtonInTheLanguageOfTheDialogs)
{
    for (const int language : {1, 2}) {
        QString button;
        driver::whenShown([&](QDialog& box) {
            button = dynamic_cast<QMessageBox&>(box).button(QMessageBox::Ok)->text();
            box.accept();
        });
        showInformation(
            nullptr, LanguageTexts(languageFile(SIGILDESK_LIBRARY_FOLDER, language)), "caption", "text");
        EXPECT_EQ(button, driver::ui(language, "DLG_BUTTON_OK"));
    }
}

TEST(Information, ShowsTheTextAsItIsWithOneOkButton)
{
    driver::Box box;
    driver::answerBox(box);
    EXPECT_EQ(showInformation(nullptr, noTexts, "caption", "<b>text</b>"), QMessageBox::Ok);
    EXPECT_EQ(box.text, "<b>text</b>");
    EXPECT_EQ(box.buttons, 1);
    EXPECT_EQ(box.icon, QMessageBox::Information);
}

TEST(Information, StandsInTheMiddleOfTheScreenBeforeItsDialogIsShown)
{
    QWidget dialog; // never shown: its place is the corner
    QPoint middle;
    driver::whenShown([&](QDialog& box) {
        middle = box.geometry().center();
        box.accept();
    });
    showInformation(&dialog, noTexts, "caption", "text");
    const QPoint expected = QGuiApplication::primaryScreen()->availableGeometry().center();
    EXPECT_LT((middle - expected).manhattanLength(), 60) << middle.x() << "," << middle.y();
}

TEST(Information, DoesNotReadMarkup)
{
    driver::whenShown([](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).textFormat(), Qt::PlainText);
        EXPECT_EQ(dialog.objectName(), "messageBox");
        dialog.accept();
    });
    showInformation(nullptr, noTexts, "caption", "<img src='http://example.com/'>");
}

TEST(Keys, EscapeCancelsReturnConfirmsAndNothingElseDoesAnything)
{
    std::string done;
    const auto press = [&](int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.ignore();
        takeKey(
            &event, [&] { done += "cancel "; }, [&] { done += "confirm "; });
        EXPECT_TRUE(event.isAccepted()) << "a key must not reach the base class";
    };
    for (int key : {Qt::Key_Enter, Qt::Key_A, Qt::Key_F1, Qt::Key_Space, Qt::Key_Escape, Qt::Key_Return})
        press(key);
    EXPECT_EQ(done, "cancel confirm ");
}

TEST(PasswordField, IsEmptyAfterWipingAndCannotBeUndone)
{
    QLineEdit field;
    QTest::keyClicks(&field, "secret");
    wipeField(&field);
    EXPECT_EQ(field.text(), QString());
    EXPECT_FALSE(field.isUndoAvailable());
}

// A text that outgrows its memory leaves what was typed until then in the old one.
TEST(PasswordField, HasRoomForTheLongestPasswordFromTheStartAndAfterWiping)
{
    constexpr int longest = 1023;
    QLineEdit field;
    giveRoom(&field);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(field.text(), QString());
        QTest::keyClicks(&field, "s");
        EXPECT_GE(field.text().capacity(), longest);
        wipeField(&field);
    }
}

TEST(PasswordField, IsReadInTheLocalEncoding)
{
    QLineEdit field;
    field.setText(QStringLiteral("비밀1"));
    EXPECT_EQ(std::string(TypedPassword(&field).bytes()), QStringLiteral("비밀1").toLocal8Bit().toStdString());
}
