// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Everything that the command prints.
 */
#pragma once

#include "jobs/failure.h"
#include "text.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace host {

enum class Color { None, Red, Yellow, Green };

/** A field of a table. */
struct Cell {
    Cell(std::string content, Color mark = Color::None)
        : text(std::move(content))
        , color(mark)
    {
    }
    std::string text;
    Color color;
};

/** How things are printed. */
struct OutputStyle {
    bool json = false;
    bool quiet = false;
    bool color = false;
    Language language = Language::English;
};

/** Standard output and standard error. What goes out is made harmless and kept to the terminal's letters here, so that
 *  nobody has to think of it. */
class Output {
public:
    explicit Output(const OutputStyle& style);

    bool json() const { return m_style.json; }
    bool quiet() const { return m_style.quiet; }
    Language language() const { return m_style.language; }

    /** A line of the result. Nothing with --json. */
    void line(const std::string& text, Color color = Color::None);
    /** Lines whose fields stand below each other. */
    void table(const std::vector<std::vector<Cell>>& rows);
    /** The JSON document; with --json alone, and once. */
    void document(const Json& json);
    /** Text as it is, for scripts and pages: never with --json. */
    void raw(const std::string& text);

    /** What went wrong: a JSON object, or words on standard error. */
    void tell(const Failure& failure);

    /** Everything has reached standard output; else throws Failure. */
    void finish();

private:
    std::string shown(const Cell& cell) const;
    void put(const std::string& text);
    void putError(const std::string& text) const;

    OutputStyle m_style;
    Charset m_charset;
};

/** Says on a terminal that something takes its time, when it takes longer than half a second. The line goes away with the
 *  object. */
class Progress {
public:
    Progress(const Output& output, const Words& words);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void wait(const std::string& line);

    std::mutex m_mutex;
    std::condition_variable m_over;
    bool m_done = false;
    std::thread m_thread;
};

} // namespace host
