/* The registered-device service over BlueZ when something is missing, hangs or refuses. */

#include <chrono>

#include "bluez_port_fixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(BluezPort, AShortUnplugIsNone)
{
    open();
    Screen screen;
    mock.unplug();
    settle();
    EXPECT_EQ(screen.count(), 0U);
    EXPECT_EQ(names(), kBoth);
    EXPECT_EQ(deny(1), -EHOSTDOWN);
    add_both();
    ASSERT_TRUE(run_until([&] { return deny(1) == 0; }));
    EXPECT_EQ(status(1), kDeny);
}

TEST_F(BluezPort, ADaemonThatDiesAndReturnsIsNoChange)
{
    open();
    Screen screen;
    mock.kill_daemon();
    ASSERT_TRUE(run_until([&] { return log().find("systemctl start bluetooth") != std::string::npos; }));
    settle();
    EXPECT_EQ(screen.count(), 0U);
    EXPECT_EQ(names(), kBoth);
    EXPECT_EQ(deny(1), -EHOSTDOWN);
    EXPECT_EQ(remove(1), -EHOSTDOWN);
    EXPECT_EQ(rdm_remove_all(), -EHOSTDOWN);
    mock.start_daemon();
    add_both();
    ASSERT_TRUE(run_until([&] { return deny(1) == 0; }));
    EXPECT_EQ(status(1), kDeny);
}

TEST_F(BluezPort, ABusThatDiesAndReturnsIsFollowed)
{
    open();
    mock.stop_bus();
    mock.kill_daemon();
    ASSERT_TRUE(run_until([&] { return deny(1) == -EHOSTDOWN; }));
    EXPECT_THAT(log(), HasSubstr("DBUS_SYSTEM_BUS_ADDRESS"));
    start();
    mock.add_paired(3, "Third");
    ASSERT_TRUE(run_until([&] { return names().size() == 3; }));
    EXPECT_EQ(deny(3), 0);
}

TEST_F(BluezPort, WithoutABusTheListIsEmptyUntilThereIsOne)
{
    ASSERT_EQ(rdm_init(), 0);
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(deny(1), -EHOSTDOWN);
    start();
    ASSERT_TRUE(run_until([&] { return names() == kBoth; }));
}

TEST_F(BluezPort, WithoutADaemonTheListIsEmptyUntilThereIsOne)
{
    mock.start_bus();
    ASSERT_EQ(rdm_init(), 0);
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_THAT(log(), HasSubstr("systemctl start bluetooth"));
    mock.start_daemon();
    add_both();
    ASSERT_TRUE(run_until([&] { return names().size() == 2; }));
}

TEST_F(BluezPort, ADaemonThatHangsHoldsNobodyUp)
{
    using Clock = std::chrono::steady_clock;
    start();
    mock.freeze();
    const auto begin = Clock::now();
    ASSERT_EQ(rdm_init(), 0);
    RecordProperty("opening_ms", static_cast<int>((Clock::now() - begin) / std::chrono::milliseconds(1)));
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(5));
    EXPECT_THAT(names(), IsEmpty());
    mock.thaw();
    ASSERT_TRUE(run_until([&] { return names().size() == 2; }));

    mock.freeze();
    const auto change = Clock::now();
    EXPECT_EQ(deny(1), -ETIMEDOUT);
    RecordProperty("change_ms", static_cast<int>((Clock::now() - change) / std::chrono::milliseconds(1)));
    EXPECT_LT(Clock::now() - change, std::chrono::seconds(4));
    EXPECT_EQ(status(1), kAllow);
    mock.thaw();
    ASSERT_TRUE(run_until([&] { return status(1) == kDeny; })) << "it follows late";
}

TEST_F(BluezPort, ALateRemovalShowsAtOnce)
{
    open();
    Screen screen;
    mock.freeze();
    EXPECT_EQ(remove(1), 0);
    EXPECT_THAT(names(), ElementsAre("Second"));
    mock.thaw();
    ASSERT_TRUE(run_until([&] { return !mock.is_there(1); }));
    catch_up(screen);
    EXPECT_EQ(screen.count(), 1U);
}

TEST_F(BluezPort, ARefusedRemovalBringsTheRowBack)
{
    open();
    mock.on_removal("raise dbus.exceptions.DBusException('off', name='org.bluez.Error.NotReady')");
    Screen screen;
    EXPECT_EQ(remove(1), 0);
    EXPECT_THAT(names(), ElementsAre("Second"));
    ASSERT_TRUE(run_until([&] { return screen.count() == 1; }));
    EXPECT_EQ(names(), kBoth);
    EXPECT_THAT(log(), HasSubstr("(" + std::to_string(-ENETDOWN) + ")"));
    EXPECT_EQ(deny(1), 0) << "that works while Bluetooth is off";
}

TEST_F(BluezPort, OtherKindsOfAddressesAreNotThere)
{
    open();
    EXPECT_EQ(rdm_set_status(BluezMock::address(1).c_str(), 2, kDeny), -ENODEV);
    EXPECT_EQ(rdm_remove_device(BluezMock::address(1).c_str(), 3), -ENODEV);
    EXPECT_EQ(deny(9), -ENODEV);
    EXPECT_EQ(names(), kBoth);
}

TEST_F(BluezPort, AnUnknownServiceIsRefusedByName)
{
    setenv("VESK_SERVICE", "carrier-pigeon", 1);
    EXPECT_EQ(rdm_init(), -EINVAL);
    EXPECT_THAT(log(), HasSubstr("unknown service \"carrier-pigeon\"; use sqlite or bluez"));
}

namespace {

struct BluezNoChanges : BluezPort {
    BluezNoChanges() : BluezPort("<deny send_interface='org.freedesktop.DBus.Properties' send_member='Set'/>") {}
};

struct BluezNoRemoval : BluezPort {
    BluezNoRemoval() : BluezPort("<deny send_interface='org.bluez.Adapter1' send_member='RemoveDevice'/>") {}
};

} // namespace

TEST_F(BluezNoChanges, APolicyThatRefusesLeavesTheDeviceAsItIs)
{
    open();
    EXPECT_EQ(deny(1), -EACCES);
    EXPECT_EQ(status(1), kAllow);
    EXPECT_THAT(log(), HasSubstr("/etc/dbus-1/system.d"));
}

TEST_F(BluezNoRemoval, APolicyThatRefusesARemovalBringsTheRowBack)
{
    open();
    EXPECT_EQ(remove(1), 0);
    ASSERT_TRUE(run_until([&] { return names().size() == 2; }));
    EXPECT_THAT(log(), HasSubstr("(" + std::to_string(-EACCES) + ")"));
}
