// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/events.h"
#include "tests/torture/sessions.h"

#include "tools/sigildesk/command_line.h"

#include <sigildesk/codes.h>
#include <sigildesk/open_toolkit.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <memory>

namespace torture {
namespace {

namespace fs = std::filesystem;

/** What the command tells the shell. */
enum Exit : int { no = 1, wrongUse = 2, failed = 3 };

/** Standard output, which no file call of a session fails on. */
class StandardOutput {
public:
    StandardOutput()
    {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        constexpr int muchMoreThanIsPrinted = 1 << 20;
        m_read = ends[0];
        fcntl(m_read, F_SETFL, O_NONBLOCK);
        fcntl(m_read, F_SETPIPE_SZ, muchMoreThanIsPrinted);
        dup2(ends[1], STDOUT_FILENO);
        close(ends[1]);
    }
    /** What was printed since it was last asked for. */
    std::string printed() const
    {
        std::string text;
        std::array<char, 4096> room{};
        for (ssize_t size = 0; (size = read(m_read, room.data(), room.size())) > 0;)
            text.append(room.data(), static_cast<std::size_t>(size));
        return text;
    }

private:
    int m_read = -1;
};

/** A command line, ready before the session. */
class CommandLine {
public:
    CommandLine(std::vector<std::string> words, const StandardOutput& output)
        : m_words(std::move(words))
        , m_output(output)
    {
        for (std::string& word : m_words)
            m_pointers.push_back(word.data());
        m_pointers.push_back(nullptr);
    }
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /** @return 0; the code that the document on standard output tells; the exit code where there is none */
    int run()
    {
        takeOutput();
        const int exit = host::runCommandLine(static_cast<int>(m_words.size()), m_pointers.data());
        const std::string text = takeOutput();
        const Pause pause;
        constexpr std::string_view member = "\"code\": ";
        const std::size_t place = exit == 0 ? text.npos : text.find(member);
        return place == text.npos ? exit : std::atoi(text.c_str() + place + member.size());
    }

private:
    /** What an earlier session left there goes too. */
    std::string takeOutput() const
    {
        const Pause pause;
        return m_output.printed();
    }

    std::vector<std::string> m_words;
    std::vector<char*> m_pointers;
    const StandardOutput& m_output;
};

/** A file for its owner alone. */
std::string fileOf(const fs::path& path, const std::string& text)
{
    writeFile(path, text);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    return path;
}

Codes commandCodes()
{
    return {{SIGIL_NO_MEMORY, SIGIL_TK_NO_MEMORY, failed}, {},
        [](int code) { return code <= failed || isStated(code); }, failed};
}

} // namespace

Session commandSession(Materials& materials, int toolkit)
{
    static const StandardOutput output;
    useStore(materials);
    host::prepareProcess();
    const fs::path folder = materials.store().folder();
    const std::string& cert = materials.certificate().at("signing_certificate");
    const std::string content = fileOf(folder / "content", materials.content);
    const std::string secret = fileOf(folder / "password", std::string(password) + "\n");
    const std::string renewed = fileOf(folder / "renewed", std::string(otherPassword) + "\n");
    const std::string identity = fileOf(folder / "identity", materials.identity + "\n");
    const std::string disk = folder / "disk";
    const std::string pfx = folder / "new.pfx";
    fs::create_directory(disk);
    std::vector<Step> steps;
    const auto add = [&](std::vector<std::string> words, std::set<int> leftOut = {}) {
        const std::string name = words.front();
        words.insert(words.begin(),
            {"sigildesk", "--json", "--folder", materials.library, "--toolkit",
                toolkit == SIGIL_TOOLKIT_MAKER ? "maker" : "gpki"});
        const auto line = std::make_shared<CommandLine>(std::move(words), output);
        steps.push_back({name, [line] { return line->run(); }, std::move(leftOut)});
    };
    add({"list"});
    add({"show", cert});
    add({"doctor"}, {no});
    add({"codes", "1113"});
    add({"unlock", cert, "--password-file", secret});
    add({"identity", cert, "--identity-file", identity, "--password-file", secret});
    add({"sign", cert, content, "--password-file", secret});
    add({"verify-file", content + ".p7m", "--out", folder / "read"});
    add({"encrypt", content, "--to", cert});
    add({"decrypt", cert, content + ".p7e", "--out", folder / "again", "--password-file", secret});
    add({"export", cert, "--out", pfx, "--password-file", secret, "--new-password-file", renewed});
    add({"import", pfx, "--to", disk, "--password-file", renewed});
    add({"copy", cert, "--to", disk, "--force"});
    add({"passwd", cert, "--password-file", secret, "--new-password-file", renewed});
    add({"delete", cert, "--yes"});
    return {std::move(steps), commandCodes(), folder, true};
}

} // namespace torture
