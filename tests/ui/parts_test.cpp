// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Parts of the dialogs by themselves, in states that a dialog seldom brings them into.

#include "tests/support/files.h"
#include "tests/ui/fixture.h"
#include "ui/certificate_table.h"
#include "ui/contrast.h"
#include "ui/file_chooser.h"
#include "ui/large_type.h"
#include "ui/media_button_style.h"
#include "ui/resting_controls.h"
#include "ui/row_description.h"
#include "ui/verify_causes.h"

#include <QAbstractProxyModel>
#include <QFileSystemModel>
#include <QPainter>
#include <QStyleOptionButton>

using sigil::CertificateModel;
using sigil::FileChooser;
using sigil::LanguageTexts;
using sigil::MediaButtonStyle;

namespace {

/** A widget on a screen of twice the usual DPI. */
class FineWidget : public QWidget {
protected:
    int metric(PaintDeviceMetric metric) const override
    {
        return metric == PdmDpiX || metric == PdmDpiY ? 192 : QWidget::metric(metric);
    }
};

sigil::Selection::Rows rowsOf(const std::vector<std::string>& names)
{
    sigil::Selection::Rows rows;
    for (const std::string& name : names)
        rows.push_back(sigil::rowOf(scripted::sampleEntry(name)));
    return rows;
}

/** What a button of the medium style draws: its label, over a ground of that colour. */
QImage drawnLabel(const QStyle& style, const QStyleOption& option, const QWidget* widget)
{
    QImage image(100, 60, QImage::Format_RGB32);
    image.fill(Qt::yellow);
    QPainter painter(&image);
    style.drawControl(QStyle::CE_PushButtonLabel, &option, &painter, widget);
    painter.end();
    return image;
}

QStyleOptionButton labelled(const QColor& ground)
{
    QStyleOptionButton option;
    option.rect = QRect(0, 0, 100, 60);
    option.state = QStyle::State_Enabled;
    option.text = "M";
    option.palette.setColor(QPalette::Button, ground);
    return option;
}

bool holds(const QImage& image, const QColor& colour)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == colour)
                return true;
    return false;
}

} // namespace

TEST(TheRows, ThatWentAreShownEmpty)
{
    CertificateModel model;
    model.setColumnCount(4);
    model.insertRow(0);
    EXPECT_FALSE(model.data(model.index(0, 0), Qt::DisplayRole).isValid()) << "none was ever given";
    sigil::Selection::Rows rows = rowsOf({"one", "two"});
    model.show(rows, driver::texts(english));
    EXPECT_EQ(model.data(model.index(1, 0), Qt::DisplayRole).toString(), "two");
    EXPECT_FALSE(model.data(QModelIndex(), Qt::DisplayRole).isValid());
    rows.pop_back();
    EXPECT_FALSE(model.data(model.index(1, 0), Qt::DisplayRole).isValid());
    EXPECT_EQ(model.data(model.index(0, 0), Qt::DisplayRole).toString(), "one");
}

TEST(ARow, IsDescribedByWhatItHas)
{
    sigil::CertificateRow row = rowsOf({"one"}).front();
    const LanguageTexts texts = driver::texts(english);
    EXPECT_EQ(sigil::describe(row, texts).count('\n'), 4);
    row.serialNumber.clear();
    row.issuerDn.clear();
    EXPECT_EQ(sigil::describe(row, texts),
        sigil::stateOf(row, texts) + "\n" + texts.ui("DLG_CERVIEWDETAIL_FIELDBEFORE") + ": 2025-11-01\n" +
            texts.ui("DLG_CERVIEWDETAIL_FIELDAFTER") + ": 2027-10-31");
    row.validStatus = 99;
    EXPECT_EQ(sigil::stateOf(row, texts), "");
}

TEST(ACause, StaysAsTheToolkitSaysItWithoutTexts)
{
    const QString said = "The server cannot be reached: no route";
    EXPECT_EQ(sigil::causeIn(LanguageTexts(), said), said);
    EXPECT_EQ(sigil::causeIn(driver::texts(korean), said), driver::message(korean, "MSG_CERTVERIFY_FETCH"));
}

TEST(RestingControls, GiveTheKeyboardBackToWhoHadItOrToNobody)
{
    QDialog dialog;
    QPushButton resting(&dialog), other(&dialog), meanwhile(&dialog);
    {
        const sigil::RestingControls rest(&dialog, {&resting}, &meanwhile);
        EXPECT_FALSE(resting.isEnabled());
        EXPECT_EQ(dialog.focusWidget(), &meanwhile);
    }
    EXPECT_TRUE(resting.isEnabled());
    EXPECT_EQ(dialog.focusWidget(), &meanwhile) << "nobody had it before";
    other.setFocus();
    {
        const sigil::RestingControls rest(&dialog, {&resting}, &meanwhile);
    }
    EXPECT_EQ(dialog.focusWidget(), &other);
}

TEST(Ink, IsBlackOrWhiteWhicheverCanBeRead)
{
    EXPECT_EQ(sigil::inkOn(Qt::white, true), QColor(Qt::black));
    EXPECT_EQ(sigil::inkOn(QColor(20, 20, 60), true), QColor(Qt::white));
}

TEST(APicture, WithoutAFineOneIsEnlarged)
{
    const FineWidget widget;
    QPixmap coarse(10, 20), fine(20, 40);
    coarse.fill(Qt::red);
    fine.fill(Qt::blue);
    const QImage enlarged = sigil::scaled(&widget, coarse, QPixmap()).toImage();
    EXPECT_EQ(enlarged.size(), QSize(20, 40));
    EXPECT_EQ(enlarged.pixelColor(10, 20), QColor(Qt::red));
    EXPECT_EQ(sigil::scaled(&widget, coarse, fine).toImage().pixelColor(10, 20), QColor(Qt::blue));
}

TEST(AMediaButton, WithoutAPictureIsWrittenOnInInkThatCanBeRead)
{
    const MediaButtonStyle style;
    QPushButton button;
    button.resize(100, 60);
    EXPECT_TRUE(holds(drawnLabel(style, labelled(Qt::white), &button), Qt::black));
    EXPECT_TRUE(holds(drawnLabel(style, labelled(QColor(20, 20, 60)), &button), Qt::white));
}

TEST(AMediaButton, IsDrawnByTheDesktopsStyleWhereItIsNone)
{
    const MediaButtonStyle style;
    const QStyleOptionButton option = labelled(Qt::white);
    EXPECT_EQ(drawnLabel(style, option, nullptr), drawnLabel(*QApplication::style(), option, nullptr));
    QPushButton button;
    EXPECT_EQ(
        drawnLabel(style, QStyleOption(), &button), drawnLabel(*QApplication::style(), QStyleOption(), &button));
}

TEST(AMediaButton, HasSmallTypeForALongTextAndNoSmallerOne)
{
    QPushButton button("M");
    button.resize(60, 60);
    EXPECT_EQ(sigil::fittingPixels(button), 11);
    button.setText(QString(200, 'M'));
    EXPECT_EQ(sigil::fittingPixels(button), 7);
}

class ChooserTest : public testing::Test {
protected:
    const LanguageTexts texts = driver::texts(korean);
    FileChooser chooser{nullptr, korean, texts};
};

TEST_F(ChooserTest, NamesItsColumnsAndTheKindsOfFiles)
{
    const TemporaryFolder folder;
    const QString file = QString::fromStdString(folder.write("mine.pfx", "x"));
    const QAbstractProxyModel& columns = *chooser.proxyModel();
    auto& files = dynamic_cast<QFileSystemModel&>(*columns.sourceModel());
    const auto kindOf = [&](const QString& path) {
        return columns.mapFromSource(files.index(path, 2)).data().toString();
    };
    const QString ofFile = kindOf(file), ofFolder = kindOf(QString::fromStdString(folder.path()));
    EXPECT_TRUE(ofFile.contains("pfx")) << qPrintable(ofFile);
    EXPECT_FALSE(ofFolder.isEmpty());
    EXPECT_NE(ofFolder, ofFile);
    EXPECT_NE(columns.headerData(0, Qt::Horizontal), files.headerData(0, Qt::Horizontal));
    for (const auto& [section, orientation] : {std::pair{9, Qt::Horizontal}, {0, Qt::Vertical}})
        EXPECT_EQ(columns.headerData(section, orientation), files.headerData(section, orientation)) << section;
}

TEST_F(ChooserTest, StaysOpenWhileNothingIsChosen)
{
    chooser.show();
    chooser.accept(); // a box would wait for ever
    EXPECT_TRUE(chooser.isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}
