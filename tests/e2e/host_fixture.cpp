#include "host_fixture.h"

#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kPollMs = 10;

bool names(const std::vector<std::string> &arguments, const std::string &option)
{
    return std::ranges::find(arguments, option) != arguments.end();
}

} // namespace

HostTest::HostTest()
{
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("LANGUAGE");
    setenv("TMPDIR", folder_.c_str(), 1);
}

HostTest::~HostTest()
{
    if (pid_) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    unsetenv("TMPDIR");
    if (HasFailure())
        std::cerr << "--- the host's log\n"
                  << host_log() << "--- its standard error\n"
                  << contents_of(folder_ / "err") << "---\n";
}

void HostTest::spawn(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), VESK_HOST);
    std::vector<char *> argv;
    for (std::string &word : arguments)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    const auto stream = [this](const char *name) {
        return open((folder_ / name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    };
    const int out = stream("out");
    const int err = stream("err");
    ASSERT_TRUE(g_spawn_async_with_fds(nullptr, argv.data(), nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr,
                                       &pid_, -1, out, err, nullptr));
    close(out);
    close(err);
}

bool HostTest::wait_until(const std::function<bool()> &condition)
{
    const auto look_again = [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; };
    const unsigned poll = g_timeout_add(kPollMs, look_again, nullptr);
    const bool held = run_until(condition);
    g_source_remove(poll);
    return held;
}

ProcessResult HostTest::finish()
{
    int status = 0;
    const auto ended = [&] { return waitpid(pid_, &status, WNOHANG) != 0; };
    EXPECT_TRUE(wait_until(ended)) << "vesk-host does not end";
    ProcessResult result;
    result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = contents_of(folder_ / "out");
    result.err = contents_of(folder_ / "err");
    pid_ = 0;
    return result;
}

ProcessResult HostTest::run(std::vector<std::string> arguments)
{
    for (const char *option : {"--no-display", "--no-animations"})
        arguments.emplace_back(option);
    if (!names(arguments, "--screenshot"))
        arguments.insert(arguments.end(), {"--screenshot", picture_});
    return run_as_given(arguments);
}

ProcessResult HostTest::run_as_given(const std::vector<std::string> &arguments)
{
    spawn(arguments);
    return finish();
}

ProcessResult HostTest::play(const std::string &keys, std::vector<std::string> arguments)
{
    arguments.insert(arguments.end(), {"--keys", keys, "--log", folder_ / "host.log"});
    return run(arguments);
}

void HostTest::start(const std::string &keys, std::vector<std::string> arguments)
{
    arguments.insert(arguments.end(), {"--no-display", "--no-animations", "--screenshot", picture_, "--log",
                                       folder_ / "host.log", "--keys", keys + " wait:60000"});
    spawn(arguments);
    ASSERT_TRUE(logged("VESK started."));
}

void HostTest::start_in_window(std::vector<std::string> arguments)
{
    arguments.insert(arguments.end(), {"--no-animations", "--log", folder_ / "host.log"});
    spawn(arguments);
    ASSERT_TRUE(logged("VESK started."));
}

testing::AssertionResult HostTest::logged(const std::string &text)
{
    return written("host.log", text);
}

testing::AssertionResult HostTest::printed(const std::string &text)
{
    return written("out", text);
}

testing::AssertionResult HostTest::written(const char *file, const std::string &text)
{
    if (wait_until([&] { return contents_of(folder_ / file).find(text) != std::string::npos; }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "no line with \"" << text << "\" in:\n" << contents_of(folder_ / file);
}

std::string HostTest::status_of(const std::string &name)
{
    std::istringstream table(veskctl({"devices", "list"}).out);
    for (std::string line; std::getline(table, line);) {
        if (line.ends_with("  " + name))
            return line.find("  deny  ") != std::string::npos ? "deny" : "allow";
    }
    return "";
}

std::pair<unsigned, unsigned> size_of_png(const std::filesystem::path &file)
{
    const std::string bytes = contents_of(file);
    if (bytes.size() < 24 || bytes.substr(1, 3) != "PNG")
        return {0, 0};
    const auto number = [&](size_t at) {
        unsigned value = 0;
        for (size_t i = at; i < at + 4; ++i)
            value = value << 8 | static_cast<unsigned char>(bytes[i]);
        return value;
    };
    return {number(16), number(20)};
}
