/* The registered-device service over BlueZ, as the module reaches it, with a mock of bluetoothd on a private bus. */

#include <algorithm>

#include "bluez_port_fixture.h"

using testing::ElementsAre;
using testing::HasSubstr;

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
