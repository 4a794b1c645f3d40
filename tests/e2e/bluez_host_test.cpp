/* vesk-host --service bluez with a mock of bluetoothd on a private bus: keys arrive there, and its changes on the
 * panel. */

#include "bluez_mock.h"
#include "host_fixture.h"

using testing::HasSubstr;

namespace {

struct BluezHost : HostTest {
    BluezHost()
    {
        mock.start_bus();
        mock.start_daemon();
        mock.add_adapter();
        mock.add_paired(1, "First");
        mock.add_paired(2, "Second");
    }

    const std::vector<std::string> bluez{"--service", "bluez"};
    BluezMock mock{folder_};
};

} // namespace

TEST_F(BluezHost, AChoiceDeniesTheDeviceAndTheNextAllowsIt)
{
    ASSERT_EQ(play("Down Return Down Return wait:300", bluez).exit_code, 0);
    EXPECT_THAT(host_log(), HasSubstr("[VESKAUTOTC][DENY]"));
    EXPECT_TRUE(mock.is_blocked(2));
    EXPECT_FALSE(mock.is_blocked(1));
    /* Denied ones stand behind, so it is the second row still. */
    ASSERT_EQ(play("Down Return Up Return wait:300", bluez).exit_code, 0);
    EXPECT_THAT(host_log(), HasSubstr("[VESKAUTOTC][ALLOW]"));
    EXPECT_FALSE(mock.is_blocked(2));
}

TEST_F(BluezHost, ADeviceIsDeletedWithYes)
{
    ASSERT_EQ(play("Right Return Return Right Return Left Return wait:100", bluez).exit_code, 0);
    EXPECT_THAT(host_log(), HasSubstr("[VESKAUTOTC][DELETE]"));
    EXPECT_FALSE(mock.is_there(1));
    EXPECT_TRUE(mock.is_there(2));
}

TEST_F(BluezHost, APairingAppearsInTheOpenList)
{
    start("", bluez);
    EXPECT_THAT(host_log(), HasSubstr("RDM Count is 2"));
    mock.add_paired(3, "Visitor");
    EXPECT_TRUE(logged("NAME[Visitor]"));
}

TEST_F(BluezHost, AnUnknownServiceIsMisuse)
{
    const ProcessResult result = run({"--service", "pigeon"});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.err, HasSubstr("unknown service \"pigeon\"; use sqlite or bluez"));
}

TEST_F(BluezHost, AVariableThatNamesNoAddressIsRefused)
{
    setenv("VESK_BLUEZ_KEEP", "my remote", 1);
    const ProcessResult result = run(bluez);
    unsetenv("VESK_BLUEZ_KEEP");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("\"my\" in VESK_BLUEZ_KEEP is no address"));
}
