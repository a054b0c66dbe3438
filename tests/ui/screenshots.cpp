// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Draws every dialog in both languages into PNG files, with made-up certificates.
//
// usage: ui_screenshots FOLDER [dark]

#include "foundation/environment.h"
#include "tests/ui/desktops.h"
#include "tests/ui/driver.h"
#include "tests/ui/scripted_processor.h"
#include "ui/cert_view_main_dialog.h"
#include "ui/dialog_support.h"
#include "ui/language_texts.h"
#include "ui/password_dialog.h"
#include "ui/removeable_dialog.h"
#include "ui/select_cert_dialog.h"

#include <QTabWidget>

#include <string_view>

namespace {

constexpr char folder[] = SIGILDESK_LIBRARY_FOLDER;

QString target;

void save(QWidget& widget, const char* name, int language)
{
    QCoreApplication::processEvents();
    const QString file = QString("%1/%2-%3.png").arg(target, name, language == 1 ? "ko" : "en");
    if (!widget.grab().save(file))
        qFatal("cannot write %s", qPrintable(file));
}

void openSelection(SelectCertDialog& dialog, int language)
{
    tagINITOPT init{};
    qstrncpy(init.szLibraryFolder, folder, sizeof init.szLibraryFolder);
    init.nLanguage = language;
    tagLOADSELECTCERTOPTION load{};
    load.nPKITypes = 15;
    load.nMessageFlags = SIGIL_MESSAGE_EXPIRED;
    dialog.SetLibraryFolder(folder);
    dialog.SetInitOption(&init, &load, nullptr);
    dialog.InitSetControl();
    dialog.Initalize();
    dialog.SetInitMediaCert(1);
    dialog.show();
}

/** The dialog while it lists a store that takes long. */
void saveListing(int language)
{
    const sigil::Environment machine = sigil::environment();
    sigil::environment().uptime = [] {
        static std::chrono::milliseconds uptime;
        return uptime += std::chrono::milliseconds(100);
    };
    SelectCertDialog dialog;
    scripted::processor().files = 2;
    scripted::processor().onFile = [&](int file) {
        if (file == 1)
            save(dialog, "listing", language);
    };
    openSelection(dialog, language);
    scripted::processor().files = 0;
    sigil::environment() = machine;
}

void saveViewer(tagCERTINFO entry, const char* name, int language)
{
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(language), nullptr, &entry);
    viewer.InitSetControl();
    viewer.show();
    save(viewer, name, language);
}

void saveDetail(tagCERTINFO entry, int language)
{
    CertViewMainDialog viewer;
    viewer.SetCertificate(driver::texts(language), nullptr, &entry);
    viewer.InitSetControl();
    viewer.show();
    driver::find<QTabWidget>(viewer, "tabWidget").setCurrentIndex(1);
    driver::clicksRow(viewer, "tableView_certinfolist", 6);
    save(viewer, "viewer-detail", language);
}

void saveSelection(int language)
{
    SelectCertDialog dialog;
    openSelection(dialog, language);
    driver::types(dialog, "lineEdit_password", "password");
    save(dialog, "selection", language);
    driver::whenShown([&](QDialog& box) {
        save(box, "expired", language);
        box.accept();
    });
    driver::clicksRow(dialog, "tableView_certlist", 2);
}

void saveSmallDialogs(int language)
{
    PasswordDialog password;
    password.SetCaller(language, folder);
    password.InitSetControl();
    password.show();
    save(password, "password", language);

    RemoveableDialog drives;
    drives.SetCaller(language, folder, nullptr);
    drives.InitSetControl();
    drives.GetRemovableDisk();
    drives.show();
    driver::clicksRow(drives, "tableView_remobable", 0);
    save(drives, "removable", language);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const bool dark = argc == 3 && std::string_view(argv[2]) == "dark";
    if (argc != 2 && !dark)
        qFatal("usage: %s FOLDER [dark]", argv[0]);
    target = argv[1];
    if (dark)
        QApplication::setPalette(paletteOf(desktops[0]));
    scripted::processor().entries = {scripted::sampleEntry("홍길동()0011041200012345"),
        scripted::sampleEntry("김하늘", 4), scripted::sampleEntry("이바다", 5)};
    scripted::processor().drives = {
        scripted::sampleDrive(0, "/media/hong/USB"), scripted::sampleDrive(1, "/media/hong/DATA")};
    for (int language : {1, 2}) {
        saveSelection(language);
        saveListing(language);
        saveViewer(scripted::sampleEntry("홍길동"), "viewer-valid", language);
        saveViewer(scripted::sampleEntry("김하늘", 4), "viewer-renewal", language);
        saveViewer(scripted::sampleEntry("이바다", 5), "viewer-expired", language);
        saveDetail(scripted::sampleEntry("홍길동"), language);
        saveSmallDialogs(language);
    }
    return 0;
}
