/* Keys that come before the next frame, and touches that move. */

#include "dropdown_fixture.h"
#include "ug/edit_mode.h"

namespace {

struct QuickInputTest : DropdownFixture {
    void open_with(int devices, const std::string &product = "television")
    {
        use_product(product);
        register_devices(phones(devices));
        open();
    }

    /* Without a turn of the main loop between them. */
    void type(const std::string &key, int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            panel().key_down(key);
            panel().key_up(key);
        }
    }

    void expect_dropdown_of(int index)
    {
        ASSERT_TRUE(dropdown_open());
        const Eina_Rectangle row_place = row_area(row(app()->genlist, index));
        EXPECT_EQ(drawn().x + drawn().w, row_place.x + row_place.w - 80);
        EXPECT_EQ(drawn().y, row_place.y + row_place.h - 78);
        EXPECT_EQ(focused(), app()->action_genlist);
    }

    bool is_whole(int index)
    {
        const Eina_Rectangle place = row_area(row(app()->genlist, index));
        const Eina_Rectangle list = area(app()->genlist);
        return place.w > 0 && place.y >= list.y && place.y + place.h <= list.y + list.h;
    }

    void touch_row(int index)
    {
        const Eina_Rectangle place = row_area(row(app()->genlist, index));
        panel().tap(place.x + place.w / 2, place.y + place.h / 2);
    }

    void drag_list(int by)
    {
        const Eina_Rectangle list = area(app()->genlist);
        panel().drag(list.x + list.w / 2, list.y + list.h / 2, list.x + list.w / 2, list.y + list.h / 2 + by);
    }
};

struct QuickKeysTest : QuickInputTest, testing::WithParamInterface<int> {};

TEST_P(QuickKeysTest, TheDropDownStandsBesideTheRowThatTheyLedTo)
{
    open_with(20);
    type("Down", GetParam());
    type("Return");
    panel().settle();
    expect_dropdown_of(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Rows, QuickKeysTest, testing::Values(1, 5, 6, 8, 14, 19));

TEST_F(QuickInputTest, KeysThatComeWithTheFirstFrameAreNoDifferent)
{
    open_with(20);
    type("Up");
    type("Return");
    panel().settle();
    expect_dropdown_of(19);
    type("XF86Back");
    type("Down");
    type("Down");
    type("Return");
    panel().settle();
    expect_dropdown_of(1);
}

TEST_F(QuickInputTest, AChangeElsewhereBetweenKeysLeavesTheDropDownBesideItsRow)
{
    open_with(20);
    forget();
    change_elsewhere("Phone 20", false);
    ASSERT_TRUE(panel().run_until([this] { return !lines_of("vesk_refresh_list").empty(); }, 3000));
    type("Return");
    panel().settle();
    expect_dropdown_of(0); /* a refresh goes to the first row */
}

struct DragTest : QuickInputTest, testing::WithParamInterface<const char *> {};

TEST_P(DragTest, ScrollsToTheLastRowAndOpensNothing)
{
    open_with(12, GetParam());
    ASSERT_FALSE(is_whole(11));
    for (int drags = 0; drags < 6 && !is_whole(11); ++drags)
        drag_list(-200);
    EXPECT_TRUE(is_whole(11));
    EXPECT_FALSE(dropdown_open());
    touch_row(11);
    ASSERT_TRUE(dropdown_open());
    EXPECT_EQ(elm_genlist_item_index_get(elm_genlist_selected_item_get(app()->genlist)), 12);
}

TEST_P(DragTest, InEditModeMarksNothing)
{
    open_with(12, GetParam());
    press({"Right", "Return"});
    drag_list(-200);
    EXPECT_FALSE(is_whole(0));
    EXPECT_EQ(g_selected_count, 0);
}

INSTANTIATE_TEST_SUITE_P(Products, DragTest, testing::Values("board", "television"),
                         [](const auto &product) { return std::string(product.param); });

TEST_F(QuickInputTest, AFingerThatTremblesTapsAllTheSame)
{
    open_with(12, "board");
    drag_list(10);
    EXPECT_TRUE(dropdown_open());
}

} // namespace
