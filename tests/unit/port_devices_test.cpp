/* The registered-device service: the table, its changes, and who hears of them. */

#include <algorithm>
#include <cstring>
#include <glib.h>
#include <set>
#include <thread>

#include "desktop/rdm_service.h"
#include "device_fixture.h"

using testing::HasSubstr;
using vesk_port::DeviceStore;

TEST_F(PortDevices, AFirstStartShowsAHouseholdOfADozen)
{
    const std::vector<RdmDeviceInfo> all = devices();
    ASSERT_EQ(all.size(), 12U);
    std::set<std::string> names;
    std::set<int> combinations;
    std::set<int> statuses;
    std::set<int> types;
    for (const RdmDeviceInfo &info : all) {
        names.insert(name_of(info));
        combinations.insert((info.bt_mac[0] ? 4 : 0) | (info.wifi_mac[0] ? 1 : 0) | (info.p2p_mac[0] ? 2 : 0));
        statuses.insert(info.status);
        types.insert(info.type);
    }
    EXPECT_THAT(names, testing::IsSupersetOf({"", "<b>Study</b> & Play", "هاتف ليلى", "거실 태블릿"}));
    EXPECT_TRUE(std::ranges::any_of(names, [](const std::string &name) { return name.size() == 128; }));
    EXPECT_EQ(combinations, (std::set{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(statuses, (std::set{0, 1}));
    EXPECT_GE(types.size(), 7U);
}

TEST_F(PortDevices, AddressesKeepTheFormInWhichTheyWereGiven)
{
    const std::vector<RdmDeviceInfo> all = devices();
    EXPECT_STREQ(all[1].bt_mac, "0a-5e-20-77-1b-10");
    EXPECT_STREQ(all[3].bt_mac, "1e:07:c3:44:d9:30");
}

TEST_F(PortDevices, AChangeFindsTheDeviceByItsAddressInAnyForm)
{
    EXPECT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), 0);
    EXPECT_EQ(devices()[1].status, 1);
    EXPECT_EQ(rdm_set_status("0A-5e-20-77-1B-11", 2, 0), 0);
    EXPECT_EQ(devices()[1].status, 0);
    EXPECT_EQ(rdm_remove_device("2a-61-08-be-70-41", 3), 0);
    EXPECT_EQ(devices().size(), 11U);
}

TEST_F(PortDevices, AnAddressCountsOnlyAsItsOwnKind)
{
    EXPECT_LT(rdm_set_status("0A:5E:20:77:1B:10", 2, 1), 0);
    EXPECT_LT(rdm_remove_device("0A:5E:20:77:1B:10", 3), 0);
    EXPECT_EQ(devices()[1].status, 0);
    EXPECT_THAT(log(), HasSubstr("0A:5E:20:77:1B:10"));
}

TEST_F(PortDevices, BadArgumentsAreRefused)
{
    RdmDeviceInfo *list = nullptr;
    size_t count = 0;
    int handle = 77;
    EXPECT_LT(rdm_set_status(nullptr, 1, 0), 0);
    EXPECT_LT(rdm_set_status("", 1, 0), 0) << "must not match devices without that link";
    EXPECT_LT(rdm_set_status("0A:5E:20:77:1B:10", 0, 0), 0);
    EXPECT_LT(rdm_set_status("0A:5E:20:77:1B:10", 4, 0), 0);
    EXPECT_LT(rdm_set_status("0A:5E:20:77:1B:10", 1, 2), 0);
    EXPECT_LT(rdm_remove_device("", 3), 0);
    EXPECT_LT(rdm_get_list(nullptr, &count), 0);
    EXPECT_LT(rdm_get_list(&list, nullptr), 0);
    EXPECT_LT(rdm_callback_register(nullptr, nullptr, &handle), 0);
    EXPECT_EQ(handle, 77);
    EXPECT_LT(rdm_callback_deregister(handle), 0);
    EXPECT_EQ(devices().size(), 12U);
}

TEST_F(PortDevices, TheListHasTheOrderOfRegistration)
{
    DeviceStore store(devices_);
    store.remove(store.list().back().id);
    store.add({phone("late", "02:00:00:00:00:09")});
    store.set_status(store.list().front().id, 1);
    const std::vector<RdmDeviceInfo> all = devices();
    EXPECT_EQ(name_of(all.front()), "Nora's phone");
    EXPECT_EQ(name_of(all.back()), "late");
}

TEST_F(PortDevices, AnEmptyTableIsANullList)
{
    ASSERT_EQ(rdm_remove_all(), 0);
    RdmDeviceInfo *list = nullptr;
    size_t count = 1;
    EXPECT_EQ(rdm_get_list(&list, &count), 0);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(count, 0U);
    rdm_free_list(list);
}

TEST_F(PortDevices, OpeningNestsAndClosingWithoutOpeningFails)
{
    EXPECT_EQ(rdm_init(), 0);
    EXPECT_EQ(rdm_deinit(), 0);
    EXPECT_EQ(devices().size(), 12U);
    EXPECT_EQ(rdm_deinit(), 0);
    RdmDeviceInfo *list = nullptr;
    size_t count = 0;
    EXPECT_LT(rdm_get_list(&list, &count), 0);
    EXPECT_LT(rdm_deinit(), 0);
    int handle = 0;
    EXPECT_LT(rdm_callback_register(Heard::hear, nullptr, &handle), 0);
}

TEST_F(PortDevices, AnotherProcessIsHeardOnTheMainLoop)
{
    const Heard heard;
    ASSERT_EQ(veskctl({"devices", "set", "0a:5e:20:77:1b:10", "deny"}).exit_code, 0);
    EXPECT_TRUE(heard.records.empty());
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    ASSERT_EQ(heard.records.size(), 1U);
    EXPECT_EQ(name_of(heard.records[0]), "Kitchen tablet");
    EXPECT_EQ(heard.records[0].status, 1);
}

TEST_F(PortDevices, WhatAnotherProcessAddsAndRemovesIsReported)
{
    const Heard heard;
    ASSERT_EQ(veskctl({"devices", "add", "--name", "new", "--bt", "02:00:00:00:00:01"}).exit_code, 0);
    ASSERT_TRUE(run_until([&] { return heard.records.size() == 1; }));
    EXPECT_EQ(name_of(heard.records[0]), "new");
    ASSERT_EQ(veskctl({"devices", "remove", "12:90:AF:3E:58:21"}).exit_code, 0);
    ASSERT_TRUE(run_until([&] { return heard.records.size() == 2; }));
    EXPECT_EQ(name_of(heard.records[1]), "Visitor's phone");
    EXPECT_EQ(heard.records[1].status, 1) << "the status it had last";
}

TEST_F(PortDevices, OwnChangesAreReportedLaterAndOwnRemovalsAreNot)
{
    const Heard heard;
    ASSERT_EQ(rdm_remove_device("12:90:AF:3E:58:21", 2), 0);
    ASSERT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), 0);
    EXPECT_TRUE(heard.records.empty()) << "never inside the call";
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    /* A change by another process comes after all that is still under way. */
    DeviceStore(devices_).add({phone("last", "02:00:00:00:00:09")});
    ASSERT_TRUE(run_until([&] { return name_of(heard.records.back()) == "last"; }));
    ASSERT_EQ(heard.records.size(), 2U);
    EXPECT_EQ(name_of(heard.records[0]), "Kitchen tablet");
}

TEST_F(PortDevices, SettingTheSameStatusIsNoChange)
{
    const Heard heard;
    ASSERT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 0), 0);
    DeviceStore(devices_).add({phone("last", "02:00:00:00:00:09")});
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    ASSERT_EQ(heard.records.size(), 1U);
    EXPECT_EQ(name_of(heard.records[0]), "last");
}

TEST_F(PortDevices, EveryListenerHearsAndNoneAfterItsEnd)
{
    const Heard first;
    {
        const Heard second;
        EXPECT_NE(first.handle, second.handle);
        EXPECT_GT(second.handle, 0);
        vesk_port::emit(RdmDeviceInfo{});
        EXPECT_EQ(second.records.size(), 1U);
    }
    vesk_port::emit(RdmDeviceInfo{});
    EXPECT_EQ(first.records.size(), 2U);
}

TEST_F(PortDevices, ListenersMayEndEachOtherWhileTheyAreCalled)
{
    struct Pair {
        int own = 0;
        int other = 0;
        int calls = 0;
    } first, second;
    const auto end_both = [](void *data, RdmDeviceInfo *) {
        auto *pair = static_cast<Pair *>(data);
        ++pair->calls;
        EXPECT_EQ(rdm_callback_deregister(pair->other), 0);
        EXPECT_EQ(rdm_callback_deregister(pair->own), 0);
        return 0;
    };
    ASSERT_EQ(rdm_callback_register(end_both, &first, &first.own), 0);
    ASSERT_EQ(rdm_callback_register(end_both, &second, &second.own), 0);
    first.other = second.own;
    second.other = first.own;
    vesk_port::emit(RdmDeviceInfo{});
    EXPECT_EQ(first.calls + second.calls, 1);
}

TEST_F(PortDevices, AListenerMayUseAndCloseTheService)
{
    size_t seen = 0;
    const auto use = [](void *data, RdmDeviceInfo *info) {
        EXPECT_EQ(rdm_set_status(info->wifi_mac, 2, 0), 0);
        *static_cast<size_t *>(data) = devices().size();
        EXPECT_EQ(rdm_deinit(), 0);
        return 0;
    };
    int handle = 0;
    ASSERT_EQ(rdm_callback_register(use, &seen, &handle), 0);
    DeviceStore(devices_).add({phone("a", "02:00:00:00:00:01"), phone("b", "02:00:00:00:00:02")});
    ASSERT_TRUE(run_until([&] { return seen != 0; }));
    EXPECT_EQ(seen, 14U);
    EXPECT_LT(rdm_callback_deregister(handle), 0) << "closing ends the listeners";
}

TEST_F(PortDevices, AStormEndsWithTheTruth)
{
    const Heard heard;
    DeviceStore other(devices_);
    const int64_t id = other.list().front().id;
    for (int i = 0; i < 1000; ++i) {
        other.set_status(id, i % 2);
        g_main_context_iteration(nullptr, FALSE);
    }
    ASSERT_TRUE(run_until([&] { return !heard.records.empty() && heard.records.back().status == 1; }));
    EXPECT_EQ(devices().front().status, 1);
}

TEST_F(PortDevices, AnyRecordCanBeEmitted)
{
    RdmDeviceInfo wild{};
    std::memset(wild.name, 0xff, sizeof wild.name);
    std::memset(wild.bt_mac, 'x', sizeof wild.bt_mac);
    wild.status = -7;
    const Heard heard;
    vesk_port::emit(wild);
    ASSERT_EQ(heard.records.size(), 1U);
    EXPECT_EQ(std::memcmp(&heard.records[0], &wild, sizeof wild), 0);
}

TEST_F(PortDevices, TheSameAddressIsNotRegisteredTwice)
{
    DeviceStore store(devices_);
    EXPECT_THROW(store.add({phone("a", "02:00:00:00:00:01"), phone("twin", "02-00-00-00-00-01")}), std::exception);
    EXPECT_EQ(store.list().size(), 12U) << "all or none";
    EXPECT_THROW(store.replace({phone("a", "02:00:00:00:00:01"), phone("twin", "02-00-00-00-00-01")}), std::exception);
    EXPECT_EQ(store.list().size(), 12U);
}

TEST_F(PortDevices, AnotherFileInThePlaceOfTheFirstIsFollowed)
{
    const Heard heard;
    const std::filesystem::path other = folder_ / "other.db";
    DeviceStore(other).replace({phone("only", "02:00:00:00:00:01")});
    std::filesystem::rename(other, devices_);
    ASSERT_TRUE(run_until([&] { return heard.records.size() == 13; }));
    ASSERT_EQ(devices().size(), 1U);
    EXPECT_EQ(rdm_set_status("02:00:00:00:00:01", 2, 1), 0);
    EXPECT_EQ(DeviceStore(devices_).list()[0].status, 1);
}

TEST_F(PortTest, SeveralFirstStartsAtOnceMakeOneHousehold)
{
    std::vector<ProcessResult> results(6);
    std::vector<std::thread> starts;
    for (ProcessResult &result : results)
        starts.emplace_back([&result] { result = veskctl({"devices", "list", "--json"}); });
    for (std::thread &start : starts)
        start.join();
    for (const ProcessResult &result : results) {
        EXPECT_EQ(result.exit_code, 0) << result.err;
        EXPECT_EQ(result.out, results[0].out);
    }
    EXPECT_EQ(DeviceStore(devices_).list().size(), 12U);
}
