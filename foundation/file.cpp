#include "foundation/file.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace sigil {

namespace {

/** An open file; closed at the end of its life. */
class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor()
    {
        if (m_number >= 0)
            close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return m_number; }
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

/** The status of an open regular file; nothing for any other kind of file. */
std::optional<struct stat> regularFile(const Descriptor& file)
{
    struct stat status { };
    if (file.get() < 0 || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return status;
}

long writeAll(const Descriptor& file, std::string_view bytes)
{
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t n = write(file.get(), bytes.data() + written, bytes.size() - written);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        written += static_cast<std::size_t>(n);
    }
    return static_cast<long>(written);
}

} // namespace

File openForReading(const char* path)
{
    // Without O_NONBLOCK, opening a pipe that nobody writes to would wait for ever.
    Descriptor file(path ? open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1);
    if (!regularFile(file))
        return nullptr;
    File stream(fdopen(file.get(), "r"));
    if (stream) {
        file.release();
        static_cast<void>(std::setvbuf(stream.get(), nullptr, _IONBF, 0));
    }
    return stream;
}

long appendToLog(const std::string& path, LogOwner owner, std::string_view record)
{
    const int links = owner == LogOwner::userAlone ? O_NOFOLLOW : 0;
    const Descriptor file(open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | links, 0600));
    const auto status = regularFile(file);
    if (!status)
        return -1;
    // A file that another user has put there, or a second name of some other file, is not ours to write.
    if (owner == LogOwner::userAlone && (status->st_uid != geteuid() || status->st_nlink != 1))
        return -1;
    return writeAll(file, record);
}

} // namespace sigil
