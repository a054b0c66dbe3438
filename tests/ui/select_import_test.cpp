// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The selection dialog: the find button and what comes out of a PKCS#12 file.

#include "tests/ui/fixture.h"

#include <QFileDialog>
#include <QListView>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <QTreeView>

using driver::answerBox;
using driver::Box;
using driver::presses;
using driver::whenShown;

class ImportTest : public SelectionTest {
protected:
    void SetUp() override
    {
        SelectionTest::SetUp();
        QFile file(folder.filePath("mine.p12"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        scripted::processor().importCert = "certificate";
        scripted::processor().importKey = "key";
        open();
        scripted::processor().entries = {scripted::sampleEntry("가져온이")};
        scripted::processor().entries[0].bySignPriKey[0] = 'k';
        scripted::processor().entries[0].nSignPriKeyLen = 1;
    }

    QString path() const { return folder.filePath(fileName); }

    /** Answers the file dialog, then the password dialog. */
    void find(const char* password, const char* button = "pushButton_ok")
    {
        whenShown([=, this](QDialog& chooser) {
            driver::find<QLineEdit>(chooser, "fileNameEdit").setText(path());
            whenShown([=](QDialog& asking) {
                EXPECT_EQ(asking.windowTitle(), driver::ui(korean, "DLG_CERTPASSWORD_CAPITON"));
                driver::types(asking, "lineEdit_password", password);
                presses(asking, button);
            });
            QMetaObject::invokeMethod(&chooser, "accept");
        });
    }
    Box findWithBox(const char* password)
    {
        Box box;
        find(password);
        QTimer::singleShot(0, [&] { waitForBox(box); });
        presses(*dialog, "pushButton_find");
        return box;
    }
    static void waitForBox(Box& box)
    {
        if (auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            if (!box.shown)
                box = {shown->windowTitle(), shown->text(), true, static_cast<int>(shown->buttons().size()),
                    shown->icon()};
            ++boxes;
            shown->accept();
            if (boxes == awaitedBoxes)
                return;
        }
        QTimer::singleShot(1, [&box] { waitForBox(box); });
    }
    QTemporaryDir folder;
    QString fileName = "mine.p12";
    static int boxes, awaitedBoxes;
};
int ImportTest::boxes = 0;
int ImportTest::awaitedBoxes = 1;

TEST_F(ImportTest, AsksForAPfxOrP12FileFromTheRoot)
{
    setUpAgain(english);
    QStringList filters;
    QString caption, start;
    whenShown([&](QDialog& chooser) {
        auto& files = dynamic_cast<QFileDialog&>(chooser);
        filters = files.nameFilters();
        caption = files.windowTitle();
        start = files.directory().path();
        chooser.reject();
    });
    presses(*dialog, "pushButton_find");
    EXPECT_EQ(filters, QStringList({"PFX(*.PFX *.pfx)", "p12(*.P12 *.p12)"}));
    EXPECT_EQ(caption, "Open File...");
    EXPECT_EQ(start, "/");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_ImportPFX"), "") << "without a file nothing happens";
}

namespace {

/** Translates everything to "host". */
class HostTranslator : public QTranslator {
public:
    HostTranslator()
    {
        QCoreApplication::installTranslator(this);
        QCoreApplication::processEvents(); // what the dialogs are told of it
    }
    ~HostTranslator() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char*, const char*, int) const override { return "host"; }
};

/** Counts what tells widgets that the application speaks another language now. */
class LanguageChanges : public QObject {
public:
    LanguageChanges() { qApp->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::LanguageChange;
        return false;
    }
    int count = 0;
};

QString buttonTip(QDialog& chooser, const char* name)
{
    return driver::find<QAbstractButton>(chooser, name).toolTip();
}

} // namespace

TEST_F(ImportTest, AsksForTheFileInItsOwnLanguageAndLeavesTheHostsAlone)
{
    const HostTranslator host;
    const LanguageChanges changes;
    QStringList said;
    const auto listen = [&](QDialog& chooser) {
        auto& files = dynamic_cast<QFileDialog&>(chooser);
        const QAbstractItemModel& columns = *driver::find<QTreeView>(chooser, "treeView").model();
        const QAbstractItemModel& places = *driver::find<QListView>(chooser, "sidebar").model();
        said = QStringList({files.windowTitle()}) + files.nameFilters();
        for (const auto label : {QFileDialog::LookIn, QFileDialog::FileName, QFileDialog::FileType,
                 QFileDialog::Accept, QFileDialog::Reject})
            said << files.labelText(label);
        for (const char* name : {"backButton", "newFolderButton"})
            said << buttonTip(chooser, name);
        for (int column = 0; column < columns.columnCount(); ++column)
            said << columns.headerData(column, Qt::Horizontal).toString();
        said << columns.index(0, 2, columns.index(0, 0)).data().toString() << places.index(0, 0).data().toString();
        chooser.reject();
    };
    whenShown(listen);
    presses(*dialog, "pushButton_find");
    EXPECT_EQ(said,
        QStringList({"파일 열기", "PFX 파일(*.PFX *.pfx)", "p12 파일(*.P12 *.p12)",
            "다음에서 찾기:", "파일 이름(&N):", "파일 형식:", "열기(&O)", "취소", "뒤로", "새 폴더 만들기", "이름",
            "크기", "형식", "수정한 날짜", "폴더", "컴퓨터"}));
    setUpAgain(english);
    whenShown(listen);
    presses(*dialog, "pushButton_find");
    EXPECT_EQ(said,
        QStringList({"Open File...", "PFX(*.PFX *.pfx)", "p12(*.P12 *.p12)",
            "Look in:", "File &name:", "Files of type:", "&Open", "Cancel", "Back", "Create New Folder", "Name",
            "Size", "Type", "Date Modified", "Folder", "Computer"}));
    EXPECT_EQ(QCoreApplication::translate("QFileDialog", "&Open"), "host");
    EXPECT_EQ(changes.count, 0);
}

TEST_F(ImportTest, TellsThatThereIsNoFileOfThatName)
{
    QString told;
    whenShown([&](QDialog& chooser) {
        driver::find<QLineEdit>(chooser, "fileNameEdit").setText("/no such.p12");
        Box box;
        answerBox(box);
        QMetaObject::invokeMethod(&chooser, "accept");
        told = box.text;
        EXPECT_TRUE(chooser.isVisible()) << "to be asked again";
        chooser.reject();
    });
    presses(*dialog, "pushButton_find");
    EXPECT_TRUE(told.startsWith("/no such.p12\n파일을 찾을 수 없습니다.")) << qPrintable(told);
}

TEST_F(ImportTest, ListsTheImportedCertificate)
{
    scripted::processor().importKmCert = "km certificate";
    scripted::processor().importKmKey = "km key";
    find("Secret");
    presses(*dialog, "pushButton_find");
    EXPECT_EQ(
        scripted::processor().lastCallOf("CLP_ImportPFX"), "CLP_ImportPFX " + path().toStdString() + " Secret");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_LoadMemoryCert"),
        "CLP_LoadMemoryCert certificate|key|km certificate|km key");
    EXPECT_EQ(dialog->State().medium(), 6);
    ASSERT_EQ(rows(), 1);
    EXPECT_EQ(driver::cell(*dialog, "tableView_certlist", 0, 0), QStringLiteral("가져온이"));
    EXPECT_TRUE(widget<QTableView>("tableView_certlist").selectionModel()->isRowSelected(0, {}));
    EXPECT_EQ(status(), driver::message(korean, "MSG_SELECTCERT_SELCERTINPUTPWD"));
}

TEST_F(ImportTest, ConfirmsWithTheImportPasswordIgnoringCase)
{
    find("Secret");
    presses(*dialog, "pushButton_find");
    driver::types(*dialog, "lineEdit_password", "other");
    Box box;
    answerBox(box);
    presses(*dialog, "pushButton_ok");
    EXPECT_EQ(box.text, driver::message(korean, "MSG_SELECTCERT_PASSWORD_DIFFERENT"));
    widget<QLineEdit>("lineEdit_password").clear();
    driver::types(*dialog, "lineEdit_password", "sECRET");
    presses(*dialog, "pushButton_ok");
    EXPECT_EQ(dialog->State().acceptedFlag(), 1);
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_DecryptPriKey"), "");
    tagSELCERTINFO out{};
    dialog->GetSelectCertinfo(&out);
    EXPECT_EQ(out.nMediaType, 6u);
    EXPECT_STREQ(out.szSignCertPath, "") << "paths belong to the disks";
}

TEST_F(ImportTest, CutsThePathOfTheFileTo259Bytes)
{
    const QString subfolder(200, 'd');
    ASSERT_TRUE(QDir(folder.path()).mkdir(subfolder));
    fileName = subfolder + "/" + QString(96, 'p') + ".p12";
    ASSERT_TRUE(QFile(path()).open(QIODevice::WriteOnly));
    find("Secret");
    presses(*dialog, "pushButton_find");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_ImportPFX"),
        "CLP_ImportPFX " + path().toStdString().substr(0, 259) + " Secret");
}

TEST_F(ImportTest, RemembersThePasswordForLaterCallsButConfirmsNoCertificateOfTheCaller)
{
    find("Secret");
    presses(*dialog, "pushButton_find");
    load.byMemoryCert = 1;
    setUpAgain().SetInitMediaCert(6);
    const auto confirmsWith = [this](const char* password) {
        widget<QLineEdit>("lineEdit_password").setText(password);
        Box box;
        answerBox(box);
        presses(*dialog, "pushButton_ok");
        return box.text;
    };
    EXPECT_EQ(confirmsWith("other"), driver::message(korean, "MSG_SELECTCERT_PASSWORD_DIFFERENT"));
    EXPECT_EQ(confirmsWith("Secret"), driver::message(korean, "MSG_SELECTCERT_NOTSELECTCERT")) << "there is no row";
    EXPECT_EQ(dialog->State().acceptedFlag(), -1);
}

TEST_F(ImportTest, StopsWhenNoPasswordIsGiven)
{
    find("", "pushButton_cancel");
    presses(*dialog, "pushButton_find");
    EXPECT_EQ(scripted::processor().lastCallOf("CLP_ImportPFX"), "");
    EXPECT_EQ(rows(), 3);
}

TEST_F(ImportTest, ExplainsAFailedImport)
{
    struct Failure {
        int code;
        const char* text;
        const char* caption;
    };
    const Failure failures[] = {
        {1113, "MSG_SELECTCERT_PASSWORD_DIFFERENT", "DLG_SELCERT_CAPITON"},
        {-1, "MSG_MANAGEUSER_ALERTCANCEL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT"},
        {1137, "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT"},
    };
    for (const Failure& failure : failures) {
        scripted::processor().results["CLP_ImportPFX"] = failure.code;
        boxes = 0;
        const Box box = findWithBox("x");
        EXPECT_EQ(box.text, driver::message(korean, failure.text));
        EXPECT_EQ(box.caption, driver::ui(korean, failure.caption));
        EXPECT_FALSE(box.caption.isEmpty());
        EXPECT_EQ(rows(), 3) << "the list stays";
        EXPECT_EQ(dialog->State().lastResult(), failure.code);
    }
}

TEST_F(ImportTest, TellsThatTheSigningPairIsMissingAndCountsTheImportAsDone)
{
    scripted::processor().importKey.clear();
    boxes = 0;
    EXPECT_EQ(findWithBox("x").text, driver::message(korean, "MSG_SELECTCERT_NOCERT_SIGN"));
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(dialog->State().lastResult(), 0);
    EXPECT_EQ(status(), driver::message(korean, "MSG_SELECTCERT_SELCERTINPUTPWD"));
}

TEST_F(ImportTest, TellsThatTheFileYieldedNoCertificate)
{
    scripted::processor().entries.clear();
    boxes = 0;
    awaitedBoxes = 2; // one from the import, one from the find button
    EXPECT_EQ(findWithBox("x").text, driver::message(korean, "MSG_SELECTCERT_NOCERT"));
    EXPECT_EQ(boxes, 2);
    awaitedBoxes = 1;
    EXPECT_EQ(dialog->State().lastResult(), 1115);
    EXPECT_EQ(rows(), 0);
}

TEST_F(ImportTest, TellsThatTheProcessorRefusedTheCertificate)
{
    scripted::processor().results["CLP_LoadMemoryCert"] = 1117;
    Box box;
    answerBox(box);
    char file[] = "/x.p12", password[] = "x";
    EXPECT_EQ(dialog->LoadCertPKCS12(file, password), 1117);
    EXPECT_EQ(box.text, driver::message(korean, "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT"));
    EXPECT_EQ(box.caption, driver::ui(korean, "MSG_MANAGEUSER_ALERT_TITLE_IMPORT"));
}
