// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The certificate list on the open toolkit with a sample store: real certificates, end to end.

#include "tests/support/sample_store.h"

#include "certlist/public_part.h"
#include "foundation/environment.h"
#include "foundation/text_field.h"

#include <sigildesk/certlist.h>
#include <sigildesk/util.h>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <memory>
#include <set>
#include <string_view>
#include <thread>

namespace fs = std::filesystem;

namespace {

char storePassword[] = "sample1234!";
char wrong[] = "wrong1234!";

struct Buffer {
    ~Buffer() { CLP_MemFree(nullptr, reinterpret_cast<void**>(&data)); }
    std::string text() const { return data ? std::string(data, static_cast<std::size_t>(length)) : ""; }
    char* data = nullptr;
    int length = 0;
};

/** Serves files by name over HTTP until the object goes. */
class WebServer {
public:
    explicit WebServer(std::map<std::string, std::string> files)
        : m_files(std::move(files))
    {
        m_socket = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(m_socket, reinterpret_cast<sockaddr*>(&address), size);
        listen(m_socket, 8);
        getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size);
        m_address = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        m_thread = std::thread([this] { serve(); });
    }
    ~WebServer()
    {
        shutdown(m_socket, SHUT_RDWR);
        m_thread.join();
        close(m_socket);
    }
    const std::string& address() const { return m_address; }

private:
    void serve()
    {
        for (int client; (client = accept(m_socket, nullptr, nullptr)) >= 0; close(client)) {
            char request[4096] = {};
            if (read(client, request, sizeof request - 1) < 1)
                continue;
            const std::string line(request, std::strcspn(request, "\r\n"));
            const std::size_t start = line.find('/') + 1;
            const auto found = m_files.find(line.substr(start, line.rfind(' ') - start));
            const std::string body = found == m_files.end() ? "" : found->second;
            const std::string answer = std::string("HTTP/1.0 ") + (body.empty() ? "404 None" : "200 OK") +
                "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
            EXPECT_EQ(write(client, answer.data(), answer.size()), static_cast<ssize_t>(answer.size()));
        }
    }

    std::map<std::string, std::string> m_files;
    int m_socket;
    std::string m_address;
    std::thread m_thread;
};

std::string cp949(std::string utf8)
{
    char text[4096] = {};
    int length = 0;
    EXPECT_EQ(CUtil().WideDataToMultibyte(utf8.data(), text, &length), 0);
    return {text, static_cast<std::size_t>(length)};
}

std::string withBlanks(std::string oid)
{
    std::replace(oid.begin(), oid.end(), '.', ' ');
    return oid;
}

std::string homeOfTests; // what the injected environment answers

class Store : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample = std::make_unique<SampleStore>(
            std::vector<std::string>{"--count", "24", "--families", "npki,gpki,mpki,ppki", "--pfx"});
    }
    static void TearDownTestSuite() { sample.reset(); }

    void SetUp() override
    {
        fs::copy(sample->folder(), home.path("user"), fs::copy_options::recursive);
        homeOfTests = home.path("user");
        sigil::environment().homeFolder = [] { return homeOfTests; };
        for (const auto& file : fs::directory_iterator(SIGILDESK_LIBRARY_FOLDER))
            if (file.is_regular_file())
                fs::create_symlink(file.path(), library.path(file.path().filename().string()));
        options.nPKITypes = 15;
        start();
    }
    void TearDown() override
    {
        CLP_UnInitalize(clp);
        sigil::environment() = machine;
    }
    void start(int toolkitType = 0)
    {
        std::string folder = library.path();
        ASSERT_EQ(CLP_Initalize(&clp, nullptr, toolkitType, 1, folder.data()), 0);
        ASSERT_EQ(CLP_SetType(clp, &options), 0);
        ASSERT_EQ(CLP_SetMediaType(clp, 1, nullptr, 0), 0);
    }
    std::unique_ptr<tagCERTINFO> entry(int index)
    {
        auto record = std::make_unique<tagCERTINFO>();
        EXPECT_EQ(CLP_GetCertInfo(clp, index, record.get()), 0);
        return record;
    }
    int load()
    {
        CLP_SetType(clp, &options);
        return CLP_LoadCertList(clp);
    }
    /** The report's line on the entry, found by its serial number, which occurs once. */
    const Certificate& reported(const tagCERTINFO& info)
    {
        for (const Certificate& certificate : sample->certificates())
            if (cp949(certificate.at("subject")) == info.szSubjectDN)
                return certificate;
        ADD_FAILURE() << "not in the report: " << info.szSubjectDN;
        return sample->certificates().front();
    }
    int indexOf(const Certificate& certificate)
    {
        for (int i = 0; i < CLP_GetCertCount(clp); ++i)
            if (entry(i)->szSubjectDN == cp949(certificate.at("subject")))
                return i;
        return -1;
    }
    const Certificate& firstOf(const std::string& family, const std::string& pairs)
    {
        for (const Certificate& certificate : sample->certificates())
            if (certificate.at("family") == family && certificate.at("pairs") == pairs)
                return certificate;
        ADD_FAILURE() << family << " " << pairs;
        return sample->certificates().front();
    }

    static std::unique_ptr<SampleStore> sample;
    TemporaryFolder home, library, disk;
    sigil::Environment machine = sigil::environment();
    tagLOADCERTOPT options{};
    void* clp = nullptr;
};

std::unique_ptr<SampleStore> Store::sample;

TEST_F(Store, ListsWhatTheReportTells)
{
    ASSERT_EQ(load(), 0);
    const int count = CLP_GetCertCount(clp);
    ASSERT_EQ(count, static_cast<int>(sample->certificates().size()));
    const std::map<std::string, int> families{{"gpki", 1}, {"npki", 2}, {"mpki", 4}, {"ppki", 8}};
    const std::map<std::string, int> states{{"valid", 3}, {"expiring", 4}, {"expired", 5}};
    std::set<std::string> seen;
    for (int i = 0; i < count; ++i) {
        const auto info = entry(i);
        const Certificate& truth = reported(*info);
        seen.insert(info->szSubjectDN);
        EXPECT_EQ(info->nPKIType, families.at(truth.at("family")));
        EXPECT_EQ(info->nKmCertLen > 0, truth.at("pairs") == "both") << info->szSubjectDN;
        EXPECT_EQ(info->nEncKmPriKeyLen > 0, truth.at("pairs") == "both");
        EXPECT_EQ(info->szKeyLength, truth.at("bits") + " Bits");
        EXPECT_EQ(info->szIssuerDN, cp949(truth.at("issuer")));
        const std::string policies = truth.at("policy"); // of two, the second is kept
        EXPECT_EQ(info->szPolicyID, withBlanks(policies.substr(policies.find(' ') + 1)));
        EXPECT_STREQ(info->szVersion, "V3");
        EXPECT_NE(std::string(info->szKeyUsage).find("digitalSignature"), std::string::npos);
        if (truth.at("family") != "gpki") { // whose warning period is longer than the sample's
            EXPECT_EQ(info->nValidStatus, states.at(truth.at("state"))) << info->szSubjectDN;
        }
        EXPECT_EQ(info->nExpired, truth.at("state") == "expired" ? 1 : 0);
    }
    EXPECT_EQ(seen.size(), sample->certificates().size());
}

TEST_F(Store, GovernmentToolkitListsTheSame)
{
    ASSERT_EQ(load(), 0);
    const auto byMaker = entry(0);
    CLP_UnInitalize(clp);
    clp = nullptr;
    start(1);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_GetCertCount(clp), static_cast<int>(sample->certificates().size()));
    const auto byGovernment = entry(0);
    EXPECT_STREQ(byGovernment->szSubjectDN, byMaker->szSubjectDN);
    EXPECT_STREQ(byGovernment->szNotAfter, byMaker->szNotAfter);
    EXPECT_EQ(byGovernment->nValidStatus, byMaker->nValidStatus);
    Buffer sign;
    EXPECT_EQ(CLP_DecryptPriKey(clp, 0, storePassword, &sign.data, &sign.length, nullptr, nullptr), 0);
    EXPECT_GT(sign.length, 300);
}

TEST_F(Store, Filters)
{
    const auto& all = sample->certificates();
    const auto counted = [&](const char* column, const char* text) {
        return std::count_if(all.begin(), all.end(), [&](const Certificate& c) { return c.at(column) == text; });
    };
    options.bExcludeExpired = 1;
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_GetCertCount(clp), static_cast<int>(all.size()) - counted("state", "expired"));
    options.bExcludeExpired = 0;
    options.nKeyPairType = 2;
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_GetCertCount(clp), counted("pairs", "both"));
    options.nKeyPairType = 0;
    options.nPKITypes = 2;
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_GetCertCount(clp), counted("family", "npki"));
    const Certificate& one = firstOf("npki", "both");
    sigil::copyText(options.szSubjectDN, one.at("subject")); // UTF-8
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(CLP_GetCertCount(clp), 1);
    const std::string serial = entry(0)->szSerialNum;
    sigil::copyText(options.szSerialNum, serial);
    sigil::copyText(options.szPolicyIDs, withBlanks(one.at("policy")) + "|");
    EXPECT_EQ(load(), 0);
    sigil::copyText(options.szSerialNum, "not " + serial);
    EXPECT_EQ(load(), 1115);
}

TEST_F(Store, KeysRandomValuesAndIdentities)
{
    ASSERT_EQ(load(), 0);
    for (int i = 0; i < CLP_GetCertCount(clp); ++i) {
        const Certificate& truth = reported(*entry(i));
        Buffer refused, sign, km, random;
        EXPECT_EQ(CLP_DecryptPriKey(clp, i, wrong, &refused.data, &refused.length, nullptr, nullptr), 1113);
        ASSERT_EQ(CLP_DecryptPriKey(clp, i, storePassword, &sign.data, &sign.length, &km.data, &km.length), 0)
            << truth.at("subject") << truth.at("variant");
        EXPECT_GT(sign.length, 300);
        EXPECT_EQ(km.data != nullptr, truth.at("pairs") == "both");
        const int rc = CLP_GetPriKeyRandom(clp, i, wrong, &random.data, &random.length); // the key is cached
        if (truth.at("identity").empty()) {                                              // servers have none
            EXPECT_EQ(rc, 1118);
            continue;
        }
        ASSERT_EQ(rc, 0);
        EXPECT_EQ(random.length, 20);
        std::string identity = truth.at("identity");
        EXPECT_EQ(CLP_VerifyVID(clp, i, identity.data(), nullptr, storePassword), 0) << truth.at("subject");
        identity[0] = identity[0] == '9' ? '8' : '9';
        EXPECT_EQ(CLP_VerifyVID(clp, i, identity.data(), nullptr, storePassword), 1132);
    }
}

TEST_F(Store, WrongPasswordGivesNoRandomValue)
{
    ASSERT_EQ(load(), 0);
    Buffer random;
    EXPECT_EQ(CLP_GetPriKeyRandom(clp, 0, wrong, &random.data, &random.length), 1119);
    EXPECT_EQ(random.data, nullptr);
}

struct Imported {
    Buffer cert, key, kmCert, kmKey;
    int from(void* clp, const std::string& path, char* secret)
    {
        std::string file = path;
        return CLP_ImportPFX(clp, file.data(), secret, &cert.data, &cert.length, &key.data, &key.length,
            &kmCert.data, &kmCert.length, &kmKey.data, &kmKey.length);
    }
};

TEST_F(Store, ImportsEveryFileOfTheSample)
{
    for (const Certificate& truth : sample->certificates()) {
        Imported pairs;
        ASSERT_EQ(pairs.from(clp, truth.at("pfx"), storePassword), 0) << truth.at("pfx");
        EXPECT_EQ(pairs.cert.text(), readFile(truth.at("signing_certificate")));
        EXPECT_EQ(pairs.kmCert.text(), truth.at("pairs") == "both" ? pairs.cert.text() : "");
        Imported refused;
        EXPECT_EQ(refused.from(clp, truth.at("pfx"), wrong), 1113);
    }
}

TEST_F(Store, CertificatesAndKeysTellWhatTheyHaveInCommon)
{
    ASSERT_EQ(load(), 0);
    for (int i = 0; i < CLP_GetCertCount(clp); ++i) {
        Buffer sign, km;
        ASSERT_EQ(CLP_DecryptPriKey(clp, i, storePassword, &sign.data, &sign.length, &km.data, &km.length), 0);
        const auto info = entry(i);
        const std::string_view certificate(
            reinterpret_cast<const char*>(info->bySignCert), static_cast<std::size_t>(info->nSignCertLen));
        const std::string part(sigil::publicPartOfKey(sign.text()));
        EXPECT_EQ(sigil::publicPartOfCertificate(certificate), part);
        EXPECT_EQ(part.size(), std::stoul(info->szKeyLength) / 8);
    }
}

TEST_F(Store, ExportIsImportedAgain)
{
    ASSERT_EQ(load(), 0);
    for (const char* pairs : {"both", "signing"}) {
        const int index = indexOf(firstOf("npki", pairs));
        std::string file = disk.path(std::string(pairs) + ".pfx");
        ASSERT_EQ(CLP_ExportPFX(clp, index, storePassword, file.data()), 0);
        Imported back;
        ASSERT_EQ(back.from(clp, file, storePassword), 0);
        Buffer key;
        ASSERT_EQ(CLP_DecryptPriKey(clp, index, storePassword, &key.data, &key.length, nullptr, nullptr), 0);
        EXPECT_EQ(back.key.text(), key.text()); // the random value included
        EXPECT_EQ(back.kmCert.data != nullptr, std::string(pairs) == "both");
        EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    }
}

TEST_F(Store, CopyCanBeListedAndDecrypted)
{
    ASSERT_EQ(load(), 0);
    const Certificate& truth = firstOf("npki", "both");
    std::string target = disk.path("stick");
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 1, indexOf(truth), 2, target.data(), storePassword), 0);
    // The copy has the file names of other systems; put them where listing looks.
    const fs::path folder = disk.path("listed/NPKI/yessign/USER/copy");
    fs::create_directories(folder);
    for (const auto& file : fs::directory_iterator(disk.path())) {
        std::string name = file.path().filename().string();
        if (name.rfind("stick\\NPKI\\", 0) != 0)
            continue;
        EXPECT_EQ(file.status().permissions(), fs::perms::owner_read | fs::perms::owner_write);
        name = name.substr(name.rfind('\\') + 1);
        name[0] = static_cast<char>(std::tolower(name[0]));
        fs::copy_file(file.path(), folder / name);
    }
    std::string listed = disk.path("listed");
    ASSERT_EQ(CLP_SetMediaType(clp, 2, listed.data(), 0), 0);
    ASSERT_EQ(load(), 0);
    ASSERT_EQ(CLP_GetCertCount(clp), 1);
    EXPECT_EQ(entry(0)->szSubjectDN, cp949(truth.at("subject")));
    Buffer sign, km;
    EXPECT_EQ(CLP_DecryptPriKey(clp, 0, storePassword, &sign.data, &sign.length, &km.data, &km.length), 0);
    EXPECT_GT(km.length, 300);
}

TEST_F(Store, DeletedCertificatesAreGone)
{
    ASSERT_EQ(load(), 0);
    const int before = CLP_GetCertCount(clp);
    const auto victim = entry(1);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, wrong), 1113);
    EXPECT_TRUE(fs::exists(victim->szSignPriKeyPath));
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, storePassword), 0);
    EXPECT_FALSE(fs::exists(victim->szSignPriKeyPath));
    EXPECT_FALSE(fs::exists(victim->szSignCertPath));
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_GetCertCount(clp), before - 1);
}

TEST_F(Store, MemoryTakesADecryptedPair)
{
    ASSERT_EQ(load(), 0);
    const int index = indexOf(firstOf("npki", "signing"));
    const auto info = entry(index);
    Buffer key;
    ASSERT_EQ(CLP_DecryptPriKey(clp, index, storePassword, &key.data, &key.length, nullptr, nullptr), 0);
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    ASSERT_EQ(CLP_LoadMemoryCert(clp, reinterpret_cast<char*>(info->bySignCert), info->nSignCertLen, key.data,
                  key.length, nullptr, 0, nullptr, 0),
        0);
    ASSERT_EQ(CLP_GetCertCount(clp), 1);
    EXPECT_STREQ(entry(0)->szSubjectDN, info->szSubjectDN);
    EXPECT_EQ(entry(0)->nPKIType, 2);
}

TEST_F(Store, VerifiesAgainstAFetchedRoot)
{
    ASSERT_EQ(load(), 0);
    const auto& all = sample->certificates();
    const auto truth = std::find_if(all.begin(), all.end(), [](const Certificate& c) {
        return c.at("issuer").find("yessignCA") != std::string::npos && c.at("state") == "valid";
    });
    ASSERT_NE(truth, all.end());
    const auto info = entry(indexOf(*truth));
    const WebServer server({{"Root", readFile(sample->issuerFile("root.der"))},
        {"RootIssued", readFile(sample->issuerFile("yessignCA_Class_1.der"))}});
    const auto verify = [&](const std::string& address, std::string& message) {
        fs::remove(library.path("HVCToolkitV30.conf"));
        std::ofstream(library.path("HVCToolkitV30.conf"))
            << "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=2\n[CA_INFO1]\nCA_DN=Root\nDIR_URL=" << address
            << "\n[CA_INFO2]\nCA_DN=RootIssued\nDIR_URL=" << address << "\n";
        CLP_UnInitalize(clp); // trust stays with a processor
        clp = nullptr;
        start();
        char text[256] = {};
        const int rc =
            CLP_VerifyCert(clp, reinterpret_cast<char*>(info->bySignCert), info->nSignCertLen, sizeof text, text);
        message = text;
        return rc;
    };
    std::string message;
    EXPECT_EQ(verify(server.address(), message), 0) << message;
    EXPECT_EQ(verify(server.address() + "/elsewhere", message), 1120); // nothing is fetched, nothing is trusted
    EXPECT_FALSE(message.empty());
}

} // namespace
