// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Every text can be read on what is under it, in light, dark and high-contrast palettes: measured in rendered pixels.

#include "tests/ui/desktops.h"
#include "tests/ui/fixture.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/contrast.h"
#include "ui/language_texts.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>

#include <map>
#include <memory>

namespace {

/** The commonest colour of an area is the ground, the one that stands out most from it the text. */
double contrastIn(const QImage& image, const QRect& area)
{
    std::map<QRgb, int> counts;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.rect().contains(x, y))
                ++counts[image.pixel(x, y)];
    if (counts.empty())
        return 0;
    const QColor ground = std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) {
        return a.second < b.second;
    })->first;
    double most = 0;
    for (const auto& [colour, count] : counts)
        most = std::max(most, sigil::contrast(QColor(colour), ground));
    return most;
}

class ContrastTest : public SelectionTest, public testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        SelectionTest::SetUp();
        m_before = QApplication::palette();
        if (GetParam() >= 0)
            QApplication::setPalette(paletteOf(desktops[GetParam()]));
    }
    void TearDown() override
    {
        QApplication::setPalette(m_before);
        SelectionTest::TearDown();
    }

    void expectReadable(QWidget& window, const QWidget& widget, const QRect& part, const QString& what)
    {
        const QRect area(widget.mapTo(&window, part.topLeft()), part.size());
        EXPECT_GE(contrastIn(window.grab().toImage(), area), sigil::readable) << qPrintable(what);
        ++measured;
    }
    void expectReadableTable(QWidget& window, const char* name)
    {
        auto& table = driver::find<QTableView>(window, name);
        for (int row = 0; row < 2; ++row)
            expectReadable(window, *table.viewport(),
                table.visualRect(table.model()->index(row, 0)).adjusted(2, 2, -2, -2),
                QString("%1 row %2").arg(name).arg(row));
        const QHeaderView* header = table.horizontalHeader();
        expectReadable(window, *header->viewport(),
            QRect(header->sectionViewportPosition(0) + 3, 3, header->sectionSize(0) - 6, header->height() - 6),
            name);
    }
    void expectReadableTexts(QWidget& window)
    {
        for (QLabel* label : window.findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty() && label->pixmap(Qt::ReturnByValue).isNull())
                expectReadable(window, *label, label->rect(), label->objectName());
        for (QPushButton* button : window.findChildren<QPushButton*>())
            if (button->isVisible())
                expectReadable(window, *button,
                    button->icon().isNull() ? button->rect().adjusted(8, 6, -8, -6)
                                            : button->rect().adjusted(7, 40, -7, -8),
                    button->objectName());
        for (QLineEdit* field : window.findChildren<QLineEdit*>())
            if (!field->text().isEmpty())
                expectReadable(window, *field, field->rect().adjusted(2, 3, -2, -3), field->objectName());
    }

    int measured = 0;

private:
    QPalette m_before;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Desktops, ContrastTest, testing::Range(-1, 4));

TEST_P(ContrastTest, OfTheSelectionDialog)
{
    for (int language : {korean, english}) {
        open(language);
        driver::types(*dialog, "lineEdit_password", "x");
        expectReadableTexts(*dialog);
        expectReadableTable(*dialog, "tableView_certlist");
        auto& group = widget<QGroupBox>("groupBox");
        expectReadable(*dialog, group, QRect(0, 0, group.width(), 18), "groupBox");
    }
    EXPECT_GT(measured, 30);
}

TEST_P(ContrastTest, OfTheSmallDialogs)
{
    PasswordDialog password;
    password.SetCaller(english, SIGILDESK_LIBRARY_FOLDER);
    password.InitSetControl();
    password.show();
    expectReadableTexts(password);
    RemoveableDialog drives;
    drives.SetCaller(english, SIGILDESK_LIBRARY_FOLDER, nullptr);
    drives.InitSetControl();
    drives.GetRemovableDisk();
    drives.show();
    driver::clicksRow(drives, "tableView_remobable", 0);
    expectReadableTexts(drives);
    expectReadableTable(drives, "tableView_remobable");
    EXPECT_GT(measured, 9);
}

TEST_P(ContrastTest, OfTheViewer)
{
    tagCERTINFO entry = scripted::sampleEntry("x");
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(english), nullptr, &entry);
    viewer.InitSetControl();
    viewer.show();
    expectReadableTexts(viewer);
    auto& tabs = driver::find<QTabWidget>(viewer, "tabWidget");
    for (int tab = 0; tab < 2; ++tab)
        expectReadable(viewer, *tabs.tabBar(), tabs.tabBar()->tabRect(tab).adjusted(8, 6, -8, -6), "tab");
    tabs.setCurrentIndex(1);
    driver::clicksRow(viewer, "tableView_certinfolist", 1);
    expectReadableTable(viewer, "tableView_certinfolist");
    EXPECT_GT(measured, 15);
}

TEST_F(SelectionTest, ShowsTheStateOfACertificateOnTheColourOfTheDesktop)
{
    for (const char* name : {"Cert_Valid", "cert_Renewal", "Cert_Invalid"}) {
        const QImage image(QString(":/bmp/image/%1.bmp").arg(name));
        ASSERT_EQ(image.size(), QSize(48, 48)) << name;
        for (const QPoint& corner : {QPoint(0, 0), QPoint(47, 0), QPoint(0, 47), QPoint(47, 47)})
            EXPECT_EQ(image.pixelColor(corner).alpha(), 0) << name;
        EXPECT_EQ(image.pixelColor(15, 29), QColor(Qt::white)) << name << ": the page stays white";
    }
}
