// SelectCertDialog: a logo that the caller hands over as a text.

#include "ui/select_cert_dialog.h"

#include "facade/toolkit_bytes.h"

#include <sigildesk/crypto/base64.h>
#include <sigildesk/crypto/frame.h>

#include <QPixmap>
#include <QtDebug>

namespace {

/** A façade handle; closed on every path, also when its toolkit did not load. */
struct Facade {
    void* handle = nullptr;

    Facade() = default;
    ~Facade() { HV_Finish(handle); }
    Facade(const Facade&) = delete;
    Facade& operator=(const Facade&) = delete;
};

/** The bytes that @p text64 encodes in base64. @return 0, else the façade's code */
int decode(void* handle, char* text64, int length, QByteArray& image)
{
    sigil::ToolkitBytes text(handle);
    sigil::ToolkitBytes bytes(handle);
    int rv = text.set(text64, length);
    if (rv == 0)
        rv = Base64Decode(handle, text.get(), bytes.get());
    if (rv == 0 && !bytes.empty())
        image = QByteArray(bytes.data(), bytes.size());
    return rv;
}

} // namespace

bool SelectCertDialog::LoadDataforSetPixmap(char* text, int length)
{
    Facade facade;
    QByteArray image;
    int rv = HV_Initalize(&facade.handle, 0, m_InitOptions.szLibraryFolder);
    if (rv == 0)
        rv = decode(facade.handle, text, length, image);
    if (rv != 0) {
        char error[1024 + 1] = {}; // one more, should the text fill its capacity
        HV_GetErrInfo2(facade.handle, sizeof error - 1, error);
        qWarning("The logo could not be decoded (%d): %s", rv, error);
        return false;
    }
    QPixmap logo;
    return logo.loadFromData(image, "BMP") && ShowLogo(logo);
}
