#include "port_fixture.h"

#include <cstdlib>
#include <fstream>
#include <glib.h>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

#include "desktop/log.h"
#include "desktop/port_failures.h"

namespace fs = std::filesystem;

namespace {

constexpr uid_t kNobody = 65534;

fs::path make_folder()
{
    std::string folder = fs::path(g_get_tmp_dir()) / "vesk-port-XXXXXX";
    if (!mkdtemp(folder.data()))
        throw std::runtime_error("no folder for the test");
    return fs::canonical(folder);
}

} // namespace

std::string veskctl_program()
{
    return VESKCTL;
}

ProcessResult veskctl(const std::vector<std::string> &arguments, const std::string &input)
{
    std::string program = veskctl_program();
    std::vector<std::string> words = arguments;
    std::vector<char *> argv{program.data()};
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    /* The input comes from a file, which cannot block the way a pipe can. */
    FILE *stream = std::tmpfile();
    std::fwrite(input.data(), 1, input.size(), stream);
    std::rewind(stream);
    ProcessResult result;
    int out = -1;
    int err = -1;
    GPid pid = 0;
    GError *error = nullptr;
    if (!g_spawn_async_with_pipes_and_fds(nullptr, argv.data(), nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr,
                                          fileno(stream), -1, -1, nullptr, nullptr, 0, &pid, nullptr, &out, &err,
                                          &error))
        throw std::runtime_error(error->message);
    std::fclose(stream);
    const auto read_all = [](int fd, std::string &text) {
        char buffer[4096];
        ssize_t length = 0;
        while ((length = read(fd, buffer, sizeof buffer)) > 0)
            text.append(buffer, static_cast<size_t>(length));
        close(fd);
    };
    read_all(out, result.out);
    read_all(err, result.err);
    int status = 0;
    waitpid(pid, &status, 0);
    result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

bool run_until(const std::function<bool()> &condition)
{
    bool expired = false;
    const auto expire = [](gpointer flag) -> gboolean {
        *static_cast<bool *>(flag) = true;
        return G_SOURCE_CONTINUE;
    };
    const unsigned limit = g_timeout_add(10000, expire, &expired);
    while (!condition() && !expired)
        g_main_context_iteration(nullptr, TRUE);
    g_source_remove(limit);
    return condition();
}

std::string contents_of(const fs::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write_file(const fs::path &file, const std::string &contents)
{
    std::ofstream(file, std::ios::binary) << contents;
}

Unprivileged::Unprivileged()
{
    if (getuid() == 0 && seteuid(kNobody) != 0)
        throw std::runtime_error("root cannot be given up");
}

Unprivileged::~Unprivileged()
{
    if (getuid() == 0 && seteuid(0) != 0)
        std::abort();
}

PortTest::PortTest() : folder_(make_folder())
{
    setenv("VESK_DEVICES", devices_.c_str(), 1);
    setenv("VESK_SETTINGS", settings_.c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    for (const char *variable : {"VESK_PRODUCT", "VESK_LOG", "VESK_LOG_LEVEL", "VESK_FAIL", "VESK_SERVICE",
                                 "VESK_BLUEZ_ADAPTER", "VESK_BLUEZ_KEEP"})
        unsetenv(variable);
    vesk_port::clear_failures();
    vesk_port::set_log_sink(
        [this](int, const std::string &tag, const std::string &text) { log_ += tag + ": " + text + "\n"; });
    vesk_port::set_log_level(vesk_port::log_level_of("off"));
}

PortTest::~PortTest()
{
    vesk_port::set_log_sink(nullptr);
    vesk_port::clear_failures();
    fs::remove_all(folder_);
}
