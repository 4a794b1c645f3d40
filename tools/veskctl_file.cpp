#include "veskctl_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "desktop/paths.h"
#include "desktop/port_error.h"
#include "desktop/text.h"

namespace veskctl {

using vesk_port::in_quotes;
using vesk_port::PortError;

namespace {

constexpr size_t kPiece = 65536;
constexpr mode_t kNewFileMode = 0666; /* less the user's mask */

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor()
    {
        if (fd_ > STDERR_FILENO)
            ::close(fd_);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    operator int() const { return fd_; }

    /* What could not be written may be told only now. */
    bool close()
    {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd) == 0;
    }

private:
    int fd_;
};

[[noreturn]] void fail_to_write(const std::string &file, int error)
{
    throw PortError(-error, "the file " + in_quotes(file) + " cannot be written: " + std::strerror(error) +
                                "; name another one, or - for the standard output");
}

[[noreturn]] void fail_to_read(const std::string &source, int error)
{
    throw PortError(-error, source + " cannot be read: " + std::strerror(error) +
                                "; name a file that veskctl devices export has written, or - for the standard input");
}

bool write_all(int fd, const std::string &text)
{
    for (size_t written = 0; written < text.size();) {
        const ssize_t piece = write(fd, text.data() + written, text.size() - written);
        if (piece < 0 && errno != EINTR)
            return false;
        written += piece > 0 ? static_cast<size_t>(piece) : 0;
    }
    return true;
}

/* Room is taken before the first byte of the old contents is gone. */
bool overwrite(int fd, const struct stat &old, const std::string &text)
{
    const auto size = static_cast<off_t>(text.size());
    if (const int error = size > old.st_size ? posix_fallocate(fd, 0, size) : 0) {
        const bool restored = ftruncate(fd, old.st_size) == 0;
        errno = restored ? error : errno;
        return false;
    }
    return write_all(fd, text) && ftruncate(fd, size) == 0;
}

/* Writing the list over the table would destroy both. */
void refuse_device_database(const std::string &file, const struct stat &target)
{
    struct stat database {};
    if (stat(vesk_port::devices_file().c_str(), &database) == 0 && database.st_dev == target.st_dev &&
        database.st_ino == target.st_ino)
        throw PortError(-EINVAL, "the file " + in_quotes(file) + " is the device database itself; name another one");
}

} // namespace

std::string contents_of(const std::string &file)
{
    const std::string source = file == "-" ? "the standard input" : "the file " + in_quotes(file);
    const Descriptor fd(file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (fd < 0)
        fail_to_read(source, errno);
    std::string contents;
    for (size_t length = 0;;) {
        contents.resize(length + kPiece);
        const ssize_t piece = read(fd, contents.data() + length, kPiece);
        if (piece < 0 && errno != EINTR)
            fail_to_read(source, errno);
        length += piece > 0 ? static_cast<size_t>(piece) : 0;
        contents.resize(length);
        if (piece == 0)
            return contents;
    }
}

void write_contents(const std::string &file, const std::string &text)
{
    int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, kNewFileMode);
    const bool made = opened >= 0;
    if (!made && errno == EEXIST)
        opened = open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    Descriptor fd(opened);
    struct stat target {};
    if (fd < 0 || fstat(fd, &target) != 0)
        fail_to_write(file, errno);
    refuse_device_database(file, target);
    const bool written = S_ISREG(target.st_mode) ? overwrite(fd, target, text) : write_all(fd, text);
    if (written && fd.close())
        return;
    const int error = errno;
    if (made)
        unlink(file.c_str());
    fail_to_write(file, error);
}

} // namespace veskctl
