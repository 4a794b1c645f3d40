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

    /* How often the host's threads have gone to sleep by themselves. */
    size_t sleeps() const
    {
        size_t sum = 0;
        const std::filesystem::path tasks = "/proc/" + std::to_string(pid()) + "/task";
        for (const auto &task : std::filesystem::directory_iterator(tasks)) {
            const std::string status = contents_of(task.path() / "status");
            const std::string name = "\nvoluntary_ctxt_switches:";
            sum += std::stoul(status.substr(status.find(name) + name.size()));
        }
        return sum;
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

/* Nothing polls: once it is at rest, a whole second passes without a turn of any thread. */
TEST_F(BluezHost, AnIdlePanelDoesNotWakeUp)
{
    start("", bluez);
    size_t before = sleeps();
    bool rested = false;
    std::function<void()> look = [&] {
        const size_t now = sleeps();
        rested = now == before;
        before = now;
    };
    const auto tick = [](gpointer function) -> gboolean {
        (*static_cast<std::function<void()> *>(function))();
        return G_SOURCE_CONTINUE;
    };
    const unsigned timer = g_timeout_add(1000, tick, &look);
    EXPECT_TRUE(run_until([&] { return rested; }));
    g_source_remove(timer);
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
