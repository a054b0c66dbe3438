// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/cert_view_detail_form.h"

#include "foundation/text_field.h"
#include "ui/dialog_support.h"
#include "ui/large_type.h"
#include "ui_cert_view_detail_form.h"

#include <QItemSelectionModel>
#include <string>

namespace {

constexpr int publicKeyRow = 7;

template <auto member>
std::string text(const tagCERTINFO& entry)
{
    return std::string(sigil::fieldText(entry.*member));
}

std::string publicKey(const tagCERTINFO& entry)
{
    return text<&tagCERTINFO::szPubKeyAlg>(entry) + " " + text<&tagCERTINFO::szKeyLength>(entry);
}

struct DetailRow {
    const char* captionKey;
    std::string (*value)(const tagCERTINFO&);
};

constexpr DetailRow detailRows[] = {
    {"DLG_CERVIEWDETAIL_FIELDVERSION", text<&tagCERTINFO::szVersion>},
    {"DLG_CERVIEWDETAIL_FIELDSERIAL", text<&tagCERTINFO::szSerialNum>},
    {"DLG_CERVIEWDETAIL_FIELDSIGNALG", text<&tagCERTINFO::szSignAlg>},
    {"DLG_CERVIEWDETAIL_FIELDISSUER", text<&tagCERTINFO::szIssuerDN>},
    {"DLG_CERVIEWDETAIL_FIELDBEFORE", text<&tagCERTINFO::szValidFrom>},
    {"DLG_CERVIEWDETAIL_FIELDAFTER", text<&tagCERTINFO::szValidTo>},
    {"DLG_CERVIEWDETAIL_FIELDDN", text<&tagCERTINFO::szSubjectDN>},
    {"DLG_CERVIEWDETAIL_FIELDPUBKEYALG", publicKey},
    {"DLG_CERVIEWDETAIL_FIELDAUTHKEYID", text<&tagCERTINFO::szAuthKeyID>},
    {"DLG_CERVIEWDETAIL_FIELDSUBKEYID", text<&tagCERTINFO::szSubKeyID>},
    {"DLG_CERVIEWDETAIL_FIELDKEYUSAGE", text<&tagCERTINFO::szKeyUsage>},
    {"DLG_CERVIEWDETAIL_FIELDPOLICY", text<&tagCERTINFO::szCertPolicy>},
    {"DLG_CERVIEWDETAIL_FIELDALTNAME", text<&tagCERTINFO::szSubjectAltName>},
    {"DLG_CERVIEWDETAIL_FIELDCRLDP", text<&tagCERTINFO::szCRLDP>},
    {"DLG_CERVIEWDETAIL_FIELDAIA", text<&tagCERTINFO::szAIA>},
};

} // namespace

CertViewDetailForm::CertViewDetailForm(QWidget* parent)
    : QWidget(parent)
    , m_Form(std::make_unique<Ui_CertViewDetailForm>())
{
    m_Form->setupUi(this);
    sigil::fitForm(this);
}

CertViewDetailForm::~CertViewDetailForm() = default;

QWidget* CertViewDetailForm::LastControl() const { return m_Form->textEdit_certinfo; }

void CertViewDetailForm::SetCertificate(const sigil::LanguageTexts& texts, tagCERTINFO* entry)
{
    m_Texts = texts;
    m_Entry = entry;
}

void CertViewDetailForm::InitSetControl()
{
    QTableView* list = m_Form->tableView_certinfolist;
    m_Model.clear();
    m_Model.setHorizontalHeaderLabels(
        {m_Texts.ui("DLG_CERVIEWDETAIL_LISTFIELD"), m_Texts.ui("DLG_CERVIEWDETAIL_LISTCONTENTS")});
    sigil::tipHeaders(m_Model);
    int row = 0;
    for (const DetailRow& detail : detailRows)
        SetRow(row++, m_Texts.ui(detail.captionKey), sigil::fromEucKr(detail.value(*m_Entry)));
    SetRow(row, m_Texts.ui("DLG_CERVIEWDETAIL_FIELDLOCATION"), Location());
    sigil::showWholeRows(list);
    list->setModel(&m_Model);
    list->setColumnWidth(0, sigil::scaled(list, 95));
    list->setColumnWidth(1, sigil::scaled(list, 175));
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &CertViewDetailForm::on_tableViewSelection, Qt::UniqueConnection);
    list->setAccessibleName(m_Texts.ui("DLG_CERVIEWMAIN_TABDETAIL"));
    m_Form->textEdit_certinfo->setAccessibleName(m_Texts.ui("DLG_CERVIEWDETAIL_LISTCONTENTS"));
}

void CertViewDetailForm::SetRow(int row, const QString& caption, const QString& value)
{
    m_Model.insertRow(row);
    m_Model.setData(m_Model.index(row, 0), caption);
    m_Model.setData(m_Model.index(row, 1), value);
    m_Model.setData(m_Model.index(row, 0), sigil::toolTipOf(caption), Qt::ToolTipRole);
    m_Model.setData(m_Model.index(row, 1), sigil::toolTipOf(value), Qt::ToolTipRole);
}

QString CertViewDetailForm::Location() const
{
    switch (m_Entry->nMediaType) {
    case 1:
    case 2:
        return sigil::fromEucKr(sigil::fieldText(m_Entry->szSignCertPath));
    case 3:
        return m_Texts.ui("DLG_BUTTONMEDIA_SMCARD");
    case 4:
        return m_Texts.ui("DLG_BUTTONMEDIA_PKCS11");
    case 7:
        return m_Texts.ui("DLG_BUTTONMEDIA_USIM");
    default:
        return m_Texts.ui("DLG_BUTTONMEDIA_MEMORY");
    }
}

void CertViewDetailForm::on_tableView_certinfolist_clicked(const QModelIndex&)
{
    on_tableViewSelection(m_Form->tableView_certinfolist->selectionModel()->selection(), QItemSelection());
}

void CertViewDetailForm::on_tableViewSelection(const QItemSelection& selected, const QItemSelection&)
{
    if (selected.indexes().isEmpty())
        return;
    const QModelIndex cell = selected.indexes().last();
    const QString shown =
        cell.row() == publicKeyRow ? sigil::fromEucKr(sigil::fieldText(m_Entry->szPubKey)) : cell.data().toString();
    m_Form->textEdit_certinfo->setPlainText(shown);
}
