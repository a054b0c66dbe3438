#include "handles.h"
#include "text.h"

#include <sigildesk/crypto.h>
#include <sigildesk/dialogs.h>
#include <sigildesk/open_toolkit.h>

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace host {

namespace {

/** The result record, wiped before its memory is given back: it holds private keys. */
class Selection {
public:
    ~Selection() { explicit_bzero(m_record.get(), sizeof *m_record); }
    tagSELCERTINFO* operator->() const { return m_record.get(); }
    tagSELCERTINFO* get() const { return m_record.get(); }

private:
    std::unique_ptr<tagSELCERTINFO> m_record = std::make_unique<tagSELCERTINFO>();
};

std::string_view item(const unsigned char* data, int length)
{
    return {reinterpret_cast<const char*>(data), static_cast<std::size_t>(length)};
}

/** Qt ends a program that finds no display with abort(); this one says so and leaves. */
void leaveWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    std::cerr << qPrintable(message) << '\n';
    if (type != QtFatalMsg)
        return;
    std::cerr << "The dialog needs a display, and none could be opened.\n";
    std::_Exit(failed);
}

int openDialog(const Setting& setting, Selection& chosen)
{
    int argc = 1;
    char name[] = "sigildesk";
    char* argv[] = {name, nullptr};
    const auto usual = qInstallMessageHandler(leaveWithoutDisplay);
    const QApplication application(argc, argv);
    qInstallMessageHandler(usual);

    tagINITOPT init{};
    if (setting.folder.size() >= sizeof init.szLibraryFolder)
        throw std::runtime_error("the library folder's path is longer than 259 bytes");
    setting.folder.copy(init.szLibraryFolder, sizeof init.szLibraryFolder - 1);
    init.nLanguage = setting.language;
    const auto load = std::make_unique<tagLOADSELECTCERTOPTION>();
    load->nPKITypes = 15;
    load->nMessageFlags = SIGIL_MESSAGE_EXPIRED;
    const auto extra = std::make_unique<tagEXTRAOPTION>();
    return ShowUserCert_T(&init, load.get(), nullptr, extra.get(), chosen.get());
}

void print(const Selection& chosen)
{
    // Two texts of the record are UTF-8 already; the others are CP949.
    std::printf("%-20s %s\n", "subject", chosen->szSubjectDN);
    printField("shown as", chosen->szSubjectName);
    printField("issuer", chosen->szIssuerDN);
    printField("issuer shown as", chosen->szIssuerName);
    std::printf("%-20s %s\n", "policy", chosen->szCertPolicy);
    printField("serial number", chosen->szSerialNum);
    printField("valid from", chosen->szValidFrom);
    printField("valid to", chosen->szValidTo);
    std::printf("%-20s %s\n", "file", chosen->szSignCertPath);
    std::printf("%-20s %u\n", "medium", chosen->nMediaType);
    std::printf("%-20s %d bytes\n", "certificate", chosen->nSignCertLen);
    std::printf("%-20s %d bytes\n", "private key", chosen->nSignPriKeyLen);
    std::printf("%-20s %d bytes\n", "km certificate", chosen->nKmCertLen);
    std::printf("%-20s %d bytes\n", "km private key", chosen->nKmPriKeyLen);
    std::printf("%-20s %d bytes\n", "random value", chosen->nRandomLen);
}

int sign(
    const Setting& setting, const Selection& chosen, const std::string& textFile, const std::string& signatureFile)
{
    const Crypto crypto(setting, 0);
    int status = crypto.status();
    if (status == 0) {
        Bytes certificate(crypto, item(chosen->bySignCert, chosen->nSignCertLen));
        Bytes key(crypto, item(chosen->bySignPriKey, chosen->nSignPriKeyLen));
        Bytes text(crypto, readFile(textFile));
        Bytes signature(crypto);
        status = CRYPTSign(
            crypto.handle(), certificate.get(), key.get(), SIGIL_TK_HASH_SHA256, text.get(), signature.get());
        if (status == 0)
            writeFile(signatureFile, signature.view());
    }
    if (status != 0)
        std::cerr << "The text could not be signed (code " << status << "): " << crypto.errorText() << "\n";
    return status == 0 ? done : failed;
}

} // namespace

int selectCertificate(const Setting& setting, const std::string& textFile, const std::string& signatureFile,
    const std::string& certificateFile)
{
    Selection chosen;
    const int status = openDialog(setting, chosen);
    if (status == -1) {
        std::puts("Nothing chosen.");
        return no;
    }
    if (status != 0) {
        std::cerr << "The dialog could not be opened (code " << status << ").\n";
        return failed;
    }
    print(chosen);
    if (!certificateFile.empty())
        writeFile(certificateFile, item(chosen->bySignCert, chosen->nSignCertLen));
    return textFile.empty() ? done : sign(setting, chosen, textFile, signatureFile);
}

} // namespace host
