/* The registered-device service over BlueZ, as the module reaches it, with a mock of bluetoothd on a private bus. */

#include <algorithm>
#include <chrono>

#include "bluez_mock.h"
#include "port_fixture.h"
#include "rdm.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr int kBluetooth = 1;
constexpr int kAllow = 0;
constexpr int kDeny = 1;

std::vector<RdmDeviceInfo> devices()
{
    RdmDeviceInfo *list = nullptr;
    size_t count = 0;
    EXPECT_EQ(rdm_get_list(&list, &count), 0);
    std::vector<RdmDeviceInfo> copy(list, list + count);
    rdm_free_list(list);
    return copy;
}

std::vector<std::string> names()
{
    std::vector<std::string> names;
    for (const RdmDeviceInfo &device : devices())
        names.emplace_back(device.name, strnlen(device.name, sizeof device.name));
    return names;
}

/* Listens as the module does, which reads the list in its callback. */
struct Screen {
    std::vector<RdmDeviceInfo> heard;
    int handle = 0;

    Screen() { EXPECT_EQ(rdm_callback_register(hear, this, &handle), 0); }
    ~Screen() { rdm_callback_deregister(handle); }

    static int hear(void *self, RdmDeviceInfo *info)
    {
        static_cast<Screen *>(self)->heard.push_back(*info);
        names();
        return 0;
    }

    size_t count() const { return heard.size(); }
};

class BluezPort : public PortTest {
protected:
    explicit BluezPort(const std::string &policy = "") : mock(folder_, policy) { setenv("VESK_SERVICE", "bluez", 1); }

    ~BluezPort() override
    {
        while (rdm_deinit() == 0) {
        }
        unsetenv("VESK_SERVICE");
    }

    /* The mock with two paired phones, and the service. */
    void open()
    {
        start();
        ASSERT_EQ(rdm_init(), 0);
    }

    void start()
    {
        mock.start_bus();
        mock.start_daemon();
        add_both();
    }

    void add_both()
    {
        mock.add_adapter();
        mock.add_paired(1, "First");
        mock.add_paired(2, "Second");
    }

    /* What the mock has told by now is known afterwards: a change that shows comes behind it. */
    void catch_up(Screen &screen)
    {
        const size_t before = screen.count();
        mock.set(2, "Alias", g_variant_new_string(("Mark " + std::to_string(before)).c_str()));
        const std::string mark = "Mark " + std::to_string(before);
        ASSERT_TRUE(run_until([&] { return screen.count() > before && std::ranges::count(names(), mark) == 1; }));
    }

    /* Lets removals take the time after which they count. */
    static void settle()
    {
        bool over = false;
        const auto end = [](gpointer flag) -> gboolean {
            *static_cast<bool *>(flag) = true;
            return G_SOURCE_REMOVE;
        };
        g_timeout_add(700, end, &over);
        run_until([&over] { return over; });
    }

    static int deny(int last) { return rdm_set_status(BluezMock::address(last).c_str(), kBluetooth, kDeny); }
    static int allow(int last) { return rdm_set_status(BluezMock::address(last).c_str(), kBluetooth, kAllow); }
    static int remove(int last) { return rdm_remove_device(BluezMock::address(last).c_str(), kBluetooth); }

    static int status(int last)
    {
        for (const RdmDeviceInfo &device : devices()) {
            if (device.bt_mac == BluezMock::address(last))
                return device.status;
        }
        return -1;
    }

    /* The lines of the mock's log that hold the text, without their times. */
    std::vector<std::string> calls(const std::string &text)
    {
        std::vector<std::string> lines;
        std::istringstream stream(mock.log());
        for (std::string line; std::getline(stream, line);) {
            if (line.find(text) != line.npos)
                lines.push_back(line.substr(line.find(' ') + 1));
        }
        return lines;
    }

    BluezMock mock;
};

const std::vector<std::string> kBoth{"First", "Second"};

} // namespace

TEST_F(BluezPort, ListsThePairedDevicesAtOnce)
{
    open();
    mock.add_stranger(3, "Stranger");
    EXPECT_EQ(names(), kBoth);
    const RdmDeviceInfo first = devices().front();
    EXPECT_STREQ(first.bt_mac, "AA:BB:CC:DD:EE:01");
    EXPECT_STREQ(first.wifi_mac, "");
    EXPECT_EQ(first.type, 1);
}

TEST_F(BluezPort, APairingIsOneCallback)
{
    open();
    Screen screen;
    mock.add_paired(3, "Third");
    ASSERT_TRUE(run_until([&] { return screen.count() > 0; }));
    EXPECT_STREQ(screen.heard[0].name, "Third");
    EXPECT_THAT(names(), ElementsAre("First", "Second", "Third"));
    catch_up(screen);
    EXPECT_EQ(screen.count(), 2U);
}

TEST_F(BluezPort, ComingAndGoingOfAConnectionIsNone)
{
    open();
    Screen screen;
    mock.set(1, "Connected", g_variant_new_boolean(true));
    mock.set(1, "RSSI", g_variant_new_int16(-40));
    mock.set(1, "Connected", g_variant_new_boolean(false));
    catch_up(screen);
    EXPECT_EQ(screen.count(), 1U);
}

TEST_F(BluezPort, ABlockAndANameAreOneCallbackEach)
{
    open();
    Screen screen;
    mock.set(1, "Blocked", g_variant_new_boolean(true));
    ASSERT_TRUE(run_until([&] { return screen.count() == 1; }));
    EXPECT_EQ(screen.heard[0].status, 1);
    mock.set(1, "Alias", g_variant_new_string("Renamed"));
    ASSERT_TRUE(run_until([&] { return screen.count() == 2; }));
    EXPECT_STREQ(screen.heard[1].name, "Renamed");
    catch_up(screen);
    EXPECT_EQ(screen.count(), 3U);
}

TEST_F(BluezPort, ARemovalIsOneCallback)
{
    open();
    Screen screen;
    mock.remove(1);
    ASSERT_TRUE(run_until([&] { return screen.count() == 1; }));
    EXPECT_STREQ(screen.heard[0].name, "First");
    EXPECT_THAT(names(), ElementsAre("Second"));
}

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

TEST_F(BluezPort, DecisionsReachEachAdapter)
{
    open();
    mock.add_adapter(1);
    mock.add_paired(1, "First", 1);
    Screen screen;
    catch_up(screen);
    EXPECT_EQ(deny(1), 0);
    EXPECT_EQ(allow(1), 0);
    EXPECT_EQ(remove(1), 0);
    ASSERT_TRUE(run_until([&] { return !mock.is_there(1, 0) && !mock.is_there(1, 1); }));
    const std::string set0 = "Set " + BluezMock::path(1, 0) + " org.bluez.Device1.";
    const std::string set1 = "Set " + BluezMock::path(1, 1) + " org.bluez.Device1.";
    EXPECT_THAT(calls("Set "), ElementsAre(set0 + "Blocked True", set1 + "Blocked True", set0 + "Blocked False",
                                           set1 + "Blocked False", set0 + "Trusted True", set1 + "Trusted True"));
    EXPECT_THAT(calls("RemoveDevice"), ElementsAre(HasSubstr(BluezMock::path(1, 0)), HasSubstr(BluezMock::path(1, 1))));
    EXPECT_EQ(status(1), -1);
}

TEST_F(BluezPort, AnOwnDecisionIsHeardOnce)
{
    open();
    Screen screen;
    EXPECT_EQ(deny(1), 0);
    EXPECT_EQ(screen.count(), 0U);
    ASSERT_TRUE(run_until([&] { return screen.count() == 1; }));
    EXPECT_EQ(screen.heard[0].status, 1);
    EXPECT_TRUE(mock.is_blocked(1));
    catch_up(screen);
    EXPECT_EQ(screen.count(), 2U);
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

TEST_F(BluezPort, RemovingAllLeavesWhatAPanelDoesNotShow)
{
    start();
    for (int last = 3; last <= 60; ++last)
        mock.add_paired(last, "Phone " + std::to_string(last));
    ASSERT_EQ(rdm_init(), 0);
    ASSERT_EQ(names().size(), 50U);
    EXPECT_EQ(rdm_remove_all(), 0);
    EXPECT_EQ(names().size(), 10U);
    ASSERT_TRUE(
        run_until([&] { return calls("emit / org.freedesktop.DBus.ObjectManager.InterfacesRemoved").size() == 50; }));
    EXPECT_EQ(names().size(), 10U);
    EXPECT_TRUE(mock.is_there(60));
}

TEST_F(BluezPort, WhatWasAskedForArrivesThoughTheServiceCloses)
{
    open();
    EXPECT_EQ(rdm_remove_all(), 0);
    EXPECT_EQ(rdm_deinit(), 0);
    ASSERT_TRUE(run_until([&] { return !mock.is_there(1) && !mock.is_there(2); }));
}

TEST_F(BluezPort, FiftyChangesAtOnceAreThreeRefreshesAtMost)
{
    start();
    for (int last = 3; last <= 50; ++last)
        mock.add_paired(last, "Phone " + std::to_string(last));
    ASSERT_EQ(rdm_init(), 0);
    Screen screen;
    /* All are sent before the first is looked at. */
    for (int last = 1; last <= 50; ++last)
        mock.set(last, "Alias", g_variant_new_string(("New " + std::to_string(last)).c_str()));
    ASSERT_TRUE(run_until([&] {
        const auto all = names();
        return std::ranges::all_of(all, [](const std::string &name) { return name.starts_with("New "); });
    }));
    ASSERT_TRUE(run_until([&] { return screen.count() > 0; }));
    catch_up(screen);
    EXPECT_LE(screen.count(), 4U) << "with the mark";
}

TEST_F(BluezPort, StrangersCauseNoRefresh)
{
    open();
    Screen screen;
    for (int last = 10; last < 60; ++last)
        mock.add_stranger(last, "Stranger");
    for (int i = 0; i < 200; ++i)
        mock.set(10 + i % 50, "RSSI", g_variant_new_int16(static_cast<gint16>(-40 - i % 50)));
    catch_up(screen);
    EXPECT_EQ(screen.count(), 1U);
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
