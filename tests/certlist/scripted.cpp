// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/certlist/scripted.h"

#include <cstring>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string theHome; // what the injected environment answers

std::string homeFolder() { return theHome; }

/** 1 June 2024, noon, local time. */
timespec clockOfTests()
{
    std::tm date{};
    date.tm_year = 124;
    date.tm_mon = 5;
    date.tm_mday = 1;
    date.tm_hour = 12;
    date.tm_isdst = -1;
    return {std::mktime(&date), 0};
}

} // namespace

Scripted::Scripted()
    : m_machine(sigil::environment())
{
    theHome = home.string();
    sigil::environment().homeFolder = homeFolder;
    sigil::environment().now = clockOfTests;
    fake::install();
    fs::create_directory(disk);
    for (const char* toolkit : {"libHVCToolkitV30.so", "libgpkiapi_v15.so"})
        fs::create_symlink(fs::path(DOUBLES_FOLDER) / toolkit, library / toolkit);
    writeFile(library / "Policy_KOR.conf", "1.2.410.200005.1.1.1=personal\n1.2.410.100001.2.2.1=civil servant\n");
    writeFile(library / "TWAPI_LOG.ini", "[TW_Info]\nPATH=" + logFile.string() + "\n");
    options.nPKITypes = 15;
}

Scripted::~Scripted()
{
    finish();
    doubles::reset();
    sigil::environment() = m_machine;
}

void Scripted::start(int language)
{
    ASSERT_EQ(CLP_Initalize(&clp, nullptr, 0, language, Text(library.string())), 0);
    ASSERT_EQ(setOptions(), 0);
    ASSERT_EQ(CLP_SetMediaType(clp, 1, nullptr, 0), 0);
}

void Scripted::finish()
{
    CLP_UnInitalize(clp);
    clp = nullptr;
}

int Scripted::load(int medium, const std::string& folder)
{
    const int rc = CLP_SetMediaType(clp, medium, Text(folder), 0);
    return rc == 0 ? CLP_LoadCertList(clp) : rc;
}

std::unique_ptr<tagCERTINFO> Scripted::entry(int index)
{
    auto record = std::make_unique<tagCERTINFO>();
    EXPECT_EQ(CLP_GetCertInfo(clp, index, record.get()), 0);
    return record;
}

std::vector<std::string> Scripted::subjects()
{
    std::vector<std::string> names;
    for (int i = 0; i < count(); ++i)
        names.push_back(entry(i)->szSubjectDN);
    return names;
}

void Scripted::addPair(const fs::path& folder, const fake::Fields& changes)
{
    writeFile(folder / "signCert.der", fake::certificate(changes));
    writeFile(folder / "signPri.key", fake::encrypted(fake::key(), goodPassword));
}

fs::path Scripted::addNpki(const std::string& name, const fake::Fields& changes, const std::string& ca)
{
    const fs::path folder = home / "NPKI" / ca / "USER" / name;
    addPair(folder, changes);
    return folder;
}

void Scripted::addKm(const fs::path& folder, const fake::Fields& changes)
{
    writeFile(folder / "kmCert.der", fake::certificate(changes));
    writeFile(folder / "kmPri.key", fake::encrypted("KEY(K1)", goodPassword));
}

void Scripted::addGpki(const std::string& name, const fake::Fields& changes, const std::string& classFolder)
{
    const fs::path folder = home / "GPKI" / "Certificate" / classFolder;
    writeFile(folder / (name + "_sig.cer"), fake::certificate(changes));
    writeFile(folder / (name + "_sig.key"), fake::encrypted(fake::key(), goodPassword));
}

std::vector<std::string> Scripted::log()
{
    std::ifstream file(logFile, std::ios::binary);
    std::vector<std::string> records;
    for (std::string line; std::getline(file, line);)
        records.push_back(line.substr(std::strlen("2024-06-01 12:00:00 >> "), line.size() - 1 - 23));
    fs::remove(logFile);
    return records;
}

std::string Scripted::lastLog()
{
    const auto records = log();
    return records.empty() ? "" : records.back();
}
