/* The panel is turned by the user's setting while each of the screens is open. */

#include <dlog.h>

#include "desktop/port_failures.h"
#include "turn_fixture.h"
#include "ug/detail_popup.h"
#include "ug/edit_mode.h"
#include "ug/settings_watch.h"

namespace {

/* ---- The main list ---- */

TEST_F(TurnTest, TheListsSizeFollows)
{
    for (const char *product : {"television", "board"}) {
        use_product(product);
        open();
        EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491}));
        turn("portrait");
        EXPECT_EQ(min_of(app()->list_rect), (Size{461, 276})) << product;
        EXPECT_GE(area(app()->genlist).w, 461);
        turn("landscape");
        EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491})) << product;
        EXPECT_GE(area(app()->genlist).w, 820);
        close();
    }
}

TEST_F(TurnTest, TheSizesAreScaledTwice)
{
    open();
    elm_config_scale_set(4.0);
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(min_of(app()->list_rect), (Size{3280, 1964}));
    vesk_port::set_failures("vconf_get_int=-1");
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(min_of(app()->list_rect), (Size{3280, 1964})) << "landscape when it cannot be told";
    EXPECT_EQ(logged("error vconf_get_int : 0"), 1);
    elm_config_scale_set(2.0);
}

TEST_F(TurnTest, AnyOrientationButZeroIsPortrait)
{
    open();
    for (const char *value : {"2", "-1", "90"}) {
        vesk_port::write_setting(kOrientationKey, value);
        ASSERT_TRUE(panel().run_until([this] { return panel().portrait(); }, 2000)) << value;
        panel().settle();
        EXPECT_EQ(min_of(app()->list_rect), (Size{461, 276}));
        turn("landscape");
    }
}

TEST_F(TurnTest, KeysWorkAtOnceAfterATurn)
{
    open();
    press("Down");
    turn("portrait");
    press("Down");
    EXPECT_EQ(focused_row(), 2);
    press({"Up", "Up", "Up"});
    EXPECT_EQ(focused_row(), 3) << "and round";
    press("Return");
    EXPECT_EQ(focused(), app()->action_genlist);
    press("XF86Back");
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(TurnTest, EveryDeviceIsStillThere)
{
    open();
    const auto before = texts(app()->genlist);
    turn("portrait");
    EXPECT_EQ(texts(app()->genlist), before);
    EXPECT_EQ(before.size(), 4U);
}

TEST_F(TurnTest, TheCountersOfTheCheckBoxesBeginAnew)
{
    open();
    g_checkbox_index = 7;
    g_orientation_checkbox_count = 9;
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(g_checkbox_index, 0);
    EXPECT_EQ(g_orientation_checkbox_count, 0);
    EXPECT_EQ(logged("ROTATION callback"), 1);
}

/* ---- The drop-down ---- */

struct DropDownTurnTest : TurnTest {
    /* The setting is there before the drop-down hears of the turn, which it does only while the flag is set. */
    double vertical()
    {
        double x = 0;
        double y = 0;
        elm_popup_align_get(app()->action_popup, &x, &y);
        EXPECT_EQ(x, 0.5);
        return y;
    }

    void open_third()
    {
        use_product("board");
        open();
        open_dropdown(2);
        ASSERT_TRUE(b_popup_expanded) << "armed by its preselection";
    }
};

TEST_F(DropDownTurnTest, SizesAndPlaceFollowTheRow)
{
    open_third();
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_NEAR(vertical(), (4 * 80 + 268) / 1080.0 - 0.03, 1e-9);
    EXPECT_EQ(min_of(app()->action_rect), (Size{250, 279}));

    turn("portrait");
    EXPECT_NEAR(vertical(), (4 * 45 + 813) / 1920.0 - 0.013, 1e-9);
    EXPECT_EQ(min_of(app()->action_rect), (Size{140, 156}));
    EXPECT_TRUE(evas_object_visible_get(app()->action_popup));

    turn("landscape");
    EXPECT_NEAR(vertical(), (4 * 80 + 268) / 1080.0 - 0.03, 1e-9);
    EXPECT_EQ(min_of(app()->action_rect), (Size{250, 279}));
}

TEST_F(DropDownTurnTest, StaysAsItIsOnATelevision)
{
    open();
    open_dropdown(2);
    ASSERT_FALSE(b_popup_expanded);
    const auto size = min_of(app()->action_rect);
    turn("portrait");
    EXPECT_EQ(min_of(app()->action_rect), size);
    EXPECT_EQ(focused(), app()->action_genlist);
    press("Down");
    EXPECT_EQ(focused(), app()->action_genlist);
    press("XF86Back");
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(DropDownTurnTest, IsNotPlacedByAScreenOfUnknownSize)
{
    open_third();
    VconfNotifyCB(nullptr, nullptr);
    const double before = vertical();
    vesk_port::set_failures("system_info_get_platform_int=-1");
    forget();
    turn("portrait");
    EXPECT_EQ(logged("screen size is unknown"), 1);
    for (const LogLine &line : log()) {
        if (line.message == "screen size is unknown") {
            EXPECT_EQ(line.priority, DLOG_WARN);
        }
    }
    EXPECT_EQ(vertical(), before);
    EXPECT_EQ(min_of(app()->action_rect), (Size{140, 156})) << "its size follows all the same";
}

TEST_F(DropDownTurnTest, IsNotPlacedWithoutASelectedRow)
{
    open_third();
    VconfNotifyCB(nullptr, nullptr);
    const double before = vertical();
    elm_genlist_item_selected_set(row(app()->genlist, 2), EINA_FALSE);
    forget();
    turn("portrait");
    EXPECT_EQ(logged("no row is selected"), 1);
    EXPECT_EQ(vertical(), before);
}

TEST_F(DropDownTurnTest, ThatHasGoneIsNotAligned)
{
    open_third();
    press("XF86Back");
    ASSERT_EQ(app()->action_popup, nullptr);
    b_popup_expanded = true;
    turn("portrait");
    EXPECT_TRUE(running());
    EXPECT_EQ(focused(), app()->genlist);
}

/* ---- Edit mode ---- */

TEST_F(TurnTest, EditModeDisablesTheSecondButtonWhileNothingIsMarked)
{
    open();
    press({"Right", "Return"});
    ASSERT_TRUE(b_edit_status);
    turn("portrait");
    EXPECT_TRUE(elm_object_disabled_get(app()->close_button));
    EXPECT_FALSE(elm_object_focus_allow_get(app()->close_button));
    press("Return");
    ASSERT_EQ(g_selected_count, 1);
    EXPECT_FALSE(elm_object_disabled_get(app()->close_button)) << "a mark makes it work again";
    turn("landscape");
    EXPECT_FALSE(elm_object_disabled_get(app()->close_button));
    EXPECT_TRUE(elm_object_focus_allow_get(app()->close_button));
}

TEST_F(TurnTest, MarksStayOnTheirRows)
{
    open();
    press({"Right", "Return"});
    press({"Return", "Down", "Down", "Return"});
    const auto checks = [this] {
        std::vector<bool> on;
        for (int i = 0; i < device_count; ++i) {
            const Evas_Object *check = elm_object_item_part_content_get(row(app()->genlist, i), "elm.swallow.checkbox");
            on.push_back(check && elm_check_state_get(check));
        }
        return on;
    };
    const std::vector<bool> marked{true, false, true, false};
    ASSERT_EQ(checks(), marked);
    turn("portrait");
    EXPECT_EQ(checks(), marked);
    turn("landscape");
    EXPECT_EQ(checks(), marked);
    EXPECT_EQ(g_selected_count, 2);
}

/* ---- The details ---- */

TEST_F(TurnTest, TheDetailsAreBuiltAnew)
{
    open();
    open_details(0);
    Evas_Object *const before = app()->detail_popup;
    bool deleted = false;
    evas_object_event_callback_add(
        before, EVAS_CALLBACK_DEL, [](void *flag, Evas *, Evas_Object *, void *) { *static_cast<bool *>(flag) = true; },
        &deleted);
    turn("portrait");
    EXPECT_TRUE(deleted);
    ASSERT_NE(app()->detail_popup, nullptr);
    EXPECT_EQ(shown_popups(panel().canvas(), "C_PopupBasic_WhiteRight").size(), 2U) << "the list's and the details'";
    press("XF86Back");
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_TRUE(running());
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(elm_genlist_selected_item_get(app()->genlist), nullptr);
    press("Down");
    EXPECT_EQ(focused_row(), 1);
}

TEST_F(TurnTest, TheDetailsOfABoardBecomeCompact)
{
    use_product("board");
    open();
    selected_item_index = 0;
    show_detail_popup(app());
    panel().settle();
    EXPECT_EQ(area(app()->service_genlist).w, 780);
    turn("portrait");
    EXPECT_EQ(area(app()->service_genlist).w, 439);
    turn("landscape");
    EXPECT_EQ(area(app()->service_genlist).w, 780);
}

/* ---- Turned from the beginning ---- */

TEST_F(TurnTest, AModuleThatOpensTurnedIsWhole)
{
    for (const char *product : {"television", "board"}) {
        use_product(product);
        set("orientation", "portrait");
        open();
        ASSERT_TRUE(panel().portrait());
        expect_all_on_the_panel();
        const bool compact = b_is_tablo;
        EXPECT_EQ(min_of(app()->list_rect), (compact ? Size{461, 276} : Size{820, 491}));
        turn("landscape");
        EXPECT_EQ(min_of(app()->list_rect), (Size{820, 491}));
        expect_all_on_the_panel();
        close();
    }
}

TEST_F(TurnTest, AnEmptyListTurnsToo)
{
    register_devices({});
    open();
    Evas_Object *const button = focused();
    EXPECT_EQ(button, app()->close_button);
    const auto before = picture("before");
    turn("portrait");
    expect_all_on_the_panel();
    EXPECT_EQ(focused(), button);
    turn("landscape");
    EXPECT_TRUE(picture("after") == before);
}

TEST_F(TurnTest, NothingTurnsWithoutAScreen)
{
    open();
    close();
    forget();
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(messages(), (std::vector<std::string>{"ROTATION callback", "no screen to turn"}));
    EXPECT_EQ(log()[1].priority, DLOG_WARN);
}

TEST_F(TurnTest, TheWatchEndsWithTheModule)
{
    open();
    press("XF86Back");
    ASSERT_TRUE(closed_itself());
    forget();
    set("orientation", "portrait");
    ASSERT_TRUE(panel().run_until([this] { return panel().portrait(); }, 2000));
    EXPECT_EQ(logged("ROTATION callback"), 0);
}

} // namespace
