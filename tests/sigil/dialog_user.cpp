// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A plug-in of Qt's that uses the selection dialog of the program that loads it, as a person would. What it does, the
// environment says: QT_QPA_GENERIC_PLUGINS is "dialog-user:ROW" for choosing the certificate of a row with the password in the
// file SIGIL_TEST_PASSWORD_FILE, "dialog-user:cancel", "dialog-user:crash" for a program that dies, or "dialog-user:orphan" for
// a host that dies: the file SIGIL_TEST_LOCK_FILE stays locked as long as the program lives on.

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QGenericPlugin>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTimer>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

/** Ends the program when it asks something that nobody would answer. */
void refuseBoxes()
{
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
        qFatal("%s", qPrintable(box->text()));
}

template <class Widget>
Widget& find(QWidget& dialog, const char* name)
{
    auto* widget = dialog.findChild<Widget*>(name);
    if (!widget)
        qFatal("no widget %s", name);
    return *widget;
}

void types(QWidget& field, const QString& text)
{
    for (const QChar character : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
        QApplication::sendEvent(&field, &press);
    }
}

void presses(QDialog& dialog, const char* button) { find<QAbstractButton>(dialog, button).click(); }

void chooses(QDialog& dialog, int row)
{
    QFile file(qEnvironmentVariable("SIGIL_TEST_PASSWORD_FILE"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no password");
    auto& table = find<QTableView>(dialog, "tableView_certlist");
    table.setCurrentIndex(table.model()->index(row, 0));
    emit table.clicked(table.currentIndex());
    types(find<QLineEdit>(dialog, "lineEdit_password"), QString::fromUtf8(file.readAll()));
    QTimer::singleShot(0, qApp, refuseBoxes); // one that says what is wrong
    presses(dialog, "pushButton_ok");
}

void losesItsHost()
{
    const int file = open(qgetenv("SIGIL_TEST_LOCK_FILE").constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0 || flock(file, LOCK_EX) != 0)
        qFatal("no lock");
    kill(getppid(), SIGKILL);
}

void use(QDialog& dialog, const QString& how)
{
    if (how == "cancel")
        return presses(dialog, "pushButton_cancel");
    if (how == "crash")
        static_cast<void>(std::raise(SIGKILL));
    if (how == "orphan")
        return losesItsHost();
    chooses(dialog, how.toInt());
}

/** Whether the dialog is shown with its list, which rests as long as a store is being listed. */
bool isReady(QDialog* dialog)
{
    refuseBoxes();
    return dialog && dialog->isVisible() && find<QTableView>(*dialog, "tableView_certlist").isEnabled();
}

void useWhenShown(const QString& how)
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (isReady(dialog))
        return use(*dialog, how);
    QTimer::singleShot(1, qApp, [how] { useWhenShown(how); });
}

} // namespace

class DialogUser : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "dialog_user.json")

public:
    QObject* create(const QString&, const QString& how) override
    {
        QTimer::singleShot(0, qApp, [how] { useWhenShown(how); });
        return new QObject(this);
    }
};

#include "dialog_user.moc"
