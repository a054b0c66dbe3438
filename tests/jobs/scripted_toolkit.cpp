// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/jobs/scripted_toolkit.h"

namespace {

/** The doubles forget their answers before the handle is made. */
host::Setting afterReset(const host::Setting& setting)
{
    doubles::reset();
    return setting;
}

} // namespace

ScriptedToolkit::ScriptedToolkit(int toolkit)
    : setting{folder.path(), toolkit, host::Language::English}
    , crypto(afterReset({DOUBLES_FOLDER, toolkit, host::Language::English}))
    , heldAtTheStart(doubles::liveByteStrings())
{
    constexpr int notReadable = 3101;
    constexpr int notFetched = 3601;
    doubles::answer(symbol("CERT_Load"), [this](const doubles::Call& call) {
        m_loaded = doubles::contents(call.pointer<BINSTR>(0));
        return certificates.contains(m_loaded) ? 0 : notReadable;
    });
    doubles::answer(symbol("CERT_GetSubjectName"), writesOf(&Read::subject));
    doubles::answer(symbol("CERT_GetIssuerName"), writesOf(&Read::issuer));
    doubles::answer(symbol("CERT_GetAIA"), writesOf(&Read::addresses));
    doubles::answer(toolkit == SIGIL_TOOLKIT_MAKER ? "HVTK_HVAP_GetDataByURL" : "GPKI_LDAP_GetDataByURL",
        [this](const doubles::Call& call) {
            const auto found = served.find(fetched.emplace_back(call.pointer<char>(1)));
            if (found == served.end())
                return notFetched;
            doubles::fill(call.pointer<BINSTR>(2), found->second);
            return 0;
        });
    doubles::answer(symbol("CERT_AddTrustedCert"), [this](const doubles::Call& call) {
        trusted.push_back(doubles::contents(call.pointer<BINSTR>(0)));
        return 0;
    });
}

std::string ScriptedToolkit::symbol(const std::string& name) const
{
    return (setting.toolkit == SIGIL_TOOLKIT_MAKER ? "HVTK_" : "GPKI_") + name;
}

doubles::Answer ScriptedToolkit::writesOf(std::string Read::*text)
{
    return
        [this, text](const doubles::Call& call) { return doubles::writesText(certificates[m_loaded].*text)(call); };
}

std::string codesOf(const host::Steps& steps)
{
    std::string text;
    for (const host::Step& step : steps.all())
        text += (text.empty() ? "" : ", ") + std::string(step.name) + " " + std::to_string(step.code);
    return text;
}
