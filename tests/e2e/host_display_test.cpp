/* vesk-host in a window. */

#include <csignal>

#include "host_display_fixture.h"

using testing::HasSubstr;

namespace {

/* Places of the panel. */
constexpr int kPopupX = 720; /* beside the list's title */
constexpr int kPopupY = 210;
constexpr int kToastX = 960;
constexpr int kToastY = 960;

class HostWindow : public HostDisplay {
protected:
    /* By the times of the log's lines, such as "23:59:58.123". */
    double seconds_between(const std::string &first, const std::string &second)
    {
        const auto time_of = [this](const std::string &text) {
            const auto log = host_log();
            const auto line = log.rfind('\n', log.find(text)) + 1;
            const auto number = [&](size_t at, size_t length) { return std::stod(log.substr(line + at, length)); };
            return number(0, 2) * 3600 + number(3, 2) * 60 + number(6, 6);
        };
        const double seconds = time_of(second) - time_of(first);
        return seconds < 0 ? seconds + 24 * 3600 : seconds;
    }
};

} // namespace

TEST_F(HostWindow, TheWindowShowsThePanelUntilItIsEnded)
{
    start_in_window({});
    ASSERT_TRUE(printed("Keys: arrows"));
    ASSERT_EQ(kill(pid(), SIGINT), 0);
    const ProcessResult result = finish();
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(host_log(), HasSubstr("VESK EXIT"));
}

TEST_F(HostWindow, ThePictureIsThePanelsWhateverTheWindowsSize)
{
    start_in_window({"--screenshot", picture_, "--keys", "Down"});
    EXPECT_EQ(finish().exit_code, 0);
    EXPECT_EQ(size_of_png(picture_), std::make_pair(1920U, 1080U));
}

TEST_F(HostWindow, WithoutAWindowManagerItFillsTheScreenAndHasTheKeyboard)
{
    start_in_window({});
    ASSERT_TRUE(printed("Keys: arrows"));
    EXPECT_TRUE(light_at(kPopupX, kPopupY));
    type("Down");
    ASSERT_TRUE(logged("key[Down]"));
    type("Escape");
    EXPECT_EQ(finish().exit_code, 0);
}

TEST_F(HostWindow, WithAWindowManagerTheWindowIsLeftToIt)
{
    manage_windows();
    start_in_window({});
    EXPECT_EQ(size_of_managed_window(), std::make_pair(1280, 720));
}

TEST_F(HostWindow, TheLastToastIsShownToItsEndWhateverIsTyped)
{
    start_in_window({"--keys", "Right Return Right Up Return Down Return Left Return"});
    ASSERT_TRUE(logged("VESK destroyed."));
    EXPECT_TRUE(dark_at(kPopupX, kPopupY)) << "the list has gone";
    EXPECT_TRUE(light_at(kToastX, kToastY)) << "the toast is up";
    ASSERT_TRUE(printed("Keys: arrows"));
    for (const char *key : {"Return", "Escape", "F4", "Down"})
        type(key);
    EXPECT_EQ(finish().exit_code, 0);
    EXPECT_GE(seconds_between("VESK destroyed.", "VESK EXIT"), 2.5);
}
