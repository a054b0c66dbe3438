// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Signs, verifies, envelopes and opens a large file through the façade, and tells for each step by how much the process grew
// at most, and how long it took.
//
//   large_files_bench [MIB]      1024 when nothing is said; needs four times that in the folder for temporary files
//
// The exit code is 1 when a step fails or when the process grows by 16 MiB or more.

#include <sigildesk/crypto.h>
#include <sigildesk/open_toolkit.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr long boundKiB = 16L * 1024;

/** A field of the process's status, in KiB. */
long memory(const std::string& field)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long value = 0; word == field && status >> value)
            return value;
    return 0;
}

/** A folder with a certificate, its key and the large file. */
class Folder {
public:
    explicit Folder(std::uintmax_t size)
    {
        std::string name = (fs::temp_directory_path() / "sigildesk-bench-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no folder for temporary files");
        m_path = name;
        const std::string make = "cd '" + name +
            "' && openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=bench -keyout key.pem -outform DER -out "
            "certificate"
            " 2>/dev/null && openssl pkcs8 -topk8 -nocrypt -in key.pem -outform DER -out key";
        if (std::system(make.c_str()) != 0)
            throw std::runtime_error("openssl made no certificate");
        std::ofstream(m_path / "content").close();
        fs::resize_file(m_path / "content", size);
    }
    ~Folder() { fs::remove_all(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string path(const std::string& name) const { return (m_path / name).string(); }
    std::string read(const std::string& name) const
    {
        std::ifstream file(m_path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    fs::path m_path;
};

/** A byte string of a handle. */
class Bytes {
public:
    explicit Bytes(void* handle, std::string bytes = {})
        : m_handle(handle)
    {
        HV_BINSTR_Create(m_handle, &m_record);
        if (!bytes.empty())
            HV_BINSTR_SetData(m_handle, reinterpret_cast<unsigned char*>(bytes.data()),
                static_cast<int>(bytes.size()), &m_record);
    }
    ~Bytes() { HV_BINSTR_Delete(m_handle, &m_record); }
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;
    BINSTR* get() { return &m_record; }

private:
    void* m_handle;
    BINSTR m_record{};
};

/** Runs a step and prints its line. @return whether it went well within the bound */
bool measure(const char* name, const std::function<int()>& step)
{
    std::ofstream("/proc/self/clear_refs") << "5"; // forgets the highest use so far
    const long before = memory("VmRSS:");
    const auto begin = std::chrono::steady_clock::now();
    const int code = step();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    const long growth = memory("VmHWM:") - before;
    std::printf("%-22s code %d, %6.1f s, grew by %5ld KiB\n", name, code, seconds, growth);
    return code == 0 && growth < boundKiB;
}

bool run(std::uintmax_t size, int type)
{
    const Folder folder(size);
    std::string library = SIGILDESK_LIBRARY_FOLDER;
    void* handle = nullptr;
    if (HV_Initalize(&handle, type, library.data()) != 0)
        throw std::runtime_error("no toolkit in " + library);
    Bytes certificate(handle, folder.read("certificate"));
    Bytes key(handle, folder.read("key"));
    std::string content = folder.path("content");
    std::string message = folder.path("message");
    std::string out = folder.path("out");
    std::string now;
    char time[25] = {};
    const auto verify = [&](auto function, std::string& target) {
        Bytes signer(handle);
        return function(handle, target.data(), message.data(), signer.get(), time);
    };
    bool good = measure("signed, detached", [&] {
        return CMSMakeSignedDataFile(
            handle, certificate.get(), key.get(), content.data(), now.data(), message.data());
    });
    good &= measure("verified, detached", [&] { return verify(CMSProcessSignedDataFile, content); });
    good &= measure("signed, attached", [&] {
        return CMSMakeSignedDataFileWithContent(
            handle, certificate.get(), key.get(), content.data(), now.data(), message.data());
    });
    good &= measure("verified, attached", [&] { return verify(CMSProcessSignedDataFileWithContent, out); });
    good &= fs::file_size(out) == size;
    fs::remove(out);
    std::string cipherFile = folder.path("cipher");
    good &= measure("enveloped", [&] {
        return CMSMakeEnvelopedDataFile(
            handle, certificate.get(), content.data(), SIGIL_TK_CIPHER_AES256, message.data(), cipherFile.data());
    });
    good &= measure("opened", [&] {
        return CMSProcessEnvelopedDataFile(
            handle, certificate.get(), key.get(), message.data(), cipherFile.data(), out.data());
    });
    good &= fs::file_size(out) == size;
    HV_Finish(handle);
    return good;
}

} // namespace

int main(int count, char** words)
{
    const std::uintmax_t mebibytes = count > 1 ? std::strtoull(words[1], nullptr, 10) : 1024;
    bool good = true;
    for (const int type : {0, 1}) {
        std::printf("type %d, %ju MiB\n", type, mebibytes);
        good &= run(mebibytes * 1024 * 1024, type);
    }
    return good ? 0 : 1;
}
