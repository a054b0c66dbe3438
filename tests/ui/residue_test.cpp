// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the dialogs leave in their host of keys, random values and of passwords that were typed, whichever way they are left:
// nothing, over the real layers.

#include "foundation/environment.h"
#include "tests/tools/secret_store.h"
#include "tests/ui/driver.h"

#include <sigildesk/dialogs.h>

#include <gtest/gtest.h>

#include <QKeyEvent>

#include <functional>
#include <memory>

using driver::find;
using driver::presses;
using driver::whenShown;

namespace {

std::string home; // what the injected environment answers

class DialogResidue : public testing::Test {
protected:
    static void SetUpTestSuite() { store = std::make_unique<SecretStore>(); }
    static void TearDownTestSuite() { store.reset(); }

    void SetUp() override
    {
        home = store->home();
        sigil::environment().homeFolder = [] { return home; };
        sigil::environment().traceFolder = home;
        qstrncpy(init.szLibraryFolder, SIGILDESK_LIBRARY_FOLDER, sizeof init.szLibraryFolder);
        init.nLanguage = SIGIL_LANGUAGE_ENGLISH;
        load.nPKITypes = 2;
    }
    void TearDown() override { sigil::environment() = machine; }

    /** Types what a file holds, a character at a time, as the keyboard does. */
    static void types(QWidget& dialog, const std::string& name)
    {
        auto& field = find<QLineEdit>(dialog, "lineEdit_password");
        const std::string_view text = (*store)[name + ".UTF-16LE"].bytes();
        for (std::size_t at = 0; at < text.size(); at += 2) {
            const QChar character(static_cast<unsigned char>(text[at]), static_cast<unsigned char>(text[at + 1]));
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
            QApplication::sendEvent(&field, &press);
        }
    }
    /** Shows the dialog, has @p use work with it, and looks when it is gone. */
    void expectNothing(int code, const std::function<void(QDialog&)>& use)
    {
        whenShown(use);
        const auto result = std::make_unique<tagSELCERTINFO>();
        const int rc = ShowUserCert_T(&init, &load, nullptr, nullptr, result.get());
        EXPECT_EQ(rc, code);
        EXPECT_EQ(result->nSignPriKeyLen > 0, code == 0);
        explicit_bzero(result.get(), sizeof *result); // as every host must
        EXPECT_EQ(hunt.found(), "");
    }
    static void pressesKey(QWidget& dialog, Qt::Key key)
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&dialog, &press);
    }
    /** Chooses the PKCS#12 file, and has @p use work with the dialog that asks for its password. */
    static void imports(QDialog& dialog, const std::function<void(QDialog&)>& use)
    {
        whenShown([&use](QDialog& chooser) {
            find<QLineEdit>(chooser, "fileNameEdit").setText(QString::fromStdString(store->find(".pfx")));
            whenShown(use);
            QMetaObject::invokeMethod(&chooser, "accept");
        });
        presses(dialog, "pushButton_find");
    }

    static std::unique_ptr<SecretStore> store;
    SecretHunt hunt = store->hunt();
    tagINITOPT init{};
    tagLOADSELECTCERTOPTION load{};

private:
    sigil::Environment machine = sigil::environment();
};
std::unique_ptr<SecretStore> DialogResidue::store;

} // namespace

TEST_F(DialogResidue, AfterOk)
{
    expectNothing(0, [](QDialog& dialog) {
        types(dialog, "password");
        presses(dialog, "pushButton_ok");
    });
}

TEST_F(DialogResidue, AfterReturn)
{
    expectNothing(0, [](QDialog& dialog) {
        types(dialog, "password");
        pressesKey(dialog, Qt::Key_Return);
    });
}

TEST_F(DialogResidue, AfterCancelCloseAndEscape)
{
    for (const auto& leave : {std::function([](QDialog& dialog) { presses(dialog, "pushButton_cancel"); }),
             std::function([](QDialog& dialog) { dialog.close(); }),
             std::function([](QDialog& dialog) { pressesKey(dialog, Qt::Key_Escape); })})
        expectNothing(-1, [&](QDialog& dialog) {
            types(dialog, "password");
            leave(dialog);
        });
}

TEST_F(DialogResidue, AfterAWrongPassword)
{
    driver::Box box;
    expectNothing(-1, [&](QDialog& dialog) {
        types(dialog, "wrong");
        driver::answerBox(box);
        presses(dialog, "pushButton_ok");
        presses(dialog, "pushButton_cancel");
    });
    EXPECT_TRUE(box.shown);
    expectNothing(0, [&](QDialog& dialog) {
        types(dialog, "wrong");
        driver::answerBox(box);
        presses(dialog, "pushButton_ok");
        types(dialog, "password"); // over the wrong one, which is selected
        presses(dialog, "pushButton_ok");
    });
}

TEST_F(DialogResidue, AfterAnImport)
{
    expectNothing(0, [](QDialog& dialog) {
        imports(dialog, [](QDialog& asking) {
            types(asking, "password");
            presses(asking, "pushButton_ok");
        });
        types(dialog, "password");
        presses(dialog, "pushButton_ok");
    });
}

TEST_F(DialogResidue, AfterAnImportThatWasGivenUp)
{
    for (const auto& leave : {std::function([](QDialog& asking) { presses(asking, "pushButton_cancel"); }),
             std::function([](QDialog& asking) { asking.close(); }),
             std::function([](QDialog& asking) { pressesKey(asking, Qt::Key_Escape); })})
        expectNothing(-1, [&](QDialog& dialog) {
            imports(dialog, [&](QDialog& asking) {
                types(asking, "password");
                leave(asking);
            });
            presses(dialog, "pushButton_cancel");
        });
}
