/* What vesk-host says on the panel and on the terminal about what has failed. */

#include <csignal>

#include "host_display_fixture.h"

using testing::AllOf;
using testing::HasSubstr;

namespace fs = std::filesystem;

namespace {

/* A place in the line at the panel's upper edge; the programme is dark there. */
constexpr int kLineX = 10;
constexpr int kLineY = 30;

class HostNotice : public HostDisplay {
protected:
    ~HostNotice() override
    {
        unsetenv("VESK_SHARE");
        unsetenv("VESK_FAIL");
    }

    /* The program's files in a folder of the test's own; `changed` is a copy, and the others are links. */
    fs::path share_with(const fs::path &changed)
    {
        const auto original = fs::canonical(fs::path(VESK_HOST).parent_path() / "../share/vesk");
        const auto share = folder_ / "share";
        auto here = original;
        auto copy = share;
        for (const auto &name : changed) {
            fs::create_directories(copy);
            for (const auto &entry : fs::directory_iterator(here)) {
                if (entry.path().filename() != name)
                    fs::create_symlink(entry.path(), copy / entry.path().filename());
            }
            here /= name;
            copy /= name;
        }
        fs::copy_file(here, copy);
        setenv("VESK_SHARE", share.c_str(), 1);
        return copy;
    }

    void expect_told(const std::vector<std::string> &parts)
    {
        EXPECT_TRUE(light_at(kLineX, kLineY));
        EXPECT_EQ(kill(pid(), SIGTERM), 0);
        const ProcessResult result = finish();
        EXPECT_EQ(result.exit_code, 0);
        for (const auto &part : parts)
            EXPECT_THAT(result.err, HasSubstr(part));
    }
};

} // namespace

TEST_F(HostNotice, AnUnreadableStoreIsTold)
{
    write_file(devices_, "this is no database");
    start_in_window({});
    expect_told({devices_.string(), "move it away"});
}

TEST_F(HostNotice, AStoreThatFailsLaterIsToldUntilItCanBeReadAgain)
{
    start_in_window({});
    EXPECT_TRUE(dark_at(kLineX, kLineY)) << "nothing has failed";
    const auto good = folder_ / "good.db";
    fs::copy_file(devices_, good);
    write_file(folder_ / "bad.db", "this is no database");
    fs::rename(folder_ / "bad.db", devices_);
    EXPECT_TRUE(light_at(kLineX, kLineY));
    fs::rename(good, devices_);
    EXPECT_TRUE(dark_at(kLineX, kLineY));
}

TEST_F(HostNotice, AModuleThatClosesForWantOfDevicesLeavesTheReasonOnThePanel)
{
    setenv("VESK_FAIL", "rdm_get_list=-5@2", 1);
    start_in_window({"--keys", "Right Return Return Right Return Left"});
    ASSERT_TRUE(printed("Keys: arrows"));
    type("Return");
    ASSERT_TRUE(logged("VESK EXIT"));
    EXPECT_TRUE(light_at(kLineX, kLineY));
    type("Return");
    const ProcessResult result = finish();
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr("rdm_get_list"));
}

TEST_F(HostNotice, AMissingPictureIsTold)
{
    const auto picture = share_with("pictures/r_icon_convergence/r_icon_convergence_gamepad.webp");
    fs::remove(picture);
    start_in_window({"--keys", "Down Down Down Down Down Down Down Down Down Down"});
    expect_told({"picture", "gamepad", "is missing; install VESK again"});
}

TEST_F(HostNotice, ADamagedPictureIsTold)
{
    write_file(share_with("pictures/programme.png"), "no picture");
    start_in_window({});
    expect_told({"programme", "is damaged; install VESK again"});
}

TEST_F(HostNotice, ADamagedCatalogueIsToldAndNotUsed)
{
    const auto catalogue = share_with("locale/ko/LC_MESSAGES/ug-VeskUG-efl.mo");
    fs::resize_file(catalogue, fs::file_size(catalogue) / 2);
    start_in_window({"--language", "ko_KR"});
    expect_told({catalogue.string() + " is damaged", "they are shown in English"});
}

TEST_F(HostNotice, ALanguageWithoutTextsIsTold)
{
    start_in_window({"--language", "xx_XX"});
    expect_told({"there are no texts in the language \"xx_XX\""});
}

/* The line has the toolkit's own look then. */
TEST_F(HostNotice, AThemeThatIsDamagedOrMissingIsTold)
{
    const auto theme = share_with("theme/vesk.edj");
    for (const char *state : {"damaged", "missing"}) {
        if (state == std::string("missing"))
            fs::remove(theme);
        else
            write_file(theme, "no theme");
        const ProcessResult result = run({});
        EXPECT_EQ(result.exit_code, 0);
        EXPECT_THAT(result.err, AllOf(HasSubstr(theme.string() + " is " + state), HasSubstr("install VESK again")));
    }
}
