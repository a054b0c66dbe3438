// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The dialogs where no Korean font is installed: a font configuration of this program's own has none.

#include "tests/ui/fixture.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"

#include <QGroupBox>
#include <QLabel>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

using FontlessTest = SelectionTest;

/** Until the program ends, the fonts are those of one folder. */
class OnlyFontsOf {
public:
    explicit OnlyFontsOf(const char* folder)
    {
        QFile file(m_folder.filePath("fonts.conf"));
        if (!file.open(QIODevice::WriteOnly))
            std::abort();
        file.write("<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig><dir>");
        file.write(folder);
        file.write("</dir><cachedir>" + m_folder.path().toUtf8() + "</cachedir></fontconfig>");
        qputenv("FONTCONFIG_FILE", file.fileName().toUtf8());
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(FontlessTest, SaysInEnglishWhyTheDialogIsNotInKorean)
{
    open(korean);
    const QString title = dialog->windowTitle();
    EXPECT_TRUE(title.startsWith(driver::ui(english, "DLG_SELCERT_CAPITON"))) << qPrintable(title);
    EXPECT_TRUE(title.contains(driver::ui(english, "DLG_NOKOREANFONT"))) << qPrintable(title);
    EXPECT_EQ(widget<QGroupBox>("groupBox").title(), driver::ui(english, "DLG_GROUPBOX_MEDIA"));
    EXPECT_EQ(status(), driver::message(english, "MSG_SELECTCERT_SELCERTINPUTPWD"));
}

TEST_F(FontlessTest, SaysNothingOfFontsInAnEnglishDialog)
{
    EXPECT_EQ(open(english).windowTitle(), driver::ui(english, "DLG_SELCERT_CAPITON"));
}

TEST_F(FontlessTest, ShowsTheSmallDialogsInEnglish)
{
    PasswordDialog asking;
    asking.SetCaller(korean, SIGILDESK_LIBRARY_FOLDER);
    asking.InitSetControl();
    EXPECT_EQ(driver::find<QLabel>(asking, "label_title").text(), driver::ui(english, "DLG_CERTPASSWORD_INPUT"));
    RemoveableDialog drives;
    drives.SetCaller(korean, SIGILDESK_LIBRARY_FOLDER, nullptr);
    drives.InitSetControl();
    EXPECT_EQ(driver::find<QLabel>(drives, "label_text").text(), driver::ui(english, "DLG_REMOVABLE_TITLE"));
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const OnlyFontsOf fonts("/usr/share/fonts/truetype/dejavu");
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release(); // as in main.cpp
    Q_UNUSED(application)
    return RUN_ALL_TESTS();
}
