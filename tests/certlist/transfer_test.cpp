// Import, export, copy and delete.

#include "tests/certlist/scripted.h"

#include "certlist/processor.h"

#include <sigildesk/crypto.h>

#include <sys/stat.h>

#include <algorithm>
#include <tuple>

namespace fs = std::filesystem;

namespace {

const std::string signCert = fake::certificate();
const std::string kmCert = fake::certificate({{"usage", "keyEncipherment"}, {"pair", "K1"}});
const std::string signKey = fake::key();
const std::string kmKey = "KEY(K1)";

class Transfer : public Scripted {
protected:
    /** Entry 0 has a signing pair, entry 1 a key-management pair too. */
    void SetUp() override
    {
        addNpki("a", {{"subject", "cn=a,ou=unit,o=yessign,c=KR"}});
        second = addNpki("b", {{"subject", "cn=b,ou=unit,o=SignKorea,c=KR"}}, "SignKorea");
        addKm(second);
        start();
        ASSERT_EQ(load(), 0);
    }
    int import(const std::string& file, const std::string& password = "pfx")
    {
        const fs::path path = disk / "import.pfx";
        writeFile(path, file);
        return CLP_ImportPFX(clp, Text(path.string()), Text(password), cert.to(), cert.length(), key.to(),
            key.length(), kmCertOut.to(), kmCertOut.length(), kmKeyOut.to(), kmKeyOut.length());
    }
    std::string logRecord(const std::string& function, const std::string& name, const std::string& callee, int code)
    {
        return function + " - " + name + " >> " + callee + " : " + std::to_string(code) +
            " (Msg : words of the toolkit)";
    }
    int stage(const std::string& certificate, const std::string& itsKey, const std::string& kmCertificate = {},
        const std::string& itsKmKey = {})
    {
        return CLP_CopyforSetData(clp, Text(certificate), int(certificate.size()), Text(itsKey), int(itsKey.size()),
            Text(kmCertificate), int(kmCertificate.size()), Text(itsKmKey), int(itsKmKey.size()));
    }
    int copyStaged(int medium = 2) { return CLP_CopyCertToDISK(clp, medium, Text(disk.string()), Text("copy")); }

    fs::path second;
    Buffer cert, key, kmCertOut, kmKeyOut;
};

TEST_F(Transfer, ImportOfASigningPair)
{
    ASSERT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 0);
    EXPECT_EQ(cert.text(), signCert);
    EXPECT_EQ(key.text(), signKey);
    EXPECT_EQ(key.at(*key.length()), '\0');
    EXPECT_FALSE(kmCertOut.given());
    EXPECT_FALSE(kmKeyOut.given());
    EXPECT_TRUE(log().empty());
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

// Kept: hosts get the signing pair a second time in place of the key-management pair.
TEST_F(Transfer, ImportOfTwoPairsGivesTheSigningPairTwice)
{
    ASSERT_EQ(import(fake::pfx("pfx", {kmCert, signCert}, {signKey, kmKey})), 0);
    EXPECT_EQ(cert.text(), signCert);
    EXPECT_EQ(key.text(), signKey);
    EXPECT_EQ(kmCertOut.text(), signCert);
    EXPECT_EQ(kmKeyOut.text(), signKey);
}

TEST_F(Transfer, ImportOfAKeyManagementPairAloneGivesNothing)
{
    EXPECT_EQ(import(fake::pfx("pfx", {kmCert}, {kmKey})), 0);
    EXPECT_FALSE(cert.given());
    EXPECT_FALSE(kmCertOut.given());
}

TEST_F(Transfer, ImportPassesOverACertificateWithoutItsKey)
{
    const std::string stranger = fake::certificate({{"pair", "S9"}});
    EXPECT_EQ(import(fake::pfx("pfx", {stranger, signCert}, {signKey, kmKey})), 0);
    EXPECT_EQ(cert.text(), signCert);
}

TEST_F(Transfer, LaterPairOfTheSameKindReplacesTheEarlierOne)
{
    const std::string other = fake::certificate({{"pair", "P2"}});
    EXPECT_EQ(import(fake::pfx("pfx", {signCert, other}, {signKey, fake::key("P2")})), 0);
    EXPECT_EQ(cert.text(), other);
    EXPECT_EQ(key.text(), fake::key("P2"));
}

TEST_F(Transfer, ImportWithAWrongPasswordDoesNotTryAgain)
{
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey}), "wrong"), 1113);
    EXPECT_EQ(doubles::callsOf("HVTK_PFX_ImportMultiPair2").size(), 1u);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_INVALIDPASSWORD", "PFXImportMultiPair2()", 4505));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, ImportTriesTheOtherMode)
{
    std::vector<int> modes;
    doubles::answer("HVTK_PFX_ImportMultiPair2", [&](const doubles::Call& call) {
        modes.push_back(call.integer(0));
        for (std::size_t output : {3, 4, 5}) // the façade wants them filled
            EXPECT_EQ(call.pointer<BINSTR>(output)->nLength, 1);
        if (call.integer(0) != 16)
            return 77;
        EXPECT_EQ(fake::replace(call.pointer<BINSTR>(3), fake::list({signCert})), 0); // in the toolkit's memory
        EXPECT_EQ(fake::replace(call.pointer<BINSTR>(4), fake::list({signKey})), 0);
        EXPECT_EQ(fake::replace(call.pointer<BINSTR>(5), "authorities"), 0);
        return 0;
    });
    EXPECT_EQ(import("file"), 0);
    EXPECT_EQ(modes, (std::vector<int>{0, 16}));
    EXPECT_EQ(cert.text(), signCert);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
    doubles::answer("HVTK_PFX_ImportMultiPair2", 77);
    EXPECT_EQ(import("file"), 1129);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_IMPORTCERT", "PFXImportMultiPair2()", 77));
    // Only the first attempt tells a wrong password.
    doubles::answer(
        "HVTK_PFX_ImportMultiPair2", [](const doubles::Call& call) { return call.integer(0) == 16 ? 4505 : 77; });
    EXPECT_EQ(import("file"), 1129);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_IMPORTCERT", "PFXImportMultiPair2()", 4505));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, KeysOfAnImportThatFailedAreWiped)
{
    doubles::answer("HVTK_PFX_ImportMultiPair2", [](const doubles::Call& call) {
        fake::replace(call.pointer<BINSTR>(4), "secret");
        return 77;
    });
    std::vector<std::string> released;
    doubles::answer("HVTK_BINSTR_Delete", [&](const doubles::Call& call) {
        released.push_back(doubles::contents(call.pointer<BINSTR>(0)));
        return doubles::release(call.pointer<BINSTR>(0));
    });
    EXPECT_EQ(import("file"), 1129);
    EXPECT_EQ(std::count(released.begin(), released.end(), std::string(6, '\0')), 2); // of both attempts
    EXPECT_EQ(std::count(released.begin(), released.end(), "secret"), 0);
}

TEST_F(Transfer, ImportOfAFileWithoutPairs)
{
    EXPECT_EQ(import(fake::pfx("pfx", {signCert, kmCert}, {signKey})), 1115);
    EXPECT_EQ(lastLog(), "CLoadDISK::GetPKCS12() - ERR_NOTEXISTCERT >> UTILGetObjectCount() : 1115");
    doubles::answer("HVTK_UTIL_GetObjectCount", 0); // counts nothing
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 1115);
}

TEST_F(Transfer, ImportReadsRegularFilesAlone)
{
    const fs::path pipe = disk / "pipe.pfx";
    doubles::forgetCalls();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const fs::path& path : {pipe, fs::path("/dev/zero"), disk}) {
        EXPECT_EQ(CLP_ImportPFX(clp, Text(path.string()), Text("pfx"), cert.to(), nullptr, key.to(), nullptr,
                      kmCertOut.to(), nullptr, kmKeyOut.to(), nullptr),
            1129);
        EXPECT_EQ(lastLog(),
            "CLoadDISK::GetPKCS12() - ERR_IMPORTCERT >> MediaDiskReadFile() : 1129 (Msg : not a regular file)");
    }
    EXPECT_TRUE(doubles::callsOf("HVTK_MEDIA_DISK_ReadFile").empty());
    const fs::path link = disk / "link.pfx";
    writeFile(disk / "real.pfx", fake::pfx("pfx", {signCert}, {signKey}));
    fs::create_symlink("real.pfx", link);
    EXPECT_EQ(CLP_ImportPFX(clp, Text(link.string()), Text("pfx"), cert.to(), cert.length(), key.to(), key.length(),
                  kmCertOut.to(), nullptr, kmKeyOut.to(), nullptr),
        0);
    EXPECT_EQ(cert.text(), signCert);
}

/** A certificate and a key that tell which key they have in common, in the bytes of their usual forms. */
std::string shortElement(char tag, const std::string& content)
{
    return tag + std::string(1, static_cast<char>(content.size())) + content;
}
std::string tellingCertificate(const std::string& modulus)
{
    const std::string number = shortElement(0x02, "1");
    const std::string some = shortElement(0x30, "x");
    const std::string publicKey = std::string(1, '\0') + shortElement(0x30, shortElement(0x02, modulus) + number);
    const std::string subjectKey = shortElement(0x30, some + shortElement(0x03, publicKey));
    return shortElement(0x30, shortElement(0x30, number + some + some + some + some + subjectKey));
}
std::string tellingKey(const std::string& modulus)
{
    const std::string number = shortElement(0x02, "0");
    const std::string key = shortElement(0x30, number + shortElement(0x02, modulus));
    return shortElement(0x30, number + shortElement(0x30, "x") + shortElement(0x04, key));
}

TEST_F(Transfer, ImportAsksOncePerCertificateThatTellsItsKey)
{
    constexpr int pairs = 300;
    std::vector<std::string> certificates, keys;
    for (int i = 0; i < pairs; ++i) {
        certificates.push_back(tellingCertificate("modulus " + std::to_string(i)));
        keys.push_back(tellingKey("modulus " + std::to_string(pairs - 1 - i)));
    }
    doubles::answer("HVTK_CERT_Load", 0);
    doubles::answer("HVTK_CERT_GetKeyUsage", doubles::writesText("digitalSignature"));
    doubles::answer("HVTK_PRIKEY_CheckKeyPair", 0);
    EXPECT_EQ(import(fake::pfx("pfx", certificates, keys)), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_CheckKeyPair").size(), std::size_t{pairs});
    EXPECT_EQ(cert.text(), certificates.back());
    EXPECT_EQ(key.text(), keys.front());
}

TEST_F(Transfer, ImportOfTooManyPairsIsRefused)
{
    // Certificates that do not tell their key, with no key that belongs to them: each asks about every key.
    std::vector<std::string> certificates(1001, fake::certificate({{"pair", "S9"}}));
    std::vector<std::string> keys(1001, signKey);
    EXPECT_EQ(import(fake::pfx("pfx", certificates, keys)), 1129);
    EXPECT_EQ(
        lastLog(), "CLoadDISK::GetPKCS12() - ERR_IMPORTCERT >> PriKeyCheckKeyPair() : 1129 (Msg : too many pairs)");
    EXPECT_TRUE(doubles::callsOf("HVTK_PRIKEY_CheckKeyPair").empty());
    certificates.resize(100);
    keys.resize(100);
    EXPECT_EQ(import(fake::pfx("pfx", certificates, keys)), 1129);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_CheckKeyPair").size(), 1000u);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, ImportSteps)
{
    const std::tuple<const char*, const char*, int> rows[] = {
        {"HVTK_MEDIA_DISK_ReadFile", "MediaDiskReadFile()", 77},
        {"HVTK_UTIL_GetObjectCount", "UTILGetObjectCount()", 1129}, {"HVTK_UTIL_GetObject", "UTILGetObject()", 77},
        {"HVTK_CERT_Load", "CertLoad()", 77}, {"HVTK_CERT_GetKeyUsage", "CertGetKeyUsage()", 77}};
    for (const auto& [symbol, callee, result] : rows) {
        fake::install();
        doubles::answer(symbol, 77);
        EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), result) << symbol;
        EXPECT_NE(lastLog().find(std::string(callee) + " : 77 (Msg : words of the toolkit)"), std::string::npos);
        EXPECT_EQ(doubles::callsOf("HVTK_CERT_Unload").size(), 1u) << symbol;
        EXPECT_EQ(doubles::liveByteStrings(), 0) << symbol;
        EXPECT_FALSE(cert.given());
    }
}

TEST_F(Transfer, ImportStopsWhenTheKeysCannotBeCounted)
{
    int counted = 0;
    doubles::answer("HVTK_UTIL_GetObjectCount", [&](const doubles::Call& call) {
        *call.pointer<int>(1) = 1;
        return ++counted == 2 ? 77 : 0;
    });
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 1129);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::GetPKCS12()", "ERR_IMPORTCERT", "UTILGetObjectCount()", 77));
    EXPECT_EQ(counted, 2);
}

TEST_F(Transfer, ImportStopsWhenAKeyCannotBeTaken)
{
    int taken = 0;
    doubles::answer("HVTK_UTIL_GetObject", [&](const doubles::Call& call) {
        if (++taken == 2)
            return 77;
        doubles::fill(call.pointer<BINSTR>(2), signCert);
        return 0;
    });
    EXPECT_EQ(import(fake::pfx("pfx", {signCert}, {signKey})), 77);
}

TEST_F(Transfer, ExportOfOnePair)
{
    const std::string path = (disk / "out.pfx").string();
    ASSERT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 0);
    const std::string expected = fake::certificate({{"subject", "cn=a,ou=unit,o=yessign,c=KR"}});
    EXPECT_EQ(readFile(path), fake::pfx(goodPassword, {expected}, {signKey}));
    EXPECT_EQ(doubles::callsOf("HVTK_PFX_Export").at(0).integer(0), 0);
    EXPECT_EQ(import(readFile(path), goodPassword), 0);
    EXPECT_EQ(cert.text(), expected);
}

TEST_F(Transfer, ExportOfTwoPairsToALongPath)
{
    fs::path folder = disk;
    while (folder.string().size() < 200)
        folder /= "long folder name";
    fs::create_directories(folder);
    const std::string path = folder.string() + "/" + std::string(259 - folder.string().size() - 1, 'p');
    ASSERT_EQ(CLP_ExportPFX(clp, 1, Text(goodPassword), Text(path)), 0);
    const std::string expected = fake::certificate({{"subject", "cn=b,ou=unit,o=SignKorea,c=KR"}});
    EXPECT_EQ(readFile(path), fake::pfx(goodPassword, {expected, kmCert}, {signKey, kmKey}));
    EXPECT_EQ(doubles::callsOf("HVTK_PFX_ExportMultiPair").at(0).integer(0), 0);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, ExportDoesNotLookAtTheMedium)
{
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text((disk / "out.pfx").string())), 0);
}

TEST_F(Transfer, ExportFailures)
{
    const std::string path = (disk / "out.pfx").string();
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text("wrong"), Text(path)), 1113);
    doubles::answer("HVTK_PFX_Export", 77);
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 1128);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::MakePKCS12()", "ERR_EXPORTCERT", "PFXExport2()", 77));
    doubles::answer("HVTK_PFX_Export", 0); // no output
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 1126);
    doubles::answer("HVTK_PFX_ExportMultiPair", 77);
    EXPECT_EQ(CLP_ExportPFX(clp, 1, Text(goodPassword), Text(path)), 1128);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::MakePKCS12()", "ERR_EXPORTCERT", "PFXExportMultiPair()", 77));
    doubles::answer("HVTK_UTIL_AddObject", 78);
    EXPECT_EQ(CLP_ExportPFX(clp, 1, Text(goodPassword), Text(path)), 1128);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::MakePKCS12()", "ERR_EXPORTCERT", "UTILAddObject()", 78));
    doubles::answer("HVTK_PRIKEY_Decrypt", 0); // an empty key
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 1127);
    EXPECT_FALSE(fs::exists(path));
    fake::install();
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text((disk / "no folder/out.pfx").string())), 3002);
}

/** A copy: the certificate's subject, the medium, and the four files, below the base folder. */
struct Target {
    const char* subject;
    int medium;
    std::vector<std::string> files;
};

const Target targets[] = {
    {"cn=Kim,ou=unit,o=yessign,c=KR", 2,
        {"\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\SignCert.der",
            "\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\SignPri.key",
            "\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\KmCert.der",
            "\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\KmPri.key"}},
    {"cn=Kim,ou=unit,o=KICA,c=KR", 1,
        {"\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\SignCert.der",
            "\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\SignPri.key",
            "\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\KmCert.der",
            "\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\KmPri.key"}},
    {"cn=Kim,ou=A/B,o=../up,c=KR", 2,
        {"\\NPKI\\.._up\\User\\cn=Kim,ou=A_B,o=.._up,c=KR\\SignCert.der"}}, // no folder of the certificate's choice
    {"cn=001SVR,ou=Group of Server,o=GOVERNMENT of Korea,c=KR", 2,
        {"\\GPKI\\Certificate\\class1\\001SVR_sig.cer", "\\GPKI\\Certificate\\class1\\001SVR_sig.key",
            "\\GPKI\\Certificate\\class1\\001SVR_env.cer", "\\GPKI\\Certificate\\class1\\001SVR_env.key"}},
    {"cn=123Kim,ou=People,o=Government of Korea,c=KR", 2,
        {"\\GPKI\\Certificate\\class2\\123Kim_sig.cer", "\\GPKI\\Certificate\\class2\\123Kim_sig.key",
            "\\GPKI\\Certificate\\class2\\123Kim_env.cer", "\\GPKI\\Certificate\\class2\\123Kim_env.key"}},
    {"cn=001SVR,ou=Group of Server,o=Government of Korea,c=KR", 1,
        {"Library/Preferences/GPKI/Certificate/class1/class2/001SVR_sig.cer",
            "Library/Preferences/GPKI/Certificate/class1/class2/001SVR_sig.key",
            "Library/Preferences/GPKI/Certificate/class1/class2/001SVR_env.cer",
            "Library/Preferences/GPKI/Certificate/class1/class2/001SVR_env.key"}},
    {"cn=123Kim,ou=people,o=Government of Korea,c=KR", 1,
        {"/Library/Preferences/GPKI/Certificate/class2/class2/123Kim_sig.cer",
            "Library/Preferences/GPKI/Certificate/class2/class2/123Kim_sig.key",
            "Library/Preferences/GPKI/Certificate/class2/class2/123Kim_env.cer",
            "Library/Preferences/GPKI/Certificate/class2/class2/123Kim_env.key"}},
};

/** Copies whose home folder lies in a folder of its own: the templates write beside it. */
class CopyTargets : public Transfer {
protected:
    void SetUp() override
    {
        Transfer::SetUp();
        static std::string nested;
        nested = (disk / "users/kim").string();
        fs::create_directories(nested);
        sigil::environment().homeFolder = [] { return nested; };
        base = nested;
    }
    std::string base;
};

TEST_F(CopyTargets, TemplatesOfEveryKind)
{
    for (const Target& target : targets) {
        const std::string certificate = fake::certificate({{"subject", target.subject}});
        const std::string kmCertificate = fake::certificate({{"subject", target.subject}, {"pair", "K1"}});
        ASSERT_EQ(stage(certificate, signKey, kmCertificate, kmKey), 0);
        ASSERT_EQ(CLP_CopyCertToDISK(clp, target.medium, Text(base), Text("copy")), 0) << target.subject;
        const std::string contents[] = {
            certificate, fake::encrypted(signKey, "copy"), kmCertificate, fake::encrypted(kmKey, "copy")};
        for (std::size_t i = 0; i < target.files.size(); ++i)
            EXPECT_EQ(readFile(base + target.files[i]), contents[i]) << target.files[i];
    }
    EXPECT_EQ(fs::status(base + "Library").permissions() & fs::perms::others_all, fs::perms::none);
}

TEST_F(CopyTargets, CertificatesOfThePrivateCaHaveNoFiles)
{
    ASSERT_EQ(stage(fake::certificate({{"subject", "cn=x,ou=y,o=HALVARD,c=KR"}}), signKey), 0);
    EXPECT_EQ(copyStaged(), 1124);
    EXPECT_EQ(
        lastLog(), logRecord("CLoadDISK::WriteCertNKey()", "ERR_WRITECERTNKEY", "MediaDiskWriteFile()", 3002));
}

TEST_F(CopyTargets, PathsThatAreTooLongAreNotWritten)
{
    const std::string subject = "cn=" + std::string(250, 'x') + ",ou=y,o=yessign,c=KR";
    ASSERT_EQ(stage(fake::certificate({{"subject", subject}}), signKey), 0);
    std::vector<std::string> written;
    doubles::answer("HVTK_MEDIA_DISK_WriteFile", [&](const doubles::Call& call) {
        written.push_back(call.pointer<char>(0));
        return fake::writeError;
    });
    EXPECT_EQ(copyStaged(), 1124); // cut short, all four files would have the same name
    EXPECT_EQ(written, std::vector<std::string>{""});
}

TEST_F(Transfer, CopyOfASelectedEntry)
{
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 1, 1, 2, Text(disk.string()), Text(goodPassword)), 0);
    const std::string folder = disk.string() + "\\NPKI\\SignKorea\\User\\cn=b,ou=unit,o=SignKorea,c=KR\\";
    EXPECT_EQ(readFile(folder + "SignCert.der"), readFile(second / "signCert.der"));
    EXPECT_EQ(readFile(folder + "SignPri.key"), fake::encrypted(signKey, goodPassword));
    EXPECT_EQ(readFile(folder + "KmCert.der"), kmCert);
    EXPECT_EQ(readFile(folder + "KmPri.key"), fake::encrypted(kmKey, goodPassword));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, CopyWithoutAKeyManagementPairWritesTwoFiles)
{
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text(goodPassword)), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_MEDIA_DISK_WriteFile").size(), 2u);
}

TEST_F(Transfer, CopyEncryptsWithTheAlgorithmOfTheCertificate)
{
    ASSERT_EQ(stage(fake::certificate({{"policyId", "1 2 410 100001 2 1"}}), signKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_Encrypt").at(0).integer(0), 64);
    // The signing certificate decides for both keys.
    doubles::forgetCalls();
    ASSERT_EQ(stage(fake::certificate({{"policyId", "1 2 410 100001 2 1"}}), signKey, kmCert, kmKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_Encrypt").at(1).integer(0), 64);
    doubles::forgetCalls();
    ASSERT_EQ(stage(kmCert, kmKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_NE(doubles::callsOf("HVTK_PRIKEY_Encrypt").at(0).integer(0), 64);
}

TEST_F(Transfer, CopySources)
{
    const std::pair<int, int> media[] = {{0, 1001}, {-1, 1001}, {3, 1005}, {4, 1005}, {5, 1005}, {6, 1001},
        {8, 1001}, {7, 1001}}; // 7 has empty parts, so the check of the pair refuses it
    for (const auto& [medium, result] : media)
        EXPECT_EQ(CLP_CopySelCertToDISK(clp, medium, 0, 2, Text(disk.string()), Text(goodPassword)), result)
            << medium;
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text("wrong")), 1113);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text("")), 1001);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, nullptr, Text(goodPassword)), 1001);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(""), Text(goodPassword)), 1001);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 3, Text(disk.string()), Text(goodPassword)), 0); // not judged, kept
}

TEST_F(Transfer, CopyOfASelectedEntryChangesTheMedium)
{
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text(goodPassword)), 0);
    EXPECT_EQ(count(), 2); // of the disk
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 6, 0, 2, Text(disk.string()), Text(goodPassword)), 1001);
    EXPECT_EQ(count(), 0); // also when it fails
}

TEST_F(Transfer, OtherCopiesLeaveTheMedium)
{
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 4, 0, 2, Text(disk.string()), Text(goodPassword)), 1005);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text("")), 1001);
    EXPECT_EQ(count(), 0);
    ASSERT_EQ(stage(signCert, signKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(count(), 0);
}

TEST_F(Transfer, StagedKeyManagementPairStaysUntilItIsReplaced)
{
    ASSERT_EQ(stage(signCert, signKey, kmCert, kmKey), 0);
    ASSERT_EQ(stage(signCert, signKey, kmCert, ""), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_MEDIA_DISK_WriteFile").size(), 4u);
}

TEST_F(Transfer, NothingStaged) { EXPECT_EQ(copyStaged(), 1001); }

TEST_F(Transfer, CopyOfWhatDoesNotBelongTogether)
{
    ASSERT_EQ(stage(signCert, kmKey), 0);
    EXPECT_EQ(copyStaged(), 1130);
    EXPECT_EQ(lastLog(),
        logRecord(
            "CLoadExtra::GetRootCertInfo()", "ERR_DIFFCERTKEYPAIR", "PriKeyCheckKeyPair( usage : sign )", 3004));
    ASSERT_EQ(stage(signCert, signKey, kmCert, signKey), 0);
    EXPECT_EQ(copyStaged(), 1130);
    EXPECT_EQ(lastLog(),
        logRecord(
            "CLoadExtra::GetRootCertInfo()", "ERR_DIFFCERTKEYPAIR", "PriKeyCheckKeyPair( usage : km )", 3004));
}

TEST_F(Transfer, CopySteps)
{
    const std::tuple<const char*, std::string, std::string, std::string, int> rows[] = {
        {"HVTK_CERT_Load", "CLoadDISK::MakeCertPath()", "ERR_PARSINGCERT", "CertLoad()", 1122},
        {"HVTK_CERT_GetSubjectName", "CLoadDISK::ParsingCert()", "ERR_PARSINGCERT", "CertGetSubjectName()", 1122},
        {"HVTK_CERT_GetPubKey2", "CLoadDISK::ParsingCert()", "ERR_PARSINGCERT", "CertGetPubKeyInfo()", 1122},
        {"HVTK_CERT_GetCertPolicy_PolicyID", "CLoadSMCard::GetPrikeyAlg()", "ERR_PARSINGCERT", "CertGetPolicyID()",
            1122},
        {"HVTK_PRIKEY_Encrypt", "CLoadDISK::WriteCertNKey()", "ERR_WRITECERTNKEY", "PriKeyEncrypt()", 1124},
        {"HVTK_MEDIA_DISK_WriteFile", "CLoadDISK::WriteCertNKey()", "ERR_WRITECERTNKEY", "MediaDiskWriteFile()",
            1124},
    };
    ASSERT_EQ(stage(signCert, signKey), 0);
    for (const auto& [symbol, function, name, callee, result] : rows) {
        fake::install();
        doubles::answer(symbol, 77);
        EXPECT_EQ(copyStaged(), result) << symbol;
        EXPECT_EQ(lastLog(), logRecord(function, name, callee, 77)) << symbol;
        EXPECT_EQ(doubles::liveByteStrings(), 0) << symbol;
    }
}

TEST_F(Transfer, DeleteRemovesTheFilesAndKeepsTheFolder)
{
    EXPECT_EQ(CLP_DeleteCert(clp, 0, nullptr, Text(goodPassword)), 1001); // the first entry cannot be deleted
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 0);
    EXPECT_TRUE(fs::is_empty(second));
    EXPECT_TRUE(fs::exists(home / "NPKI/yessign/USER/a/signCert.der"));
    EXPECT_EQ(count(), 2); // until the list is built again
    const auto deletions = doubles::callsOf("HVTK_MEDIA_DISK_DeletePriKey");
    EXPECT_EQ(deletions.size(), 2u);
}

TEST_F(Transfer, DeleteOfAnEntryWithoutAKeyManagementPairMakesTwoCalls)
{
    addNpki("c", {{"subject", "cn=c"}}, "TradeSign");
    ASSERT_EQ(load(), 0);
    doubles::forgetCalls();
    ASSERT_EQ(CLP_DeleteCert(clp, 2, nullptr, Text(goodPassword)), 0);
    std::vector<std::string> symbols;
    for (const doubles::Call& call : doubles::calls())
        symbols.push_back(call.symbol);
    EXPECT_EQ(symbols, (std::vector<std::string>{"HVTK_MEDIA_DISK_DeletePriKey", "HVTK_MEDIA_DISK_DeleteCert"}));
}

/** The paths of the key-management files are always named, so their absence is noticed late. */
TEST_F(Transfer, DeleteOfAGovernmentCertificateWithoutAKeyManagementPairFailsHalfWay)
{
    const fs::path folder = home / "GPKI/Certificate/class2";
    addGpki("g1");
    addGpki("g2");
    ASSERT_EQ(load(), 0);
    const fs::path certificate = entry(1)->szSignCertPath;
    ASSERT_EQ(certificate.parent_path(), folder);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 1125);
    EXPECT_FALSE(fs::exists(certificate));
    EXPECT_FALSE(fs::exists(fs::path(certificate).replace_extension(".key")));
}

TEST_F(Transfer, DeleteOnMedia)
{
    const std::pair<int, int> media[] = {{0, 1001}, {6, 1001}, {7, 1005}, {8, 1001}};
    for (const auto& [medium, result] : media) {
        ASSERT_EQ(CLP_SetMediaType(clp, medium, nullptr, 0), 0);
        EXPECT_EQ(CLP_DeleteCert(clp, 1, Text("1234"), Text(goodPassword)), result) << medium;
    }
    ASSERT_EQ(CLP_SetMediaType(clp, 1, nullptr, 0), 0);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, Text("1234"), nullptr), 1001);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, Text("1234"), Text("")), 1001);
}

TEST_F(Transfer, DeleteFailures)
{
    const char function[] = "CLoadDISK::DeleteCertNKey()";
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text("wrong")), 1113);
    EXPECT_EQ(lastLog(), logRecord(function, "ERR_INVALIDPASSWORD", "MediaDiskDeletePriKey()", 2004));
    doubles::answer("HVTK_MEDIA_DISK_DeletePriKey", 77);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 1125);
    EXPECT_EQ(lastLog(), logRecord(function, "ERR_DELETECERTNKEY", "MediaDiskDeletePriKey()", 77));
    EXPECT_TRUE(fs::exists(second / "signCert.der"));
    fake::install();
    doubles::answer("HVTK_MEDIA_DISK_DeleteCert", 78);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 1125);
    EXPECT_EQ(lastLog(), logRecord(function, "ERR_DELETECERTNKEY", "MediaDiskDeleteCert()", 78));
    // Nothing is undone: the key is gone, the certificate is still there.
    EXPECT_FALSE(fs::exists(second / "signPri.key"));
    EXPECT_TRUE(fs::exists(second / "signCert.der"));
}

TEST_F(Transfer, DeleteRemovesAnEmptyHomeFolder)
{
    ASSERT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 0);
    EXPECT_TRUE(fs::exists(home)); // it is not empty
    static std::string empty;
    empty = (disk / "empty home").string();
    fs::create_directory(empty);
    sigil::environment().homeFolder = [] { return empty; };
    addPair(second, {});
    addKm(second);
    ASSERT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 0);
    EXPECT_FALSE(fs::exists(empty));
}

TEST_F(Transfer, DeleteOfTheOtherFamiliesLeavesTheHomeFolder)
{
    static std::string empty;
    empty = (disk / "empty home").string();
    fs::create_directory(empty);
    addPair(home / "MPKI/USER/m", {{"subject", "cn=mpki"}});
    options.nPKITypes = 2 + 4;
    setOptions();
    ASSERT_EQ(load(), 0);
    ASSERT_STREQ(entry(2)->szSubjectDN, "cn=mpki");
    sigil::environment().homeFolder = [] { return empty; };
    ASSERT_EQ(CLP_DeleteCert(clp, 2, nullptr, Text(goodPassword)), 0);
    EXPECT_TRUE(fs::exists(empty));
}

/** Operations of the disk loader that no function of the boundary calls with all of their arguments. */
class LoaderFiles : public Transfer {
protected:
    void SetUp() override
    {
        ASSERT_EQ(HV_Initalize(&toolkit, 0, Text(library.string())), 0);
        loader.bind(0, toolkit, logFile.c_str());
        loader.setOptions(options);
        addKm(addNpki("b"));
        ASSERT_EQ(loader.LoadCertList(), 0);
        certificate = Text(signCert);
        plainKey = Text(signKey);
    }
    void TearDown() override { HV_Finish(toolkit); }

    void* toolkit = nullptr;
    CLoadDISK loader{1, library.c_str()};
    CBinary certificate, plainKey, none;
};

TEST_F(LoaderFiles, WriteCertNKey)
{
    Text certPath((disk / "c").string());
    Text keyPath((disk / "k").string());
    Text password("p");
    EXPECT_EQ(loader.WriteCertNKey(true, false, nullptr, 0, certPath, nullptr, certificate, none), 0);
    EXPECT_EQ(readFile(disk / "c"), signCert);
    EXPECT_FALSE(fs::exists(disk / "k"));
    EXPECT_EQ(loader.WriteCertNKey(false, true, password, 0, certPath, keyPath, certificate, plainKey), 0);
    EXPECT_EQ(readFile(disk / "k"), signKey);
    EXPECT_EQ(loader.WriteCertNKey(false, false, password, 48, certPath, keyPath, certificate, plainKey), 0);
    EXPECT_EQ(readFile(disk / "k"), fake::encrypted(signKey, "p"));
    EXPECT_EQ(loader.WriteCertNKey(true, false, nullptr, 0, nullptr, nullptr, certificate, none), 1001);
    EXPECT_EQ(loader.WriteCertNKey(true, false, nullptr, 0, certPath, nullptr, none, none), 1001);
    EXPECT_EQ(loader.WriteCertNKey(false, false, nullptr, 0, certPath, keyPath, certificate, plainKey), 1001);
    EXPECT_EQ(loader.WriteCertNKey(false, false, password, 0, certPath, nullptr, certificate, plainKey), 1001);
    EXPECT_EQ(loader.WriteCertNKey(false, false, password, 0, certPath, keyPath, certificate, none), 1001);
    EXPECT_EQ(loader.WriteFile(none, certPath), 1001);
}

TEST_F(LoaderFiles, ReadCertNKey)
{
    sigil::CertNKey out;
    EXPECT_EQ(loader.ReadCertNKey(true, -1, out), 1001);
    EXPECT_EQ(loader.ReadCertNKey(true, 2, out), 1001);
    EXPECT_EQ(loader.ReadCertNKey(true, 1, out), 0); // an index equal to the count passes, kept, and yields nothing
    EXPECT_FALSE(out.hasSignPair());
    EXPECT_EQ(loader.ReadCertNKey(true, 0, out), 0);
    EXPECT_EQ(sigil::bytesOf(out.signKey), fake::encrypted(signKey, goodPassword));
    EXPECT_EQ(sigil::bytesOf(out.kmKey), fake::encrypted(kmKey, goodPassword));
    EXPECT_EQ(loader.ReadCertNKey(false, 0, out), 0);
    EXPECT_TRUE(sigil::bytesOf(out.signKey).empty()); // nothing was decrypted
}

TEST_F(LoaderFiles, ReadCertNKeyFromPath)
{
    writeFile(disk / "c", signCert);
    writeFile(disk / "k", signKey);
    writeFile(disk / "empty", "");
    const auto read = [&](const char* certFile, const char* keyFile) {
        return loader.ReadCertNKeyFromPath(
            Text((disk / certFile).string()), Text((disk / keyFile).string()), certificate, plainKey);
    };
    EXPECT_EQ(read("c", "k"), 0);
    EXPECT_EQ(sigil::bytesOf(plainKey), signKey);
    EXPECT_EQ(read("c", "empty"), 1123);
    EXPECT_EQ(lastLog(), "CLoadDISK::ReadCertNKeyFromPath() - ERR_READCERTNKEY >> (Msg : Cert&Key data is null)");
    EXPECT_EQ(read("c", "missing"), 1123);
    EXPECT_EQ(read("missing", "k"), 1123);
}

/** The GPKI library is told the kind of key and certificate, which the maker's toolkit is not. */
TEST_F(LoaderFiles, DeleteTakesTheKeyThenTheCertificateOfEachPair)
{
    HV_Finish(toolkit);
    toolkit = nullptr;
    ASSERT_EQ(HV_Initalize(&toolkit, 1, Text(library.string())), 0);
    loader.bind(1, toolkit, logFile.c_str());
    doubles::answer("GPKI_STORAGE_ReadFile", doubles::fills(1, "bytes"));
    doubles::answer("GPKI_CERT_GetValidity", doubles::writesText("2024-01-01 00:00:00 ~ 2030-01-01 00:00:00"));
    addKm(addNpki("c", {}, "KICA"));
    ASSERT_EQ(loader.LoadCertList(), 0);

    std::vector<std::string> deletions;
    const auto deletes = [&](const char* what, std::size_t kind) {
        return [&deletions, what, kind](const doubles::Call& call) {
            deletions.push_back(std::string(what) + std::to_string(call.integer(kind)) + " " +
                fs::path(call.pointer<char>(1)).filename().string());
            return 0;
        };
    };
    doubles::answer("GPKI_STORAGE_DeletePriKey", deletes("key ", 3));
    doubles::answer("GPKI_STORAGE_DeleteCert", deletes("certificate ", 2));
    EXPECT_EQ(loader.DeleteCertNKey(1, Text(goodPassword)), 0);
    EXPECT_EQ(deletions,
        (std::vector<std::string>{
            "key 1 signPri.key", "certificate 1 signCert.der", "key 2 kmPri.key", "certificate 2 kmCert.der"}));
}

TEST_F(LoaderFiles, IndicesOutsideTheList)
{
    CBinary pfx;
    EXPECT_EQ(loader.MakePKCS12(1, Text("p"), pfx), 1001);
    EXPECT_EQ(loader.MakePKCS12(0, Text("p"), pfx), 1127); // nothing was decrypted
    EXPECT_EQ(loader.DeleteCertNKey(1, Text("p")), 1001);
    EXPECT_EQ(loader.DeleteCertNKey(0, nullptr), 1001);
}

} // namespace
