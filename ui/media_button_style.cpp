// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/media_button_style.h"

#include "ui/contrast.h"
#include "ui/large_type.h"

#include <QIcon>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QWidget>

namespace sigil {

namespace {

/** The lower part of the button, inside the picture's frame. */
QRect textPart(const QWidget& button)
{
    const auto longer = [&](int length) { return scaled(&button, length); };
    return button.rect().adjusted(longer(4), longer(36), -longer(4), -longer(5));
}

QIcon::Mode modeOf(const QStyleOptionButton& option)
{
    return option.state & QStyle::State_Enabled ? QIcon::Normal : QIcon::Disabled;
}

/** What is under the text: the picture's empty part, or the button where there is no picture. */
QColor groundOf(const QStyleOptionButton& option)
{
    QColor button = option.palette.color(QPalette::Button);
    const QImage picture = option.icon.pixmap(option.iconSize, modeOf(option), QIcon::On).toImage();
    if (picture.isNull())
        return button;
    const QColor over = picture.pixelColor(picture.width() / 2, picture.height() * 7 / 8);
    return mixed(over, button, over.alphaF());
}

void drawPicture(const QStyleOptionButton& option, QPainter* painter, const QRect& button)
{
    QRect place(QPoint(), option.iconSize);
    place.moveCenter(button.center());
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    const QSize pixels = place.size() * painter->device()->devicePixelRatioF();
    const QPixmap picture = option.icon.pixmap(pixels, modeOf(option), QIcon::On);
    if (!picture.isNull())
        painter->drawPixmap(place, picture);
}

void drawText(const QStyle& style, const QStyleOptionButton& option, QPainter* painter, const QWidget& button)
{
    const QRect part = textPart(button);
    painter->setFont(button.font());
    // Not the desktop's colour of texts: the pictures are light on a dark desktop too.
    painter->setPen(inkOn(groundOf(option), option.state & QStyle::State_Enabled));
    style.drawItemText(
        painter, part, Qt::AlignCenter | Qt::TextWordWrap, option.palette, true, option.text, QPalette::NoRole);
}

} // namespace

int fittingPixels(const QPushButton& button)
{
    const QRect part = textPart(button);
    QFont font = button.font();
    for (int pixels = scaled(&button, 11);; --pixels) {
        font.setPixelSize(pixels);
        const QRect needed =
            QFontMetrics(font).boundingRect(part, Qt::AlignCenter | Qt::TextWordWrap, button.text());
        if (part.contains(needed) || pixels <= scaled(&button, 7))
            return pixels;
    }
}

void MediaButtonStyle::drawControl(
    ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element != CE_PushButtonLabel || !button || !widget) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    painter->save();
    drawPicture(*button, painter, widget->rect());
    drawText(*this, *button, painter, *widget);
    painter->restore();
}

} // namespace sigil
