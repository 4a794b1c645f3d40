#include "regular_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "port_error.h"
#include "text.h"

namespace vesk_port {

namespace {

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor()
    {
        if (fd_ >= 0)
            close(fd_);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int get() const { return fd_; }

private:
    int fd_;
};

} // namespace

std::optional<std::string> read_regular_file(const std::filesystem::path &file, const std::string &what,
                                             const std::string &advice)
{
    const auto failure = [&](int code, const std::string &reason) {
        return PortError(code,
                         "the " + what + " " + escaped(file.string()) + " cannot be read: " + reason + ". " + advice);
    };
    /* A pipe without a writer would keep a plain open() waiting. */
    const Descriptor descriptor(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (descriptor.get() < 0 && errno == ENOENT)
        return std::nullopt;
    struct stat found {};
    if (descriptor.get() < 0 || fstat(descriptor.get(), &found) != 0)
        throw failure(-errno, std::strerror(errno));
    if (!S_ISREG(found.st_mode))
        throw failure(-EIO, "it is no regular file");

    std::string contents;
    std::array<char, 4096> buffer;
    for (;;) {
        const ssize_t length = read(descriptor.get(), buffer.data(), buffer.size());
        if (length == 0)
            return contents;
        if (length < 0 && errno != EINTR)
            throw failure(-errno, std::strerror(errno));
        if (length > 0)
            contents.append(buffer.data(), static_cast<size_t>(length));
    }
}

} // namespace vesk_port
