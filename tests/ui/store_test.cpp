// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The dialogs over the real layers: a sample store, the open toolkit, and keys that fit their certificates.

#include "foundation/environment.h"
#include "tests/support/sample_store.h"
#include "tests/ui/driver.h"

#include <sigildesk/dialogs.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFileDialog>
#include <QLabel>
#include <QTabWidget>
#include <QTimer>

#include <openssl/x509.h>

#include <fstream>
#include <memory>

using driver::presses;
using driver::types;
using driver::whenShown;

namespace {

constexpr char password[] = "sample1234!";

std::string home;

/** One store for all tests: making it takes longer than using it. */
class StoreTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        store = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "4", "--state", "valid", "--pairs", "both", "--pfx"});
        home = store->folder().string();
    }
    static void TearDownTestSuite() { store.reset(); }

    void SetUp() override
    {
        m_before = sigil::environment();
        sigil::environment().homeFolder = [] { return home; };
        sigil::environment().traceFolder = home;
        qstrncpy(init.szLibraryFolder, SIGILDESK_LIBRARY_FOLDER, sizeof init.szLibraryFolder);
        init.nLanguage = SIGIL_LANGUAGE_ENGLISH;
        load.nPKITypes = 15;
    }
    void TearDown() override { sigil::environment() = m_before; }

    int show() { return ShowUserCert_T(&init, &load, nullptr, extra.get(), &result); }

    static std::unique_ptr<SampleStore> store;
    tagINITOPT init{};
    tagLOADSELECTCERTOPTION load{};
    std::unique_ptr<tagEXTRAOPTION> extra;
    tagSELCERTINFO result{};

private:
    sigil::Environment m_before;
};
std::unique_ptr<SampleStore> StoreTest::store;

/** Whether a private key belongs to a certificate, as OpenSSL sees it. */
bool belongTogether(const unsigned char* cert, int certLength, const unsigned char* key, int keyLength)
{
    const std::unique_ptr<X509, void (*)(X509*)> x509(d2i_X509(nullptr, &cert, certLength), X509_free);
    const std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)> pkey(
        d2i_AutoPrivateKey(nullptr, &key, keyLength), EVP_PKEY_free);
    return x509 && pkey && X509_check_private_key(x509.get(), pkey.get()) == 1;
}

void expectBothPairs(const tagSELCERTINFO& result)
{
    EXPECT_TRUE(belongTogether(result.bySignCert, result.nSignCertLen, result.bySignPriKey, result.nSignPriKeyLen));
    EXPECT_TRUE(belongTogether(result.byKmCert, result.nKmCertLen, result.byKmPriKey, result.nKmPriKeyLen));
}

} // namespace

TEST_F(StoreTest, HandsOutTheChosenCertificateWithItsKeys)
{
    QString shown;
    whenShown([&](QDialog& dialog) {
        EXPECT_EQ(driver::find<QTableView>(dialog, "tableView_certlist").model()->rowCount(), 4);
        driver::clicksRow(dialog, "tableView_certlist", 2);
        shown = driver::cell(dialog, "tableView_certlist", 2, 0);
        types(dialog, "lineEdit_password", password);
        presses(dialog, "pushButton_ok");
    });
    ASSERT_EQ(show(), 0);
    EXPECT_EQ(result.nMediaType, 1u);
    EXPECT_FALSE(shown.isEmpty());
    EXPECT_TRUE(QString::fromUtf8(result.szSubjectDN).contains(shown));
    EXPECT_TRUE(std::ifstream(result.szSignCertPath).good());
    EXPECT_GT(result.nRandomLen, 0);
    expectBothPairs(result);
}

TEST_F(StoreTest, RefusesAWrongPassword)
{
    driver::Box box;
    whenShown([&](QDialog& dialog) {
        types(dialog, "lineEdit_password", "wrong");
        driver::answerBox(box);
        presses(dialog, "pushButton_ok");
        presses(dialog, "pushButton_cancel");
    });
    EXPECT_EQ(show(), -1);
    EXPECT_EQ(box.text, driver::message(2, "MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR"));
    EXPECT_EQ(result.nSignCertLen, 0);
}

TEST_F(StoreTest, ListsTheStoreOnARemovableDisk)
{
    const std::string table = home + "/mtab";
    std::ofstream(table) << "/dev/sdb1 " << home << " vfat rw 0 0\n";
    sigil::environment().mountTable = table;
    sigil::environment().homeFolder = [] { return std::string("/nowhere"); };
    whenShown([&](QDialog& dialog) {
        EXPECT_EQ(
            driver::find<QLineEdit>(dialog, "lineEdit_msg").text(), driver::message(2, "MSG_SELECTCERT_NOCERT"));
        whenShown([&](QDialog& chooser) {
            driver::clicksRow(chooser, "tableView_remobable", 0);
            presses(chooser, "pushButton_ok");
        });
        presses(dialog, "pushButton_remove");
        types(dialog, "lineEdit_password", password);
        presses(dialog, "pushButton_ok");
    });
    ASSERT_EQ(show(), 0);
    EXPECT_EQ(result.nMediaType, 2u);
    EXPECT_EQ(std::string(result.szSignCertPath).rfind(home, 0), 0u);
    expectBothPairs(result);
}

TEST_F(StoreTest, ImportsAPkcs12File)
{
    std::string pfx;
    for (const auto& entry : std::filesystem::directory_iterator(store->folder() / "pfx"))
        pfx = entry.path().string();
    ASSERT_FALSE(pfx.empty());
    whenShown([&](QDialog& dialog) {
        whenShown([&](QDialog& chooser) {
            driver::find<QLineEdit>(chooser, "fileNameEdit").setText(QString::fromStdString(pfx));
            whenShown([&](QDialog& asking) {
                types(asking, "lineEdit_password", password);
                presses(asking, "pushButton_ok");
            });
            QMetaObject::invokeMethod(&chooser, "accept");
        });
        presses(dialog, "pushButton_find");
        EXPECT_EQ(driver::find<QTableView>(dialog, "tableView_certlist").model()->rowCount(), 1);
        types(dialog, "lineEdit_password", password);
        presses(dialog, "pushButton_ok");
        if (dialog.isVisible())
            dialog.reject();
    });
    ASSERT_EQ(show(), 0);
    EXPECT_EQ(result.nMediaType, 6u);
    expectBothPairs(result);
}

TEST_F(StoreTest, ViewsACertificate)
{
    whenShown([&](QDialog& dialog) {
        whenShown([&](QDialog& viewer) {
            EXPECT_EQ(
                driver::find<QLabel>(viewer, "label_status").text(), driver::ui(2, "DLG_CERVIEWNORAL_CERTVALID"));
            EXPECT_EQ(driver::cell(viewer, "tableView_certinfolist", 0, 1), "V3");
            EXPECT_FALSE(driver::cell(viewer, "tableView_certinfolist", 1, 1).isEmpty());
            EXPECT_TRUE(driver::cell(viewer, "tableView_certinfolist", 15, 1).endsWith("signCert.der"));
            presses(viewer, "pushButton_ok");
        });
        presses(dialog, "pushButton_view");
        presses(dialog, "pushButton_cancel");
    });
    EXPECT_EQ(show(), -1);
}

TEST_F(StoreTest, ShowsALogoThatTheToolkitDecodes)
{
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QByteArray bmp;
    QBuffer buffer(&bmp);
    image.save(&buffer, "BMP");
    extra = std::make_unique<tagEXTRAOPTION>();
    qstrncpy(extra->szData, bmp.toBase64().constData(), sizeof extra->szData);
    qstrncpy(load.szLogo, SIGIL_LOGO_FROM_DATA, sizeof load.szLogo);
    whenShown([&](QDialog& dialog) {
        EXPECT_EQ(driver::find<QLabel>(dialog, "label_logo").pixmap(Qt::ReturnByValue).size(), QSize(30, 20));
        dialog.reject();
    });
    EXPECT_EQ(show(), -1);
}

TEST_F(StoreTest, EndsWithTheCodeOfAMissingToolkit)
{
    qstrncpy(init.szLibraryFolder, home.c_str(), sizeof init.szLibraryFolder);
    EXPECT_EQ(show(), 1010);
}
