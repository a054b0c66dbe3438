#include "toolkit/engine/base/file.h"

#include "toolkit/engine/base/error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace toolkit {
namespace {

[[noreturn]] void failWithErrno(int code) { fail(code, std::generic_category().message(errno)); }

/** A regular file open for reading. */
class OpenFile {
public:
    explicit OpenFile(const std::string& path)
        : m_descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY))
    {
        if (m_descriptor < 0)
            failWithErrno(errno == ENOENT || errno == ENOTDIR ? SIGIL_TK_FILE_NOT_FOUND : SIGIL_TK_FILE_READ);
        struct stat status { };
        if (fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
            close(m_descriptor);
            fail(SIGIL_TK_FILE_READ, "not a regular file");
        }
        m_size = static_cast<std::size_t>(status.st_size);
    }
    ~OpenFile() { close(m_descriptor); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /** Its size when it was opened. */
    std::size_t size() const { return m_size; }

    /** Bytes read; 0 at the end. */
    std::size_t read(std::span<unsigned char> room) const
    {
        ssize_t count = 0;
        do
            count = ::read(m_descriptor, room.data(), room.size());
        while (count < 0 && errno == EINTR);
        if (count < 0)
            failWithErrno(SIGIL_TK_FILE_READ);
        return static_cast<std::size_t>(count);
    }

private:
    int m_descriptor;
    std::size_t m_size = 0;
};

void readAll(const OpenFile& file, const std::function<void(View)>& take)
{
    Secret piece(64UL * 1024);
    while (const std::size_t count = file.read(piece))
        take(View(piece).first(count));
}

} // namespace

void readPieces(const std::string& path, const std::function<void(View)>& take) { readAll(OpenFile(path), take); }

Secret readFile(const std::string& path)
{
    const OpenFile file(path);
    const auto requireSize = [](std::size_t size) {
        require(size <= maximumFileSize, SIGIL_TK_FILE_READ, "the file is too large");
    };
    requireSize(file.size());
    Secret bytes;
    bytes.reserve(file.size());
    readAll(file, [&](View piece) { // a file may grow while it is read
        requireSize(bytes.size() + piece.size());
        bytes.insert(bytes.end(), piece.begin(), piece.end());
    });
    return bytes;
}

void writeFile(const std::string& path, View bytes)
{
    FileWriter file(path);
    file.write(bytes);
    file.commit();
}

void deleteFile(const std::string& path)
{
    if (unlink(path.c_str()) != 0)
        failWithErrno(errno == ENOENT || errno == ENOTDIR ? SIGIL_TK_FILE_NOT_FOUND : SIGIL_TK_FILE_DELETE);
}

FileWriter::FileWriter(const std::string& path)
    : m_path(path)
    , m_temporary(path + ".XXXXXX")
    , m_descriptor(mkostemp(m_temporary.data(), O_CLOEXEC)) // mkostemp makes the file with mode 0600
{
    if (m_descriptor < 0)
        failWithErrno(SIGIL_TK_FILE_WRITE);
}

FileWriter::~FileWriter()
{
    if (m_descriptor < 0)
        return;
    close(m_descriptor);
    unlink(m_temporary.c_str());
}

void FileWriter::write(View bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            failWithErrno(SIGIL_TK_FILE_WRITE);
        bytes = bytes.subspan(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

void FileWriter::commit()
{
    if (fsync(m_descriptor) != 0 || rename(m_temporary.c_str(), m_path.c_str()) != 0)
        failWithErrno(SIGIL_TK_FILE_WRITE);
    close(m_descriptor);
    m_descriptor = -1;
}

} // namespace toolkit
