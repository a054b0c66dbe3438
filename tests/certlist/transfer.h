// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Fixture of the tests that import, export, copy and delete.
 */
#pragma once

#include "tests/certlist/scripted.h"

#include <filesystem>
#include <string>

class Transfer : public Scripted {
protected:
    static inline const std::string signCert = fake::certificate();
    static inline const std::string kmCert = fake::certificate({{"usage", "keyEncipherment"}, {"pair", "K1"}});
    static inline const std::string signKey = fake::key();
    static inline const std::string kmKey = "KEY(K1)";

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
        const std::filesystem::path path = disk / "import.pfx";
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

    std::filesystem::path second;
    Buffer cert, key, kmCertOut, kmKeyOut;
};
