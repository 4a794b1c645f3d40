/* What the callbacks hear when much changes, when a decision is refused, and when the file cannot be read. */

#include <glib.h>

#include "desktop/port_failures.h"
#include "device_fixture.h"
#include "other_program.h"

namespace fs = std::filesystem;

using testing::HasSubstr;
using vesk_port::DeviceStore;

namespace {

std::vector<vesk_port::Device> many(int count)
{
    std::vector<vesk_port::Device> all;
    for (int i = 0; i < count; ++i) {
        char mac[18];
        g_snprintf(mac, sizeof mac, "02:00:00:00:%02X:%02X", i >> 8, i & 0xff);
        all.push_back(phone("Phone " + std::to_string(i), mac));
    }
    return all;
}

/* A callback that reads the list, as a screen does. */
struct Reader {
    std::vector<std::string> names;
    std::string reported; /* the device of the last report */
    int calls = 0;
    int handle = 0;

    Reader() { EXPECT_EQ(rdm_callback_register(hear, this, &handle), 0); }
    ~Reader() { rdm_callback_deregister(handle); }

    static int hear(void *data, RdmDeviceInfo *changed)
    {
        auto *self = static_cast<Reader *>(data);
        ++self->calls;
        self->reported = name_of(*changed);
        self->names.clear();
        for (const RdmDeviceInfo &info : devices())
            self->names.push_back(name_of(info));
        return 0;
    }
};

struct PortReports : PortDevices {
    DeviceStore store_{devices_};

    int lines_with(const std::string &text) const
    {
        int count = 0;
        for (size_t at = log().find(text); at != std::string::npos; at = log().find(text, at + 1))
            ++count;
        return count;
    }

    /* What is still under way about the listed devices is reported before a further change of the last of them. */
    void report_all(const Reader &reader)
    {
        store_.set_status("02:00:00:00:00:31", vesk_port::MacKind::wifi, 1);
        ASSERT_TRUE(run_until([&] { return reader.reported == "Phone 49"; }));
    }
};

} // namespace

TEST_F(PortReports, AnImportIsOneReportToAReaderOfTheList)
{
    const Reader reader;
    store_.replace(many(500));
    ASSERT_TRUE(run_until([&] { return reader.calls > 0; }));
    ASSERT_EQ(reader.names.size(), 50U);
    EXPECT_EQ(reader.names.back(), "Phone 49");
    report_all(reader);
    EXPECT_EQ(reader.calls, 2);
}

TEST_F(PortReports, ARowOfChangesIsFewReports)
{
    const Reader reader;
    for (const vesk_port::Device &device : store_.list()) {
        store_.set_status(device.id, 1 - device.status);
        for (int turn = 0; turn < 10; ++turn)
            g_main_context_iteration(nullptr, FALSE);
    }
    store_.add({phone("last", "02:00:00:00:00:09")});
    ASSERT_TRUE(run_until([&] { return !reader.names.empty() && reader.names.back() == "last"; }));
    EXPECT_LE(reader.calls, 3);
}

TEST_F(PortReports, NeverTwoInOneTurnOfTheMainLoop)
{
    const Heard heard;
    store_.replace(many(20));
    size_t most = 0;
    while (heard.records.size() < 32) {
        const size_t before = heard.records.size();
        g_main_context_iteration(nullptr, TRUE);
        most = std::max(most, heard.records.size() - before);
    }
    EXPECT_EQ(most, 1U);
}

TEST_F(PortReports, ADevicesNewerChangeTakesThePlaceOfItsOlder)
{
    const Heard heard;
    const int64_t id = store_.list().front().id;
    store_.set_status(id, 1);
    store_.remove(id);
    store_.add({phone("last", "02:00:00:00:00:09")});
    ASSERT_TRUE(run_until([&] { return heard.records.size() == 2; }));
    EXPECT_EQ(name_of(heard.records[0]), "last");
    EXPECT_EQ(name_of(heard.records[1]), "Nora's phone");
    EXPECT_EQ(heard.records[1].status, 0) << "the status that was reported last";
}

TEST_F(PortReports, OneReaderDoesNotSpareTheOthersTheirReports)
{
    const Reader reader;
    const Heard heard;
    store_.add({phone("a", "02:00:00:00:00:01"), phone("b", "02:00:00:00:00:02")});
    ASSERT_TRUE(run_until([&] { return heard.records.size() == 2; }));
    EXPECT_EQ(name_of(heard.records[1]), "b");
    EXPECT_EQ(reader.calls, 1);
}

/* --- What a panel can show --- */

TEST_F(PortReports, RemovingAllTakesWhatWasListed)
{
    store_.replace(many(60));
    EXPECT_EQ(devices().size(), 50U);
    ASSERT_EQ(rdm_remove_all(), 0);
    const std::vector<RdmDeviceInfo> rest = devices();
    ASSERT_EQ(rest.size(), 10U);
    EXPECT_EQ(name_of(rest.front()), "Phone 50");
    EXPECT_EQ(store_.list().size(), 10U);
}

TEST_F(PortReports, WhatFollowsAnOwnRemovalIntoTheListIsNoNews)
{
    store_.replace(many(60));
    ASSERT_EQ(devices().size(), 50U);
    const Heard heard;
    ASSERT_EQ(rdm_remove_device("02:00:00:00:00:00", 2), 0);
    EXPECT_EQ(name_of(devices().back()), "Phone 50");
    store_.set_status(store_.list().front().id, 1);
    ASSERT_TRUE(run_until([&] { return !heard.records.empty() && name_of(heard.records.back()) == "Phone 1"; }));
    for (const RdmDeviceInfo &info : heard.records)
        EXPECT_NE(name_of(info), "Phone 50");
}

/* --- Refused decisions --- */

TEST_F(PortReports, ARefusedDecisionIsAnsweredWithTheDeviceAsItIs)
{
    const Heard heard;
    vesk_port::set_failures("rdm_set_status=-16");
    EXPECT_EQ(rdm_set_status("0A-5E-20-77-1B-10", 1, 1), -16);
    EXPECT_TRUE(heard.records.empty()) << "never inside the call";
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    EXPECT_EQ(name_of(heard.records[0]), "Kitchen tablet");
    EXPECT_EQ(heard.records[0].status, 0);
}

TEST_F(PortReports, ADecisionAboutADeviceThatIsGoneIsAnsweredToo)
{
    const Heard heard;
    EXPECT_EQ(rdm_set_status("02:00:00:00:00:77", 2, 1), -ENODEV);
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    EXPECT_STREQ(heard.records[0].wifi_mac, "02:00:00:00:00:77");
}

TEST_F(PortReports, ADecisionThatALockRefusesIsAnswered)
{
    const Heard heard;
    OtherProgram other(devices_);
    other.run("BEGIN EXCLUSIVE");
    EXPECT_EQ(rdm_set_status("0A:5E:20:77:1B:10", 1, 1), -EBUSY);
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    EXPECT_EQ(heard.records[0].status, 0);
    other.run("ROLLBACK");
}

/* --- Files that cannot be read --- */

TEST_F(PortReports, WhatChangesDuringALockIsReportedAfterIt)
{
    const Heard heard;
    OtherProgram other(devices_);
    other.run("BEGIN EXCLUSIVE; UPDATE devices SET status = 1 WHERE name = 'Kitchen tablet'");
    fs::last_write_time(devices_, fs::file_time_type::clock::now());
    for (int turn = 0; turn < 20; ++turn)
        g_main_context_iteration(nullptr, FALSE);
    EXPECT_TRUE(heard.records.empty());
    other.run("COMMIT");
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    EXPECT_EQ(name_of(heard.records[0]), "Kitchen tablet");
}

TEST_F(PortReports, ADamagedFileIsLookedAtOnce)
{
    const Heard heard;
    write_file(folder_ / "garbage", std::string(5000, 'x'));
    fs::rename(folder_ / "garbage", devices_);
    ASSERT_TRUE(run_until([&] { return lines_with("damaged") > 0; }));
    int turns = 0;
    while (turns < 20 && g_main_context_iteration(nullptr, FALSE))
        ++turns;
    EXPECT_LT(turns, 20) << "the main loop comes to rest";
    EXPECT_EQ(lines_with("damaged"), 1);

    write_file(devices_, std::string(6000, 'y'));
    run_until([&] { return !g_main_context_pending(nullptr); });
    EXPECT_EQ(lines_with("damaged"), 1) << "the same state is told once";

    DeviceStore(folder_ / "whole.db").replace({phone("mended", "02:00:00:00:00:01")});
    fs::rename(folder_ / "whole.db", devices_);
    ASSERT_TRUE(run_until([&] { return !heard.records.empty(); }));
    EXPECT_EQ(name_of(heard.records[0]), "mended");
}

/* --- What is not registered --- */

TEST_F(PortReports, ATextWithANulIsRefused)
{
    using namespace std::string_literals;
    EXPECT_THROW(store_.add({phone("a\0b"s, "02:00:00:00:00:01")}), std::exception);
    try {
        store_.replace({phone("Radio", "02:00:00:00:00:01\0x"s)});
        ADD_FAILURE() << "nothing was refused";
    } catch (const std::exception &error) {
        EXPECT_STREQ(error.what(), "the Wi-Fi address of the device \"Radio\" holds a NUL character. Give it without.");
    }
    EXPECT_EQ(store_.list().size(), 12U);
}
