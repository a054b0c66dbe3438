// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What an observer hears of a listing: every folder, every candidate, and the reason of the loader's decision.

#include "tests/certlist/parsing.h"

#include "certlist/processor.h"

#include <cerrno>
#include <cstdio>
#include <map>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

using sigil::Drop;

struct Heard {
    int result;
    Drop drop;
    int code;
    bool operator==(const Heard&) const = default;
};

class Listener : public sigil::ListObserver {
public:
    void searches(const sigil::Family&, const std::string& path, int error) override { folders[path] = error; }
    void judged(const tagCERTINFO& entry, int result, sigil::ErrorLog& log) override
    {
        const std::string path = entry.szSignCertPath;
        candidates[path] = {result, log.reason().drop, log.reason().code};
        what[path] = log.reason().what ? log.reason().what : "";
        ++told;
    }

    std::map<std::string, int> folders;
    std::map<std::string, Heard> candidates;
    std::map<std::string, std::string> what;
    int told = 0;
};

class Observed : public Parsing {
protected:
    void listen()
    {
        if (!clp)
            start();
        static_cast<CCertListProcInterface*>(clp)->observe(&m_heard);
    }
    /** What is heard of the pair in @p folder. */
    Heard of(const fs::path& folder) { return m_heard.candidates[(folder / "signCert.der").string()]; }

    Listener m_heard;
};

TEST_F(Observed, FoldersAndCandidatesAreToldOnce)
{
    const fs::path folder = addNpki("a");
    listen();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(m_heard.folders.size(), 2U + 7 + 1 + 2);
    EXPECT_EQ(m_heard.folders[(home / "NPKI/yessign/USER/").string()], 0);
    EXPECT_EQ(m_heard.folders[(home / "NPKI/KICA/USER/").string()], ENOENT);
    EXPECT_EQ(of(folder), (Heard{0, Drop::None, 0}));
    EXPECT_EQ(m_heard.told, 1);
}

TEST_F(Observed, NobodyIsToldAfterTheObserverLeft)
{
    addNpki("a");
    listen();
    static_cast<CCertListProcInterface*>(clp)->observe(nullptr);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(m_heard.told, 0);
    EXPECT_TRUE(m_heard.folders.empty());
}

TEST_F(Observed, ReasonsOfFiles)
{
    const fs::path missing = addNpki("missing");
    fs::remove(missing / "signPri.key");
    const fs::path pipe = addNpki("pipe");
    fs::remove(pipe / "signCert.der");
    ASSERT_EQ(mkfifo((pipe / "signCert.der").c_str(), 0600), 0);
    const fs::path large = addNpki("large");
    writeFile(large / "signPri.key", std::string(4097, 'x'));
    const fs::path damaged = addNpki("damaged");
    writeFile(damaged / "signCert.der", "no certificate");
    listen();
    EXPECT_EQ(load(), SIGIL_NO_CERTIFICATE);
    EXPECT_EQ(of(missing).drop, Drop::FileNotRead);
    EXPECT_NE(of(missing).code, 0);
    EXPECT_EQ(m_heard.what[(missing / "signCert.der").string()], (missing / "signPri.key").string());
    EXPECT_EQ(of(pipe), (Heard{1122, Drop::NotAFile, 0}));
    EXPECT_EQ(of(large), (Heard{1122, Drop::FileTooLarge, 0}));
    EXPECT_EQ(of(damaged).drop, Drop::NotACertificate);
    EXPECT_EQ(m_heard.what[(damaged / "signCert.der").string()], "CertLoad()");
}

TEST_F(Observed, ReasonsOfFilters)
{
    const fs::path folder =
        addNpki("a", {{"serial", "1"}, {"policyId", "1 2 3"}, {"notAfter", "2001-01-01 00:00:00"}});
    listen();
    const auto reason = [&] {
        setOptions();
        load();
        EXPECT_EQ(of(folder).result, 1502);
        return of(folder).drop;
    };
    options.bExcludeExpired = 1;
    EXPECT_EQ(reason(), Drop::Expired);
    std::snprintf(options.szPolicyIDs, sizeof options.szPolicyIDs, "%s", "9 9|");
    EXPECT_EQ(reason(), Drop::OtherPolicy);
    std::snprintf(options.szSerialNum, sizeof options.szSerialNum, "%s", "2");
    EXPECT_EQ(reason(), Drop::OtherSerial);
    std::snprintf(options.szSubjectDN, sizeof options.szSubjectDN, "%s", "cn=other");
    EXPECT_EQ(reason(), Drop::OtherSubject);
    options.nKeyPairType = 2;
    EXPECT_EQ(reason(), Drop::NoKmPair);
}

TEST_F(Observed, AFieldThatIsNotRead)
{
    const fs::path folder = addNpki("a");
    listen();
    doubles::answer("HVTK_CERT_GetUID", 77);
    EXPECT_EQ(load(), SIGIL_NO_CERTIFICATE);
    EXPECT_EQ(of(folder), (Heard{1122, Drop::FieldNotRead, 77}));
    EXPECT_EQ(m_heard.what[(folder / "signCert.der").string()], "CertGetUID()");
}

TEST_F(Observed, AKeyManagementFileThatWasNoLoss)
{
    const fs::path folder = addNpki("a");
    addKm(folder);
    fs::remove(folder / "kmPri.key");
    listen();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(of(folder).result, 0);
    EXPECT_EQ(of(folder).drop, Drop::FileNotRead);
    EXPECT_EQ(m_heard.what[(folder / "signCert.der").string()], (folder / "kmPri.key").string());
}

TEST_F(Observed, ACertificateFromMemoryOfAnotherFamily)
{
    const fs::path folder = addNpki("a", {{"subject", "cn=Hong,o=yessign,c=KR"}});
    Text certificate(readFile(folder / "signCert.der"));
    Text key("KEY");
    const int length = static_cast<int>(readFile(folder / "signCert.der").size());
    options.nPKITypes = SIGIL_FAMILY_GPKI;
    listen();
    CLP_SetMediaType(clp, SIGIL_MEDIUM_MEMORY, nullptr, 0);
    EXPECT_EQ(CLP_LoadMemoryCert(clp, certificate, length, key, 3, nullptr, 0, nullptr, 0), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(m_heard.candidates[""], (Heard{1502, Drop::OtherFamily, 0}));
}

} // namespace
