// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/ui/driver.h"

#include "foundation/text_field.h"
#include "tests/support/cp949.h"

#include <sigildesk/util.h>

#include <QTimer>
#include <memory>

namespace driver {

namespace {

std::string languageFile(int language)
{
    return std::string(SIGILDESK_LIBRARY_FOLDER) + (language == 1 ? "/KOR.ini" : "/ENG.ini");
}

QString korean(const char* text) { return QString::fromStdString(utf8FromCp949(text)); }

void poll(QWidget* before, const std::function<void(QDialog&)>& action)
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog && dialog != before && dialog->isVisible())
        action(*dialog);
    else
        QTimer::singleShot(1, [before, action] { poll(before, action); });
}

QPoint place(QTableView& table, int row) { return table.visualRect(table.model()->index(row, 0)).center(); }

} // namespace

QString ui(int language, const char* key)
{
    char text[1025] = {};
    std::string file = languageFile(language), name = key;
    CUtil().GetLanguageUIText(file.data(), name.data(), 1024, text);
    return korean(text);
}

QString message(int language, const char* key)
{
    char text[1025] = {};
    std::string file = languageFile(language), name = key;
    CUtil().GetLanguageMessageText(file.data(), name.data(), 1024, text);
    return korean(text);
}

sigil::LanguageTexts texts(int language) { return sigil::LanguageTexts(languageFile(language)); }

void whenShown(std::function<void(QDialog&)> action)
{
    QWidget* before = QApplication::activeModalWidget();
    QTimer::singleShot(0, [before, action] { poll(before, action); });
}

void answerBox(Box& box)
{
    whenShown([&box](QDialog& dialog) {
        auto& shown = dynamic_cast<QMessageBox&>(dialog);
        box = {shown.windowTitle(), shown.text(), true, static_cast<int>(shown.buttons().size()), shown.icon()};
        QTest::mouseClick(shown.button(QMessageBox::Ok), Qt::LeftButton);
    });
}

void clicksRow(QWidget& dialog, const char* name, int row)
{
    auto& table = find<QTableView>(dialog, name);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place(table, row));
}

void doubleClicksRow(QWidget& dialog, const char* name, int row)
{
    auto& table = find<QTableView>(dialog, name);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place(table, row));
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, place(table, row));
}

} // namespace driver
