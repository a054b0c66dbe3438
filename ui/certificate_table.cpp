#include "ui/certificate_table.h"

#include "foundation/text_field.h"
#include "ui/cert_records.h"
#include "ui/dialog_support.h"
#include "ui/language_texts.h"
#include "ui/large_type.h"
#include "ui/row_description.h"

#include <QItemSelectionModel>
#include <QTableView>

namespace sigil {

namespace {

struct Column {
    const char* headerKey;
    int width;
};

constexpr Column columns[] = {{"DLG_CERTLISTCTRL_DN", 95}, {"DLG_CERTLISTCTRL_ISSUER", 92},
    {"DLG_CERTLISTCTRL_USAGE", 92}, {"DLG_CERTLISTCTRL_VALIDITYTO", 75}};

} // namespace

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

void CertificateTable::SetItemTableView(const Selection::Entries& entries, const LanguageTexts& texts)
{
    for (const tagCERTINFO& entry : entries)
        addRow(entry, texts);
    m_view->selectRow(0);
}

void CertificateTable::addRow(const tagCERTINFO& entry, const LanguageTexts& texts)
{
    const QString cells[] = {fromEucKr(subjectName(entry)), fromEucKr(fieldText(entry.szIssuerName)),
        fromEucKr(fieldText(entry.szPolicyName)), fromEucKr(fieldText(entry.szValidTo))};
    const QString description = describe(entry, texts);
    const int row = m_model.rowCount();
    m_model.insertRow(row);
    for (int column = 0; column < 4; ++column) {
        const QModelIndex cell = m_model.index(row, column);
        m_model.setData(cell, cells[column]);
        m_model.setData(cell, toolTipOf(cells[column] + "\n" + description), Qt::ToolTipRole);
        m_model.setData(cell, description, Qt::AccessibleDescriptionRole);
    }
}

void CertificateTable::clear() { m_model.removeRows(0, m_model.rowCount()); }

int CertificateTable::selectedRow() const
{
    const QModelIndexList selected = m_view->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
}

} // namespace sigil
