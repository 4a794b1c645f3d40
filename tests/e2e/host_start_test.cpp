/* What vesk-host needs to start, and what it says where that is missing. */

#include <cstdlib>
#include <optional>
#include <sys/resource.h>

#include "host_fixture.h"

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class HostStart : public HostTest {
protected:
    HostStart()
    {
        for (const char *variable : kVariables) {
            const char *value = std::getenv(variable);
            before_.push_back(value ? std::optional<std::string>(value) : std::nullopt);
        }
        unsetenv("XDG_RUNTIME_DIR");
    }

    ~HostStart() override
    {
        for (size_t i = 0; i < std::size(kVariables); ++i)
            before_[i] ? setenv(kVariables[i], before_[i]->c_str(), 1) : unsetenv(kVariables[i]);
    }

    /* It ends with one sentence that holds `text` and leaves nothing in the home folder. */
    void expect_refused(const std::string &text)
    {
        const ProcessResult result = run({});
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err, AllOf(HasSubstr(text), Not(HasSubstr("FATAL"))));
        EXPECT_FALSE(fs::exists(picture_));
    }

private:
    static constexpr const char *kVariables[] = {"HOME", "XDG_RUNTIME_DIR"};
    std::vector<std::optional<std::string>> before_;
};

} // namespace

TEST_F(HostStart, AHomeThatIsNotThereIsNamed)
{
    const fs::path home = folder_ / "home";
    setenv("HOME", home.c_str(), 1);
    expect_refused(home.string() + " does not exist");
    EXPECT_FALSE(fs::exists(home));
}

TEST_F(HostStart, AHomeThatIsNotThereDoesNotMatterToASession)
{
    setenv("HOME", (folder_ / "home").c_str(), 1);
    fs::create_directory(folder_ / "session");
    fs::permissions(folder_ / "session", fs::perms::owner_all);
    setenv("XDG_RUNTIME_DIR", (folder_ / "session").c_str(), 1);
    EXPECT_EQ(run({}).exit_code, 0);
    EXPECT_TRUE(fs::exists(picture_));
}

TEST_F(HostStart, ARelativeHomeIsRefused)
{
    setenv("HOME", "vesk-home-of-a-test", 1);
    expect_refused("HOME is \"vesk-home-of-a-test\", which is no absolute path");
    EXPECT_FALSE(fs::exists("vesk-home-of-a-test"));
}

TEST_F(HostStart, TooFewFileDescriptorsAreTold)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few{16, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    expect_refused("ulimit -n 256");
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
}

TEST_F(HostStart, AGarbageSettingsFileIsToldOnceAndTheDefaultsHold)
{
    write_file(settings_, "no key file\n");
    const ProcessResult result = run({});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(size_of_png(picture_), std::make_pair(1920U, 1080U));
    const size_t first = result.err.find(settings_.string());
    ASSERT_NE(first, std::string::npos) << result.err;
    EXPECT_EQ(result.err.find(settings_.string(), first + 1), std::string::npos) << result.err;
}

TEST_F(HostStart, ASettingsFileThatIsMendedWhileItRunsTurnsThePanel)
{
    write_file(settings_, "no key file\n");
    start("Down");
    write_file(settings_, "[settings]\ndb/menu/onscreendisplay/display_orientation/onscreen_menu_orientation=1\n");
    EXPECT_TRUE(logged("ROTATION callback"));
}

TEST_F(HostStart, AMessageCannotSteerTheTerminal)
{
    setenv("HOME", (folder_ / "a\033[2J\u202eb").c_str(), 1);
    expect_refused("a\\x1b[2J\\u202eb does not exist");
}
