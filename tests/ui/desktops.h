// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The colours of desktops that are not the usual light one.
 */
#pragma once

#include <QColor>
#include <QPalette>

struct Colours {
    const char* name;
    QColor ground, text, button, highlight, highlightedText;
};

inline const Colours desktops[] = {
    {"dark", "#353535", "#ffffff", "#454545", "#2a82da", "#ffffff"},
    {"high contrast, black", "#000000", "#ffffff", "#000000", "#ffff00", "#000000"},
    {"high contrast, white", "#ffffff", "#000000", "#ffffff", "#000080", "#ffffff"},
    {"light on dark windows", "#202020", "#f0f0f0", "#303030", "#5599ff", "#ffffff"},
};

inline QPalette paletteOf(const Colours& colours)
{
    QPalette palette(colours.button, colours.ground);
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText})
        palette.setColor(role, colours.text);
    palette.setColor(QPalette::Base, colours.ground);
    palette.setColor(QPalette::Highlight, colours.highlight);
    palette.setColor(QPalette::HighlightedText, colours.highlightedText);
    return palette;
}
