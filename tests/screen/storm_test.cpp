/* Many reports of the registered-device service in a row.
 *
 * The toolkit frees deleted objects with the next frame only and walks them all for each new row, so its time grows
 * with the square of the rows made within one frame. A storm within one frame has a short list here, the others come
 * in bursts with frames between them. */

#include <cstring>
#include <gmock/gmock.h>

#include "desktop/rdm_service.h"
#include "dropdown_fixture.h"
#include "vesk/device_table.h"

namespace {

constexpr int kReports = 1000;
constexpr int kBurst = 20;

struct StormTest : DropdownFixture {
    void SetUp() override
    {
        register_devices(phones(12));
        open();
    }

    static RdmDeviceInfo report(int status)
    {
        RdmDeviceInfo info{};
        strcpy(info.bt_mac, "AA:AA:AA:AA:AA:AA");
        info.status = status;
        return info;
    }

    void end_burst(int reports)
    {
        if (reports % kBurst == kBurst - 1)
            panel().settle();
    }

    size_t objects()
    {
        panel().settle();
        return objects_on(panel().canvas()).size();
    }

    void expect_the_list_equals_the_service()
    {
        std::vector<std::pair<std::string, bool>> expected;
        for (const vesk_port::Device &device : registered())
            expected.emplace_back(device.name, device.status == 0);
        std::vector<std::pair<std::string, bool>> table;
        for (int i = 0; i < device_count; ++i)
            table.emplace_back(gVeskTable[i].name, (gVeskTable[i].state & kStateAllowed) != 0);
        EXPECT_THAT(table, testing::UnorderedElementsAreArray(expected));
        EXPECT_EQ(elm_genlist_items_count(app()->genlist), static_cast<unsigned int>(device_count));
        const auto shown = listed();
        for (size_t i = 0; i < std::min<size_t>(6, shown.size()); ++i) {
            EXPECT_EQ(shown[i].first, "\u200e" + table[i].first + "\u200e");
            EXPECT_EQ(shown[i].second, table[i].second);
        }
    }

    void expect_the_user_goes_on()
    {
        EXPECT_EQ(focused(), app()->genlist);
        const int row = focused_row();
        EXPECT_GE(row, 0);
        press("Down");
        EXPECT_EQ(focused_row(), (row + 1) % device_count);
    }
};

TEST_F(StormTest, WithinOneFrame)
{
    register_devices(phones(3));
    vesk_port::emit(report(0));
    const size_t before = objects();
    vesk_port::DeviceStore store = service();
    store.set_status(registered().front().id, 1);
    for (int i = 0; i < kReports; ++i)
        vesk_port::emit(report(i % 7 - 1));
    EXPECT_EQ(objects(), before);
    expect_the_list_equals_the_service();
    EXPECT_FALSE(gVeskTable[device_count - 1].state & kStateAllowed);
    expect_the_user_goes_on();
}

TEST_F(StormTest, InARow)
{
    vesk_port::emit(report(0));
    const size_t before = objects();
    vesk_port::DeviceStore store = service();
    const std::vector<vesk_port::Device> devices = registered();
    for (int i = 0; i < kReports; ++i) {
        if (i % 100 == 0)
            store.set_status(devices[static_cast<size_t>(i / 100)].id, 1);
        vesk_port::emit(report(i % 7 - 1));
        end_burst(i);
    }
    EXPECT_EQ(objects(), before);
    expect_the_list_equals_the_service();
    EXPECT_FALSE(gVeskTable[device_count - 1].state & kStateAllowed);
    expect_the_user_goes_on();
}

TEST_F(StormTest, BetweenKeyPresses)
{
    vesk_port::emit(report(0));
    const size_t before = objects();
    const char *keys[] = {"Down", "Up", "Right", "Left", "Down", "Right", "Down", "Up", "Left"};
    for (int i = 0; i < kReports; ++i) {
        const char *key = keys[i % static_cast<int>(std::size(keys))];
        panel().key_down(key);
        vesk_port::emit(report(i % 2));
        panel().key_up(key);
        end_burst(i);
    }
    EXPECT_EQ(objects(), before);
    expect_the_list_equals_the_service();
    press("Left");
    expect_the_user_goes_on();
}

TEST_F(StormTest, WithTheLoopRunningInBetween)
{
    vesk_port::emit(report(0));
    const size_t before = objects();
    for (int i = 0; i < 20; ++i) {
        vesk_port::emit(report(i % 2));
        panel().settle();
        press("Down");
        EXPECT_EQ(focused_row(), 1) << i;
    }
    EXPECT_EQ(objects(), before);
    expect_the_list_equals_the_service();
}

TEST_F(StormTest, AKeyThatComesBeforeTheListIsDrawnDoesNotLoseTheKeys)
{
    vesk_port::emit(report(0));
    press({"Down", "Down"});
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_GT(focused_row(), 0);
}

TEST_F(StormTest, WhileTheDropdownIsOpen)
{
    open_dropdown(1);
    press("XF86Back");
    vesk_port::emit(report(0));
    const size_t before = objects();
    open_dropdown(1);
    for (int i = 0; i < kReports; ++i) {
        vesk_port::emit(report(i % 2));
        end_burst(i);
    }
    panel().settle();
    expect_the_list_equals_the_service();
    ASSERT_TRUE(dropdown_open());
    press("Down");
    EXPECT_EQ(focused_choice(), 1) << "the drop-down still has the keys";
    press("XF86Back");
    EXPECT_FALSE(dropdown_open());
    expect_the_user_goes_on();
    EXPECT_EQ(objects(), before);
}

TEST_F(StormTest, AChoiceMadeAfterwardsLeavesTheUserOnTheList)
{
    open_dropdown(1);
    vesk_port::emit(report(0));
    panel().settle();
    press({"Down", "Return"});
    EXPECT_FALSE(dropdown_open());
    expect_the_list_equals_the_service();
    expect_the_user_goes_on();
}

TEST_F(StormTest, OfChangesByAnotherProcess)
{
    vesk_port::emit(report(0));
    const size_t before = objects();
    vesk_port::DeviceStore store = service();
    const std::vector<vesk_port::Device> devices = registered();
    for (int i = 0; i < 60; ++i)
        store.set_status(devices[static_cast<size_t>(i) % devices.size()].id, i / 12 % 2 == 0 ? 1 : 0);
    EXPECT_TRUE(panel().run_until(
        [&] {
            return device_count == 12 && std::all_of(gVeskTable, gVeskTable + 12, [](const DeviceEntry &row) {
                       return (row.state & kStateAllowed) == 0;
                   });
        },
        3000));
    EXPECT_EQ(objects(), before);
    expect_the_list_equals_the_service();
    expect_the_user_goes_on();
}

} // namespace
