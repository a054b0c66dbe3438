// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/large_type.h"

#include "ui/dialog_support.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QTableView>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace sigil {

namespace {

constexpr double designDpi = 96;
constexpr double unlimited = 1e6; ///< pixels of a line

/** Lines of a text in a room; the last one that fits ends in an ellipsis when there are more. */
struct Lines {
    QString text;
    bool elided = false;
};

Lines linesIn(const QLabel& label)
{
    const QFontMetrics metrics = label.fontMetrics();
    const QSize room = label.contentsRect().size();
    const QString whole = label.text();
    const int most = label.wordWrap() ? std::max(1, room.height() / metrics.lineSpacing()) : 1;
    QTextLayout layout(whole, label.font());
    layout.beginLayout();
    Lines lines;
    for (int line = 1; line <= most; ++line) {
        QTextLine next = layout.createLine();
        if (!next.isValid())
            return lines;
        next.setLineWidth(line < most ? room.width() : unlimited);
        const QString text = whole.mid(next.textStart(), line < most ? next.textLength() : -1);
        const QString shown = line < most ? text : metrics.elidedText(text, Qt::ElideRight, room.width());
        lines.elided = shown != text; // only the last line may be
        lines.text += (line > 1 ? "\n" : "") + shown;
    }
    return lines;
}

/** Draws the labels whose text is longer than their room. */
class LabelFit : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        auto& label = static_cast<QLabel&>(*watched);
        const Lines lines = label.pixmap(Qt::ReturnByValue).isNull() ? linesIn(label) : Lines();
        label.setToolTip(lines.elided ? toolTipOf(label.text()) : QString());
        if (lines.elided) {
            QPainter painter(&label);
            label.style()->drawItemText(&painter, label.contentsRect(), static_cast<int>(label.alignment()),
                label.palette(), label.isEnabled(), lines.text, label.foregroundRole());
        }
        return lines.elided;
    }
};

void grow(QWidget* widget, double scale)
{
    const auto longer = [scale](int length) { return qRound(length * scale); };
    const QRect place = widget->geometry();
    if (widget->maximumWidth() < QWIDGETSIZE_MAX)
        widget->setMaximumSize(longer(widget->maximumWidth()), longer(widget->maximumHeight()));
    widget->setMinimumSize(longer(widget->minimumWidth()), longer(widget->minimumHeight()));
    widget->setGeometry(longer(place.x()), longer(place.y()), longer(place.width()), longer(place.height()));
}

void growRows(QTableView* table, double scale)
{
    QHeaderView* rows = table->verticalHeader();
    const int height = rows->defaultSectionSize();
    rows->setMinimumSectionSize(qRound(rows->minimumSectionSize() * scale));
    rows->setDefaultSectionSize(qRound(height * scale));
}

} // namespace

double typeScale(const QWidget* widget)
{
    constexpr double steps = 8; // in eighths: screens that measure themselves are a little off 96 DPI
    return std::max(1.0, std::round(widget->logicalDpiY() / designDpi * steps) / steps);
}

int scaled(const QWidget* widget, int length) { return qRound(length * typeScale(widget)); }

QSize scaled(const QWidget* widget, const QSize& size)
{
    return {scaled(widget, size.width()), scaled(widget, size.height())};
}

QPixmap scaled(const QWidget* widget, const QPixmap& picture, const QPixmap& fine)
{
    const double ratio = widget->devicePixelRatioF();
    const QSize pixels = scaled(widget, picture.size()) * ratio;
    if (picture.isNull() || pixels == picture.size())
        return picture;
    QPixmap fitting =
        (fine.isNull() ? picture : fine).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    fitting.setDevicePixelRatio(ratio);
    return fitting;
}

QPixmap pictureFor(const QWidget* widget, const QString& path)
{
    const auto dot = path.lastIndexOf('.');
    return scaled(widget, QPixmap(path), QPixmap(path.left(dot) + "@2x" + path.mid(dot)));
}

void fitForm(QWidget* form)
{
    auto* fit = new LabelFit(form); // owned by the form
    for (QLabel* label : form->findChildren<QLabel*>())
        label->installEventFilter(fit);
    const double scale = typeScale(form); // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the form owns it
    if (scale == 1)
        return;
    grow(form, scale);
    for (QWidget* child : form->findChildren<QWidget*>())
        if (!child->objectName().isEmpty() && !child->objectName().startsWith("qt_"))
            grow(child, scale);
    for (QTableView* table : form->findChildren<QTableView*>())
        growRows(table, scale);
}

} // namespace sigil
