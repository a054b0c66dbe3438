// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The list of the selection dialog: four columns, a row for each certificate.
 */
#pragma once

#include "ui/language_texts.h"
#include "ui/selection.h"

#include <QFont>
#include <QStandardItemModel>

class QTableView;

namespace sigil {

/** The rows of a list as the view asks for them: ten thousand certificates are a window of seven rows, and texts that
 *  nobody looks at are not made. */
class CertificateModel : public QStandardItemModel {
public:
    /** @param rows stay their owner's; nothing is shown of rows that went meanwhile */
    void show(const Selection::Rows& rows, const LanguageTexts& texts);
    QVariant data(const QModelIndex& cell, int role) const override;

private:
    const Selection::Rows* m_rows = nullptr;
    LanguageTexts m_texts;
};

class CertificateTable {
public:
    /** @param view stays its dialog's */
    explicit CertificateTable(QTableView* view);

    /** Headers, widths and font. */
    void setColumns(const LanguageTexts& texts);
    /** Shows a row for each certificate, and selects the first one. @param rows must stay until clear() */
    void SetItemTableView(const Selection::Rows& rows, const LanguageTexts& texts);
    void clear();
    /** Row of the first selected index, or -1 without a selection. */
    int selectedRow() const;

private:
    QTableView* m_view;
    CertificateModel m_model;
    QFont m_font;
};

} // namespace sigil
