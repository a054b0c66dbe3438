// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Forms on a desktop with large type. Places and sizes of a form are pixels at 96 DPI; fonts are points and grow with
 *  the desktop's DPI, so the form grows with them.
 */
#pragma once

#include <QPixmap>
#include <QSize>

class QLabel;
class QWidget;

namespace sigil {

/** How much larger than at 96 DPI the type of @p widget is, in eighths; at least 1. */
double typeScale(const QWidget* widget);

/** A length or size of a form as it is with the type of @p widget. */
int scaled(const QWidget* widget, int length);
QSize scaled(const QWidget* widget, const QSize& size);

/** A picture in the size that belongs to the type of @p widget, with the pixels of its screen.
 *  @param fine the same with twice the pixels, if there is one: taken where @p picture has too few */
QPixmap scaled(const QWidget* widget, const QPixmap& picture, const QPixmap& fine = {});

/** A picture of the library, from "NAME.EXT" or "NAME@2x.EXT"; null when there is none of that name. */
QPixmap pictureFor(const QWidget* widget, const QString& path);

/** Grows a form that was just set up, and lets its labels show by an ellipsis and a tooltip that a text is longer than its
 *  room. */
void fitForm(QWidget* form);

} // namespace sigil
