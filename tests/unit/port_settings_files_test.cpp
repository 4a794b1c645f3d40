/* Settings files that cannot be used, and what can go wrong while one is written. */

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <glib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include "desktop/port_error.h"
#include "desktop/settings.h"
#include "port_fixture.h"
#include "vconf.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::Not;
using vesk_port::PortError;

namespace {

const char *const kOrientation = vesk_port::kOrientationSetting.key;
const char *const kLanguage = vesk_port::kLanguageSetting.key;

void count(keynode_t *, void *calls)
{
    ++*static_cast<int *>(calls);
}

class PortSettingsFiles : public PortTest {
protected:
    ~PortSettingsFiles() override { vesk_port::forget_setting_watches(); }

    size_t lines_about_the_file() const
    {
        size_t lines = 0;
        for (size_t at = log().find(settings_.string()); at != std::string::npos;
             at = log().find(settings_.string(), at + 1))
            ++lines;
        return lines;
    }

    size_t files_in_the_folder() const
    {
        return static_cast<size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }
};

/* veskctl on a disk that takes no byte more: a write fails, as it does on a full one. */
ProcessResult veskctl_on_a_full_disk(const std::string &arguments)
{
    const std::string command = "trap '' XFSZ; ulimit -f 0; exec \"" + veskctl_program() + "\" " + arguments;
    char *out = nullptr;
    char *err = nullptr;
    int status = 0;
    const char *argv[] = {"/bin/sh", "-c", command.c_str(), nullptr};
    EXPECT_TRUE(g_spawn_sync(nullptr, const_cast<char **>(argv), nullptr, G_SPAWN_DEFAULT, nullptr, nullptr, &out, &err,
                             &status, nullptr));
    const ProcessResult result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, out, err};
    g_free(out);
    g_free(err);
    return result;
}

} // namespace

TEST_F(PortSettingsFiles, AFileThatIsGarbageAtStartIsFollowedOnceItIsMended)
{
    write_file(settings_, "no key file\n");
    int calls = 0;
    ASSERT_EQ(vconf_notify_key_changed(kOrientation, count, &calls), 0);
    write_file(settings_, std::string("[settings]\n") + kOrientation + "=1\n");
    EXPECT_TRUE(run_until([&] { return calls == 1; }));
    int orientation = 0;
    EXPECT_EQ(vconf_get_int(kOrientation, &orientation), 0);
    EXPECT_EQ(orientation, 1);
}

TEST_F(PortSettingsFiles, WhyAFileCannotBeReadIsToldOnceForEachTime)
{
    int orientation = 0;
    write_file(settings_, "no key file\n");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(vconf_get_int(kOrientation, &orientation), -EIO);
    EXPECT_EQ(vconf_get_str(kLanguage), nullptr);
    EXPECT_EQ(lines_about_the_file(), 1U) << log();
    write_file(settings_, "[settings]\n");
    EXPECT_EQ(vconf_get_int(kOrientation, &orientation), 0);
    write_file(settings_, "no key file\n");
    EXPECT_EQ(vconf_get_int(kOrientation, &orientation), -EIO);
    EXPECT_EQ(lines_about_the_file(), 2U) << log();
}

TEST_F(PortSettingsFiles, APipeInTheFilesPlaceIsRefusedAtOnce)
{
    ASSERT_EQ(mkfifo(settings_.c_str(), 0600), 0);
    int orientation = 5;
    EXPECT_EQ(vconf_get_int(kOrientation, &orientation), -EIO);
    EXPECT_THAT(log(), HasSubstr(settings_.string() + " cannot be read: it is no regular file"));
    EXPECT_THROW(vesk_port::write_setting(kOrientation, "1"), PortError);
    EXPECT_TRUE(fs::is_fifo(settings_));
    EXPECT_EQ(veskctl({"settings", "get"}).exit_code, 1);
}

TEST_F(PortSettingsFiles, AKeyOrValueThatIsNoUtf8IsRefused)
{
    vesk_port::write_setting(kOrientation, "1");
    const std::string before = contents_of(settings_);
    EXPECT_THROW(vesk_port::setting_key("db/\xff"), PortError);
    EXPECT_THROW(vesk_port::setting_key("db/a\tb"), PortError);
    EXPECT_THROW(vesk_port::write_setting("db/\xff", "1"), PortError);
    EXPECT_THROW(vesk_port::write_setting("db/a", "\xff"), PortError);
    EXPECT_EQ(veskctl({"settings", "set", "db/a", "caf\xe9"}).exit_code, 1);
    EXPECT_THAT(veskctl({"settings", "set", "db/\xff", "1"}).err, HasSubstr("db/\\xff"));
    EXPECT_EQ(contents_of(settings_), before);
}

TEST_F(PortSettingsFiles, AStoredValueThatIsNoUtf8IsNamedAndTheRestIsRead)
{
    write_file(settings_, std::string("[settings]\n") + kLanguage + "=caf\xe9\n" + kOrientation + "=1\n");
    EXPECT_EQ(vconf_get_str(kLanguage), nullptr);
    EXPECT_THAT(log(), HasSubstr(kLanguage));
    EXPECT_THAT(log(), HasSubstr(settings_.string()));
    int orientation = 0;
    EXPECT_EQ(vconf_get_int(kOrientation, &orientation), 0);
    EXPECT_EQ(orientation, 1);
}

TEST_F(PortSettingsFiles, AFullDiskLeavesTheFileAsItIsAndNothingElse)
{
    vesk_port::write_setting(kOrientation, "0");
    const std::string before = contents_of(settings_);
    const size_t files = files_in_the_folder();
    const ProcessResult result = veskctl_on_a_full_disk("settings set orientation portrait");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr(settings_.string() + " cannot be written"));
    EXPECT_EQ(contents_of(settings_), before);
    EXPECT_EQ(files_in_the_folder(), files);
    EXPECT_EQ(veskctl_on_a_full_disk("settings get orientation").out, "landscape\n");
}

namespace {

constexpr int kSignalsWhileLocked = 3;
int lock_of_another = -1;
volatile sig_atomic_t signals = 0;

void count_and_unlock(int)
{
    signals = signals + 1;
    if (signals == kSignalsWhileLocked)
        flock(lock_of_another, LOCK_UN);
}

} // namespace

TEST_F(PortSettingsFiles, AWriterWaitsForTheLockThroughSignals)
{
    lock_of_another = open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(lock_of_another, LOCK_EX), 0);
    signals = 0;
    struct sigaction interrupt {};
    interrupt.sa_handler = count_and_unlock; /* and no SA_RESTART: the wait ends with EINTR */
    struct sigaction before {};
    ASSERT_EQ(sigaction(SIGALRM, &interrupt, &before), 0);
    const itimerval often{{0, 20'000}, {0, 20'000}};
    const itimerval never{};
    setitimer(ITIMER_REAL, &often, nullptr);
    vesk_port::write_setting(kOrientation, "1");
    const int signals_before_the_write = signals;
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    close(lock_of_another);
    EXPECT_GE(signals_before_the_write, kSignalsWhileLocked);
    EXPECT_THAT(contents_of(settings_), HasSubstr("=1"));
}
