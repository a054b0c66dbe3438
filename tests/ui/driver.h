// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Drives dialogs as a user does: waits until one is shown, finds its widgets by name, clicks and types.
 */
#pragma once

#include "ui/language_texts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

#include <functional>
#include <string>

namespace driver {

/** Milliseconds in which what must come has come, on a machine under load too. */
constexpr int patience = 60000;

/** Texts of the language file in the ready-to-use library folder, as the dialogs should show them. */
QString ui(int language, const char* key);
QString message(int language, const char* key);
/** All of that file, as a dialog takes them. */
sigil::LanguageTexts texts(int language);

/** The widget of that name; the test fails, and the program ends, without it. */
template <class Widget>
Widget& find(QWidget& parent, const char* name)
{
    auto* widget = parent.findChild<Widget*>(name);
    if (!widget)
        qFatal("no widget %s", name);
    return *widget;
}

/** Runs @p action on the next modal dialog that is not the present one, as soon as it is shown. */
void whenShown(std::function<void(QDialog&)> action);

/** Closes the next message box and stores its caption and text. */
struct Box {
    QString caption, text;
    bool shown = false;
    int buttons = 0;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};
void answerBox(Box& box);

inline void presses(QWidget& dialog, const char* button)
{
    QTest::mouseClick(&find<QAbstractButton>(dialog, button), Qt::LeftButton);
}
inline void types(QWidget& dialog, const char* field, const char* text)
{
    QTest::keyClicks(&find<QLineEdit>(dialog, field), text);
}
/** Clicks the first cell of a row. */
void clicksRow(QWidget& dialog, const char* table, int row);
void doubleClicksRow(QWidget& dialog, const char* table, int row);

/** Text of a cell. */
inline QString cell(QWidget& dialog, const char* table, int row, int column)
{
    const QAbstractItemModel* model = find<QTableView>(dialog, table).model();
    return model->index(row, column).data().toString();
}

} // namespace driver
