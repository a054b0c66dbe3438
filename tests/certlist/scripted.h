// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Fixture of the tests on the scripted toolkit: a home folder, a library folder, a fixed clock, an error log.
 */
#pragma once

#include "tests/certlist/fake_toolkit.h"
#include "tests/doubles/recorder.h"
#include "tests/doubles/variant.h"
#include "tests/support/files.h"

#include "foundation/environment.h"

#include <sigildesk/certlist.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

inline const std::string goodPassword = "Abcd1234!@";

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
/** For tests that start a processor once more: the façade then forgets the toolkit that it had loaded, deliberately. */
using LeaksForgiven = __lsan::ScopedDisabler;
#else
struct LeaksForgiven {
    LeaksForgiven() { }
};
#endif

/** A text as the interface takes it. */
class Text {
public:
    Text(std::string text)
        : m_text(std::move(text))
    {
    }
    Text(const char* text)
        : m_text(text)
    {
    }
    operator char*() { return m_text.data(); }

private:
    std::string m_text;
};

/** A buffer that the library hands out. */
class Buffer {
public:
    ~Buffer() { release(); }
    char** to()
    {
        release();
        return &m_data;
    }
    int* length() { return &m_length; }
    bool given() const { return m_data; }
    std::string text() const { return m_data ? std::string(m_data, static_cast<std::size_t>(m_length)) : "none"; }
    char at(int i) const { return m_data[i]; }

private:
    void release() { CLP_MemFree(nullptr, reinterpret_cast<void**>(&m_data)); }

    char* m_data = nullptr;
    int m_length = -1;
};

class Scripted : public ::testing::Test {
protected:
    Scripted();
    ~Scripted() override;

    /** Starts the processor: all families, hard disk. */
    void start(int language = 1);
    void finish();

    /** Options of CLP_SetType, all families to begin with. */
    tagLOADCERTOPT options{};
    int setOptions() { return CLP_SetType(clp, &options); }

    /** Lists the certificates of @p medium. */
    int load(int medium = 1, const std::string& folder = {});
    int count() { return CLP_GetCertCount(clp); }
    /** Entry @p index, read into a cleared record. */
    std::unique_ptr<tagCERTINFO> entry(int index = 0);
    /** Subject names of the list, in order. */
    std::vector<std::string> subjects();

    /** @name Stores below @p base, the home folder when empty
     *  @{ */
    std::filesystem::path addNpki(
        const std::string& name, const fake::Fields& changes = {}, const std::string& ca = "yessign");
    /** A key-management pair beside a signing pair. */
    void addKm(const std::filesystem::path& folder,
        const fake::Fields& changes = {{"usage", "keyEncipherment"}, {"pair", "K1"}});
    void addGpki(
        const std::string& name, const fake::Fields& changes = {}, const std::string& classFolder = "class2");
    void addPair(const std::filesystem::path& folder, const fake::Fields& changes);
    /** @} */

    /** Records of the error log, without their times; the log starts anew. */
    std::vector<std::string> log();
    std::string lastLog();

    TemporaryFolder m_homeFolder;
    TemporaryFolder m_libraryFolder;
    TemporaryFolder m_diskFolder;
    std::filesystem::path home = m_homeFolder.path();
    std::filesystem::path library = m_libraryFolder.path();
    /** Below its temporary folder: names with backslashes are written beside it. */
    std::filesystem::path disk = m_diskFolder.path("disk");
    std::filesystem::path logFile = library / "error.log";
    void* clp = nullptr;

private:
    sigil::Environment m_machine;
};
