// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/cert_view_main_dialog.h"

#include "ui/cert_view_detail_form.h"
#include "ui/cert_view_normal_form.h"
#include "ui/contrast.h"
#include "ui/dialog_support.h"
#include "ui/large_type.h"
#include "ui_cert_view_main_dialog.h"

CertViewMainDialog::CertViewMainDialog(QWidget* parent)
    : QDialog(parent)
    , m_Form(std::make_unique<Ui_CertViewMainDialog>())
{
    m_Form->setupUi(this);
    sigil::fitForm(this);
    sigil::giveIcon(this);
    sigil::letReturnPressButtons(this);
    sigil::makeSelectionsReadable(this);
    m_NormalForm = new CertViewNormalForm(m_Form->tab_normal); // a widget belongs to its parent
    m_DetailForm = new CertViewDetailForm(m_Form->tab_detail);
    // The pages were made last; the Tab key reaches them before the buttons below all the same.
    setTabOrder(m_DetailForm->LastControl(), m_Form->pushButton_verify);
    setTabOrder(m_Form->pushButton_verify, m_Form->pushButton_ok);
}

CertViewMainDialog::~CertViewMainDialog() = default;

void CertViewMainDialog::SetCertificate(const sigil::LanguageTexts& texts, void* processor, tagCERTINFO* entry)
{
    m_Texts = texts;
    m_hProcessor = processor;
    m_Entry = entry;
}

void CertViewMainDialog::InitSetControl()
{
    m_Form->tabWidget->setTabText(0, m_Texts.ui("DLG_CERVIEWMAIN_TABNORMAL"));
    m_Form->tabWidget->setTabText(1, m_Texts.ui("DLG_CERVIEWMAIN_TABDETAIL"));
    m_NormalForm->SetCertificate(m_Texts, m_hProcessor, m_Entry);
    m_NormalForm->InitSetControl();
    m_DetailForm->SetCertificate(m_Texts, m_Entry);
    m_DetailForm->InitSetControl();
    setWindowTitle(m_Texts.ui("DLG_CERTVIEW_CAPITON"));
    m_Form->pushButton_ok->setText(m_Texts.ui("DLG_BUTTON_OK"));
    m_Form->pushButton_verify->setText(m_Texts.ui("DLG_BUTTON_VERIFY"));
    m_Form->pushButton_verify->clearFocus();
    m_Form->tabWidget->setAccessibleName(m_Texts.ui("DLG_ACCESS_PAGES"));
}

void CertViewMainDialog::on_pushButton_verify_clicked()
{
    sigil::guard(*this, [this] { m_nRv = m_NormalForm->VerifyCert(); });
}

void CertViewMainDialog::on_pushButton_ok_clicked() { reject(); }

void CertViewMainDialog::mousePressEvent(QMouseEvent*) { }

void CertViewMainDialog::keyPressEvent(QKeyEvent* event)
{
    const auto close = [this] { on_pushButton_ok_clicked(); };
    sigil::takeKey(event, close, close);
}
