/** @file
 *  The list of the selection dialog: four columns, a row for each certificate.
 */
#pragma once

#include "ui/selection.h"

#include <QFont>
#include <QStandardItemModel>

class QTableView;

namespace sigil {

class LanguageTexts;

class CertificateTable {
public:
    /** @param view stays its dialog's */
    explicit CertificateTable(QTableView* view);

    /** Headers, widths and font. */
    void setColumns(const LanguageTexts& texts);
    /** Appends a row for each entry, and selects the first row. */
    void SetItemTableView(const Selection::Entries& entries, const LanguageTexts& texts);
    void clear();
    /** Row of the first selected index, or -1 without a selection. */
    int selectedRow() const;

private:
    void addRow(const tagCERTINFO& entry, const LanguageTexts& texts);

    QTableView* m_view;
    QStandardItemModel m_model;
    QFont m_font;
};

} // namespace sigil
