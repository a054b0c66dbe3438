// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/dialog.h"

#include "foundation/file.h"
#include "jobs/failure.h"
#include "jobs/read_file.h"
#include "jobs/store_list.h"

#include <array>
#include <fcntl.h>
#include <new>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace host {

namespace {

constexpr Words noDisplay{
    "the dialog needs a display, and none could be opened: {}", "대화 상자에는 화면이 필요한데 열 수 없습니다: {}"};
constexpr Words noDialogs{"the dialogs are not installed: {}", "대화 상자가 설치되어 있지 않습니다: {}"};
constexpr Words notStarted{"cannot start {}: {}", "{} 프로그램을 시작할 수 없습니다: {}"};
constexpr Words noAnswer{
    "the dialog ended before anything was chosen", "인증서를 선택하기 전에 대화 상자가 종료되었습니다"};
constexpr Words folderTooLong{
    "the library folder's path is longer than 259 bytes", "라이브러리 폴더 경로가 259바이트보다 깁니다"};

/** How the program starts: with the channel as its standard input, no other file of this process but the one for
 *  complaints, and no signal blocked. */
class Start {
public:
    explicit Start(int channel)
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attributes);
        posix_spawn_file_actions_adddup2(&m_actions, channel, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&m_actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK);
    }
    ~Start()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    /** The new process. Throws Failure. */
    pid_t run(std::string program) const
    {
        const std::array<char*, 2> words{program.data(), nullptr};
        pid_t process = 0;
        const int error = posix_spawn(&process, program.c_str(), &m_actions, &m_attributes, words.data(), environ);
        if (error == ENOMEM)
            throw std::bad_alloc();
        if (error == ENOENT)
            throw Failure(failed, "no_dialogs", noDialogs, {program});
        if (error != 0)
            throw Failure(failed, "dialog_failed", notStarted, {program, reason(error)});
        return process;
    }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

/** The program while it runs. It ends when nobody listens to it. */
class DialogProcess {
public:
    explicit DialogProcess(const std::string& program)
    {
        std::array<int, 2> ends{};
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
            throw Failure(failed, "dialog_failed", notStarted, {program, reason(errno)});
        m_channel = sigil::Descriptor(ends[0]);
        const sigil::Descriptor other(ends[1]);
        m_process = Start(other.get()).run(program);
    }
    ~DialogProcess()
    {
        {
            const sigil::Descriptor closed(std::move(m_channel));
        }
        while (waitpid(m_process, nullptr, 0) < 0 &&
            errno == EINTR) // fails where the host has taken its status already
            ;
    }
    DialogProcess(const DialogProcess&) = delete;
    DialogProcess& operator=(const DialogProcess&) = delete;

    int channel() const { return m_channel.get(); }

private:
    sigil::Descriptor m_channel;
    pid_t m_process = 0;
};

template <std::size_t N>
bool fits(const unsigned char (&)[N], int length)
{
    return length >= 0 && static_cast<std::size_t>(length) <= N;
}

/** Whether the items are where they are said to be. Another program may have written the record. */
bool isSound(const tagSELCERTINFO& chosen)
{
    return fits(chosen.bySignCert, chosen.nSignCertLen) && fits(chosen.bySignPriKey, chosen.nSignPriKeyLen) &&
        fits(chosen.byKmCert, chosen.nKmCertLen) && fits(chosen.byKmPriKey, chosen.nKmPriKeyLen) &&
        chosen.nSignCertLen > 0 && chosen.nSignPriKeyLen > 0;
}

template <std::size_t... N>
void endTexts(char (&... texts)[N])
{
    ((texts[N - 1] = '\0'), ...);
}

void endTexts(DialogAnswer& answer)
{
    tagSELCERTINFO& chosen = answer.chosen;
    endTexts(answer.reason, chosen.szSubjectDN, chosen.szSubjectName, chosen.szIssuerDN, chosen.szIssuerName,
        chosen.szSignCertPath, chosen.szSignPriKeyPath, chosen.szKmCertPath, chosen.szKmPriKeyPath,
        chosen.szCertPolicy, chosen.szSerialNum, chosen.szValidFrom, chosen.szValidTo);
}

} // namespace

DialogRequest dialogRequest(const Setting& setting)
{
    DialogRequest request{};
    if (setting.folder.size() >= sizeof request.init.szLibraryFolder)
        throw Failure(failed, "path_too_long", folderTooLong);
    setting.folder.copy(request.init.szLibraryFolder, sizeof request.init.szLibraryFolder - 1);
    request.init.nLanguage = static_cast<int>(setting.language());
    request.load.nPKITypes = static_cast<unsigned>(everything().nPKITypes);
    request.load.nMessageFlags = SIGIL_MESSAGE_EXPIRED;
    return request;
}

DialogChoice chooseInDialog(const std::string& folder, const DialogRequest& request)
{
    const std::string program = folder + "/" + dialogProgram;
    const DialogProcess dialog(program);
    DialogGreeting greeting{};
    if (!receiveRecord(dialog.channel(), greeting) || greeting != dialogGreeting)
        throw Failure(failed, "no_dialogs", noDialogs, {program});
    DialogChoice choice;
    DialogAnswer& answer = choice.answer();
    if (!sendRecord(dialog.channel(), request) || !receiveRecord(dialog.channel(), answer))
        throw Failure(failed, "dialog_failed", noAnswer);
    endTexts(answer);
    if (answer.code == SIGIL_NO_DISPLAY)
        throw Failure(failed, "no_display", noDisplay, {answer.reason});
    if (answer.code != SIGIL_SUCCESS)
        throw Failure::ofCode(answer.code);
    if (!isSound(answer.chosen))
        throw Failure(failed, "dialog_failed", noAnswer);
    return choice;
}

} // namespace host
