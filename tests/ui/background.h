// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Programs that a test needs beside it: a virtual X server, a message bus.
 */
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <array>
#include <csignal>
#include <string>
#include <unistd.h>
#include <vector>

/** A program that says a line about itself, on a file descriptor whose number it is given, once it is ready. It ends with
 *  the test. */
struct BackgroundProgram {
    std::vector<std::string> command; ///< "%" stands for the number of the descriptor
    void (*ready)(const std::string& line);
};

class Background {
public:
    explicit Background(const BackgroundProgram& program)
    {
        std::array<int, 2> said{};
        if (pipe(said.data()) != 0)
            qFatal("no pipe");
        m_process = fork();
        if (m_process == 0)
            run(program.command, std::to_string(said[1]));
        close(said[1]);
        std::string line;
        for (char c = 0; read(said[0], &c, 1) == 1 && c != '\n';)
            line += c;
        if (line.empty())
            qFatal("%s did not start", program.command[0].c_str());
        program.ready(line);
    }
    ~Background() { kill(m_process, SIGTERM); }
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

private:
    [[noreturn]] static void run(std::vector<std::string> command, const std::string& descriptor)
    {
        std::vector<char*> arguments;
        for (std::string& word : command) {
            if (const auto at = word.find('%'); at != std::string::npos)
                word.replace(at, 1, descriptor);
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }

    pid_t m_process;
};

inline BackgroundProgram virtualServer()
{
    return {{"Xvfb", "-displayfd", "%", "-screen", "0", "1024x768x24", "-nolisten", "tcp"},
        [](const std::string& display) {
            qputenv("DISPLAY", (":" + display).c_str());
            qputenv("QT_QPA_PLATFORM", "xcb");
        }};
}

/** A message bus on which Qt's dialogs can be read as a screen reader does. */
inline BackgroundProgram accessibleBus()
{
    return {{"dbus-daemon", "--session", "--nofork", "--print-address=%"}, [](const std::string& address) {
                qputenv("DBUS_SESSION_BUS_ADDRESS", address.c_str());
                qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
            }};
}
