// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  How well a text can be read on what is under it.
 */
#pragma once

class QColor;
class QWidget;

namespace sigil {

/** The least contrast of a text and its ground. */
constexpr double readable = 4.5;

/** Contrast of two opaque colours: 1 for the same, 21 for black and white. */
double contrast(const QColor& one, const QColor& other);

/** @p share of the one colour, the rest of the other. */
QColor mixed(const QColor& one, const QColor& other, double share);

/** Black or white, whichever reads better on @p ground; for a text that is disabled milder, but readable. */
QColor inkOn(const QColor& ground, bool enabled);

/** Gives the selected texts inside @p widget a ground on which they can be read, also when the desktop's is too near. */
void makeSelectionsReadable(QWidget* widget);

} // namespace sigil
