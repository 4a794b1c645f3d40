/* The main screen: rows, buttons and the focus between them. */

#include <gmock/gmock.h>

#include "screen_test.h"
#include "vesk/device_table.h"

using testing::ElementsAre;

namespace {

struct ListTest : ScreenTest {};

TEST_F(ListTest, ShowsEachDeviceWithNameAndStatusAllowedOnesFirst)
{
    register_devices({phone("Denied", false), phone("Allowed")});
    open();
    EXPECT_THAT(texts(app()->genlist), ElementsAre("\u200eAllowed\u200e", "\u200eDenied\u200e"));
}

TEST_F(ListTest, RightLeadsToTheFirstButtonAndLeftBackToTheRow)
{
    register_devices(phones(5));
    open();
    press({"Down", "Down"});
    EXPECT_EQ(focused_row(), 2);
    press("Right");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Left");
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(focused_row(), 2);
}

TEST_F(ListTest, ScrollsRoundAtItsEnds)
{
    for (int count : {2, 50}) {
        register_devices(phones(count));
        open();
        ASSERT_EQ(device_count, count);
        press("Up");
        EXPECT_EQ(focused_row(), count - 1);
        press("Down");
        EXPECT_EQ(focused_row(), 0);
        close();
    }
}

TEST_F(ListTest, BackClosesTheModule)
{
    register_devices(phones(1));
    open();
    press("XF86Back");
    EXPECT_TRUE(closed_itself());
}

} // namespace
