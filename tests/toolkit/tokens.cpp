// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/toolkit/tokens.h"

#include <p11-kit/p11-kit.h>

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

// p11-kit has it for its own tests and declares it in none of its public headers.
extern "C" void p11_kit_override_system_files(const char* systemConfig, const char* userConfig,
    const char* packageModules, const char* systemModules, const char* userModules);

namespace toolkit_test {

TokenWorkshop::TokenWorkshop()
{
    for (const char* folder : {"tokens", "modules", "no-modules"})
        std::filesystem::create_directory(path(folder));
    write("pkcs11.conf", "user-config: none\n");
    write("softhsm2.conf",
        "directories.tokendir = " + path("tokens") + "\nobjectstore.backend = file\nlog.level = ERROR\n");
    setenv("SOFTHSM2_CONF", path("softhsm2.conf").c_str(), 1);
    // The texts are not copied.
    static std::string config;
    static std::string modules;
    static std::string nowhere;
    config = path("pkcs11.conf");
    modules = path("modules");
    nowhere = path("no-modules");
    p11_kit_override_system_files(
        config.c_str(), nowhere.c_str(), modules.c_str(), nowhere.c_str(), nowhere.c_str());
}

void TokenWorkshop::add(const std::string& name, const std::string& file, const std::string& start) const
{
    write("modules/" + name + ".module",
        "module: " + file + "\n" + (start.empty() ? "" : "x-init-reserved: " + start + "\n"));
}

void TokenWorkshop::addSoftHsm() const { add("softhsm", SIGILDESK_SOFTHSM); }

void TokenWorkshop::addOdd(const std::string& name, const std::string& start) const
{
    add(name, SIGILDESK_ODD_MODULE, start);
}

void TokenWorkshop::token(const std::string& label) const
{
    run("softhsm2-util --init-token --free --label '" + label + "' --pin " + tokenPin + " --so-pin " + securityPin);
}

std::string TokenWorkshop::pkcs11Tool(const std::string& arguments) const
{
    return run("pkcs11-tool --module '" SIGILDESK_SOFTHSM "' " + arguments);
}

const Workshop& plainPairs()
{
    static const Workshop* const made = [] {
        static const Workshop workshop;
        const std::string extensions = "subjectKeyIdentifier=hash\n";
        workshop.certificate("rsa", "/CN=rsa", extensions);
        workshop.certificate("other", "/CN=other", extensions);
        workshop.certificate("ec", "/CN=ec", extensions, "", "-days 365", "ec -pkeyopt ec_paramgen_curve:P-256");
        return &workshop;
    }();
    return *made;
}

OddBehaviour& oddBehaviour()
{
    void* const module = dlopen(SIGILDESK_ODD_MODULE, RTLD_LAZY | RTLD_NOLOAD);
    if (!module)
        throw std::runtime_error("the odd module is not loaded");
    dlclose(module);
    return *reinterpret_cast<OddBehaviour* (*)()>(dlsym(module, "odd_behaviour"))();
}

SoftHsmFunctions::SoftHsmFunctions()
    : m_library(dlopen(SIGILDESK_SOFTHSM, RTLD_NOW | RTLD_LOCAL))
{
    if (!m_library)
        throw std::runtime_error("SoftHSM cannot be loaded");
    reinterpret_cast<CK_C_GetFunctionList>(dlsym(m_library, "C_GetFunctionList"))(&m_list);
}

SoftHsmFunctions::~SoftHsmFunctions() { dlclose(m_library); }

TokenTest::TokenTest(const std::string& prefix)
    : toolkit(std::make_unique<ToolkitLibrary>(prefix))
    , m_hvtk(prefix == "HVTK_")
{
    workshop.addSoftHsm();
    workshop.token("first");
}

std::vector<unsigned long> TokenTest::slots() const
{
    std::vector<unsigned long> numbers(16);
    unsigned long count = numbers.size();
    EXPECT_EQ(token("GetSlotList", numbers.data(), &count), 0) << toolkit->errorText();
    numbers.resize(count);
    return numbers;
}

PKCS11_TOKEN_INFO TokenTest::info(unsigned long slot) const
{
    PKCS11_TOKEN_INFO info{};
    EXPECT_EQ(token("GetTokenInfo", slot, &info), 0) << toolkit->errorText();
    return info;
}

unsigned long TokenTest::slotOf(const std::string& label) const
{
    for (const unsigned long slot : slots())
        if (fixedText(info(slot).label) == label)
            return slot;
    ADD_FAILURE() << "no token " << label;
    return 0;
}

int TokenTest::open(const std::string& label, int flags) const
{
    return m_hvtk ? token("OpenSessionWithSlotID", slotOf(label), static_cast<char*>(nullptr), flags)
                  : token("OpenSession", slotOf(label), flags);
}

void TokenTest::openAndLogIn(const std::string& label) const
{
    ASSERT_EQ(open(label), 0) << toolkit->errorText();
    ASSERT_EQ(login(tokenPin), 0) << toolkit->errorText();
}

int TokenTest::certificateCount() const
{
    int count = -1;
    EXPECT_EQ(token("GetCertCnt", &count), 0) << toolkit->errorText();
    return count;
}

int TokenTest::writePair(const Workshop& pairs, const std::string& name) const
{
    ByteString certificate(*toolkit, pairs.read(name + ".crt"));
    ByteString key(*toolkit, pairs.read(name + ".key"));
    return token("WriteCertAndPriKey", certificate.get(), key.get());
}

std::string TokenTest::with(const std::string& function, const std::string& id, const std::string& data)
{
    ByteString name(*toolkit, id);
    ByteString given(*toolkit, data);
    return make([&](BINSTR* out) { return token(function, name.get(), given.get(), out); });
}

std::string TokenTest::listed(const std::string& type) const
{
    return workshop.pkcs11Tool(
        "--token-label first --login --pin " + std::string(tokenPin) + " --list-objects --type " + type);
}

} // namespace toolkit_test
