// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/contrast.h"

#include <QColor>
#include <QPalette>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace sigil {

namespace {

/** Share of the light that a channel of an sRGB colour gives. */
double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

constexpr double step = 0.05;
constexpr double margin = 1.5; ///< thin strokes are drawn paler than their colour

} // namespace

QColor mixed(const QColor& one, const QColor& other, double share)
{
    const auto mix = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor inkOn(const QColor& ground, bool enabled)
{
    const QColor ink = contrast(ground, Qt::black) > contrast(ground, Qt::white) ? Qt::black : Qt::white;
    double share = enabled ? 1 : 0.65;
    while (share < 1 && contrast(mixed(ink, ground, share), ground) < readable + margin)
        share = std::min(1.0, share + step);
    return mixed(ink, ground, share);
}

void makeSelectionsReadable(QWidget* widget)
{
    const QColor text = widget->palette().color(QPalette::HighlightedText);
    const QColor wanted = widget->palette().color(QPalette::Highlight);
    const QColor away = contrast(text, Qt::black) > contrast(text, Qt::white) ? Qt::black : Qt::white;
    double share = 1;
    while (share > 0 && contrast(mixed(wanted, away, share), text) < readable + margin)
        share -= step;
    QPalette palette;
    palette.setColor(QPalette::Highlight, mixed(wanted, away, std::max(0.0, share)));
    widget->setPalette(palette);
}

} // namespace sigil
