// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The certificate viewer: summary, status, verification, details.

#include "tests/ui/driver.h"
#include "tests/ui/scripted_processor.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/cert_view_normal_form.h"
#include "ui/language_texts.h"

#include "foundation/text_field.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QListView>
#include <QTabWidget>
#include <QTextEdit>

#include <cstring>
#include <memory>

using driver::answerBox;
using driver::Box;
using driver::presses;
using scripted::eucKr;

class ViewerTest : public testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        scripted::processor() = {};
        entry = scripted::sampleEntry("홍길동");
    }
    CertViewMainDialog& open()
    {
        viewer = std::make_unique<CertViewMainDialog>();
        viewer->SetCertificate(driver::texts(GetParam()), &scripted::processor(), &entry);
        viewer->InitSetControl();
        viewer->show();
        return *viewer;
    }
    QString ui(const char* key) { return driver::ui(GetParam(), key); }
    QString message(const char* key) { return driver::message(GetParam(), key); }
    QString label(const char* name) { return driver::find<QLabel>(*viewer, name).text(); }
    QImage image() { return driver::find<QLabel>(*viewer, "label_certimage").pixmap(Qt::ReturnByValue).toImage(); }
    QStringList usages()
    {
        const QAbstractItemModel* model = driver::find<QListView>(*viewer, "listView").model();
        QStringList lines;
        for (int row = 0; row < model->rowCount(); ++row)
            lines << model->index(row, 0).data().toString();
        return lines;
    }
    QString value(int row) { return driver::cell(*viewer, "tableView_certinfolist", row, 1); }
    QString details() { return driver::find<QTextEdit>(*viewer, "textEdit_certinfo").toPlainText(); }
    void showDetails() { driver::find<QTabWidget>(*viewer, "tabWidget").setCurrentIndex(1); }

    tagCERTINFO entry;
    std::unique_ptr<CertViewMainDialog> viewer;
};
INSTANTIATE_TEST_SUITE_P(Languages, ViewerTest, testing::Values(1, 2));

TEST_P(ViewerTest, ShowsItsTexts)
{
    open();
    EXPECT_EQ(viewer->windowTitle(), ui("DLG_CERTVIEW_CAPITON"));
    auto& tabs = driver::find<QTabWidget>(*viewer, "tabWidget");
    ASSERT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.tabText(0), ui("DLG_CERVIEWMAIN_TABNORMAL"));
    EXPECT_EQ(tabs.tabText(1), ui("DLG_CERVIEWMAIN_TABDETAIL"));
    EXPECT_TRUE(tabs.widget(0)->findChild<QWidget*>("CertViewNormalForm"));
    EXPECT_TRUE(tabs.widget(1)->findChild<QWidget*>("CertViewDetailForm"));
    EXPECT_EQ(driver::find<QPushButton>(*viewer, "pushButton_ok").text(), ui("DLG_BUTTON_OK"));
    EXPECT_EQ(driver::find<QPushButton>(*viewer, "pushButton_verify").text(), ui("DLG_BUTTON_VERIFY"));
    EXPECT_FALSE(driver::find<QPushButton>(*viewer, "pushButton_verify").hasFocus());
}

TEST_P(ViewerTest, GivesItsFormsTheRoomThatTheyNeed)
{
    open();
    for (const char* form : {"CertViewNormalForm", "CertViewDetailForm"}) {
        showDetails();
        auto& widget = driver::find<QWidget>(*viewer, form);
        EXPECT_LE(widget.width(), widget.parentWidget()->width()) << form;
        EXPECT_LE(widget.height(), widget.parentWidget()->height()) << form;
    }
}

TEST_P(ViewerTest, SummarisesTheCertificate)
{
    open();
    const std::pair<const char*, const char*> captions[] = {{"label_infotitle", "DLG_CERVIEWNORAL_TITLE"},
        {"label_certusagetitle", "DLG_CERVIEWNORAL_USAGETITLE"}, {"label_explain", "DLG_CERVIEWNORAL_EXPLAIN"},
        {"label_subjecttitle", "DLG_CERVIEWNORAL_SUBJECTTITLE"},
        {"label_issuertitle", "DLG_CERVIEWNORAL_ISSUERTITLE"},
        {"label_validitytitle", "DLG_CERVIEWNORAL_DATETITLE"}, {"label_usagetitle", "DLG_CERVIEWNORAL_USETITLE"},
        {"label_statustitle", "DLG_CERVIEWNORAL_STATETITLE"}};
    for (const auto& [name, key] : captions)
        EXPECT_EQ(label(name), ui(key)) << key;
    EXPECT_EQ(label("label_subject"), QStringLiteral("홍길동"));
    EXPECT_EQ(label("label_issuer"), QStringLiteral("예제인증기관"));
    EXPECT_EQ(label("label_validity"), "2025-11-01 ~ 2027-10-31");
    EXPECT_EQ(label("label_usage"), QStringLiteral("개인 범용"));
}

TEST_P(ViewerTest, BoundsTheValidity)
{
    std::memset(entry.szValidFrom, '1', sizeof entry.szValidFrom);
    open();
    EXPECT_EQ(label("label_validity").size(), 259);
}

TEST_P(ViewerTest, ShowsNamesAsTheyAre)
{
    sigil::copyText(entry.szUID, "<b>name</b>");
    open();
    EXPECT_EQ(driver::find<QLabel>(*viewer, "label_subject").textFormat(), Qt::PlainText);
}

TEST_P(ViewerTest, MapsTheStatus)
{
    const char* const texts[] = {
        "DLG_CERVIEWNORAL_CERTVALID", "DLG_CERVIEWNORAL_CERTRENEWAL", "DLG_CERVIEWNORAL_CERTEXPIRED"};
    const char* const images[] = {":/bmp/image/Cert_Valid.bmp", nullptr, ":/bmp/image/Cert_Invalid.bmp"};
    for (int status = 0; status <= 5; ++status) {
        entry.nValidStatus = status;
        open();
        EXPECT_EQ(label("label_status"), ui(texts[status % 3])) << status;
        const QImage expected = images[status % 3] ? QPixmap(images[status % 3]).toImage() : QImage();
        EXPECT_EQ(image(), expected) << "due for renewal has no image, on purpose: " << status;
    }
}

TEST_P(ViewerTest, ShowsNoStatusForOtherCodes)
{
    for (int status : {6, 100, -1}) {
        entry.nValidStatus = status;
        open();
        EXPECT_EQ(label("label_status"), "") << status;
        EXPECT_TRUE(image().isNull());
    }
}

TEST_P(ViewerTest, ReadsTheStatusFromTheEntryNotFromItsArgument)
{
    open();
    driver::find<CertViewNormalForm>(*viewer, "CertViewNormalForm").SetCertStatus(5);
    EXPECT_EQ(label("label_status"), ui("DLG_CERVIEWNORAL_CERTVALID"));
}

TEST_P(ViewerTest, ListsTheKeyUsagesInOrder)
{
    sigil::copyText(entry.szKeyUsage,
        "decipherOnly encipherOnly crlSign keyCertSign keyAgreement dataEncipherment keyEncipherment "
        "nonRepudiation "
        "digitalSignature");
    open();
    const char* const keys[] = {"DIGITALSIGN", "NONREPUDIATION", "KEYENCIPHERMENT", "DATAENCIPHERMENT",
        "KEYAGREEMENT", "KEYCERTSIGN", "CRLSIGN", "ENCIPHERONLY", "ENCIPHERONLY"};
    QStringList expected;
    for (const char* key : keys)
        expected << ui(("DLG_CERVIEWNORAL_KEYUSAGE_" + std::string(key)).c_str());
    EXPECT_EQ(usages(), expected);
}

TEST_P(ViewerTest, ListsTheEncipherOnlyTextForDecipherOnly)
{
    sigil::copyText(entry.szKeyUsage, "decipherOnly");
    open();
    EXPECT_EQ(usages(), QStringList(ui("DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY")));
}

TEST_P(ViewerTest, TurnsTheStatusToValidAfterVerifying)
{
    for (int flag : {0, 1})
        for (int status : {1, 2, 4, 5}) {
            entry.nStatusFlag = flag;
            entry.nValidStatus = status;
            open();
            presses(*viewer, "pushButton_verify");
            EXPECT_EQ(entry.nValidStatus, flag ? 0 : 3);
            EXPECT_EQ(label("label_status"), ui("DLG_CERVIEWNORAL_CERTVALID"));
            EXPECT_EQ(viewer->LastResult(), 0);
            EXPECT_EQ(scripted::processor().lastCallOf("CLP_VerifyCert"),
                "CLP_VerifyCert sign certificate of 홍길동 1024");
        }
}

TEST_P(ViewerTest, VerifiesWithReturnOnTheFocusedButton)
{
    open();
    QTest::keyClick(&driver::find<QPushButton>(*viewer, "pushButton_verify"), Qt::Key_Return);
    EXPECT_EQ(scripted::processor().countOf("CLP_VerifyCert sign certificate of 홍길동 1024"), 1);
    EXPECT_TRUE(viewer->isVisible());
}

TEST_P(ViewerTest, TellsWhyVerifyingFailed)
{
    scripted::processor().results["CLP_VerifyCert"] = 1140;
    scripted::processor().verifyError = "폐지된 인증서";
    open();
    Box box;
    answerBox(box);
    presses(*viewer, "pushButton_verify");
    EXPECT_EQ(box.text,
        message("MSG_CERTVERIFY_FAIL") + "\n(" + message("MSG_CERTVERIFY_DETAILMSG") +
            QStringLiteral(" : 폐지된 인증서)"));
    EXPECT_EQ(box.caption, "");
    EXPECT_EQ(box.buttons, 1);
    EXPECT_EQ(label("label_status"), message("MSG_CERTVERIFY_FAIL"));
    EXPECT_EQ(viewer->LastResult(), 1140);
    EXPECT_EQ(entry.nValidStatus, 3) << "unchanged";
}

TEST_P(ViewerTest, SaysInItsLanguageWhyVerifyingFailed)
{
    scripted::processor().results["CLP_VerifyCert"] = 1120;
    scripted::processor().verifyError = "The certificate or one of its issuers is revoked: certificate revoked";
    open();
    Box box;
    answerBox(box);
    presses(*viewer, "pushButton_verify");
    const QString expected = GetParam() == 1 ? "인증서 또는 발급기관 인증서가 폐지되었습니다."
                                             : scripted::processor().verifyError.c_str();
    EXPECT_TRUE(box.text.endsWith(" : " + expected + ")")) << qPrintable(box.text);
}

TEST_P(ViewerTest, TakesTheGreenTickAwayWhenVerifyingFailed)
{
    scripted::processor().results["CLP_VerifyCert"] = 1140;
    open();
    ASSERT_EQ(image(), QPixmap(":/bmp/image/Cert_Valid.bmp").toImage());
    Box box;
    answerBox(box);
    presses(*viewer, "pushButton_verify");
    EXPECT_EQ(image(), QPixmap(":/bmp/image/Cert_Invalid.bmp").toImage());
    scripted::processor().results.clear();
    presses(*viewer, "pushButton_verify");
    EXPECT_EQ(image(), QPixmap(":/bmp/image/Cert_Valid.bmp").toImage());
}

TEST_P(ViewerTest, ShowsTheWholeTextOfACellInItsTooltip)
{
    sigil::copyText(entry.szSubjectAltName, "<b>name</b>");
    open();
    const QAbstractItemModel* model = driver::find<QTableView>(*viewer, "tableView_certinfolist").model();
    EXPECT_TRUE(model->index(3, 1).data(Qt::ToolTipRole).toString().contains(value(3)));
    EXPECT_TRUE(model->index(3, 0).data(Qt::ToolTipRole).toString().contains(ui("DLG_CERVIEWDETAIL_FIELDISSUER")));
    EXPECT_TRUE(model->index(12, 1).data(Qt::ToolTipRole).toString().contains("&lt;b&gt;name")) << "no markup";
}

TEST_P(ViewerTest, ShowsWhatFollowsTheMarkOfAnErrorText)
{
    scripted::processor().results["CLP_VerifyCert"] = 1140;
    scripted::processor().verifyError = "internal 17<talolib>인증서가 폐지되었습니다.";
    open();
    Box box;
    answerBox(box);
    presses(*viewer, "pushButton_verify");
    EXPECT_EQ(label("label_status"), QStringLiteral("인증서가 폐지되었습니다."));
    EXPECT_TRUE(box.text.endsWith(QStringLiteral(" : 인증서가 폐지되었습니다.)")));
    EXPECT_FALSE(box.text.contains("internal"));
}

TEST_P(ViewerTest, BoundsALongErrorText)
{
    scripted::processor().results["CLP_VerifyCert"] = 1140;
    for (int i = 0; i < 600; ++i)
        scripted::processor().verifyError += "가";
    open();
    Box box;
    answerBox(box);
    presses(*viewer, "pushButton_verify");
    EXPECT_LE(box.text.toUtf8().size(), 1023);
    EXPECT_GT(box.text.toUtf8().size(), 1000);
}

TEST_P(ViewerTest, ClosesWithItsButtonEscapeAndReturn)
{
    const std::function<void()> ways[] = {[&] { presses(*viewer, "pushButton_ok"); },
        [&] { QTest::keyClick(viewer.get(), Qt::Key_Escape); },
        [&] { QTest::keyClick(viewer.get(), Qt::Key_Return); }};
    for (const auto& close : ways) {
        open();
        QTest::keyClick(viewer.get(), Qt::Key_Enter, Qt::KeypadModifier);
        QTest::mouseClick(viewer.get(), Qt::LeftButton, {}, QPoint(200, 390));
        EXPECT_TRUE(viewer->isVisible());
        close();
        EXPECT_FALSE(viewer->isVisible());
        EXPECT_EQ(viewer->result(), 0);
    }
}

TEST_P(ViewerTest, ListsTheFields)
{
    open();
    const QString expected[] = {"V3", "01a2b3", "sha256WithRSAEncryption",
        QStringLiteral("cn=예제인증기관,o=예제,c=KR"), "2025-11-01", "2027-10-31",
        QStringLiteral("cn=홍길동,ou=개인,o=예제,c=KR"), "rsaEncryption 2048 Bits", "a1 a2 a3", "b1 b2 b3",
        "digitalSignature, nonRepudiation", QStringLiteral("정책 1 2 410 200004 5 2 1 2"),
        QStringLiteral("dNSName=홍길동"), "ldap://ds.example.kr/crl", "http://ocsp.example.kr",
        "/home/hong/NPKI/yessign/USER/cn=hong/signCert.der"};
    const char* const keys[] = {"VERSION", "SERIAL", "SIGNALG", "ISSUER", "BEFORE", "AFTER", "DN", "PUBKEYALG",
        "AUTHKEYID", "SUBKEYID", "KEYUSAGE", "POLICY", "ALTNAME", "CRLDP", "AIA", "LOCATION"};
    auto& list = driver::find<QTableView>(*viewer, "tableView_certinfolist");
    ASSERT_EQ(list.model()->rowCount(), 16);
    for (int row = 0; row < 16; ++row) {
        EXPECT_EQ(value(row), expected[row]) << keys[row];
        const std::string key = std::string("DLG_CERVIEWDETAIL_FIELD") + keys[row];
        EXPECT_EQ(driver::cell(*viewer, "tableView_certinfolist", row, 0), ui(key.c_str())) << key;
    }
    EXPECT_EQ(list.model()->headerData(0, Qt::Horizontal).toString(), ui("DLG_CERVIEWDETAIL_LISTFIELD"));
    EXPECT_EQ(list.model()->headerData(1, Qt::Horizontal).toString(), ui("DLG_CERVIEWDETAIL_LISTCONTENTS"));
    EXPECT_EQ(list.columnWidth(0), 95);
    EXPECT_EQ(list.columnWidth(1), 175);
}

TEST_P(ViewerTest, NamesTheMediumWhereTheCertificateIs)
{
    const std::pair<int, const char*> media[] = {{3, "DLG_BUTTONMEDIA_SMCARD"}, {7, "DLG_BUTTONMEDIA_USIM"},
        {4, "DLG_BUTTONMEDIA_PKCS11"}, {6, "DLG_BUTTONMEDIA_MEMORY"}, {0, "DLG_BUTTONMEDIA_MEMORY"}};
    for (const auto& [medium, key] : media) {
        entry.nMediaType = medium;
        open();
        EXPECT_EQ(value(15), ui(key)) << medium;
    }
    entry.nMediaType = 2;
    open();
    EXPECT_EQ(value(15), entry.szSignCertPath);
}

TEST_P(ViewerTest, ShowsTheSelectedFieldInFullAndThePublicKeyItself)
{
    open();
    showDetails();
    driver::clicksRow(*viewer, "tableView_certinfolist", 3);
    EXPECT_EQ(details(), value(3));
    driver::clicksRow(*viewer, "tableView_certinfolist", 7);
    EXPECT_EQ(details(), entry.szPubKey);
    driver::find<QTextEdit>(*viewer, "textEdit_certinfo").clear();
    driver::clicksRow(*viewer, "tableView_certinfolist", 7);
    EXPECT_EQ(details(), entry.szPubKey) << "a click on the selected row shows it again";
    QTest::keyClick(&driver::find<QTableView>(*viewer, "tableView_certinfolist"), Qt::Key_Down);
    EXPECT_EQ(details(), "a1 a2 a3") << "the keyboard selects too";
    driver::find<QTableView>(*viewer, "tableView_certinfolist").clearSelection();
    EXPECT_EQ(details(), "a1 a2 a3") << "what was selected last";
}
