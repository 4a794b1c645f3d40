/* When the list changes and when that is reported: each order of events by itself. */

#include "bluez_messages.h"
#include "desktop/port_error.h"

using testing::ElementsAre;
using testing::IsEmpty;
using vesk_port::PortError;
using namespace std::chrono_literals;

namespace {

/* One adapter with two phones that have been reported. */
struct BluezTimes : BluezCacheTest {
    BluezTimes()
    {
        objects({0});
        pair(1, "First");
        pair(2, "Second");
        cache.report_nothing_yet();
    }

    void return_both()
    {
        pair(1, "First");
        pair(2, "Second");
    }

    const std::vector<std::string> both{"First", "Second"};
};

} // namespace

TEST_F(BluezTimes, NothingIsDueWhileNothingHappens)
{
    EXPECT_EQ(cache.look_again(), std::nullopt);
    EXPECT_FALSE(cache.advance(now));
}

TEST_F(BluezTimes, ReportsNameStatusKindAndMembershipAlone)
{
    for (const char *shown : {"'Alias': <'Renamed'>", "'Blocked': <true>", "'Class': <uint32 0x240404>",
                              "'Class': <uint32 0x000000>, 'Icon': <'printer'>"}) {
        change(1, shown);
        EXPECT_EQ(pass(1s), 1) << shown;
    }
    pair(3, "Third");
    EXPECT_EQ(pass(1s), 1);
    change(3, "'Paired': <false>");
    EXPECT_EQ(pass(1s), 1);
    for (const char *unseen : {"'Connected': <true>", "'RSSI': <int16 -50>", "'UUIDs': <['00001108-x']>",
                               "'ServicesResolved': <true>", "'Trusted': <true>"}) {
        change(2, unseen);
        EXPECT_EQ(pass(1s), 0) << unseen;
    }
}

TEST_F(BluezTimes, StrangersAreNotLookedAt)
{
    for (int last = 10; last < 200; ++last)
        add(last, "'Alias': <'Stranger'>, 'RSSI': <int16 -70>");
    EXPECT_EQ(cache.look_again(), std::nullopt);
    for (int i = 0; i < 5000; ++i)
        change(10 + i % 190, "'RSSI': <int16 -60>, 'Alias': <'Stranger'>");
    EXPECT_EQ(cache.look_again(), std::nullopt);
    for (int last = 10; last < 200; ++last)
        remove(last);
    EXPECT_EQ(pass(20s), 0);
    EXPECT_EQ(names(), both);
}

TEST_F(BluezTimes, TheFirstChangeIsReportedAtOnceAndFurtherOnesTogether)
{
    pass(5s);
    change(1, "'Alias': <'One'>");
    EXPECT_EQ(pass(0ms), 1);
    int reports = 0;
    for (int i = 0; i < 50; ++i) {
        change(2, "'Alias': <'Two " + std::to_string(i) + "'>");
        reports += pass(2ms);
    }
    EXPECT_EQ(reports, 0);
    EXPECT_EQ(pass(50ms), 1);
    EXPECT_EQ(pass(10s), 0);
    EXPECT_EQ(device(2).name, "Two 49");
}

TEST_F(BluezTimes, AChangeThatIsTakenBackInBetweenIsNone)
{
    change(1, "'Alias': <'One'>");
    EXPECT_EQ(pass(0ms), 1);
    change(2, "'Blocked': <true>");
    EXPECT_EQ(pass(10ms), 0);
    change(2, "'Blocked': <false>");
    EXPECT_EQ(pass(10s), 0);
}

TEST_F(BluezTimes, ARemovalShowsWhenNoOtherFollows)
{
    remove(1);
    EXPECT_EQ(names(), both);
    EXPECT_EQ(pass(499ms), 0);
    EXPECT_EQ(names(), both);
    EXPECT_EQ(pass(1ms), 1);
    EXPECT_THAT(names(), ElementsAre("Second"));
}

TEST_F(BluezTimes, RemovalsSettleTogetherButNotForEver)
{
    for (int last = 3; last <= 20; ++last)
        pair(last, "Phone");
    pass(1s);
    int reports = 0;
    for (int last = 3; last <= 8; ++last) {
        remove(last);
        reports += pass(400ms);
    }
    /* 2.4 seconds: the first five have gone after 2, the last one follows. */
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(cache.list().size(), 15U);
    EXPECT_EQ(pass(1s), 1);
    EXPECT_EQ(cache.list().size(), 14U);
}

TEST_F(BluezTimes, ARemovedDeviceThatReturnsWasNeverAway)
{
    remove(1);
    EXPECT_EQ(pass(400ms), 0);
    pair(1, "First");
    EXPECT_EQ(pass(20s), 0);
    EXPECT_EQ(names(), both);
}

/* bluetoothd removes the devices one by one, and then the adapter. */
TEST_F(BluezTimes, AShortUnplugChangesNothing)
{
    remove(2);
    EXPECT_EQ(pass(20ms), 0);
    remove(1);
    unplug();
    EXPECT_EQ(pass(3s), 0);
    EXPECT_EQ(names(), both);
    plug(0);
    EXPECT_EQ(pass(100ms), 0);
    return_both();
    EXPECT_EQ(pass(20s), 0);
    EXPECT_EQ(names(), both);
}

TEST_F(BluezTimes, AnAdapterThatVanishesByItselfIsTheSame)
{
    unplug();
    EXPECT_EQ(pass(9999ms), 0);
    EXPECT_EQ(names(), both);
    EXPECT_EQ(pass(1ms), 1);
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(BluezTimes, UnpluggedForGoodEmptiesTheListOnce)
{
    remove(1);
    remove(2);
    unplug();
    EXPECT_EQ(pass(9s), 0);
    EXPECT_EQ(names(), both);
    EXPECT_EQ(pass(1s), 1);
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(cache.look_again(), std::nullopt);
}

TEST_F(BluezTimes, DevicesHaveThreeSecondsOnceTheirAdapterIsBack)
{
    unplug();
    pass(9s);
    plug(0);
    pair(1, "First");
    EXPECT_EQ(pass(2999ms), 0);
    EXPECT_EQ(names(), both);
    EXPECT_EQ(pass(1ms), 1);
    EXPECT_THAT(names(), ElementsAre("First"));
}

TEST_F(BluezTimes, AnAdapterMayReturnUnderAnotherNumber)
{
    unplug();
    pass(9s);
    plug(1, "00:00:00:00:00:00");
    EXPECT_EQ(pass(2s), 0);
    pair(1, "First", 1);
    pair(2, "Second", 1);
    EXPECT_EQ(pass(20s), 0);
    EXPECT_EQ(names(), both);
}

TEST_F(BluezTimes, AnotherAdapterDoesNotBringThemBack)
{
    unplug();
    pass(9s);
    plug(1);
    EXPECT_EQ(pass(1s), 1);
    EXPECT_THAT(names(), IsEmpty());
}

/* Devices one by one, the adapter, the daemon's name; then the new one finds them again, one by one. */
TEST_F(BluezTimes, AnOrderlyRestartChangesNothing)
{
    remove(1);
    remove(2);
    unplug();
    cache.daemon_lost(now);
    EXPECT_EQ(pass(1500ms), 0);
    objects({});
    EXPECT_EQ(pass(500ms), 0);
    plug(0);
    EXPECT_EQ(pass(500ms), 0);
    pair(2, "Second");
    EXPECT_EQ(pass(500ms), 0);
    pair(1, "First");
    EXPECT_EQ(pass(20s), 0);
    EXPECT_EQ(names(), both);
}

TEST_F(BluezTimes, ADaemonThatDiesIsTheSame)
{
    cache.daemon_lost(now);
    EXPECT_EQ(pass(9s), 0);
    objects({0});
    return_both();
    EXPECT_EQ(pass(20s), 0);
    EXPECT_EQ(names(), both);
}

TEST_F(BluezTimes, WithoutADaemonTheListIsEmptyAfterAWhile)
{
    cache.daemon_lost(now);
    EXPECT_EQ(pass(10s), 1);
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(BluezTimes, AllThereIsReplacesWhatWasKnown)
{
    objects({0});
    EXPECT_EQ(names(), both);
    EXPECT_EQ(pass(500ms), 1);
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(BluezTimes, ActionsFindNobodyWhileTheAdapterIsAway)
{
    unplug();
    try {
        cache.targets_to_change(address_of(1));
        ADD_FAILURE() << "the device's adapter is away";
    } catch (const PortError &error) {
        EXPECT_EQ(error.code(), -EHOSTDOWN);
    }
}

TEST_F(BluezTimes, OwnRemovalsShowAtOnceAndARefusalBringsTheRowBack)
{
    cache.hide(device_path(1), true);
    EXPECT_THAT(names(), ElementsAre("Second"));
    pass(1s);
    cache.hide(device_path(1), false);
    EXPECT_EQ(pass(0ms), 1);
    EXPECT_EQ(names(), both);
}

TEST_F(BluezTimes, ACarriedOutRemovalIsNotHeldWhateverComesFirst)
{
    cache.hide(device_path(1), true);
    remove(1);
    cache.removed(device_path(1));
    cache.hide(device_path(2), true);
    cache.removed(device_path(2));
    remove(2);
    pass(0ms);
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(cache.look_again(), std::nullopt);
}

TEST_F(BluezTimes, ADeviceThatIsFoundAnewAfterItsRemovalStays)
{
    cache.hide(device_path(1), true);
    remove(1);
    pair(1, "First");
    cache.removed(device_path(1));
    EXPECT_THAT(names(), testing::UnorderedElementsAre("First", "Second"));
}
