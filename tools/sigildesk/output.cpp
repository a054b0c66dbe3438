// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "output.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <unistd.h>

namespace host {

namespace {

constexpr Words outputFailed{"cannot write to standard output", "표준 출력에 쓸 수 없습니다"};

const char* sequence(Color color)
{
    static constexpr std::array<const char*, 4> sequences{"", "\033[31m", "\033[33m", "\033[32m"};
    return sequences.at(static_cast<std::size_t>(color));
}

} // namespace

Output::Output(const OutputStyle& style)
    : m_style(style)
{
}

std::string Output::shown(const Cell& cell) const { return m_charset.visible(harmless(cell.text)); }

void Output::put(const std::string& text)
{
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stdout)); // finish() notices when it fails
}

void Output::putError(const std::string& text) const
{
    const std::string encoded = m_charset.encode(text);
    static_cast<void>(std::fwrite(encoded.data(), 1, encoded.size(), stderr));
}

void Output::line(const std::string& text, Color color) { table({{Cell(text, color)}}); }

void Output::table(const std::vector<std::vector<Cell>>& rows)
{
    if (m_style.json)
        return;
    std::vector<std::size_t> widths;
    for (const std::vector<Cell>& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columns(shown(row[i])));
    }
    for (const std::vector<Cell>& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string text = shown(row[i]);
            const bool colored = m_style.color && row[i].color != Color::None;
            line += colored ? sequence(row[i].color) + text + "\033[0m" : text;
            if (i + 1 < row.size())
                line.append(widths[i] - columns(text) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        put(m_charset.encode(line) + "\n");
    }
}

void Output::document(const Json& json)
{
    if (!m_style.json)
        return;
    const std::string text = json.dump(2, ' ', !m_charset.isUtf8(), Json::error_handler_t::replace);
    put(harmlessJson(text) + "\n");
}

void Output::raw(const std::string& text)
{
    if (!m_style.json)
        put(m_charset.encode(text));
}

void Output::tell(const Failure& failure)
{
    if (m_style.json) {
        document({{"error", failure.json(m_style.language)}});
        return;
    }
    putError("sigildesk: " + harmless(failure.message(m_style.language)) + "\n");
    for (const std::string& line : failure.lines())
        putError("  " + harmless(line) + "\n");
}

void Output::finish()
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw Failure(failed, "output_failed", outputFailed);
}

Progress::Progress(const Output& output, const Words& words)
{
    if (output.quiet() || output.json() || isatty(STDERR_FILENO) == 0)
        return;
    m_thread = std::thread([this, line = std::string(words.in(output.language()))] { wait(line); });
}

Progress::~Progress()
{
    {
        const std::lock_guard lock(m_mutex);
        m_done = true;
    }
    m_over.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void Progress::wait(const std::string& line)
{
    std::unique_lock lock(m_mutex);
    if (m_over.wait_for(lock, std::chrono::milliseconds(500), [this] { return m_done; }))
        return;
    static_cast<void>(std::fputs(Charset().encode(line).c_str(), stderr));
    m_over.wait(lock, [this] { return m_done; });
    const std::string blanks(columns(line), ' '); // every terminal takes them
    static_cast<void>(std::fputs(("\r" + blanks + "\r").c_str(), stderr));
}

} // namespace host
