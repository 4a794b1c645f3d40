/* The main screen on an interactive board, and the sizes of its list. */

#include <array>
#include <gmock/gmock.h>

#include "canvas_parts.h"
#include "screen_test.h"
#include "ug/device_list_screen.h"
#include "ug/edit_mode.h"

using testing::ElementsAre;

namespace {

/* --- Interactive boards --- */

struct BoardTest : ScreenTest {
    void SetUp() override
    {
        use_product("board");
        register_devices(phones(3));
    }
};

TEST_F(BoardTest, ATouchBesideThePopupClosesTheModule)
{
    open();
    panel().tap(5, 5);
    EXPECT_TRUE(closed_itself());
}

TEST_F(BoardTest, ATouchOnThePopupDoesNot)
{
    open();
    const Eina_Rectangle list = area(app()->genlist);
    panel().tap(list.x + 20, list.y - 30);
    EXPECT_FALSE(panel().run_until([this] { return !running(); }, 100));
}

TEST_F(BoardTest, ButtonsHaveIcons)
{
    open();
    EXPECT_STREQ(elm_icon_standard_get(app()->edit_icon), "i_edit");
    EXPECT_STREQ(elm_icon_standard_get(app()->close_icon), "i_close_cancel");
    for (Evas_Object *icon : {app()->edit_icon, app()->close_icon}) {
        EXPECT_TRUE(evas_object_visible_get(icon));
        EXPECT_GT(area(icon).w, 8);
        EXPECT_GT(area(icon).h, 8);
    }
}

TEST_F(BoardTest, TheEditButtonBeginsEditMode)
{
    open();
    press({"Right", "Return"});
    EXPECT_TRUE(b_edit_status);
}

TEST_F(BoardTest, TurnedRowsAreCompact)
{
    set("orientation", "portrait");
    open();
    EXPECT_EQ(row_area(row(app()->genlist, 0)).h, 45);
}

/* --- Sizes --- */

struct SizeTest : ScreenTest {
    /* Back to the panel's scale. */
    ~SizeTest() override { elm_config_scale_set(2.0); }

    /* What a list of the design size gets when the screen's code wraps it: it scales the size, and the wrapper does so
       once more. */
    Size wrapped(double factor, bool main = true)
    {
        elm_config_scale_set(factor * elm_app_base_scale_get());
        Evas_Object *list = elm_genlist_add(app()->base);
        const int width = static_cast<int>(820 * factor + 0.5);
        const int height = static_cast<int>(491 * factor + 0.5);
        Evas_Object *wrapper = widget_min_set(list, app()->base, width, height, main);
        const Size size = min_of(main ? app()->list_rect : app()->action_rect);
        evas_object_del(wrapper);
        return size;
    }
};

TEST_F(SizeTest, TheListIsAsLargeAsDesigned)
{
    register_devices(phones(1));
    open();
    EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491}));
    EXPECT_EQ(area(app()->genlist).w, 820);
    EXPECT_EQ(area(app()->genlist).h, 491);
    EXPECT_EQ(area(app()->genlist).x, 720);
}

TEST_F(SizeTest, IsScaledTwice)
{
    register_devices(phones(1));
    open();
    EXPECT_EQ(wrapped(2.0), (Size{3280, 1964}));
    EXPECT_EQ(wrapped(0.5), (Size{205, 123}));
    EXPECT_EQ(wrapped(1.0, false), (Size{820, 491}));
}

TEST_F(SizeTest, IsCompactOnATurnedBoardOnly)
{
    register_devices(phones(1));
    set("orientation", "portrait");
    open();
    EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491}));
    close();

    use_product("board");
    open();
    EXPECT_EQ(min_of(app()->list_rect), (Size{461, 276}));
    EXPECT_EQ(wrapped(1.0), (Size{461, 276}));
    /* 1640 and 982 times nine sixteenths are 922 and 552. */
    EXPECT_EQ(wrapped(2.0), (Size{1844, 1104}));
}

TEST_F(SizeTest, TheMainListsRectangleIsAFaintBlackAndTheOtherHidden)
{
    register_devices(phones(1));
    open();
    int red = -1;
    int green = -1;
    int blue = -1;
    int alpha = -1;
    evas_object_color_get(app()->list_rect, &red, &green, &blue, &alpha);
    EXPECT_THAT((std::array{red, green, blue, alpha}), ElementsAre(0, 0, 0, 10));
    EXPECT_TRUE(evas_object_visible_get(app()->list_rect));

    Evas_Object *wrapper = widget_min_set(elm_genlist_add(app()->base), app()->base, 10, 10, false);
    EXPECT_FALSE(evas_object_visible_get(app()->action_rect));
    evas_object_del(wrapper);
}

} // namespace
