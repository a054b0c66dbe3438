// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/dialog_user.h"

#include "tests/torture/events.h"
#include "ui/select_cert_dialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace torture {
namespace {

void post(QWidget& widget, QEvent* event) { QCoreApplication::postEvent(&widget, event); }

void postClick(QWidget& widget, const QPoint& place)
{
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
        post(widget,
            new QMouseEvent(type, place, widget.mapToGlobal(place), Qt::LeftButton,
                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier));
}

/** A move with a widget of that name. */
template <class Widget, class Make>
Move moveWith(const char* dialog, const char* name, Make make)
{
    return {dialog, [=](QDialog& shown) {
                if (auto* widget = shown.findChild<Widget*>(name))
                    make(*widget);
            }};
}

std::string nameOf(const QDialog& dialog)
{
    const auto* const selection = dynamic_cast<const SelectCertDialog*>(&dialog);
    return selection && selection->IsListing() ? "listing" : dialog.metaObject()->className();
}

} // namespace

Move presses(const char* dialog, const char* button)
{
    return moveWith<QPushButton>(dialog, button, [](QPushButton& b) { postClick(b, b.rect().center()); });
}

Move turnsTo(const char* dialog, const char* tabs, int page)
{
    return moveWith<QTabWidget>(
        dialog, tabs, [page](QTabWidget& t) { postClick(*t.tabBar(), t.tabBar()->tabRect(page).center()); });
}

Move clicks(const char* dialog, const char* table, int row)
{
    return moveWith<QTableView>(dialog, table,
        [row](QTableView& t) { postClick(*t.viewport(), t.visualRect(t.model()->index(row, 0)).center()); });
}

Move types(const char* dialog, const char* field, const std::string& text)
{
    return moveWith<QLineEdit>(dialog, field, [typed = QString::fromStdString(text)](QLineEdit& edit) {
        for (const QChar character : typed)
            post(edit, new QKeyEvent(QEvent::KeyPress, 0, Qt::NoModifier, QString(character)));
    });
}

Move chooses(const std::string& file)
{
    return {"QFileDialog", [path = QString::fromStdString(file)](QDialog& chooser) {
                chooser.findChild<QLineEdit*>("fileNameEdit")->setText(path);
                QMetaObject::invokeMethod(&chooser, "accept", Qt::QueuedConnection);
            }};
}

DialogUser::DialogUser(QStringList accusations)
    : m_accusations(std::move(accusations))
{
}

void DialogUser::plan(const Moves& moves)
{
    m_moves = &moves;
    m_made.assign(moves.size(), false);
    m_boxSeen = m_blamed = false;
    m_leaves = 0;
    m_waits = false;
    m_top = nullptr;
    m_timer = startTimer(0);
}

void DialogUser::planToLeave(int leaves)
{
    static const Moves none;
    plan(none);
    m_leaves = leaves;
}

void DialogUser::stop()
{
    killTimer(m_timer);
    QCoreApplication::removePostedEvents(this);
}

void DialogUser::timerEvent(QTimerEvent*)
{
    if (m_waits)
        return;
    const Pause pause;
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    // One that shows for a single turn is only about to be covered: its caller goes on behind another that has closed.
    const bool stays = std::exchange(m_top, dialog) == dialog;
    if (dialog && stays && dialog->isVisible())
        look(*dialog);
    else if (!dialog && m_leaves != 0)
        QCoreApplication::exit(m_leaves);
}

bool DialogUser::event(QEvent* event)
{
    if (event->type() == QEvent::User)
        m_waits = false;
    return QObject::event(event);
}

void DialogUser::look(QDialog& dialog)
{
    if (const auto* const box = qobject_cast<QMessageBox*>(&dialog); box && !std::exchange(m_boxSeen, true))
        m_blamed = std::any_of(m_accusations.begin(), m_accusations.end(),
            [&](const QString& accusation) { return box->text().contains(accusation); });
    act(dialog, nameOf(dialog));
}

void DialogUser::act(QDialog& dialog, const std::string& name)
{
    for (std::size_t i = 0; i < m_moves->size(); ++i)
        if (!m_made[i] && (*m_moves)[i].dialog == name) {
            m_made[i] = true;
            (*m_moves)[i].make(dialog);
            return waits();
        }
    if (name == "listing")
        return;
    post(dialog, new QCloseEvent);
    waits();
}

void DialogUser::waits()
{
    m_waits = true;
    m_top = nullptr;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

} // namespace torture
