// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: the error log and the plug-in's dated log.

#include <sigildesk/profile.h>
#include <sigildesk/util.h>

#include "foundation/ascii.h"
#include "foundation/environment.h"
#include "foundation/file.h"
#include "foundation/local_time.h"

#include <cerrno>
#include <cstring>
#include <string>

namespace {

constexpr std::size_t longestLogText = 4095;

bool isEmpty(const char* text) { return !text || !*text; }

/** The folder that the plug-in's settings name, empty for none. */
std::string pluginLogFolder()
{
    std::string settings = sigil::environment().pluginFolder + "/ERROR_LOG";
    char section[] = "ERROR";
    char key[] = "PATH";
    char none[] = "";
    char folder[1024];
    const int length = FileGetPrivateProfileString(section, key, none, folder, sizeof folder, settings.data());
    return length < 1 ? std::string() : folder;
}

std::string errorRecord(const char* where, const char* errorName, const char* callee, int code, const char* message)
{
    std::string record = sigil::currentTimeText("%Y-%m-%d %H:%M:%S") + " >> " + where;
    record += errorName ? std::string(" - ") + errorName + " >>" : " >>";
    if (!isEmpty(callee))
        record += std::string(" ") + callee + " : " + std::to_string(code);
    if (!isEmpty(message))
        record += std::string(" (Msg : ") + message + ")";
    return record + "\r\n";
}

/** Appends @p text to the log of the day in @p folder. @return number of bytes written; -1 for none */
long appendToPluginLog(const std::string& folder, const char* text)
{
    std::string record = sigil::currentTimeText("[%Y-%m-%d %H:%M:%S] ");
    if (text)
        record.append(text, strnlen(text, longestLogText));
    const std::string path = folder + sigil::currentTimeText("/%Y-%m-%d_A.log");
    return sigil::appendToLog(path, sigil::LogOwner::anyone, record);
}

} // namespace

int CUtil::SetLogInfo(char* logFile, char* where, char* errorName, char* callee, int code, char* message)
{
    if (isEmpty(logFile) || !where)
        return 0;
    sigil::logQuietly([&] {
        const std::string record = errorRecord(where, errorName, callee, code, message);
        sigil::appendToLog(logFile, sigil::LogOwner::anyone, record);
        return 0;
    });
    return 0;
}

int CUtil::WriteLogData(char* text, int len)
{
    return sigil::logQuietly([&] {
        const std::string folder = pluginLogFolder();
        if (folder.empty())
            return 0;
        const long written = appendToPluginLog(folder, text);
        return written >= 0 && written >= len ? 0 : -1;
    });
}

int CUtil::LogFilePath(char* /*path*/) { return 0; }

int CUtil::GetSystemError() { return errno; }
