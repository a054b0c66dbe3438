// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/selection_logo.h"

#include "facade/toolkit_bytes.h"
#include "foundation/text_field.h"
#include "ui/language_texts.h"
#include "ui/large_type.h"
#include "ui/selection_options.h"

#include <sigildesk/crypto/base64.h>
#include <sigildesk/handles.h>

#include <QLabel>
#include <QPixmap>
#include <QtDebug>
#include <algorithm>
#include <string>

namespace sigil {

namespace {

/** The bytes that @p text64 encodes in base64. @return 0, else the façade's code */
int decode(void* handle, std::string& text64, QByteArray& image)
{
    ToolkitBytes text(handle);
    ToolkitBytes bytes(handle);
    int rv = text.set(text64.data(), static_cast<int>(text64.size()));
    if (rv == 0)
        rv = Base64Decode(handle, text.get(), bytes.get());
    if (rv == 0 && !bytes.empty())
        image = QByteArray(bytes.data(), bytes.size());
    return rv;
}

/** What follows the last "/" or "\" of a path. */
QString lastComponent(const QString& path)
{
    return path.mid(std::max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1);
}

} // namespace

void SelectionLogo::SetLogoImage(const SelectionOptions& options, bool usim)
{
    if (!showWanted(options))
        show(pictureFor(m_label, usim ? ":/bmp/image/QuorraLogo.bmp" : ":/bmp/image/Logo.bmp"));
    m_label->show();
}

bool SelectionLogo::showWanted(const SelectionOptions& options)
{
    const QString source = fromEucKr(fieldText(options.load.szLogo));
    if (options.load.byCivicLogo != 0)
        return show(pictureFor(m_label, ":/bmp/image/CivicLogo.bmp"));
    if (source == SIGIL_LOGO_FROM_DATA)
        return LoadDataforSetPixmap(options);
    return !source.isEmpty() && show(pictureFor(m_label, ":/bmp/image/" + lastComponent(source)));
}

bool SelectionLogo::LoadDataforSetPixmap(const SelectionOptions& options)
{
    sigildesk::CryptoHandle facade;
    QByteArray image;
    std::string folder(fieldText(options.init.szLibraryFolder));
    std::string text(fieldText(options.extra.szData));
    int rv = sigildesk::initialise(facade, SIGIL_TOOLKIT_MAKER, folder.data());
    if (rv == 0)
        rv = decode(facade.get(), text, image);
    if (rv != 0) {
        char error[1024 + 1] = {}; // one more, should the text fill its capacity
        HV_GetErrInfo2(facade.get(), sizeof error - 1, error);
        qWarning("The logo could not be decoded (%d): %s", rv, error);
        return false;
    }
    QPixmap logo;
    logo.loadFromData(image, "BMP"); // of what is no image it stays empty
    return show(scaled(m_label, logo));
}

bool SelectionLogo::show(const QPixmap& logo)
{
    if (logo.isNull())
        return false;
    m_label->setPixmap(logo);
    return true;
}

} // namespace sigil
