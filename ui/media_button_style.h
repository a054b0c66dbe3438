// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  How a media button looks: its picture over the whole button, its text in the part that the picture leaves free.
 */
#pragma once

#include <QProxyStyle>

class QPushButton;

namespace sigil {

/** Pixels of the largest font, down to hardly readable, in which the text of a media button has room. */
int fittingPixels(const QPushButton& button);

/** For the media buttons only. The pictures keep their lower third empty; the usual style would put the text beside
 *  the picture, where a button of 58 pixels has no room. */
class MediaButtonStyle : public QProxyStyle {
    Q_OBJECT

public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override;
};

} // namespace sigil
