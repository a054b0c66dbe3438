// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The selection dialog: options, texts, images, logo, and the way to the processor.

#include "tests/doubles/recorder.h"
#include "tests/ui/fixture.h"

#include <QBuffer>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QTemporaryDir>

#include <cstring>

namespace {

QImage resource(const QString& path) { return QPixmap(path).toImage(); }

struct MediaButton {
    int bit;
    const char* name;
    const char* image;
    const char* key;
};
const MediaButton media[] = {
    {1, "pushButton_hdd", "HDD", "DLG_BUTTONMEDIA_HDD"},
    {2, "pushButton_remove", "MOVE", "DLG_BUTTONMEDIA_REMOVE"},
    {4, "pushButton_smcert", "USIM", "DLG_BUTTONMEDIA_USIM"},
    {8, "pushButton_token", "TOKEN", "DLG_BUTTONMEDIA_PKCS11"},
    {16, "pushButton_smcard", "SMCARD", "DLG_BUTTONMEDIA_SMCARD"},
    {32, "pushButton_phone", "PHONE", "DLG_BUTTONMEDIA_PHONE"},
};

} // namespace

TEST_F(SelectionTest, StartsOnTheHardDiskWithNothingDecided)
{
    SelectCertDialog fresh;
    EXPECT_EQ(fresh.State().lastResult(), 0);
    EXPECT_EQ(fresh.State().finishFlag(), 1);
    EXPECT_EQ(fresh.State().medium(), 1);
    EXPECT_EQ(fresh.State().acceptedFlag(), -1);
    EXPECT_EQ(fresh.State().count(), 0);
    EXPECT_STREQ(fresh.State().lastError(), "");
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    EXPECT_NE(QMetaType::type("QItemSelection"), int(QMetaType::UnknownType));
#else
    EXPECT_TRUE(QMetaType::fromName("QItemSelection").isValid());
#endif
    fresh.State().InitVariable();
    EXPECT_EQ(fresh.State().medium(), 0);
}

TEST_F(SelectionTest, RefusesMissingInitOptions)
{
    SelectCertDialog fresh;
    EXPECT_EQ(fresh.SetInitOption(nullptr, &load, nullptr), 1001);
}

TEST_F(SelectionTest, HandsTheOptionsToTheProcessor)
{
    load.nPKITypes = 3;
    load.nKeyPairType = 2;
    load.nSelectFlags = 1;
    qstrncpy(load.szPolicyIDs, "1 2 410 200004 5 2 1 2|", sizeof load.szPolicyIDs);
    qstrncpy(load.szSerialNum, "01a2", sizeof load.szSerialNum);
    qstrncpy(load.szSubjectDN, "cn=x", sizeof load.szSubjectDN);
    qstrncpy(load.szOption, "option", sizeof load.szOption);
    setUp();
    const tagLOADCERTOPT& options = scripted::processor().options;
    EXPECT_EQ(options.nPKITypes, 3);
    EXPECT_EQ(options.nKeyPairType, 2);
    EXPECT_EQ(options.bExcludeExpired, 1);
    EXPECT_STREQ(options.szPolicyIDs, load.szPolicyIDs);
    EXPECT_STREQ(options.szSerialNum, "01a2");
    EXPECT_STREQ(options.szSubjectDN, "cn=x");
    EXPECT_STREQ(options.szOption, "option");
}

TEST_F(SelectionTest, TakesTheShortOptionTextOnlyWithoutTheOther)
{
    qstrncpy(load.szShortOption, "short", sizeof load.szShortOption);
    setUp();
    EXPECT_STREQ(scripted::processor().options.szOption, "short");
    qstrncpy(load.szOption, "other", sizeof load.szOption);
    setUp();
    EXPECT_STREQ(scripted::processor().options.szOption, "other");
}

TEST_F(SelectionTest, ExcludesExpiredCertificatesOnlyOnBitZero)
{
    load.nSelectFlags = 2;
    setUp();
    EXPECT_EQ(scripted::processor().options.bExcludeExpired, 0);
}

TEST_F(SelectionTest, BoundsTextsThatFillTheirFields)
{
    std::memset(load.szSerialNum, 's', sizeof load.szSerialNum);
    std::memset(load.szPolicyIDs, 'p', sizeof load.szPolicyIDs);
    std::memset(load.szShortOption, 'o', sizeof load.szShortOption);
    setUp();
    EXPECT_EQ(std::strlen(scripted::processor().options.szSerialNum), 1023u);
    EXPECT_EQ(std::strlen(scripted::processor().options.szPolicyIDs), 2047u);
    EXPECT_EQ(std::strlen(scripted::processor().options.szOption), 255u);
}

TEST_F(SelectionTest, LeavesATextThatIsNotGivenAsItWas)
{
    qstrncpy(load.szSubjectDN, "cn=x", sizeof load.szSubjectDN);
    setUp();
    tagINITOPT init = initOptions(english, "");
    tagLOADSELECTCERTOPTION empty{};
    EXPECT_EQ(dialog->SetInitOption(&init, &empty, nullptr), 0);
    dialog->InitSetControl();
    dialog->Initalize();
    EXPECT_STREQ(scripted::processor().options.szSubjectDN, "cn=x");
    EXPECT_EQ(dialog->windowTitle(), driver::ui(english, "DLG_SELCERT_CAPITON")) << "the folder stayed as it was";
    EXPECT_EQ(scripted::processor().calls.at(2), "CLP_Initalize 0 2 " SIGILDESK_LIBRARY_FOLDER);
}

TEST_F(SelectionTest, ConnectsToTheProcessor)
{
    setUp();
    const std::vector<std::string> expected = {"CLP_Initalize 0 1 " SIGILDESK_LIBRARY_FOLDER, "CLP_SetType"};
    EXPECT_EQ(scripted::processor().calls, expected);
}

TEST_F(SelectionTest, PrintsAndReturnsWhatTheProcessorRefuses)
{
    setUp();
    scripted::processor().results = {{"CLP_SetType", 1001}};
    testing::internal::CaptureStdout();
    EXPECT_EQ(dialog->Initalize(), 1001);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Initalize() CLP_SetType = 1001\n");
    scripted::processor().results = {{"CLP_Initalize", 1010}};
    testing::internal::CaptureStdout();
    EXPECT_EQ(dialog->Initalize(), 1010);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Initalize() CLP_Initalize = 1010\n");
    EXPECT_EQ(scripted::processor().countOf("CLP_SetType"), 2) << "not asked after a refusal";
}

INSTANTIATE_TEST_SUITE_P(Languages, SelectionInBothLanguages, testing::Values(korean, english));

TEST_P(SelectionInBothLanguages, ShowsTheTextsOfTheLanguage)
{
    setUp(GetParam());
    const int language = GetParam() == korean ? korean : english;
    const auto ui = [&](const char* key) { return driver::ui(language, key); };
    ASSERT_FALSE(ui("DLG_SELCERT_CAPITON").isEmpty());
    EXPECT_EQ(dialog->windowTitle(), ui("DLG_SELCERT_CAPITON"));
    EXPECT_EQ(widget<QGroupBox>("groupBox").title(), ui("DLG_GROUPBOX_MEDIA"));
    EXPECT_EQ(widget<QLabel>("label_find").text(), ui("DLG_FINDCERT_TEXT"));
    EXPECT_EQ(widget<QLabel>("label_pwd").text(), ui("DLG_STATIC_CERTPASSWORD"));
    EXPECT_EQ(widget("pushButton_find").text(), ui("DLG_BUTTON_FIND"));
    EXPECT_EQ(widget("pushButton_ok").text(), ui("DLG_BUTTON_OK"));
    EXPECT_EQ(widget("pushButton_cancel").text(), ui("DLG_BUTTON_CANCEL"));
    EXPECT_EQ(widget("pushButton_view").text(), ui("DLG_BUTTON_VIEW"));
    for (const MediaButton& button : media)
        EXPECT_EQ(widget(button.name).text(), ui(button.key)) << button.name;
}

TEST_F(SelectionTest, ReadsTheLanguageFileOnceForACall)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("KOR.ini");
    ASSERT_TRUE(QFile::copy(SIGILDESK_LIBRARY_FOLDER "/KOR.ini", file));
    tagINITOPT init = initOptions(korean, folder.path().toLocal8Bit());
    setUp().SetInitOption(&init, &load, nullptr);
    dialog->InitSetControl();
    ASSERT_TRUE(QFile::remove(file));
    dialog->SetInitMediaCert(1);
    EXPECT_EQ(status(), driver::message(korean, "MSG_SELECTCERT_SELCERTINPUTPWD"));
    EXPECT_EQ(widget("pushButton_hdd").text(), driver::ui(korean, "DLG_BUTTONMEDIA_HDD"));
    dialog->InitSetControl();
    EXPECT_EQ(widget("pushButton_ok").text(), "") << "the next call reads it again";
}

TEST_P(SelectionInBothLanguages, SetsTheListUp)
{
    setUp(GetParam());
    const int language = GetParam() == korean ? korean : english;
    auto& list = widget<QTableView>("tableView_certlist");
    EXPECT_EQ(list.selectionBehavior(), QAbstractItemView::SelectRows);
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_EQ(list.editTriggers(), QAbstractItemView::NoEditTriggers);
    EXPECT_EQ(list.font().pointSize(), 8);
    const char* const keys[] = {
        "DLG_CERTLISTCTRL_DN", "DLG_CERTLISTCTRL_ISSUER", "DLG_CERTLISTCTRL_USAGE", "DLG_CERTLISTCTRL_VALIDITYTO"};
    const int widths[] = {95, 92, 92, 75};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(list.model()->headerData(i, Qt::Horizontal).toString(), driver::ui(language, keys[i]));
        EXPECT_EQ(list.columnWidth(i), widths[i]);
    }
}

TEST_P(SelectionInBothLanguages, EnablesTheTwoDiskButtonsWithTheImagesOfTheLanguage)
{
    setUp(GetParam());
    for (const MediaButton& button : media) {
        auto& shown = widget(button.name);
        EXPECT_EQ(shown.isEnabled(), button.bit <= 2) << button.name;
        EXPECT_EQ(shown.iconSize(), QSize(50, 60)) << button.name;
        const QString image = QString(":/png/image/%1_%2.png").arg(button.image, GetParam() == korean ? "N" : "NE");
        EXPECT_EQ(shown.icon().pixmap(50, 60, QIcon::Normal, QIcon::On).toImage(), resource(image)) << button.name;
    }
}

TEST_F(SelectionTest, ShowsAPressedButtonWithItsLargerImage)
{
    setUp();
    for (const MediaButton& button : media)
        for (int language : {korean, english}) {
            dialog->SetButtonImage(2, button.bit, language);
            auto& shown = widget(button.name);
            EXPECT_TRUE(shown.isEnabled());
            EXPECT_EQ(shown.iconSize(), QSize(52, 62));
            const QString image =
                QString(":/png/image/%1_%2.png").arg(button.image, language == korean ? "P" : "PE");
            EXPECT_EQ(shown.icon().pixmap(52, 62, QIcon::Normal, QIcon::On).toImage(), resource(image));
        }
}

TEST_F(SelectionTest, DisablesAButtonForEveryStateButOneAndTwo)
{
    setUp();
    for (int state : {0, 3, -1}) {
        dialog->SetButtonImage(1, 1, korean);
        dialog->SetButtonImage(state, 1, korean);
        EXPECT_FALSE(widget("pushButton_hdd").isEnabled()) << state;
        EXPECT_EQ(widget("pushButton_hdd").iconSize(), QSize(50, 60)) << state;
    }
    dialog->SetButtonImage(3, 1, korean);
    EXPECT_EQ(widget("pushButton_hdd").icon().pixmap(52, 62, QIcon::Normal, QIcon::On).toImage(),
        resource(":/png/image/HDD_P.png"))
        << "above 1 the image is the pressed one";
}

TEST_F(SelectionTest, IgnoresAnUnknownButtonBit)
{
    setUp();
    for (int bit : {0, 3, 64, -1})
        dialog->SetButtonImage(2, bit, korean);
    for (const MediaButton& button : media)
        EXPECT_EQ(widget(button.name).iconSize(), QSize(50, 60));
}

TEST_F(SelectionTest, TellsThePressedLookOfAButtonFromTheOtherInBothLanguages)
{
    for (const MediaButton& button : media) {
        const auto picture = [&](const char* look) {
            return resource(QString(":/png/image/%1_%2.png").arg(button.image, look));
        };
        for (const char* look : {"N", "NE", "P", "PE"}) {
            EXPECT_EQ(picture(look).size(), *look == 'P' ? QSize(52, 62) : QSize(50, 60)) << button.image << look;
            EXPECT_FALSE(resource(QString(":/ico/image/%1_%2.ico").arg(button.image, look)).isNull());
        }
        EXPECT_NE(picture("N"), picture("P").scaled(50, 60));
        EXPECT_EQ(picture("N"), picture("NE")) << "a picture speaks no language";
        EXPECT_EQ(picture("P"), picture("PE"));
    }
}

TEST_P(SelectionInBothLanguages, WritesTheCaptionsOfTheMediaInOneSize)
{
    setUp(GetParam());
    const int size = widget("pushButton_hdd").font().pixelSize();
    EXPECT_GE(size, 8);
    for (const MediaButton& button : media)
        EXPECT_EQ(widget(button.name).font().pixelSize(), size) << button.name;
}

TEST_F(SelectionTest, HasAnIconUnlessTheHostHasOne)
{
    EXPECT_FALSE(setUp().windowIcon().isNull());
    QPixmap host(16, 16);
    host.fill(Qt::red);
    QApplication::setWindowIcon(host);
    EXPECT_EQ(setUp().windowIcon().cacheKey(), QApplication::windowIcon().cacheKey());
    QApplication::setWindowIcon({});
}

TEST(Images, AreBundledUnderTheirNames)
{
    for (const char* name : {"Logo", "QuorraLogo", "CivicLogo", "Cert_Valid", "cert_Renewal", "Cert_Invalid"})
        EXPECT_FALSE(resource(QString(":/bmp/image/%1.bmp").arg(name)).isNull()) << name;
    EXPECT_TRUE(QFile::exists(":/gif/image/ani_quorra.gif"));
    EXPECT_FALSE(QFile::exists(":/bmp/image/Cert_Renewal.bmp")) << "stored with a small first letter, on purpose";
    EXPECT_EQ(QDir(":/bmp/image").entryList().size(), 2 * (3 + 3 + 2));
    EXPECT_EQ(QDir(":/png/image").entryList().size(), 2 * 24);
    EXPECT_EQ(QDir(":/ico/image").entryList().size(), 24);
}

TEST(Images, HaveTwiceThePixelsForScreensOfScaleTwo)
{
    for (const char* folder : {":/bmp/image/", ":/png/image/", ":/icon/image/"})
        for (const QString& name : QDir(folder).entryList()) {
            if (name.contains("@2x"))
                continue;
            const QString fine = folder + QString(name).replace(".", "@2x.");
            EXPECT_EQ(QImage(fine).size(), QImage(folder + name).size() * 2) << qPrintable(fine);
        }
}

TEST_F(SelectionTest, CreatesTheHiddenTitleLabelOnEveryCall)
{
    setUp();
    const auto titles = [&] {
        int count = 0;
        for (const QLabel* label : dialog->findChildren<QLabel*>())
            if (label->windowTitle() == QStringLiteral("인증서 선택창")) {
                EXPECT_FALSE(label->isVisible());
                ++count;
            }
        return count;
    };
    EXPECT_EQ(titles(), 1);
    dialog->InitSetControl();
    EXPECT_EQ(titles(), 2);
    dialog->show();
    EXPECT_EQ(titles(), 2);
}

class LogoTest : public SelectionTest {
protected:
    QImage logo() { return widget<QLabel>("label_logo").pixmap(Qt::ReturnByValue).toImage(); }
    QImage shownFor(const char* source)
    {
        qstrncpy(load.szLogo, source, sizeof load.szLogo);
        setUp();
        return logo();
    }
};

TEST_F(LogoTest, IsTheDefaultOneWithoutASource) { EXPECT_EQ(shownFor(""), resource(":/bmp/image/Logo.bmp")); }

TEST_F(LogoTest, IsTheOneNamedByTheLastPathComponent)
{
    EXPECT_EQ(shownFor("/some/where/QuorraLogo.bmp"), resource(":/bmp/image/QuorraLogo.bmp"));
    EXPECT_EQ(shownFor("CivicLogo.bmp"), resource(":/bmp/image/CivicLogo.bmp"));
}

TEST_F(LogoTest, IsTheDefaultOneForAnUnknownName)
{
    EXPECT_EQ(shownFor("/some/Missing.bmp"), resource(":/bmp/image/Logo.bmp"));
}

TEST_F(LogoTest, IsTheAgencysWhateverTheSourceSays)
{
    load.byCivicLogo = 1;
    EXPECT_EQ(shownFor("QuorraLogo.bmp"), resource(":/bmp/image/CivicLogo.bmp"));
}

TEST_F(LogoTest, IsTheOtherDefaultWhenTheUsimButtonIsEnabled)
{
    setUp();
    dialog->SetButtonImage(1, 4, korean);
    dialog->SetLogoImage();
    EXPECT_EQ(logo(), resource(":/bmp/image/QuorraLogo.bmp"));
    EXPECT_FALSE(widget<QLabel>("label_logo").isHidden());
}

class LogoDataTest : public LogoTest {
protected:
    void SetUp() override
    {
        LogoTest::SetUp();
        doubles::reset();
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(Qt::red);
        QBuffer buffer(&bmp);
        image.save(&buffer, "BMP");
        extra = std::make_unique<tagEXTRAOPTION>();
        qstrncpy(extra->szData, bmp.toBase64().constData(), sizeof extra->szData);
    }
    QImage shown()
    {
        qstrncpy(load.szLogo, "LOAD_DATA", sizeof load.szLogo);
        dialog = std::make_unique<SelectCertDialog>();
        tagINITOPT init = initOptions(korean, DOUBLES_FOLDER);
        dialog->SetInitOption(&init, &load, extra.get());
        dialog->InitSetControl();
        return logo();
    }
    /** The toolkit decodes for real, into memory that it hands out. */
    static int decode(const doubles::Call& call)
    {
        const auto* text = call.pointer<BINSTR>(0);
        static QByteArray decoded;
        decoded = QByteArray::fromBase64(QByteArray(reinterpret_cast<const char*>(text->pData), text->nLength));
        *call.pointer<BINSTR>(1) = {
            reinterpret_cast<unsigned char*>(decoded.data()), static_cast<int>(decoded.size())};
        return 0;
    }
    QByteArray bmp;
};

TEST_F(LogoDataTest, IsDecodedByTheToolkit)
{
    doubles::answer("HVTK_BASE64_Decode", decode);
    doubles::answer("HVTK_BINSTR_Delete", 0);
    const QImage image = shown();
    EXPECT_EQ(image.size(), QSize(20, 10));
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(doubles::callsOf("HVTK_BINSTR_Delete").size(), 2u) << "both byte strings are given back";
}

TEST_F(LogoDataTest, FallsBackWhenItIsNoBase64)
{
    doubles::answer("HVTK_BASE64_Decode", 4000);
    EXPECT_EQ(shown(), resource(":/bmp/image/Logo.bmp"));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(LogoDataTest, FallsBackWhenItIsNoImage)
{
    qstrncpy(extra->szData, QByteArray("no image").toBase64().constData(), sizeof extra->szData);
    doubles::answer("HVTK_BASE64_Decode", decode);
    doubles::answer("HVTK_BINSTR_Delete", 0);
    EXPECT_EQ(shown(), resource(":/bmp/image/Logo.bmp"));
}

TEST_F(LogoDataTest, FallsBackWithoutData)
{
    EXPECT_EQ((doubles::answer("HVTK_BASE64_Decode", 0), shown()), resource(":/bmp/image/Logo.bmp"))
        << "decoded, and nothing in it";
    extra->szData[0] = '\0';
    EXPECT_EQ(shown(), resource(":/bmp/image/Logo.bmp"));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(LogoDataTest, FallsBackWithoutAToolkit)
{
    qstrncpy(load.szLogo, "LOAD_DATA", sizeof load.szLogo);
    dialog = std::make_unique<SelectCertDialog>();
    tagINITOPT init = initOptions(korean, "/nowhere");
    dialog->SetInitOption(&init, &load, extra.get());
    dialog->InitSetControl();
    EXPECT_EQ(logo(), resource(":/bmp/image/Logo.bmp"));
}

TEST_F(LogoDataTest, TakesTheWholeText)
{
    std::memset(extra->szData, 'A', sizeof extra->szData);
    doubles::answer("HVTK_BASE64_Decode", 4000);
    shown();
    ASSERT_EQ(doubles::callsOf("HVTK_BINSTR_SetData").size(), 1u);
    EXPECT_EQ(doubles::callsOf("HVTK_BINSTR_SetData")[0].integer(1), 199999);
}
