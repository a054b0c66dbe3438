// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/dialog_support.h"

#include "ui/language_texts.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTextDocument>

namespace sigil {

namespace {

/** Sees the keys of a dialog's buttons before the buttons do. */
class ButtonKeys : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* button, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto& key = static_cast<QKeyEvent&>(*event);
        if (key.key() == Qt::Key_Return && !key.isAutoRepeat())
            static_cast<QPushButton*>(button)->click();
        return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    }
};

} // namespace

int showInformation(QWidget* parent, const LanguageTexts& texts, const QString& caption, const QString& text)
{
    // Before its dialog is shown a box would stand where that one is not yet: in the corner. Without it, it is put into
    // the middle of the screen.
    QWidget* beside = parent && parent->isVisible() ? parent : nullptr;
    QMessageBox box(QMessageBox::Information, caption, text, QMessageBox::Ok, beside);
    box.setObjectName("messageBox");
    box.setTextFormat(Qt::PlainText);
    if (const QString ok = texts.ui("DLG_BUTTON_OK"); !ok.isEmpty())
        box.button(QMessageBox::Ok)->setText(ok);
    return box.exec();
}

void giveIcon(QDialog* dialog)
{
    if (QApplication::windowIcon().isNull())
        dialog->setWindowIcon(QIcon(":/icon/image/Icon.png"));
}

void takeKey(QKeyEvent* event, const std::function<void()>& cancel, const std::function<void()>& confirm)
{
    event->accept();
    if (event->key() == Qt::Key_Escape)
        cancel();
    else if (event->key() == Qt::Key_Return)
        confirm();
}

void letReturnPressButtons(QDialog* dialog)
{
    auto* keys = new ButtonKeys(dialog); // owned by the dialog
    for (QPushButton* button : dialog->findChildren<QPushButton*>())
        button->installEventFilter(keys);
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the dialog owns it

QString toolTipOf(const QString& text)
{
    return text.isEmpty() ? QString() : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

void tipHeaders(QAbstractItemModel& model)
{
    for (int column = 0; column < model.columnCount(); ++column)
        model.setHeaderData(column, Qt::Horizontal, toolTipOf(model.headerData(column, Qt::Horizontal).toString()),
            Qt::ToolTipRole);
}

void announce(QWidget* widget, const QString& text)
{
    widget->setAccessibleDescription(text);
    QAccessibleEvent alert(widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void showWholeRows(QTableView* table)
{
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void askForPassword(QLineEdit* field)
{
    if (!field->isEnabled())
        return;
    field->setFocus();
    field->selectAll();
}

void giveRoom(QLineEdit* field)
{
    constexpr int enough = 1024;
    QString room;
    room.reserve(enough);
    field->setText(room); // which shares it, and has it alone when this one goes
}

void wipeField(QLineEdit* field)
{
    QString text = field->text(); // shares the field's own memory, so that wiping it wipes what was typed
    giveRoom(field);              // also forgets the undo history
    wipe(text.data(), static_cast<std::size_t>(text.capacity()) * sizeof(QChar));
}

TypedPassword::TypedPassword(const QLineEdit* field)
    : m_bytes(field->text().toLocal8Bit())
{
}

} // namespace sigil
