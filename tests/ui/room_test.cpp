// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Every text against its room: at several DPI, scales and with two Korean fonts, in both languages. Qt reads DPI and scale
// when an application begins, so each combination is a run of this program; without arguments it runs them all.

#include "tests/ui/fixture.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/language_texts.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"

#include "foundation/text_field.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QProcess>
#include <QTabBar>
#include <QTabWidget>

#include <cstdio>

namespace {

/** Counts texts that are cut without a word. */
class Rooms {
public:
    explicit Rooms(int language)
        : m_language(language)
    {
    }

    void measure(QWidget& window)
    {
        window.grab(); // labels learn while they are drawn that they have to elide
        for (QWidget* each : window.findChildren<QWidget*>())
            if (each->isVisibleTo(&window) && !each->objectName().isEmpty() &&
                !each->objectName().startsWith("qt_"))
                measureWidget(*each);
        for (QTableView* table : window.findChildren<QTableView*>())
            if (table->isVisibleTo(&window))
                measureTable(*table);
        for (QLabel* label : window.findChildren<QLabel*>())
            measurePicture(*label);
        for (QTabBar* tabs : window.findChildren<QTabBar*>())
            for (int i = 0; i < tabs->count(); ++i)
                check(*tabs, tabs->fontMetrics().horizontalAdvance(tabs->tabText(i)), tabs->tabRect(i).width(), "");
    }

    int checks = 0;
    int cut = 0;

private:
    void check(const QWidget& widget, int needed, int room, const QString& toolTip)
    {
        ++checks;
        if (needed <= room || !toolTip.isEmpty())
            return;
        ++cut;
        std::printf("cut: %s of %s needs %d, has %d (language %d)\n", qPrintable(widget.objectName()),
            qPrintable(widget.window()->metaObject()->className()), needed, room, m_language);
    }
    void measureWidget(const QWidget& widget)
    {
        const QRect inside = widget.parentWidget()->rect();
        check(widget, widget.geometry().right(), inside.right(), "");
        check(widget, widget.geometry().bottom(), inside.bottom(), "");
        if (const auto* label = qobject_cast<const QLabel*>(&widget))
            measureLabel(*label);
        if (const auto* button = qobject_cast<const QPushButton*>(&widget); button && button->icon().isNull())
            check(widget, button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + 8,
                button->width(), button->toolTip());
        if (const auto* field = qobject_cast<const QLineEdit*>(&widget); field && field->isReadOnly())
            check(widget, field->fontMetrics().horizontalAdvance(field->text()) + 4, field->width(),
                field->toolTip());
        if (qobject_cast<const QPushButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
            qobject_cast<const QLabel*>(&widget))
            check(widget, widget.fontMetrics().height(), widget.height(), "");
        if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
            check(widget, group->fontMetrics().horizontalAdvance(group->title()), group->width(), "");
    }
    void measureLabel(const QLabel& label)
    {
        if (label.text().isEmpty() || !label.pixmap(Qt::ReturnByValue).isNull())
            return;
        const QRect needed = label.fontMetrics().boundingRect(
            QRect(0, 0, label.width(), 10000), label.wordWrap() ? Qt::TextWordWrap : 0, label.text());
        check(label, needed.width(), label.width(), label.toolTip());
        check(label, needed.height(), label.height(), label.toolTip());
    }
    /** A picture has the pixels of its screen. */
    void measurePicture(const QLabel& label)
    {
        const QPixmap picture = label.pixmap(Qt::ReturnByValue);
        if (!picture.isNull())
            check(label, qRound(label.devicePixelRatioF() * 100), qRound(picture.devicePixelRatio() * 100), "");
    }
    void measureTable(const QTableView& table)
    {
        const QAbstractItemModel& model = *table.model();
        for (int column = 0; column < model.columnCount(); ++column) {
            const QString header = model.headerData(column, Qt::Horizontal).toString();
            check(table, table.horizontalHeader()->fontMetrics().horizontalAdvance(header) + 6,
                table.columnWidth(column), model.headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString());
            for (int row = 0; row < model.rowCount(); ++row) {
                const QModelIndex cell = model.index(row, column);
                check(table, table.fontMetrics().horizontalAdvance(cell.data().toString()) + 6,
                    table.columnWidth(column), cell.data(Qt::ToolTipRole).toString());
                check(table, table.fontMetrics().height(), table.rowHeight(row), "");
            }
        }
    }

    int m_language;
};

tagCERTINFO longEntry(int status)
{
    tagCERTINFO entry = scripted::sampleEntry("홍길동()0011041200012345678901234567890", status);
    sigil::copyText(entry.szPolicyName, scripted::eucKr("Corporate general purpose certificate, class 3"));
    sigil::copyText(entry.szIssuerName, scripted::eucKr("아주 긴 이름을 가진 예제 인증기관 주식회사"));
    return entry;
}

void measureSelection(Rooms& rooms, int language)
{
    SelectCertDialog dialog;
    tagINITOPT init = initOptions(language);
    tagLOADSELECTCERTOPTION load{};
    dialog.SetInitOption(&init, &load, nullptr);
    dialog.InitSetControl();
    dialog.Initalize();
    dialog.SetInitMediaCert(1);
    dialog.show();
    rooms.measure(dialog);
    scripted::processor().results["CLP_LoadCertList"] = 1115;
    driver::presses(dialog, "pushButton_hdd");
    scripted::processor().results.clear();
    rooms.measure(dialog);
}

void measureViewer(Rooms& rooms, int language, int status)
{
    tagCERTINFO entry = longEntry(status);
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(language), &scripted::processor(), &entry);
    viewer.InitSetControl();
    viewer.show();
    rooms.measure(viewer);
    driver::find<QTabWidget>(viewer, "tabWidget").setCurrentIndex(1);
    rooms.measure(viewer);
}

void measureSmallDialogs(Rooms& rooms, int language)
{
    PasswordDialog password;
    password.SetCaller(language, SIGILDESK_LIBRARY_FOLDER);
    password.InitSetControl();
    password.show();
    rooms.measure(password);
    RemoveableDialog drives;
    drives.SetCaller(language, SIGILDESK_LIBRARY_FOLDER, nullptr);
    drives.InitSetControl();
    drives.GetRemovableDisk();
    drives.show();
    rooms.measure(drives);
}

/** Measures all dialogs. @return 0 when no text is cut */
int measureAll()
{
    scripted::processor() = {};
    scripted::processor().entries = {longEntry(3), longEntry(4), longEntry(5)};
    scripted::processor().drives = {
        scripted::sampleDrive(0, "/media/somebody/A disk with a very long name indeed")};
    int cut = 0, checks = 0;
    for (int language : {korean, english}) {
        Rooms rooms(language);
        measureSelection(rooms, language);
        for (int status : {3, 4, 5})
            measureViewer(rooms, language, status);
        measureSmallDialogs(rooms, language);
        cut += rooms.cut;
        checks += rooms.checks;
    }
    std::printf("%d of %d texts are cut\n", cut, checks);
    return cut == 0 && checks > 200 ? 0 : 1;
}

class RoomTest : public testing::TestWithParam<std::tuple<const char*, const char*, const char*>> { };

} // namespace

TEST_P(RoomTest, IsEnoughForEveryText)
{
    const auto [dpi, scale, font] = GetParam();
    QProcess run;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_FONT_DPI", dpi);
    environment.insert("QT_SCALE_FACTOR", scale);
    run.setProcessEnvironment(environment);
    run.start(QCoreApplication::applicationFilePath(), {"--measure", font});
    ASSERT_TRUE(run.waitForFinished(driver::patience));
    EXPECT_EQ(run.exitCode(), 0) << run.readAllStandardOutput().constData();
}

INSTANTIATE_TEST_SUITE_P(Desktops, RoomTest,
    testing::Combine(testing::Values("96", "120", "144", "192"), testing::Values("1", "1.25", "1.5", "2"),
        testing::Values("NanumGothic", "Noto Sans CJK KR")));

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    static QApplication* const application = std::make_unique<QApplication>(argc, argv).release(); // as in main.cpp
    if (argc == 3 && QString(argv[1]) == "--measure") {
        QFont font(argv[2]);
        font.setPointSize(9);
        application->setFont(font);
        return measureAll();
    }
    return RUN_ALL_TESTS();
}
