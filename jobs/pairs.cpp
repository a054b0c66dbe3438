// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/pairs.h"

#include "certlist/store_layout.h"
#include "certlist/store_repair.h"
#include "certlist/undoable_files.h"
#include "foundation/ascii.h"
#include "foundation/environment.h"
#include "foundation/families.h"
#include "jobs/failure.h"
#include "jobs/keys.h"
#include "jobs/read_file.h"

#include <sigildesk/util.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr Words notChanged{"the files of {} stay as they were: {}", "{} 파일을 바꾸지 못해 그대로 두었습니다: {}"};
constexpr Words alreadyThere{"{} is there already", "{} 파일이 이미 있습니다"};
constexpr Words noPlace{
    "no family of certificates has a place for {} on this disk", "이 디스크에는 {} 인증서를 둘 곳이 없습니다"};
constexpr Words pathTooLong{"{} is longer than a list can read", "{} 경로가 목록이 읽을 수 있는 길이보다 깁니다"};

[[noreturn]] void fail(const std::string& path, int error)
{
    throw Failure(failed, "pair_not_changed", notChanged, {path, std::generic_category().message(error)});
}

std::string folderOf(const std::string& path)
{
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

int flushFolder(const std::string& folder)
{
    const sigil::Descriptor file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return file.isOpen() && (fsync(file.get()) == 0 || errno == EINVAL) ? 0 : errno;
}

/** What of a new file is on the disk already, under a name that nobody reads. */
class Draft {
public:
    explicit Draft(std::string path)
        : m_path(std::move(path))
    {
    }
    ~Draft()
    {
        if (!m_temporary.empty())
            static_cast<void>(unlink(m_temporary.c_str()));
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    void write(const std::string& bytes)
    {
        m_temporary = m_path + ".XXXXXX";
        const sigil::Descriptor file(mkostemp(m_temporary.data(), O_CLOEXEC));
        if (!file.isOpen()) {
            const int error = errno;
            m_temporary.clear();
            fail(m_path, error);
        }
        if (sigil::writeAll(file, bytes) != bytes.size() || fsync(file.get()) != 0)
            fail(m_path, errno);
    }
    /** The file holds what was written, or is gone when nothing was. */
    void putInPlace()
    {
        if (m_path.empty())
            return;
        const bool put = m_temporary.empty() ? unlink(m_path.c_str()) == 0 || errno == ENOENT
                                             : rename(m_temporary.c_str(), m_path.c_str()) == 0;
        if (!put)
            fail(m_path, errno);
        m_temporary.clear();
    }

private:
    std::string m_path;
    std::string m_temporary; // empty when there is none
};

/** Folders for their owner alone, on the disk before anything is put into them. The last of them goes again when it is
 *  still empty at the end. */
class Folder {
public:
    explicit Folder(const std::string& path)
        : m_path(path)
    {
        std::vector<std::string> missing;
        for (fs::path folder = path; !folder.empty() && !fs::exists(folder); folder = folder.parent_path())
            missing.push_back(folder.string());
        m_made = !missing.empty();
        for (auto folder = missing.rbegin(); folder != missing.rend(); ++folder)
            make(*folder);
    }
    ~Folder()
    {
        if (m_made)
            static_cast<void>(rmdir(m_path.c_str()));
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

private:
    static void make(const std::string& folder)
    {
        if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST)
            fail(folder, errno);
        if (const int error = flushFolder(folderOf(folder)); error != 0) {
            rmdir(folder.c_str());
            fail(folder, error);
        }
    }

    std::string m_path;
    bool m_made;
};

std::array<std::string, 4> all(const PairFiles& files)
{
    return {files.kmCertificate, files.certificate, files.kmKey, files.key};
}

std::string bare(const char* name) { return *name == '/' ? name + 1 : name; }

/** Whether the name is that of a certificate file in a layout. */
bool isNamed(const sigil::CertificateFiles& layout, const std::string& path, const char* certificate)
{
    const std::string name = fs::path(path).filename().string();
    const std::string wanted = bare(certificate);
    if (!layout.mark)
        return sigil::equalsIgnoringCase(name, wanted);
    return name.size() >= wanted.size() &&
        sigil::equalsIgnoringCase(std::string_view(name).substr(name.size() - wanted.size()), wanted);
}

bool hasOwnFolder(const std::string& path)
{
    const auto families = sigil::families();
    return std::any_of(families.begin(), families.end(), [&](const sigil::Family& family) {
        return !family.files.mark && isNamed(family.files, path, family.files.signCert);
    });
}

std::string partOf(const Certificate& certificate, int (CUtil::*get)(char*, int, char*))
{
    std::array<char, 1024> part{};
    std::string dn = certificate.subject;
    (CUtil().*get)(dn.data(), part.size(), part.data());
    return part.data();
}

/** Of the folders of a family, the one for this subject; empty for none. */
std::string storeFor(const Certificate& certificate, const sigil::Family& family, int medium)
{
    const sigil::StoreFolders& stores = sigil::foldersOf(family, medium);
    if (stores.places == 0)
        return {};
    const bool isPerson = sigil::equalsIgnoringCase(partOf(certificate, &CUtil::GetOUString), "people");
    const std::string organisation = partOf(certificate, &CUtil::GetOString);
    for (const char* folder : stores.folders)
        for (const fs::path& part : fs::path(folder))
            if (sigil::equalsIgnoringCase(part.string(), organisation) || part == (isPerson ? "class2" : "class1"))
                return folder;
    return stores.folders.front();
}

/** The name that a store gives a certificate. */
std::string nameOf(const Certificate& certificate, const sigil::CertificateFiles& layout)
{
    std::string name = layout.mark ? certificate.name + layout.mark : certificate.subject;
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
}

void mustFit(const PairFiles& files)
{
    for (const std::string& path : all(files))
        if (path != sigil::cutPath(path))
            throw Failure(failed, "path_too_long", pathTooLong, {path});
}

/** The paths of the contents that are there. */
PairFiles thatAreThere(PairFiles files, const PairContents& contents)
{
    const auto clear = [](std::string& path, const std::optional<std::string>& content) {
        if (!content)
            path.clear();
    };
    clear(files.certificate, contents.certificate);
    clear(files.key, contents.key);
    clear(files.kmCertificate, contents.kmCertificate);
    clear(files.kmKey, contents.kmKey);
    return files;
}

/** The key under the new password: the key itself, and the random value of the identity check in it, stay. */
int change(const Crypto& crypto, std::optional<std::string>& content, Secret& from, Secret& to)
{
    if (!content)
        return SIGIL_SUCCESS;
    Bytes old(crypto.handle());
    Bytes fresh(crypto.handle());
    set(crypto, old, *content);
    const int code = PriKeyChangePasswd(crypto.handle(), from.chars(), to.chars(), old.get(), fresh.get());
    if (code == SIGIL_SUCCESS)
        content = view(fresh);
    return code;
}

/** @return a result of the library */
int opens(const Crypto& crypto, const std::optional<std::string>& content, Secret& password)
{
    if (!content)
        return SIGIL_SUCCESS;
    Bytes stored(crypto.handle());
    Bytes key(crypto.handle());
    set(crypto, stored, *content);
    return PriKeyDecrypt(crypto.handle(), password.chars(), stored.get(), key.get());
}

} // namespace

bool isKeyManagement(const std::string& path)
{
    const auto families = sigil::families();
    return std::any_of(families.begin(), families.end(),
        [&](const sigil::Family& family) { return isNamed(family.files, path, family.files.kmCert); });
}

Disk diskAt(const std::string& folder)
{
    if (folder.empty())
        return {sigil::environment().homeFolder(), SIGIL_MEDIUM_HARD_DISK};
    mustExist(folder);
    return {folder, SIGIL_MEDIUM_REMOVABLE_DISK};
}

PairFiles placeFor(const Certificate& certificate, const Disk& disk)
{
    const sigil::Family* family = sigil::familyWithCode(certificate.family);
    const std::string store = family ? storeFor(certificate, *family, disk.medium) : std::string();
    if (store.empty())
        throw Failure(failed, "no_place", noPlace, {certificate.subject});
    const std::vector<sigil::PairPaths> pairs = sigil::pairsOf(
        *family, sigil::SearchedFolder(disk.base + store), nameOf(certificate, family->files).c_str());
    PairFiles files{pairs[0].certificate, pairs[0].key, pairs[1].certificate, pairs[1].key};
    mustFit(files);
    return files;
}

PairContents contentsOf(const Certificate& certificate)
{
    mustHave(certificate, Pair::Sign);
    const auto content = [](const std::string& path) {
        return path.empty() ? std::optional<std::string>() : readFile(path);
    };
    return {certificate.der, content(certificate.files.key), content(certificate.files.kmCertificate),
        content(certificate.files.kmKey)};
}

PairFiles filePairs(const PairFiles& files, const PairContents& contents, bool replace)
{
    sigil::repairPairsIn(folderOf(files.certificate));
    struct stat status { };
    for (const std::string& path : all(files))
        if (!replace && lstat(path.c_str(), &status) == 0)
            throw Failure(failed, "file_exists", alreadyThere, {path});
    const Folder folder(folderOf(files.certificate));
    changePairs(files, contents);
    return thatAreThere(files, contents);
}

// The new certificates come when no key stands beside them, and the signing key comes last: whoever reads in between
// finds no certificate with a key of another.
void changePairs(const PairFiles& files, const PairContents& contents)
{
    errno = 0;
    sigil::UndoableFiles change({{files.certificate, files.key}, {files.kmCertificate, files.kmKey}});
    if (!change.begin())
        fail(files.certificate, errno == 0 ? EBUSY : errno);
    std::array<Draft, 4> drafts{
        Draft(files.kmCertificate), Draft(files.certificate), Draft(files.kmKey), Draft(files.key)};
    const std::array<const std::optional<std::string>*, 4> wanted{
        &contents.kmCertificate, &contents.certificate, &contents.kmKey, &contents.key};
    for (std::size_t i = 0; i < drafts.size(); ++i)
        if (*wanted.at(i))
            drafts.at(i).write(**wanted.at(i));
    if (!change.removeKeys())
        fail(files.key, errno);
    for (Draft& draft : drafts)
        draft.putInPlace();
    if (!change.keep())
        fail(files.certificate, errno);
    if (!contents.certificate && hasOwnFolder(files.certificate))
        static_cast<void>(rmdir(folderOf(files.certificate).c_str())); // stays when it holds something else
}

int opensAll(const Crypto& crypto, const PairContents& contents, Secret& password)
{
    const int code = opens(crypto, contents.key, password);
    return code == SIGIL_SUCCESS ? opens(crypto, contents.kmKey, password) : code;
}

void changePassword(const Crypto& crypto, PairContents& contents, Secret& from, Secret& to)
{
    crypto.check(change(crypto, contents.key, from, to));
    crypto.check(change(crypto, contents.kmKey, from, to));
}

} // namespace host
