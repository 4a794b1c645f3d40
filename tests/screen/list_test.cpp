/* The main screen: rows, buttons and the focus between them. */

#include <dlog.h>
#include <gmock/gmock.h>

#include "canvas_parts.h"
#include "desktop/port_failures.h"
#include "screen_test.h"
#include "spy.h"
#include "ug/device_list_screen.h"
#include "ug/direction.h"
#include "ug/edit_mode.h"
#include "ug/rows.h"
#include "vesk/device_table.h"

using testing::Contains;
using testing::ElementsAre;

namespace {

struct ListTest : ScreenTest {
    std::string text(const Evas_Object *widget, const char *part = nullptr)
    {
        const char *text = elm_object_part_text_get(widget, part);
        return text ? text : "";
    }
};

TEST_F(ListTest, ShowsEachDeviceWithNameAndStatusAllowedOnesFirst)
{
    register_devices({phone("Denied", false), phone("Allowed")});
    open();
    EXPECT_THAT(texts(app()->genlist), ElementsAre("\u200eAllowed\u200e", "\u200eDenied\u200e"));
    EXPECT_THAT(texts(app()->genlist, "elm.text.1"), ElementsAre("Allowed", "Denied"));
}

TEST_F(ListTest, HasTitleAndTwoButtonsInTheStylesOfTheTelevision)
{
    register_devices(phones(1));
    open();
    EXPECT_STREQ(elm_object_style_get(app()->base), "C_PopupBasic_WhiteRight");
    EXPECT_EQ(elm_popup_orient_get(app()->base), ELM_POPUP_ORIENT_CENTER);
    EXPECT_EQ(text(app()->base, "title,text"), "Device list");
    EXPECT_EQ(elm_object_part_content_get(app()->base, "button1"), app()->edit_button);
    EXPECT_EQ(elm_object_part_content_get(app()->base, "button2"), app()->close_button);
    EXPECT_EQ(text(app()->edit_button), "Edit");
    EXPECT_EQ(text(app()->close_button), "Close");
    for (const Evas_Object *button : {app()->edit_button, app()->close_button})
        EXPECT_STREQ(elm_object_style_get(button), "C_ButtonBasic_WhiteText");
    EXPECT_FALSE(app()->noitem_label);
    EXPECT_EQ(logged("[VESKAUTOTC][DELETEALL]"), 0);
}

TEST_F(ListTest, SelectsARowAgainAndLogsTheFirstOneAtErrorLevel)
{
    register_devices(phones(1));
    open();
    EXPECT_EQ(elm_genlist_select_mode_get(app()->genlist), ELM_OBJECT_SELECT_MODE_ALWAYS);
    EXPECT_TRUE(elm_object_scroll_item_loop_enabled_get(app()->genlist));
    std::vector<std::string> errors;
    for (const LogLine &line : log()) {
        if (line.priority == DLOG_ERROR)
            errors.push_back(line.function + ": " + line.message);
    }
    EXPECT_THAT(errors, ElementsAre(testing::MatchesRegex("create_genlist: first_item.0x[0-9a-f]+.\n")));
}

TEST_F(ListTest, LogsTheWayThroughItsBuilding)
{
    register_devices(phones(2));
    open();
    EXPECT_THAT(lines_of("_create_c_popup_right"), ElementsAre("Enter", "Exit"));
    EXPECT_THAT(lines_of("widget_min_set"), ElementsAre("Enter", "Exit"));
    EXPECT_THAT(lines_of("create_genlist"), ElementsAre("Enter", testing::StartsWith("first_item["), "Exit"));
}

TEST_F(ListTest, EveryRowHearsItsLayout)
{
    spy::forget();
    register_devices(phones(3));
    open();
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(spy::layouts_of(row(app()->genlist, i)), testing::Each("theme,singleline,icon,2text|")) << i;
    EXPECT_THAT(spy::layouts_of(row(app()->genlist, 2)), Contains("theme,singleline,icon,2text|"));
}

TEST_F(ListTest, ItsFocusChainPutsTheButtonsBesideTheList)
{
    register_devices(phones(2));
    spy::forget();
    open();
    EXPECT_THAT(spy::links(), testing::UnorderedElementsAreArray(
                                  spy::main_chain(app()->genlist, app()->edit_button, app()->close_button, false)));
}

TEST_F(ListTest, ItsFocusChainIsMirroredWhenTheDirectionIsKnownFromBefore)
{
    register_devices(phones(2));
    gbReverse = true;
    spy::forget();
    open();
    EXPECT_THAT(spy::links(), testing::UnorderedElementsAreArray(
                                  spy::main_chain(app()->genlist, app()->edit_button, app()->close_button, true)));
    press("Left");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Right");
    EXPECT_EQ(focused(), app()->genlist);
}

struct NoRowsTest : ListTest, testing::WithParamInterface<int> {};

TEST_P(NoRowsTest, AreStillFollowedByTheFocus)
{
    register_devices(phones(2));
    open();
    Evas_Object *list = app()->genlist;
    elm_object_focus_set(app()->edit_button, EINA_TRUE);
    elm_genlist_clear(list);
    elm_genlist_select_mode_set(list, ELM_OBJECT_SELECT_MODE_DEFAULT);
    evas_object_hide(list);
    evas_object_focus_set(list, EINA_FALSE);
    forget();
    create_genlist(app(), GetParam());
    EXPECT_EQ(elm_genlist_items_count(list), 0U);
    EXPECT_THAT(messages(), ElementsAre("Enter", "first_item[(nil)]\n", "Exit"));
    EXPECT_EQ(log()[1].priority, DLOG_ERROR);
    EXPECT_EQ(elm_genlist_select_mode_get(list), ELM_OBJECT_SELECT_MODE_ALWAYS);
    EXPECT_TRUE(evas_object_focus_get(list));
    EXPECT_TRUE(evas_object_visible_get(list));
}

INSTANTIATE_TEST_SUITE_P(Counts, NoRowsTest, testing::Values(0, -3));

/* --- The focus, with few rows and with many --- */

struct FocusTest : ListTest, testing::WithParamInterface<int> {
    void SetUp() override
    {
        register_devices(phones(GetParam()));
        open();
        ASSERT_EQ(device_count, GetParam());
    }
};

TEST_P(FocusTest, BeginsOnTheFirstRow)
{
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(focused_row(), 0);
    press("Left");
    EXPECT_EQ(focused_row(), 0) << "nothing stands on that side";
}

TEST_P(FocusTest, RightLeadsFromAnyRowToTheFirstButtonAndLeftBackToTheRow)
{
    for (int from : {0, 1, GetParam() / 2, GetParam() - 1}) {
        if (from >= GetParam())
            continue;
        while (focused_row() != from)
            press("Down");
        press("Right");
        EXPECT_EQ(focused(), app()->edit_button);
        press("Left");
        EXPECT_EQ(focused(), app()->genlist);
        EXPECT_EQ(focused_row(), from);
    }
}

TEST_P(FocusTest, UpAndDownGoBetweenTheButtonsAndNoFurther)
{
    press({"Right", "Down"});
    EXPECT_EQ(focused(), app()->close_button);
    press("Up");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Down");
    press("Left");
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(focused_row(), 0);
}

TEST_P(FocusTest, ScrollsRoundAtItsEnds)
{
    press("Up");
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(focused_row(), GetParam() - 1);
    press("Down");
    EXPECT_EQ(focused_row(), 0);
    for (int i = 0; i < GetParam(); ++i)
        press("Down");
    EXPECT_EQ(focused_row(), 0) << "once round";
}

TEST_P(FocusTest, ShowsTheFocusedRowWholly)
{
    for (const char *key : {"Up", "Up", "Down", "Down"}) {
        press(key);
        const Eina_Rectangle list = area(app()->genlist);
        const Eina_Rectangle row = row_area(elm_object_focused_item_get(app()->genlist));
        EXPECT_EQ(row.h, 80);
        EXPECT_GE(row.y, list.y);
        EXPECT_LE(row.y + row.h, list.y + list.h);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, FocusTest, testing::Values(1, 2, 6, 7, 50));

/* --- The number of devices --- */

TEST_F(ListTest, ShowsTheFirstFiftyOfFiftyOneDevices)
{
    register_devices(phones(51));
    open();
    EXPECT_EQ(elm_genlist_items_count(app()->genlist), 50U);
    EXPECT_EQ(logged("\tTABLE FULL"), 1);
    press("Up");
    EXPECT_EQ(texts(app()->genlist).back(), "\u200ePhone 50\u200e");
}

struct EmptyListTest : ListTest {
    void SetUp() override { register_devices({}); }
};

TEST_F(EmptyListTest, SaysSoInTheMiddleOfThePopup)
{
    open();
    EXPECT_EQ(elm_genlist_items_count(app()->genlist), 0U);
    ASSERT_TRUE(app()->noitem_label);
    EXPECT_EQ(elm_object_content_get(app()->base), app()->noitem_label);
    EXPECT_STREQ(elm_object_style_get(app()->noitem_label), "C_TextItem_WhiteSingleline01");
    EXPECT_EQ(text(app()->noitem_label),
              "<align=center><font=CorvaneSans_400:style=Regular font_size=34>No devices registered</font/></align>");
    EXPECT_FALSE(elm_object_focus_allow_get(app()->noitem_label));
    EXPECT_EQ(logged("[VESK] Table is empty"), 1);
    EXPECT_EQ(logged("[VESKAUTOTC][DELETEALL]"), 1);
}

TEST_F(EmptyListTest, CutsALongText)
{
    spy::overrides().texts["SID_NO_EQUIPMENT_STORED_MSG"].assign(400, 'x');
    open();
    spy::overrides().texts.clear();
    const std::string shown = text(app()->noitem_label);
    EXPECT_EQ(shown.size(), 299U);
    EXPECT_EQ(shown.back(), 'x');
}

TEST_F(EmptyListTest, LeavesTheFocusOnTheCloseButton)
{
    spy::forget();
    open();
    EXPECT_THAT(spy::signals_to(app()->close_button), Contains("elm,state,focused|elm"));
    EXPECT_THAT(spy::signals_to(app()->edit_button), Contains("elm,state,dimmed|elm"));
    EXPECT_EQ(focused(), app()->close_button);
    EXPECT_FALSE(elm_object_focus_allow_get(app()->edit_button));
    for (const char *key : {"Up", "Left", "Right", "Down"}) {
        press(key);
        EXPECT_EQ(focused(), app()->close_button) << key;
    }
    press("Return");
    EXPECT_TRUE(closed_itself());
}

TEST_F(EmptyListTest, DimsTheEditButton)
{
    open();
    const std::vector<Evas_Object *> button = drawings(app()->edit_button, "elm/button/base/C_ButtonBasic_WhiteText");
    ASSERT_EQ(button.size(), 1U);
    press("Left");
    const std::vector<Evas_Object *> close = drawings(app()->close_button, "elm/button/base/C_ButtonBasic_WhiteText");
    ASSERT_EQ(close.size(), 1U);
    EXPECT_NE(state_of(button[0], "elm.text"), state_of(close[0], "elm.text"));
}

TEST_F(EmptyListTest, OffABoardTheEditButtonStillAnswers)
{
    open();
    evas_object_smart_callback_call(app()->edit_button, "clicked", nullptr);
    EXPECT_EQ(logged("Disabled Edit Button in case of Empty Device List"), 1);
}

TEST_F(EmptyListTest, OnABoardTheEditButtonHasNoHandlerAtAll)
{
    use_product("board");
    open();
    evas_object_smart_callback_call(app()->edit_button, "clicked", nullptr);
    EXPECT_EQ(logged("Disabled Edit Button in case of Empty Device List"), 0);
}

TEST_F(EmptyListTest, IsWhatAFailingServiceLeaves)
{
    register_devices(phones(3));
    vesk_port::set_failures("rdm_get_list=-5");
    open();
    EXPECT_EQ(logged("[VESK] RDM List read fail"), 1);
    EXPECT_TRUE(app()->noitem_label);
    EXPECT_EQ(focused(), app()->close_button);
}

/* --- Leaving --- */

struct LeavingTest : ListTest, testing::WithParamInterface<const char *> {};

TEST_P(LeavingTest, TheKeyClosesTheModule)
{
    register_devices(phones(1));
    open();
    press(GetParam());
    EXPECT_TRUE(closed_itself());
    EXPECT_EQ(logged("VESK EXIT"), 1);
}

INSTANTIATE_TEST_SUITE_P(Keys, LeavingTest, testing::Values("XF86Back", "XF86Close", "XF86BackX", "XF86CloseButton"));

TEST_F(ListTest, ShorterAndOtherKeysLeaveTheModuleOpen)
{
    register_devices(phones(2));
    open();
    press({"XF86Bac", "Back", "XF86", "a", "xf86back"});
    EXPECT_FALSE(panel().run_until([this] { return !running(); }, 100));
    EXPECT_EQ(focused_row(), 0);
}

TEST_F(ListTest, TheCloseButtonClosesTheModule)
{
    register_devices(phones(2));
    open();
    press({"Right", "Down", "Return"});
    EXPECT_TRUE(closed_itself());

    open();
    tap(app()->close_button);
    EXPECT_TRUE(closed_itself());
}

TEST_F(ListTest, ATouchBesideThePopupMeansNothingOnATelevision)
{
    register_devices(phones(2));
    open();
    panel().tap(5, 5);
    EXPECT_FALSE(panel().run_until([this] { return !running(); }, 100));
}

TEST_F(ListTest, ButtonsHaveNoIconsOffABoard)
{
    register_devices(phones(3));
    open();
    EXPECT_FALSE(app()->edit_icon);
    EXPECT_FALSE(app()->close_icon);
}

/* --- Marks for deletion --- */

TEST_F(ListTest, AMarkedRowShowsItsCheckBoxOnAgainAfterScrollingOutAndIn)
{
    register_devices(phones(50));
    open();
    press({"Right", "Return"});
    ASSERT_TRUE(b_edit_status);
    press("Return");
    ASSERT_TRUE(b_remove_status[0]);
    for (int i = 0; i < 25; ++i)
        press("Down");
    ASSERT_FALSE(check_of_item(row(app()->genlist, 0))) << "the row is still on the screen's canvas";
    press("Right");
    press("Left");
    for (int i = 0; i < 25; ++i)
        press("Up");
    ASSERT_EQ(focused_row(), 0);
    ASSERT_TRUE(check_of_item(row(app()->genlist, 0)));
    EXPECT_TRUE(elm_check_state_get(check_of_item(row(app()->genlist, 0))));
    EXPECT_FALSE(elm_check_state_get(check_of_item(row(app()->genlist, 1))));
}

} // namespace
