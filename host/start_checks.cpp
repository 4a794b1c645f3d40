#include "start_checks.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

#include "desktop/paths.h"
#include "desktop/text.h"

namespace vesk {

namespace {

/* The panel alone uses about 45; the rest is for a display and a synthesiser. */
constexpr size_t kDescriptors = 64;

bool is_folder(const char *path)
{
    std::error_code ignored;
    return path && std::filesystem::is_directory(path, ignored);
}

void check_home()
{
    const auto home = vesk_port::home_folder();
    setenv("HOME", home.c_str(), 1);
    /* The toolkit keeps what lasts as long as a session in one of the two. */
    if (!is_folder(home.c_str()) && !is_folder(std::getenv("XDG_RUNTIME_DIR")))
        throw std::runtime_error("the home folder " + vesk_port::escaped(home.string()) +
                                 " does not exist; make it, or name another in HOME.");
}

/* Counts what can really be opened: others may have left descriptors open to this process. */
void check_descriptors()
{
    std::vector<int> opened;
    int error = 0;
    while (opened.size() < kDescriptors && error == 0) {
        const int fd = open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (fd >= 0)
            opened.push_back(fd);
        else
            error = errno;
    }
    for (const int fd : opened)
        close(fd);
    if (error == 0)
        return;
    throw std::runtime_error("only " + std::to_string(opened.size()) + " more files can be opened (" +
                             std::strerror(error) + "); allow at least " + std::to_string(kDescriptors) +
                             ", with: ulimit -n 256");
}

} // namespace

void check_start()
{
    vesk_port::devices_file();
    vesk_port::settings_file();
    check_home();
    check_descriptors();
}

} // namespace vesk
