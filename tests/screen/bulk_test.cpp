/* Many changes of the registered devices at once, and more devices than the list can show. */

#include <gmock/gmock.h>

#include "desktop/rdm_service.h"
#include "edit_fixture.h"

using testing::SizeIs;

namespace {

struct BulkTest : EditTest {
    void SetUp() override
    {
        register_devices(phones(3));
        open();
        forget();
    }

    int reports() const
    {
        int count = 0;
        for (const LogLine &line : log())
            count += line.message.starts_with("Status changed >>");
        return count;
    }

    /* Until the first row shows the name. */
    bool shown_first(const std::string &name)
    {
        return panel().run_until([&] { return !names().empty() && names().front() == shown_name(name); }, 3000);
    }
};

TEST_F(BulkTest, AnImportOfManyIsShownWithFewRefreshes)
{
    std::vector<vesk_port::Device> all = phones(500);
    register_devices(all);
    ASSERT_TRUE(panel().run_until([&] { return device_count == 50; }, 3000));
    EXPECT_EQ(elm_genlist_items_count(app()->genlist), 50U);
    panel().settle();
    EXPECT_EQ(names().front(), shown_name("Phone 1"));

    /* What is still under way is reported before a further change. */
    all.front().name = "Renamed";
    register_devices(all);
    ASSERT_TRUE(shown_first("Renamed"));
    EXPECT_LE(reports(), 3);
    EXPECT_EQ(focused(), app()->genlist);
    press("Down");
    EXPECT_EQ(focused_row(), 1);
}

TEST_F(BulkTest, ChangesOfAllDevicesOneAfterTheOtherAreFewRefreshes)
{
    vesk_port::DeviceStore store = service();
    store.replace(phones(50));
    ASSERT_TRUE(panel().run_until([&] { return device_count == 50; }, 3000));
    forget();
    for (const vesk_port::Device &device : registered()) {
        store.set_status(device.id, 1);
        panel().run_until([turn = 0]() mutable { return ++turn > 2; }, 100);
    }
    ASSERT_TRUE(panel().run_until([&] { return (gVeskTable[0].state & kStateAllowed) == 0; }, 3000));
    EXPECT_LE(reports(), 25);
    EXPECT_GE(reports(), 1);
}

TEST_F(BulkTest, MarkingAllRowsDeletesNothingThatWasNotShown)
{
    register_devices(phones(60));
    ASSERT_TRUE(panel().run_until([&] { return device_count == 50; }, 3000));
    panel().settle();
    begin_edit();
    press("Up");
    press("Return");
    std::fill(b_remove_status, b_remove_status + 50, true);
    g_selected_count = 50;
    ask_for_deletion();
    answer_yes();
    EXPECT_EQ(logged("Removing all [50] devices and list is empty"), 1);
    const std::vector<vesk_port::Device> rest = registered();
    ASSERT_THAT(rest, SizeIs(10));
    EXPECT_EQ(rest.front().name, "Phone 51");
    EXPECT_TRUE(running());
    EXPECT_EQ(device_count, 10);
    EXPECT_EQ(names().front(), shown_name("Phone 51"));
}

} // namespace
