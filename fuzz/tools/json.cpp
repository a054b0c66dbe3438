// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A certificate of any texts, and a failure about them, as the command prints them: the JSON is JSON, and nothing in it steers a
// terminal.

#include "fuzz/script.h"
#include "tools/sigildesk/certificate.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

/** What is printed while it lives. */
class Printed {
public:
    Printed()
        : m_before(stdout)
    {
        stdout = open_memstream(&m_text, &m_size);
    }
    ~Printed()
    {
        std::fclose(stdout);
        stdout = m_before;
        std::free(m_text);
    }
    Printed(const Printed&) = delete;
    Printed& operator=(const Printed&) = delete;

    std::string text()
    {
        std::fflush(stdout);
        return {m_text, m_size};
    }

private:
    std::FILE* m_before;
    char* m_text = nullptr;
    std::size_t m_size = 0;
};

host::Certificate certificateOf(fuzz::Script& script)
{
    host::Certificate certificate;
    for (std::string* const text :
        {&certificate.name, &certificate.subject, &certificate.issuerName, &certificate.serial, &certificate.use,
            &certificate.policy, &certificate.medium, &certificate.files.certificate, &certificate.files.key})
        *text = fuzz::text(script.word());
    certificate.family = static_cast<int>(script.number());
    certificate.from = static_cast<std::time_t>(script.number()) << 32U;
    return certificate;
}

void requireHarmless(const std::string& printed)
{
    require(std::none_of(printed.begin(), printed.end(),
                [](unsigned char c) { return (c < 0x20 && c != '\n') || c == 0x7F; }),
        "nothing steers the terminal");
}

template <class Print>
void requireJson(Print print)
{
    Printed printed;
    host::Output output({.json = true});
    print(output);
    requireHarmless(printed.text());
    require(host::Json::accept(printed.text()), "what is printed as JSON is one document of it");
}

} // namespace

FUZZ_TARGET(tools_json, input)
{
    fuzz::Script script(input);
    const host::Certificate certificate = certificateOf(script);
    const std::string rest = fuzz::text(script.rest());
    requireJson([&](host::Output& output) {
        output.document({{"certificate", host::jsonOf(certificate)}, {"rest", rest}});
        output.table({{host::Cell(rest)}});
    });
    requireJson([&](host::Output& output) {
        output.tell(host::Failure(host::failed, "failed", {"{}", "{}"}, {rest}).with("more", rest));
    });
    Printed printed;
    host::Output output({.json = false, .quiet = true, .color = true});
    output.table({{host::Cell(rest), host::Cell(certificate.name)}, {host::Cell(certificate.subject)}});
    requireHarmless(printed.text());
}
