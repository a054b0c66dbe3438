// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the tests of the selection dialog begin with: three certificates on a scripted processor, and an opened dialog.
 */
#pragma once

#include "tests/ui/driver.h"
#include "tests/ui/scripted_processor.h"
#include "ui/select_cert_dialog.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

constexpr int korean = 1;
constexpr int english = 2;

inline tagINITOPT initOptions(int language = korean, const char* folder = SIGILDESK_LIBRARY_FOLDER)
{
    tagINITOPT init{};
    qstrncpy(init.szLibraryFolder, folder, sizeof init.szLibraryFolder);
    init.nLanguage = language;
    return init;
}

inline std::string bytes(const unsigned char* item, int length)
{
    return {reinterpret_cast<const char*>(item), static_cast<std::size_t>(length)};
}

class SelectionTest : public testing::Test {
protected:
    void SetUp() override
    {
        scripted::processor() = {};
        scripted::processor().entries = {scripted::sampleEntry("홍길동"), scripted::sampleEntry("김하늘", 4),
            scripted::sampleEntry("이바다", 5)};
        scripted::processor().signKey = "sign key";
        scripted::processor().kmKey = "km key";
        scripted::processor().random = std::string("ran\0dom", 7);
        scripted::processor().drives = {
            scripted::sampleDrive(0, "/media/USB"), scripted::sampleDrive(1, "/media/DATA")};
    }
    void TearDown() override
    {
        dialog.reset();
        EXPECT_EQ(scripted::processor().openBuffers, 0) << "a buffer of the processor was not given back";
        EXPECT_EQ(scripted::processor().handles, 0) << "a processor was not released";
    }

    /** A new dialog set up as the entry points do it, before a medium is opened. */
    SelectCertDialog& setUp(int language = korean)
    {
        dialog = std::make_unique<SelectCertDialog>();
        return setUpAgain(language);
    }

    /** The same dialog set up once more, as each call of the shared way does. */
    SelectCertDialog& setUpAgain(int language = korean)
    {
        tagINITOPT init = initOptions(language);
        EXPECT_EQ(dialog->SetInitOption(&init, &load, extra.get()), 0);
        dialog->SetLibraryFolder(init.szLibraryFolder);
        dialog->InitSetControl();
        dialog->State().startCall();
        EXPECT_EQ(dialog->Initalize(), 0);
        return *dialog;
    }

    /** As above, shown on the hard disk. */
    SelectCertDialog& open(int language = korean)
    {
        setUp(language).SetInitMediaCert(1);
        dialog->show();
        return *dialog;
    }

    template <class Widget = QPushButton>
    Widget& widget(const char* name)
    {
        return driver::find<Widget>(*dialog, name);
    }
    QString status() { return widget<QLineEdit>("lineEdit_msg").text(); }
    QString password() { return widget<QLineEdit>("lineEdit_password").text(); }
    int rows() { return widget<QTableView>("tableView_certlist").model()->rowCount(); }

    tagLOADSELECTCERTOPTION load{};
    std::unique_ptr<tagEXTRAOPTION> extra;
    std::unique_ptr<SelectCertDialog> dialog;
};

/** The same in both languages. */
class SelectionInBothLanguages : public SelectionTest, public testing::WithParamInterface<int> { };
