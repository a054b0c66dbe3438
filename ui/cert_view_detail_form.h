// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The detail tab of the certificate viewer: one row per field, and the whole text of the selected one.
 */
#pragma once

#include "ui/language_texts.h"

#include <sigildesk/records.h>

#include <QStandardItemModel>
#include <QWidget>
#include <memory>

class QItemSelection;
class Ui_CertViewDetailForm;

class CertViewDetailForm : public QWidget {
    Q_OBJECT

public:
    explicit CertViewDetailForm(QWidget* parent = nullptr);
    ~CertViewDetailForm() override;

    /** What is shown. @param entry stays the caller's and must outlive the form */
    void SetCertificate(const sigil::LanguageTexts& texts, tagCERTINFO* entry);
    /** The last control that the Tab key reaches. */
    QWidget* LastControl() const;
    /** Headers and rows. */
    void InitSetControl();

public slots: // NOLINT(readability-redundant-access-specifiers): the slots must be told apart
    void on_tableView_certinfolist_clicked(const QModelIndex& index);
    /** Shows the selected cell in full; for the public-key row the key itself. */
    void on_tableViewSelection(const QItemSelection& selected, const QItemSelection& deselected);

private:
    void SetRow(int row, const QString& caption, const QString& value);
    QString Location() const;

    sigil::LanguageTexts m_Texts;
    tagCERTINFO* m_Entry = nullptr;
    QStandardItemModel m_Model;
    std::unique_ptr<Ui_CertViewDetailForm> m_Form;
};
