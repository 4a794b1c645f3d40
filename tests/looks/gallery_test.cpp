/* The gallery as a program. */

#include <charconv>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gio/gio.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#include "owned.h"

namespace {

namespace fs = std::filesystem;
using vesk::looks::Owned;

constexpr int kLimitMs = 30'000;

Owned<GSubprocess> gallery(std::vector<const char *> arguments)
{
    static const std::string program = fs::read_symlink("/proc/self/exe").parent_path() / "vesk-gallery";
    arguments.insert(arguments.begin(), program.c_str());
    arguments.push_back(nullptr);
    return Owned<GSubprocess>(g_subprocess_newv(arguments.data(), G_SUBPROCESS_FLAGS_STDOUT_PIPE, nullptr));
}

std::vector<pid_t> children_of(pid_t process)
{
    std::vector<pid_t> children;
    for (const auto &entry : fs::directory_iterator("/proc")) {
        pid_t child = 0;
        const auto name = entry.path().filename().string();
        if (std::from_chars(name.data(), name.data() + name.size(), child).ec != std::errc())
            continue;
        std::ifstream file(entry.path() / "stat");
        std::string stat;
        std::getline(file, stat);
        int parent = 0;
        if (const auto end = stat.rfind(')'); end != stat.npos)
            std::sscanf(stat.c_str() + end, ") %*c %d", &parent);
        if (parent == process)
            children.push_back(child);
    }
    return children;
}

bool ends(pid_t process)
{
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (handle < 0)
        return true; /* it has ended */
    pollfd ended{handle, POLLIN, 0};
    const bool has_ended = poll(&ended, 1, kLimitMs) == 1;
    close(handle);
    return has_ended;
}

TEST(Gallery, OnlyTakesSeveralNames)
{
    const auto process = gallery({"--list", "--only", "empty.board.wide.en_GB", "one-row.board.tall.ar_AE"});
    g_autofree char *output = nullptr;
    ASSERT_TRUE(g_subprocess_communicate_utf8(process.get(), nullptr, nullptr, &output, nullptr, nullptr));
    EXPECT_EQ(g_subprocess_get_exit_status(process.get()), 0);
    EXPECT_STREQ(output, "empty.board.wide.en_GB\n"
                         "empty.board.wide.en_GB.contrast\n"
                         "one-row.board.tall.ar_AE\n"
                         "one-row.board.tall.ar_AE.contrast\n"
                         "empty.board.wide.en_GB.large\n");
}

TEST(Gallery, ALanguageMayHaveAScript)
{
    const auto process = gallery({"--list", "--only", "empty.board.wide", "--language", "sr_RS@latin"});
    g_autofree char *output = nullptr;
    ASSERT_TRUE(g_subprocess_communicate_utf8(process.get(), nullptr, nullptr, &output, nullptr, nullptr));
    EXPECT_STREQ(output, "empty.board.wide.sr_RS@latin\nempty.board.wide.sr_RS@latin.contrast\n");
}

TEST(Gallery, ItsProcessesEndWhenItIsKilled)
{
    prctl(PR_SET_CHILD_SUBREAPER, 1); /* what it leaves behind comes here */
    const auto out = fs::temp_directory_path() / ("vesk-gallery-test-" + std::to_string(getpid()));
    const auto process = gallery({"--out", out.c_str(), "--only", "television.wide.de_DE.contrast"});
    /* It tells of the first pictures. */
    char letter = 0;
    ASSERT_EQ(g_input_stream_read(g_subprocess_get_stdout_pipe(process.get()), &letter, 1, nullptr, nullptr), 1);
    const auto workers = children_of(std::stoi(g_subprocess_get_identifier(process.get())));
    EXPECT_EQ(workers.size(), 2U);
    g_subprocess_force_exit(process.get());
    for (const pid_t worker : workers)
        EXPECT_TRUE(ends(worker)) << worker;
    fs::remove_all(out);
}

} // namespace
