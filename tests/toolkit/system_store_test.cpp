// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The system's certificate store: NSS databases that certutil and pk12util made, that the toolkit made, and that are damaged.

#include "tests/support/tally.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using namespace toolkit_test;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

namespace {

/** Certificates with their keys and PKCS#12 files: `rsa` and `ec`, of the authority `ca`. */
const Workshop& pairs()
{
    static const Workshop* const made = [] {
        static const Workshop workshop;
        workshop.certificate(
            "ca", "/C=KR/O=Store/CN=Store CA", "basicConstraints=critical,CA:TRUE\nkeyUsage=keyCertSign");
        const std::string usage =
            "keyUsage=digitalSignature,nonRepudiation,keyEncipherment\nextendedKeyUsage=emailProtection";
        workshop.certificate("rsa", "/C=KR/O=Store/CN=user rsa", usage, "ca");
        workshop.certificate("ec", "/C=KR/O=Store/CN=user ec", "keyUsage=keyAgreement", "ca", "-days 365",
            "ec -pkeyopt ec_paramgen_curve:P-256");
        for (const std::string pair : {"rsa", "ec"})
            workshop.run("openssl pkcs12 -export -inkey " + pair + ".key.pem -in " + pair +
                ".pem -certfile ca.pem -out " + pair + ".p12 -passout pass:secret1!");
        return &workshop;
    }();
    return *made;
}

class Store : public testing::Test {
protected:
    /** The user's own database is never touched. */
    Store() { setenv("HOME", workshop.path("home").c_str(), 1); }

    std::string at(const std::string& folder) const { return workshop.path(folder); }
    /** A database of certutil's; without a password unless there is one. */
    void make(const std::string& folder, const std::string& password = {}) const
    {
        fs::create_directories(at(folder));
        workshop.write("password", password + "\n");
        workshop.run("certutil -N -d sql:" + folder + (password.empty() ? " --empty-password" : " -f password"));
    }
    void certutilAdds(const std::string& folder, const std::string& pair, const std::string& trust = ",,") const
    {
        workshop.write(pair + ".pem", pairs().read(pair + ".pem"));
        workshop.run(
            "certutil -A -d sql:" + folder + " -n '" + pair + "' -t " + trust + " -f password -i " + pair + ".pem");
    }
    std::string certutilLists(const std::string& folder, const std::string& what = "-L") const
    {
        tally("lists of certutil");
        return workshop.run("certutil " + what + " -d sql:" + folder);
    }
    int count(const std::string& folder, int* number) const
    {
        return toolkit("MEDIA_WINS_GetCertCnt", text(folder.empty() ? "" : at(folder)), number);
    }
    int count(const std::string& folder) const
    {
        int number = -1;
        EXPECT_EQ(count(folder, &number), 0) << toolkit.errorText();
        return number;
    }
    std::string readCert(int index) const
    {
        ByteString out(toolkit);
        const int code = toolkit("MEDIA_WINS_ReadCert", index, out.get());
        return code == 0 ? out.bytes() : "code " + std::to_string(code);
    }
    int writeCert(const std::string& bytes) const
    {
        ByteString certificate(toolkit, bytes);
        return toolkit("MEDIA_WINS_WriteCert", certificate.get());
    }
    int writePair(const std::string& pair, const std::string& password = "secret1!") const
    {
        ByteString pfx(toolkit, pairs().read(pair + ".p12"));
        return toolkit("MEDIA_WINS_WriteCertAndPriKey", 0, text(password), pfx.get());
    }
    static std::string code(int value) { return "code " + std::to_string(value); }

    Workshop workshop;
    ToolkitLibrary toolkit{"HVTK_"};
};

} // namespace

TEST_F(Store, ShowsWhatCertutilImported)
{
    make("db");
    EXPECT_EQ(count("db"), 0);
    certutilAdds("db", "ca", "CT,C,C");
    certutilAdds("db", "rsa");
    EXPECT_EQ(readCert(0), code(SIGIL_TK_INDEX)) << "the list is the one that was counted";
    ASSERT_EQ(count("db"), 2);
    EXPECT_EQ(readCert(0), pairs().read("ca.crt"));
    EXPECT_EQ(readCert(1), pairs().read("rsa.crt"));
    for (const int outside : {-1, 2})
        EXPECT_EQ(readCert(outside), code(SIGIL_TK_INDEX));
}

TEST_F(Store, TellsTheNamesOfACertificate)
{
    make("db");
    certutilAdds("db", "rsa");
    certutilAdds("db", "ec");
    ASSERT_EQ(count("db"), 2);
    int kind = 0;
    std::string subject(1024, 'x');
    std::string issuer(1024, 'x');
    ASSERT_EQ(toolkit("MEDIA_WINS_GetCertDN", 0, &kind, subject.data(), issuer.data()), 0);
    EXPECT_EQ(kind, SIGIL_TK_TOKEN_SIGNING);
    EXPECT_STREQ(subject.c_str(), "cn=user rsa,o=Store,c=KR");
    EXPECT_STREQ(issuer.c_str(), "cn=Store CA,o=Store,c=KR");
    char* const none = nullptr;
    EXPECT_EQ(toolkit("MEDIA_WINS_GetCertDN", 1, &kind, none, none), 0);
    EXPECT_EQ(kind, SIGIL_TK_TOKEN_KEY_MANAGEMENT);
    EXPECT_EQ(toolkit("MEDIA_WINS_GetCertDN", 2, &kind, none, none), SIGIL_TK_INDEX);
}

TEST_F(Store, RefusesNamesThatNoBufferIsPromisedFor)
{
    make("db");
    std::string longName = "/C=KR";
    for (int i = 0; i < 20; ++i)
        longName += "/OU=" + std::string(60, static_cast<char>('a' + i));
    workshop.certificate("long", longName, "", "");
    workshop.run("certutil -A -d sql:db -n long -t ,, -i long.pem");
    ASSERT_EQ(count("db"), 1);
    std::string subject(1024, 'x');
    EXPECT_EQ(toolkit("MEDIA_WINS_GetCertDN", 0, static_cast<int*>(nullptr), subject.data(), subject.data()),
        SIGIL_TK_BUFFER_TOO_SMALL);
    EXPECT_EQ(subject, std::string(1024, 'x'));
}

TEST_F(Store, IsTheUsersWithoutAFolder)
{
    EXPECT_EQ(count(""), 0);
    EXPECT_EQ(readCert(0), code(SIGIL_TK_MEDIUM));
    EXPECT_FALSE(fs::exists(at("home"))) << "looking makes nothing";
    ASSERT_EQ(writeCert(pairs().read("rsa.pem")), 0) << toolkit.errorText();
    EXPECT_EQ(readCert(0), pairs().read("rsa.crt")) << "a change is seen without counting";
    EXPECT_THAT(certutilLists("home/.pki/nssdb"), HasSubstr("user rsa"));
    struct stat folder { };
    ASSERT_EQ(stat(at("home/.pki").c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U) << "nobody else's";
    const ToolkitLibrary another("HVTK_");
    ByteString out(another);
    EXPECT_EQ(another("MEDIA_WINS_ReadCert", 0, out.get()), 0) << "uncounted";
}

TEST_F(Store, BeginsRelativeFoldersAtTheLoadedOne)
{
    make("db");
    certutilAdds("db", "rsa");
    ASSERT_EQ(toolkit("MEDIA_Load", text(at("."))), 0);
    int number = 0;
    EXPECT_EQ(toolkit("MEDIA_WINS_GetCertCnt", text("db"), &number), 0);
    EXPECT_EQ(number, 1);
}

TEST_F(Store, MakesTheDatabaseForAnImport)
{
    EXPECT_EQ(count("it's \\new/db"), 0);
    EXPECT_EQ(readCert(0), code(SIGIL_TK_MEDIUM));
    EXPECT_EQ(writePair("rsa", "wrong"), SIGIL_TK_PFX_WRONG_PASSWORD);
    EXPECT_EQ(writeCert("garbage"), SIGIL_TK_CERT_MALFORMED);
    EXPECT_FALSE(fs::exists(at("it's \\new"))) << "nothing was there to be imported";
    ASSERT_EQ(writePair("rsa"), 0) << toolkit.errorText();
    EXPECT_EQ(readCert(1), pairs().read("rsa.crt"));
    EXPECT_TRUE(fs::exists(at("it's \\new/db/cert9.db")));
}

TEST_F(Store, GivesOtherProgramsPairsThatSign)
{
    count("db");
    ASSERT_EQ(writePair("rsa"), 0) << toolkit.errorText();
    ASSERT_EQ(writePair("ec"), 0) << toolkit.errorText();
    ASSERT_EQ(writePair("ec"), 0) << "what is there stays";
    EXPECT_EQ(count("db"), 3) << "the authority once";
    EXPECT_THAT(certutilLists("db"),
        testing::AllOf(testing::ContainsRegex("user rsa +u,u,u"), testing::ContainsRegex("user ec +u,u,u"),
            HasSubstr("Store CA")));
    const std::string keys = certutilLists("db", "-K");
    EXPECT_THAT(keys, HasSubstr("rsa "));
    EXPECT_THAT(keys, HasSubstr("ec "));
    workshop.run("certutil -M -d sql:db -n 'Store CA' -t CT,C,C");
    workshop.write("ca.pem", pairs().read("ca.pem"));
    workshop.write("text", "text");
    workshop.run("cmsutil -S -d sql:db -N 'user rsa' -i text -o message 2>&1");
    EXPECT_EQ(workshop.run("openssl cms -verify -CAfile ca.pem -inform DER -in message 2>/dev/null"), "text");
}

TEST_F(Store, TakesNoKeyOut)
{
    count("db");
    ASSERT_EQ(writePair("rsa"), 0);
    ByteString out(toolkit);
    EXPECT_EQ(toolkit("MEDIA_WINS_ReadPriKey", 1, out.get()), SIGIL_TK_MEDIUM);
    EXPECT_THAT(toolkit.errorText(), HasSubstr("does not leave the store"));
    EXPECT_TRUE(out.empty());
}

TEST_F(Store, SharesADatabaseOfPk12util)
{
    make("db");
    workshop.write("rsa.p12", pairs().read("rsa.p12"));
    workshop.run("pk12util -i rsa.p12 -d sql:db -W 'secret1!' -K ''");
    ASSERT_EQ(count("db"), 2);
    ASSERT_EQ(writePair("rsa"), 0) << toolkit.errorText();
    EXPECT_EQ(count("db"), 2) << "what pk12util imported is found again";
    EXPECT_THAT(certutilLists("db", "-K"), Not(HasSubstr("< 1>"))) << "the key too";
}

TEST_F(Store, GivesTwoSubjectsOfOneCommonNameTwoNicknames)
{
    count("db");
    for (const std::string unit : {"one", "two"}) {
        workshop.certificate(unit, "/OU=" + unit + "/CN=same", "");
        ASSERT_EQ(writeCert(workshop.read(unit + ".crt")), 0);
    }
    EXPECT_THAT(certutilLists("db"), testing::AllOf(HasSubstr("same "), HasSubstr("same #2 ")));
}

TEST_F(Store, WantsALoginForADatabaseWithAPassword)
{
    make("db", "db-password");
    certutilAdds("db", "rsa");
    int number = -1;
    EXPECT_EQ(count("db", &number), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_THAT(toolkit.errorText(), HasSubstr("has a password"));
    EXPECT_EQ(number, -1);
    EXPECT_EQ(readCert(0), code(SIGIL_TK_TOKEN_LOGIN));
    EXPECT_EQ(writeCert(pairs().read("ec.crt")), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_EQ(writePair("ec"), SIGIL_TK_TOKEN_LOGIN);
    EXPECT_THAT(certutilLists("db"), Not(HasSubstr("user ec")));
}

TEST_F(Store, SaysThatAHostileDatabaseIsNotAvailable)
{
    make("good");
    certutilAdds("good", "rsa");
    const auto is = [&](const std::string& name) {
        int number = -1;
        EXPECT_EQ(count(name, &number), SIGIL_TK_MEDIUM) << name;
        EXPECT_EQ(readCert(0), code(SIGIL_TK_MEDIUM)) << name;
        EXPECT_EQ(number, -1);
        tally("hostile databases");
    };
    const auto spoilt = [&](const std::string& name, const std::string& spoil) {
        workshop.run("cp -r good " + name + "; cd " + name + "; " + spoil);
        is(name);
    };
    spoilt("garbage", "printf %05000d 7 > cert9.db");
    spoilt("empty", ": > cert9.db");
    spoilt("cut", "truncate -s 9000 cert9.db");
    spoilt("keyless", "rm key4.db");
    spoilt("garbage-keys", "printf %0300d 7 > key4.db");
    spoilt("folder", "rm cert9.db; mkdir cert9.db");
    spoilt("pipe", "rm cert9.db; mkfifo cert9.db");
    spoilt("key-pipe", "rm key4.db; mkfifo key4.db");
    workshop.write("file", "not a folder");
    is("file");
    EXPECT_EQ(writeCert(pairs().read("rsa.crt")), SIGIL_TK_MEDIUM) << "nor is it written to";
    EXPECT_EQ(workshop.read("file"), "not a folder");
    if (geteuid() != 0)
        spoilt("others", "chmod 0 cert9.db");
}

TEST_F(Store, SaysThatALockedDatabaseIsNotAvailable)
{
    make("db");
    // Holds the lock until its input ends.
    workshop.run("mkfifo locked release");
    workshop.write("lock.py",
        "import sqlite3, sys\n"
        "connection = sqlite3.connect('db/cert9.db', isolation_level=None)\n"
        "connection.execute('begin exclusive')\n"
        "open('locked', 'w').close()\n"
        "open('release').read()\n");
    workshop.run("python3 lock.py > lock.log 2>&1 & cat locked");
    int number = -1;
    EXPECT_EQ(count("db", &number), SIGIL_TK_MEDIUM);
    EXPECT_EQ(writeCert(pairs().read("rsa.crt")), SIGIL_TK_MEDIUM);
    workshop.run(": > release");
}

TEST_F(Store, HoldsTenThousandCertificates)
{
    make("db");
    workshop.certificate("many", "/CN=many", "", "", "-days 365 -set_serial 0x5555555555555555");
    workshop.run("certutil -A -d sql:db -n many -t ,, -i many.pem");
    // certutil takes one after another; copies with other serial numbers are as good.
    workshop.write("multiply.py",
        "import sqlite3\n"
        "connection = sqlite3.connect('db/cert9.db')\n"
        "connection.row_factory = sqlite3.Row\n"
        "row = dict(connection.execute(\"select * from nssPublic where a0 = x'00000001'\").fetchone())\n"
        "serial = b'\\x55' * 8\n"
        "copies = []\n"
        "for number in range(1, 10000):\n"
        "    other = number.to_bytes(4, 'big').rjust(8, b'\\x55')\n"
        "    copy = dict(row, id=100000 + number)\n"
        "    for column in ('a11', 'a82'):\n"
        "        copy[column] = row[column].replace(serial, other)\n"
        "    copies.append(list(copy.values()))\n"
        "connection.executemany('insert into nssPublic values (%s)' % ','.join('?' * len(row)), copies)\n"
        "connection.commit()\n");
    workshop.run("python3 multiply.py");
    ASSERT_EQ(count("db"), 10000);
    EXPECT_EQ(readCert(0), workshop.read("many.crt"));
    EXPECT_EQ(readCert(9999).size(), readCert(0).size());
    EXPECT_EQ(readCert(10000), code(SIGIL_TK_INDEX));
}

TEST_F(Store, TheProgramThatOpensItRefusesOtherOperations)
{
    const std::string store = SIGILDESK_LIBRARY_FOLDER "/nss-store";
    for (const std::string& arguments : {std::string(), std::string("remove"), "remove " + at("database")}) {
        const std::string answer = workshop.run(store + " " + arguments + " </dev/null");
        EXPECT_EQ(answer.substr(0, answer.find('\n')), std::to_string(SIGIL_TK_ARGUMENT)) << arguments;
    }
    EXPECT_FALSE(fs::exists(at("database")));
}

TEST_F(Store, WithoutACommonNameTheNicknameIsOfTheKind)
{
    make("db");
    workshop.certificate("nameless", "/C=KR/O=Store", "keyUsage=digitalSignature");
    ASSERT_EQ(count("db"), 0);
    ASSERT_EQ(writeCert(workshop.read("nameless.crt")), 0) << toolkit.errorText();
    EXPECT_THAT(certutilLists("db"), HasSubstr("certificate  "));
}

TEST_F(Store, WhatItsProgramCannotWriteIsTheMediumsFailure)
{
    make("db");
    workshop.write("rsa.crt", pairs().read("rsa.crt"));
    const std::string program = SIGILDESK_LIBRARY_FOLDER "/nss-store";
    const std::string add = program + " add db < rsa.crt";
    EXPECT_THAT(workshop.run("(trap '' XFSZ; ulimit -f 0; " + add + ") | cat"),
        testing::StartsWith(std::to_string(SIGIL_TK_MEDIUM) + "\n"));
    EXPECT_EQ(count("db"), 0);
    EXPECT_EQ(workshop.run(add), "0\n");
    EXPECT_EQ(count("db"), 1);
    EXPECT_EQ(workshop.run(program + " list db >&- && echo ended"), "ended\n") << "nobody listens";
}
