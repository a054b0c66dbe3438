// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/dialog_user.h"
#include "tests/torture/events.h"
#include "tests/torture/own_code.h"
#include "tests/torture/sessions.h"

#include "foundation/environment.h"
#include "ui/SigilDesk.h"
#include "ui/language_texts.h"
#include "ui/select_cert_dialog.h"

#include <sigildesk/dialogs.h>
#include <sigildesk/open_toolkit.h>

#include <QApplication>
#include <QMessageBox>

#include <algorithm>
#include <cstring>
#include <execinfo.h>
#include <memory>
#include <new>

namespace torture {
namespace {

/** What a step answers when the dialogs do wrong, besides the codes of their functions. */
enum Wrong : int { blamed = -101, partOfAResult = -102, resultWithoutSuccess = -103 };

constexpr int leavingCode = 7;

/** No exception may pass through what Qt delivers: here the process would end. */
class Application : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) noexcept override
    {
        return QApplication::notify(receiver, event);
    }
};

/** What all steps share, ready before the session. */
struct Desk {
    explicit Desk(const Materials& materials);

    std::unique_ptr<DialogUser> user;
    tagINITOPT init{};
    tagLOADSELECTCERTOPTION load{};
    tagSELCERTINFO result{}, untouched{};
};

using Show = int (*)(Desk& desk, tagLOADSELECTCERTOPTION& load);

int showOwn(Desk& desk, tagLOADSELECTCERTOPTION& load)
{
    return ShowUserCert_T(&desk.init, &load, nullptr, nullptr, &desk.result);
}
int showShared(Desk& desk, tagLOADSELECTCERTOPTION& load)
{
    return g_dlgUserCert ? ShowUserCert(nullptr, nullptr, &desk.init, &load, nullptr, nullptr, &desk.result)
                         : SIGIL_NO_HANDLE;
}

QStringList accusations(const std::string& library)
{
    const sigil::LanguageTexts texts(sigil::languageFile(library, SIGIL_LANGUAGE_ENGLISH));
    QStringList found;
    for (const char* key :
        {"MSG_SELECTCERT_PASSWORD_DIFFERENT", "MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR", "MSG_SELECTCERT_GETPRIKEY",
            "DLG_CERTPASSWORD_WRONG_PKCS11", "MSG_CERTVERIFY_DAMAGED", "MSG_CERTVERIFY_SIGNATURE"})
        if (const QString text = texts.message(key); !text.isEmpty())
            found << text;
    return found;
}

/** Has Qt load its fonts, which takes longer than all that follows. */
void warmUp(Desk& desk)
{
    static const Moves none;
    desk.user->plan(none);
    QMessageBox(QMessageBox::Information, "가", "나").exec();
    desk.user->stop();
}

Desk::Desk(const Materials& materials)
    : user(std::make_unique<DialogUser>(accusations(materials.library)))
{
    materials.library.copy(init.szLibraryFolder, sizeof init.szLibraryFolder - 1);
    init.nLanguage = SIGIL_LANGUAGE_ENGLISH;
    load.nPKITypes = SIGIL_FAMILY_NPKI | SIGIL_FAMILY_GPKI;
    std::memset(&untouched, 'u', sizeof untouched);
    warmUp(*this);
}

/** A listing goes on without what it cannot read of a key-management pair, so that may be missing. */
bool isWhole(const tagSELCERTINFO& result)
{
    const auto pair = {result.nSignCertLen, result.nSignPriKeyLen};
    const auto ofDisk = {result.nRandomLen, int{*result.szSignCertPath}};
    const auto texts = {*result.szSubjectDN, *result.szSubjectName, *result.szIssuerDN, *result.szSerialNum,
        *result.szValidFrom, *result.szValidTo};
    const auto given = [](int item) { return item != 0; };
    return std::all_of(pair.begin(), pair.end(), given) && std::all_of(texts.begin(), texts.end(), given) &&
        (result.nMediaType == SIGIL_MEDIUM_MEMORY || std::all_of(ofDisk.begin(), ofDisk.end(), given));
}

/** A call that shows a dialog, with a user that makes these moves. */
template <class Show>
int use(Desk& desk, const Moves& moves, bool mayBlame, Show show)
{
    {
        const Pause pause;
        desk.result = desk.untouched;
        desk.user->plan(moves);
    }
    const int code = show();
    const Pause pause;
    desk.user->stop();
    if (desk.user->wasBlamed() && !mayBlame)
        return blamed;
    if (code == 0 && !isWhole(desk.result))
        return partOfAResult;
    return code != 0 && std::memcmp(&desk.result, &desk.untouched, sizeof desk.result) != 0 ? resultWithoutSuccess
                                                                                            : code;
}

constexpr char selection[] = "SelectCertDialog";

/** A certificate that has all that can be handed out. */
const Move choosing = clicks(selection, "tableView_certlist", 1);

Moves unlocking(Moves first)
{
    first.push_back(types(selection, "lineEdit_password", password));
    first.push_back(presses(selection, "pushButton_ok"));
    return first;
}

Moves viewing()
{
    constexpr char viewer[] = "CertViewMainDialog";
    return {choosing, presses(selection, "pushButton_view"), presses(viewer, "pushButton_verify"),
        turnsTo(viewer, "tabWidget", 1), clicks(viewer, "tableView_certinfolist", 3),
        presses(viewer, "pushButton_ok"), presses(selection, "pushButton_cancel")};
}

Moves importing(const std::string& file)
{
    return unlocking({presses(selection, "pushButton_find"), chooses(file),
        types("PasswordDialog", "lineEdit_password", password), presses("PasswordDialog", "pushButton_ok")});
}

Moves takingADisk()
{
    return unlocking({presses(selection, "pushButton_remove"), clicks("RemoveableDialog", "tableView_remobable", 0),
        presses("RemoveableDialog", "pushButton_ok"), choosing});
}

/** A clock of a machine on which everything takes long. */
std::chrono::milliseconds slowClock()
{
    static std::chrono::milliseconds now{0};
    return now += std::chrono::milliseconds(50);
}

/** As ShowUserCertInit() makes it. */
int makeShared()
try {
    g_dlgUserCert = std::make_unique<SelectCertDialog>(nullptr).release();
    return 0;
} catch (const std::bad_alloc&) {
    return SIGIL_NO_MEMORY;
}

/** A service that never showed the dialog comes back from its loop. */
int leaveTheLoop(Desk& desk)
{
    {
        const Pause pause;
        std::unique_ptr<SelectCertDialog>(std::exchange(g_dlgUserCert, nullptr)).reset();
        desk.user->planToLeave(leavingCode);
    }
    int count = 0;
    return ShowUserCertInit(count, nullptr);
}

/** The steps of a session, which all show a dialog in the same way. */
class Steps {
public:
    Steps(Materials& materials, Show show)
        : m_desk(std::make_shared<Desk>(materials))
        , m_show(show)
    {
    }

    void add(const char* name, const Moves& moves, bool mayBlame = false)
    {
        addWith(name, moves, mayBlame, m_desk->load);
    }
    /** The same on a machine that takes so long that the dialog shows itself while it lists. */
    void addSlow(const char* name, const Moves& moves)
    {
        add(name, moves);
        m_steps.back().run = [run = m_steps.back().run] {
            const auto machines = std::exchange(sigil::environment().uptime, slowClock);
            const int code = run();
            sigil::environment().uptime = machines;
            return code;
        };
    }
    void addWith(const char* name, const Moves& moves, bool mayBlame, const tagLOADSELECTCERTOPTION& load)
    {
        const auto given = std::make_shared<tagLOADSELECTCERTOPTION>(load);
        m_steps.push_back({name, [desk = m_desk, show = m_show, moves, mayBlame, given] {
                               return use(*desk, moves, mayBlame, [&] { return show(*desk, *given); });
                           }});
    }
    void addOther(const char* name, const std::function<int(Desk&)>& call)
    {
        m_steps.push_back({name, [desk = m_desk, call] { return call(*desk); }});
    }
    const tagLOADSELECTCERTOPTION& load() const { return m_desk->load; }
    std::vector<Step> take() { return std::move(m_steps); }

private:
    std::shared_ptr<Desk> m_desk;
    Show m_show;
    std::vector<Step> m_steps;
};

/** Options with a certificate and its key, on which the dialog opens. */
tagLOADSELECTCERTOPTION inMemory(const Materials& materials, tagLOADSELECTCERTOPTION load)
{
    load.byMemoryCert = 1;
    load.nMemorySignCertLen = static_cast<int>(materials.signCert.size());
    load.nMemorySignPriKeyLen = static_cast<int>(materials.plainKey.size());
    std::copy(materials.signCert.begin(), materials.signCert.end(), load.byMemorySignCert);
    std::copy(materials.plainKey.begin(), materials.plainKey.end(), load.byMemorySignPriKey);
    return load;
}

void mountDisk(const Materials& materials)
{
    const auto folder = materials.store().folder();
    writeFile(folder / "mtab", "/dev/sdb1 " + folder.string() + " vfat rw 0 0\n");
    sigil::environment().mountTable = folder / "mtab";
}

void startApplication()
{
    static char name[] = "torture_test";
    static char* words[] = {name, nullptr};
    static int count = 1;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    g_pQApplication = new Application(count, words);
    void* frame = nullptr;
    backtrace(&frame, 1); // loads what it needs before memory runs out
    countOnly(worksForUs);
}

Codes dialogCodes()
{
    // What an open dialog lacks memory for it tells its user, who then closes it. Without its loaders a processor has no
    // handle. Of a file that cannot be read the certificate is left out, or its key-management pair.
    return {{SIGIL_NO_MEMORY, SIGIL_TK_NO_MEMORY, SIGIL_CANCELLED, SIGIL_NO_HANDLE}, {},
        [](int code) { return code == blamed || code == partOfAResult || isStated(code); }};
}

void addDialogs(Steps& steps, const Materials& materials)
{
    steps.add("cancel", {presses(selection, "pushButton_cancel")});
    steps.add("wrong password, then the right one",
        {clicks(selection, "tableView_certlist", 2), types(selection, "lineEdit_password", wrongPassword),
            presses(selection, "pushButton_ok"), types(selection, "lineEdit_password", password),
            presses(selection, "pushButton_ok")},
        true);
    steps.add("choose", unlocking({choosing}));
    steps.add("view", viewing());
    steps.add("import", importing(materials.certificate().at("pfx")));
    steps.add("removable disk", takingADisk());
    steps.addSlow("slow listing", unlocking({choosing}));
    steps.addSlow("slow listing, given up", {presses("listing", "pushButton_cancel")});
    steps.addWith("memory", {clicks(selection, "tableView_certlist", 0), presses(selection, "pushButton_cancel")},
        false, inMemory(materials, steps.load()));
}

} // namespace

Session ownDialogSession(Materials& materials)
{
    useStore(materials);
    mountDisk(materials);
    startApplication();
    Steps steps(materials, showOwn);
    addDialogs(steps, materials);
    return {steps.take(), dialogCodes(), materials.store().folder()};
}

Session sharedDialogSession(Materials& materials)
{
    useStore(materials);
    mountDisk(materials);
    startApplication();
    Steps steps(materials, showShared);
    steps.addOther("make", [](Desk&) { return makeShared(); });
    addDialogs(steps, materials);
    steps.addOther("ShowUserCertInit, after it was given back", leaveTheLoop);
    // Each call binds the toolkit again and leaves the context of the call before, of which one may have OpenSSL's
    // algorithms for itself: after a shortage they are fetched anew. It also keeps a certificate that could not be unloaded.
    return {steps.take(), dialogCodes(), materials.store().folder(), false, 3};
}

} // namespace torture
