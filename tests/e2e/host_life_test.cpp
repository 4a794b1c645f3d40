/* The life of vesk-host: its start without a display, its ends, and what other processes do meanwhile. */

#include <csignal>

#include "host_fixture.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class HostLife : public HostTest {
protected:
    void expect_clean_end_on(int signal)
    {
        start();
        ASSERT_EQ(kill(pid(), signal), 0);
        const ProcessResult result = finish();
        EXPECT_EQ(result.exit_code, 0);
        EXPECT_THAT(result.err, IsEmpty());
        EXPECT_THAT(host_log(), AllOf(HasSubstr("VESK destroyed."), HasSubstr("VESK EXIT")));
    }
};

} // namespace

TEST_F(HostLife, WithoutADisplayThePictureIsWrittenAndNamed)
{
    const ProcessResult result = run({});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.out, picture_.string() + "\n");
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_EQ(size_of_png(picture_), std::make_pair(1920U, 1080U));
    EXPECT_GT(std::filesystem::file_size(picture_), 50'000U) << "the panel is empty";
}

TEST_F(HostLife, InterruptEndsItCleanly)
{
    expect_clean_end_on(SIGINT);
}

TEST_F(HostLife, TerminationEndsItCleanly)
{
    expect_clean_end_on(SIGTERM);
}

TEST_F(HostLife, AModuleThatNeverReturnsDoesNotKeepItFromEnding)
{
    start("", {"--module", STUCK_MODULE});
    ASSERT_EQ(kill(pid(), SIGTERM), 0);
    const ProcessResult result = finish();
    EXPECT_EQ(result.exit_code, 128 + SIGTERM);
    EXPECT_THAT(result.err, HasSubstr("did not come to its end"));
}

TEST_F(HostLife, AChangeFromOutsideIsShownInTheOpenList)
{
    start();
    ASSERT_EQ(veskctl({"devices", "set", "Nora's phone", "deny"}).exit_code, 0);
    EXPECT_TRUE(logged("ListRefreshed [12]"));
}

TEST_F(HostLife, AnEmptiedTableEndsIt)
{
    start();
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    EXPECT_EQ(finish().exit_code, 0);
    EXPECT_THAT(host_log(), HasSubstr("VESK EXIT"));
}

TEST_F(HostLife, AnEmptyTableIsAScreenThatCanBeClosed)
{
    ASSERT_EQ(veskctl({"devices", "clear"}).exit_code, 0);
    ASSERT_EQ(play("Up Left Down Right Return").exit_code, 0);
    EXPECT_THAT(host_log(), AllOf(HasSubstr("[VESKAUTOTC][DELETEALL]"), HasSubstr("VESK EXIT")));
}

TEST_F(HostLife, TheSettingTurnsThePanelWhileItRuns)
{
    start("Down", {"--orientation", "landscape"});
    ASSERT_EQ(veskctl({"settings", "set", "orientation", "portrait"}).exit_code, 0);
    ASSERT_TRUE(logged("ROTATION callback"));
    ASSERT_EQ(kill(pid(), SIGTERM), 0);
    EXPECT_EQ(finish().exit_code, 0);
}

TEST_F(HostLife, AFailingServiceIsToldAndTheScreenIsEmpty)
{
    setenv("VESK_FAIL", "rdm_get_list=-5", 1);
    const ProcessResult result = run({});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr("rdm_get_list"));
    EXPECT_EQ(size_of_png(picture_), std::make_pair(1920U, 1080U));
}

TEST_F(HostLife, ACorruptDeviceFileIsNamedAndKept)
{
    write_file(devices_, "this is no database");
    const ProcessResult result = run({});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr(devices_.string()));
    EXPECT_EQ(contents_of(devices_), "this is no database");
}
