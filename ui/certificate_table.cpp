// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/certificate_table.h"

#include "ui/cert_records.h"
#include "ui/dialog_support.h"
#include "ui/large_type.h"
#include "ui/row_description.h"

#include <QItemSelectionModel>
#include <QTableView>

namespace sigil {

namespace {

struct Column {
    const char* headerKey;
    int width;
    std::string CertificateRow::*text;
};

constexpr Column columns[] = {{"DLG_CERTLISTCTRL_DN", 95, &CertificateRow::subject},
    {"DLG_CERTLISTCTRL_ISSUER", 92, &CertificateRow::issuer},
    {"DLG_CERTLISTCTRL_USAGE", 92, &CertificateRow::policy},
    {"DLG_CERTLISTCTRL_VALIDITYTO", 75, &CertificateRow::validTo}};

} // namespace

void CertificateModel::show(const Selection::Rows& rows, const LanguageTexts& texts)
{
    m_rows = &rows;
    m_texts = texts;
    setRowCount(static_cast<int>(rows.size()));
}

QVariant CertificateModel::data(const QModelIndex& cell, int role) const
{
    if (!m_rows || !cell.isValid() || static_cast<std::size_t>(cell.row()) >= m_rows->size())
        return {};
    const CertificateRow& row = (*m_rows)[static_cast<std::size_t>(cell.row())];
    const std::string& text = row.*columns[cell.column()].text;
    switch (role) {
    case Qt::DisplayRole:
        return fromEucKr(text);
    case Qt::ToolTipRole:
        return toolTipOf(fromEucKr(text) + "\n" + describe(row, m_texts));
    case Qt::AccessibleDescriptionRole:
        return describe(row, m_texts);
    default:
        return {};
    }
}

CertificateTable::CertificateTable(QTableView* view)
    : m_view(view)
{
    m_font.setPointSize(8);
    view->setModel(&m_model);
}

void CertificateTable::setColumns(const LanguageTexts& texts)
{
    showWholeRows(m_view);
    QStringList headers;
    for (const Column& column : columns)
        headers << texts.ui(column.headerKey);
    m_model.setHorizontalHeaderLabels(headers);
    tipHeaders(m_model);
    for (int i = 0; i < headers.size(); ++i)
        m_view->setColumnWidth(i, scaled(m_view, columns[i].width));
    m_view->setFont(m_font);
}

void CertificateTable::SetItemTableView(const Selection::Rows& rows, const LanguageTexts& texts)
{
    m_model.show(rows, texts);
    m_view->selectRow(0);
}

void CertificateTable::clear() { m_model.removeRows(0, m_model.rowCount()); }

int CertificateTable::selectedRow() const
{
    const QModelIndexList selected = m_view->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
}

} // namespace sigil
