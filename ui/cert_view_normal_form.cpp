// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/cert_view_normal_form.h"

#include "foundation/text_field.h"
#include "ui/cert_records.h"
#include "ui/dialog_support.h"
#include "ui/large_type.h"
#include "ui/verify_causes.h"
#include "ui_cert_view_normal_form.h"

#include <sigildesk/certlist.h>

#include <QPixmap>
#include <cstring>

namespace {

constexpr int errorCapacity = 1024;

/** What the form shows at most of a validity period, in bytes. */
constexpr std::size_t longestValidity = 259;

/** In an error text, what follows this is meant for the user. */
constexpr char forUserMark[] = "<talolib>";

struct KeyUsage {
    const char* name;
    const char* textKey;
};

constexpr KeyUsage keyUsages[] = {
    {"digitalSignature", "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN"},
    {"nonRepudiation", "DLG_CERVIEWNORAL_KEYUSAGE_NONREPUDIATION"},
    {"keyEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_KEYENCIPHERMENT"},
    {"dataEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_DATAENCIPHERMENT"},
    {"keyAgreement", "DLG_CERVIEWNORAL_KEYUSAGE_KEYAGREEMENT"},
    {"keyCertSign", "DLG_CERVIEWNORAL_KEYUSAGE_KEYCERTSIGN"},
    {"crlSign", "DLG_CERVIEWNORAL_KEYUSAGE_CRLSIGN"},
    {"encipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY"},
    // The text of encipherOnly once more, deliberately: this list knows one text for both restrictions.
    {"decipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY"},
};

struct Status {
    const char* textKey;
    const char* image;
};

// By validity. The renewal image is stored under a name with a small
// first letter, so this one is never found and a certificate due for renewal shows no image of its own: intended.
constexpr Status statuses[] = {
    {"DLG_CERVIEWNORAL_CERTVALID", ":/bmp/image/Cert_Valid.bmp"},
    {"DLG_CERVIEWNORAL_CERTRENEWAL", ":/bmp/image/Cert_Renewal.bmp"},
    {"DLG_CERVIEWNORAL_CERTEXPIRED", ":/bmp/image/Cert_Invalid.bmp"},
};
const char* const refusedImage = statuses[static_cast<int>(sigil::Validity::expired)].image;

QString partForUser(const QString& error)
{
    const int mark = error.indexOf(forUserMark);
    return mark < 0 ? QString() : error.mid(mark + static_cast<int>(std::strlen(forUserMark)));
}

} // namespace

CertViewNormalForm::CertViewNormalForm(QWidget* parent)
    : QWidget(parent)
    , m_Form(std::make_unique<Ui_CertViewNormalForm>())
{
    m_Form->setupUi(this);
    sigil::fitForm(this);
    m_Form->listView->setModel(&m_KeyUsages);
}

CertViewNormalForm::~CertViewNormalForm() = default;

void CertViewNormalForm::SetCertificate(const sigil::LanguageTexts& texts, void* processor, tagCERTINFO* entry)
{
    m_Texts = texts;
    m_hProcessor = processor;
    m_Entry = entry;
}

void CertViewNormalForm::InitSetControl()
{
    SetCaptions();
    SetValues();
    SetCertStatus(m_Entry->nValidStatus);
    SetKeyUsages();
}

void CertViewNormalForm::SetCaptions()
{
    m_Form->label_infotitle->setText(m_Texts.ui("DLG_CERVIEWNORAL_TITLE"));
    m_Form->label_certusagetitle->setText(m_Texts.ui("DLG_CERVIEWNORAL_USAGETITLE"));
    m_Form->label_explain->setText(m_Texts.ui("DLG_CERVIEWNORAL_EXPLAIN"));
    m_Form->label_subjecttitle->setText(m_Texts.ui("DLG_CERVIEWNORAL_SUBJECTTITLE"));
    m_Form->label_issuertitle->setText(m_Texts.ui("DLG_CERVIEWNORAL_ISSUERTITLE"));
    m_Form->label_validitytitle->setText(m_Texts.ui("DLG_CERVIEWNORAL_DATETITLE"));
    m_Form->label_usagetitle->setText(m_Texts.ui("DLG_CERVIEWNORAL_USETITLE"));
    m_Form->label_statustitle->setText(m_Texts.ui("DLG_CERVIEWNORAL_STATETITLE"));
    m_Form->listView->setAccessibleName(m_Form->label_certusagetitle->text());
}

void CertViewNormalForm::SetValues()
{
    const std::string validity = std::string(sigil::fieldText(m_Entry->szValidFrom)) + " ~ " +
        std::string(sigil::fieldText(m_Entry->szValidTo));
    m_Form->label_subject->setText(sigil::fromEucKr(sigil::subjectName(*m_Entry)));
    m_Form->label_issuer->setText(sigil::fromEucKr(sigil::fieldText(m_Entry->szIssuerName)));
    m_Form->label_validity->setText(sigil::fromEucKr(validity.substr(0, longestValidity)));
    m_Form->label_usage->setText(sigil::fromEucKr(sigil::fieldText(m_Entry->szPolicyName)));
}

void CertViewNormalForm::SetKeyUsages()
{
    const std::string_view held = sigil::fieldText(m_Entry->szKeyUsage);
    QStringList lines;
    for (const KeyUsage& usage : keyUsages)
        if (held.find(usage.name) != std::string_view::npos)
            lines << m_Texts.ui(usage.textKey);
    m_KeyUsages.setStringList(lines);
}

void CertViewNormalForm::SetCertStatus(int)
{
    const sigil::Validity validity = sigil::validityOf(m_Entry->nValidStatus);
    if (validity == sigil::Validity::unknown) {
        ShowStatus(QString());
        return;
    }
    const Status& status = statuses[static_cast<int>(validity)];
    const QPixmap image = sigil::pictureFor(this, status.image);
    if (!image.isNull())
        m_Form->label_certimage->setPixmap(image);
    ShowStatus(m_Texts.ui(status.textKey));
}

void CertViewNormalForm::ShowStatus(const QString& text)
{
    m_Form->label_status->setText(text);
    m_Form->label_certimage->setAccessibleName(text); // the picture says the same
    sigil::announce(m_Form->label_status, text);
}

int CertViewNormalForm::VerifyCert()
{
    char error[errorCapacity + 1] = {};
    m_nRv = CLP_VerifyCert(
        m_hProcessor, reinterpret_cast<char*>(m_Entry->bySignCert), m_Entry->nSignCertLen, errorCapacity, error);
    if (m_nRv == 0) {
        m_Entry->nValidStatus = m_Entry->nStatusFlag != 0 ? SIGIL_VALIDITY_OTHER_VALID : SIGIL_VALIDITY_VALID;
        SetCertStatus(m_Entry->nValidStatus);
    } else {
        ShowFailure(error);
    }
    return m_nRv;
}

void CertViewNormalForm::ShowFailure(const char* error)
{
    constexpr std::size_t most = 1023;
    const QString failed = m_Texts.message("MSG_CERTVERIFY_FAIL");
    const QString cause = QString::fromStdString(sigil::toUtf8(sigil::fromEucKr(error), most));
    const QString forUser = partForUser(cause);
    const QString message = failed + "\n(" + m_Texts.message("MSG_CERTVERIFY_DETAILMSG") + " : " +
        (cause.contains(forUserMark) ? forUser : sigil::causeIn(m_Texts, cause)) + ")";
    m_Form->label_certimage->setPixmap(
        sigil::pictureFor(this, refusedImage)); // a green tick would say the opposite of the text
    ShowStatus(cause.contains(forUserMark) ? forUser : failed);
    sigil::showInformation(this, m_Texts, QString(), QString::fromStdString(sigil::toUtf8(message, most)));
}
