// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/media_buttons.h"

#include "ui/language_texts.h"
#include "ui/large_type.h"
#include "ui/media_button_style.h"
#include "ui_select_cert_dialog.h"

#include <sigildesk/codes.h>

#include <algorithm>
#include <climits>
#include <iterator>

namespace sigil {

namespace {

struct MediaButton {
    int bit;
    QPushButton* Ui_SelectCertDialog::*button;
    const char* image;
    const char* textKey;
};

constexpr MediaButton mediaButtons[] = {
    {1, &Ui_SelectCertDialog::pushButton_hdd, "HDD", "DLG_BUTTONMEDIA_HDD"},
    {2, &Ui_SelectCertDialog::pushButton_remove, "MOVE", "DLG_BUTTONMEDIA_REMOVE"},
    {4, &Ui_SelectCertDialog::pushButton_smcert, "USIM", "DLG_BUTTONMEDIA_USIM"},
    {8, &Ui_SelectCertDialog::pushButton_token, "TOKEN", "DLG_BUTTONMEDIA_PKCS11"},
    {16, &Ui_SelectCertDialog::pushButton_smcard, "SMCARD", "DLG_BUTTONMEDIA_SMCARD"},
    {32, &Ui_SelectCertDialog::pushButton_phone, "PHONE", "DLG_BUTTONMEDIA_PHONE"},
};

/** "HDD_N.png": N normal or P pressed, with an E in English. */
QString imagePath(const char* stem, int state, int language)
{
    return QString(":/png/image/%1_%2%3.png")
        .arg(stem, state > 1 ? "P" : "N", language == SIGIL_LANGUAGE_KOREAN ? "" : "E");
}

} // namespace

MediaButtons::MediaButtons(Ui_SelectCertDialog& form)
    : m_form(form)
{
    for (const MediaButton& media : mediaButtons) {
        QPushButton* button = form.*media.button;
        auto* style = new MediaButtonStyle; // owned by the button
        style->setParent(button);
        button->setStyle(style);
    }
}

void MediaButtons::SetButtonImage(int state, int bit, int language, const LanguageTexts& texts)
{
    const auto* media = std::find_if(
        std::begin(mediaButtons), std::end(mediaButtons), [&](const MediaButton& each) { return each.bit == bit; });
    if (media == std::end(mediaButtons))
        return;
    QPushButton* button = m_form.*media->button;
    QIcon icon;
    icon.addPixmap(pictureFor(button, imagePath(media->image, state, language)), QIcon::Normal, QIcon::On);
    button->setText(texts.ui(media->textKey));
    button->setToolTip(button->text());
    button->setIcon(icon);
    button->setIconSize(scaled(button, state == 2 ? QSize(52, 62) : QSize(50, 60)));
    button->setEnabled(state == 1 || state == 2);
    giveCaptionsOneSize();
}

void MediaButtons::giveCaptionsOneSize()
{
    int pixels = INT_MAX;
    for (const MediaButton& media : mediaButtons)
        pixels = std::min(pixels, fittingPixels(*(m_form.*media.button)));
    for (const MediaButton& media : mediaButtons) {
        QFont font = (m_form.*media.button)->font();
        font.setPixelSize(pixels);
        (m_form.*media.button)->setFont(font);
    }
}

} // namespace sigil
