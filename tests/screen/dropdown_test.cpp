/* The action drop-down: its choices, what they do, and its keys and touches. */

#include <dlog.h>
#include <gmock/gmock.h>

#include "desktop/port_failures.h"
#include "dropdown_fixture.h"
#include "spy.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

/* --- Opening --- */

TEST_F(DropdownTest, OffersThreeChoicesForAnAllowedDeviceWithAllowPreselected)
{
    open_dropdown(1);
    ASSERT_EQ(dropdowns(), std::vector{app()->action_popup});
    EXPECT_THAT(texts(app()->action_genlist), ElementsAre("Allow", "Deny", "View details"));
    EXPECT_EQ(pItem, choice(0));
    EXPECT_EQ(g_subpopup_index, 0);
    EXPECT_TRUE(elm_genlist_item_selected_get(choice(0)));
    EXPECT_EQ(focused_choice(), 0);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(elm_object_item_disabled_get(choice(i))) << i;
}

TEST_F(DropdownTest, PreselectsDenyForADeniedDeviceAndDisablesItsDetails)
{
    open_dropdown(2);
    EXPECT_EQ(pItem, choice(1));
    EXPECT_EQ(g_subpopup_index, 1);
    EXPECT_TRUE(elm_genlist_item_selected_get(choice(1)));
    EXPECT_EQ(focused_choice(), 1);
    EXPECT_FALSE(elm_object_item_disabled_get(choice(0)));
    EXPECT_FALSE(elm_object_item_disabled_get(choice(1)));
    EXPECT_TRUE(elm_object_item_disabled_get(choice(2)));
}

TEST_F(DropdownTest, HasTheStylesOfTheTelevisionAndDimsWhatIsBehind)
{
    EXPECT_EQ(dimming(), "default");
    open_dropdown();
    EXPECT_STREQ(elm_object_style_get(app()->action_popup), "C_ListDropdown_White");
    EXPECT_STREQ(elm_object_style_get(app()->action_genlist), "C_ListDropdown_White");
    EXPECT_TRUE(elm_object_scroll_item_loop_enabled_get(app()->action_genlist));
    EXPECT_EQ(elm_genlist_select_mode_get(app()->action_genlist), ELM_OBJECT_SELECT_MODE_ALWAYS);
    EXPECT_EQ(dimming(), "percent,20");
    EXPECT_EQ(drawings(app()->action_popup, "elm/popup/base/C_ListDropdown_White").size(), 1U);
}

TEST_F(DropdownTest, OpensByATapOnARow)
{
    const Eina_Rectangle place = row_area(row(app()->genlist, 2));
    panel().tap(place.x + place.w / 2, place.y + place.h / 2);
    ASSERT_TRUE(dropdown_open());
    EXPECT_EQ(focused_choice(), 1) << "the denied phone's";
}

TEST_F(DropdownTest, ArrowsGoRoundInItsChoicesAndDoNotLeaveIt)
{
    open_dropdown();
    for (const int expected : {1, 2, 0, 1}) {
        press("Down");
        EXPECT_EQ(focused_choice(), expected);
    }
    for (const int expected : {0, 2, 1}) {
        press("Up");
        EXPECT_EQ(focused_choice(), expected);
    }
    press({"Left", "Right", "Right"});
    EXPECT_EQ(focused_choice(), 1);
}

TEST_F(DropdownTest, ArrowsPassOverTheDisabledDetails)
{
    open_dropdown(2);
    press("Down");
    EXPECT_EQ(focused_choice(), 0);
    press("Up");
    EXPECT_EQ(focused_choice(), 1);
}

TEST_F(DropdownTest, WithoutASelectedRowThereIsNothingToActOn)
{
    _create_popup(app(), app()->genlist, nullptr);
    EXPECT_EQ(priority_of("no row is selected"), DLOG_WARN);
    EXPECT_FALSE(dropdown_open());
    EXPECT_EQ(dimming(), "default");
    EXPECT_EQ(focused_row(), 0);
}

/* --- Choices --- */

TEST_F(DropdownTest, AllowIsWrittenToTheServiceAndTheListFollows)
{
    open_dropdown(2);
    press({"Up", "Return"});
    EXPECT_EQ(status_of("Barred"), 0);
    EXPECT_EQ(logged("[VESKAUTOTC][ALLOW]"), 1);
    EXPECT_EQ(logged("ListRefreshed [3]"), 1);
    EXPECT_EQ(selected_item_index, 2);
    EXPECT_THAT(listed(), ElementsAre(Pair("\u200eFirst\u200e", true), Pair("\u200eSecond\u200e", true),
                                      Pair("\u200eBarred\u200e", true)));
    expect_closed_with_the_list_focused(0);
    press("Down");
    EXPECT_EQ(focused_row(), 1);
}

TEST_F(DropdownTest, DenyIsWrittenToTheServiceAndTheListFollows)
{
    open_dropdown(0);
    press({"Down", "Return"});
    EXPECT_EQ(status_of("First"), 1);
    EXPECT_EQ(logged("[VESKAUTOTC][DENY]"), 1);
    EXPECT_EQ(logged("ListRefreshed [3]"), 1);
    EXPECT_EQ(listed()[0], (std::pair<std::string, bool>{"\u200eSecond\u200e", true}));
    expect_closed_with_the_list_focused(0);
}

TEST_F(DropdownTest, TheListStaysAsItIsUntilTheServiceReports)
{
    open_dropdown(0);
    panel().key_down("Down");
    panel().settle();
    panel().key_up("Down");
    panel().key_down("Return");
    EXPECT_EQ(status_of("First"), 1);
    EXPECT_EQ(logged("[VESKAUTOTC][DENY]"), 1);
    EXPECT_EQ(logged("ListRefreshed [3]"), 0);
    EXPECT_EQ(listed()[0], (std::pair<std::string, bool>{"\u200eFirst\u200e", true}));
    panel().key_up("Return");
    EXPECT_TRUE(wait_for("ListRefreshed [3]"));
}

TEST_F(DropdownTest, TheStateThatADeviceHasAlreadyChangesNothing)
{
    const std::vector<vesk_port::Device> before = registered();
    for (const int row : {1, 2}) {
        open_dropdown(row);
        press("Return");
        expect_closed_with_the_list_focused(row);
        EXPECT_FALSE(b_popup_expanded);
        EXPECT_EQ(selected_item_index, row);
    }
    EXPECT_EQ(registered(), before);
    EXPECT_EQ(logged("ListRefreshed [3]"), 0);
    EXPECT_EQ(logged("[VESKAUTOTC][ALLOW]") + logged("[VESKAUTOTC][DENY]"), 0);
    press("Up");
    EXPECT_EQ(focused_row(), 1);
}

TEST_F(DropdownTest, ViewDetailsOpensThem)
{
    open_dropdown(1);
    press({"Up", "Return"});
    EXPECT_FALSE(dropdown_open());
    EXPECT_TRUE(app()->detail_popup);
    EXPECT_FALSE(elm_object_focus_allow_get(app()->genlist));
    EXPECT_FALSE(elm_object_focus_allow_get(app()->close_button));
    EXPECT_FALSE(b_popup_expanded);
    EXPECT_EQ(selected_item_index, 1);
}

TEST_F(DropdownTest, AnotherKeyIsOnlyLogged)
{
    open_dropdown();
    forget();
    press("a");
    EXPECT_EQ(logged("another button pressed"), 1);
    EXPECT_EQ(logged("Key[a]"), 2) << "by the list and by the popup";
    EXPECT_TRUE(dropdown_open());
    press("ReturnX");
    EXPECT_TRUE(dropdown_open()) << "Return is compared whole";
}

TEST_F(DropdownTest, AServiceThatRefusesLeavesNoMarkAndTheListAsItIs)
{
    open_dropdown();
    vesk_port::set_failures("rdm_set_status=-13");
    press({"Down", "Return"});
    EXPECT_EQ(status_of("First"), 0);
    EXPECT_EQ(logged("[VESKAUTOTC][DENY]"), 0);
    EXPECT_EQ(logged("ListRefreshed [3]"), 1) << "the service answers with the device as it is";
    expect_closed_with_the_list_focused(0);
    press("Down");
    EXPECT_EQ(focused_row(), 1) << "the user goes on";
}

/* --- Refusals and failures --- */

TEST_F(DropdownTest, WithoutTheFocusOnAnyChoiceThePreselectedOneCounts)
{
    open_dropdown(2);
    elm_object_item_focus_set(choice(1), EINA_FALSE);
    g_subpopup_index = 0;
    _item_selected(app());
    EXPECT_EQ(status_of("Barred"), 0);
}

TEST_F(DropdownTest, AWrongIndexIsLoggedAndDoesNothing)
{
    const std::vector<vesk_port::Device> before = registered();
    open_dropdown();
    elm_object_item_focus_set(choice(0), EINA_FALSE);
    g_subpopup_index = 7;
    _item_selected(app());
    EXPECT_EQ(priority_of("Wrong index [7]"), DLOG_WARN);
    panel().settle();
    EXPECT_FALSE(dropdown_open());
    EXPECT_EQ(registered(), before);
    press("Down");
    EXPECT_EQ(focused_row(), 1) << "the user goes on";
}

TEST_F(DropdownTest, AMissingKeyEventIsAnError)
{
    open_dropdown();
    _item_selected_cb(app(), panel().canvas(), app()->action_genlist, nullptr);
    EXPECT_EQ(priority_of("event null"), DLOG_ERROR);
    Close_popup_On_returnKey(app(), panel().canvas(), app()->action_popup, nullptr);
    EXPECT_TRUE(dropdown_open());
}

TEST_F(DropdownTest, WithoutARowClassItIsNotShownAndTheListStaysDimmed)
{
    spy::overrides().no_row_classes = true;
    open_dropdown();
    EXPECT_EQ(priority_of("elm_genlist_item_class_new failed"), DLOG_WARN);
    EXPECT_FALSE(dropdown_open());
    EXPECT_EQ(dimming(), "percent,20");

    /* The list has given its focus away; the arrows lead back to it. */
    spy::overrides().no_row_classes = false;
    press({"Left", "Return"});
    ASSERT_EQ(dropdowns().size(), 1U) << "the next one opens";
    press("XF86Back");
    expect_closed_with_the_list_focused(0);
}

TEST_F(DropdownTest, WithoutAThirdRowADeniedDevicesDropdownOpensAllTheSame)
{
    spy::overrides().no_row = 2;
    open_dropdown(2);
    EXPECT_EQ(priority_of("View Details item is NULL in list"), DLOG_ERROR);
    EXPECT_TRUE(dropdown_open());
    EXPECT_EQ(focused_choice(), 1);
}

TEST_F(DropdownTest, AThirdRowIsMissedForADeniedDeviceOnly)
{
    spy::overrides().no_row = 2;
    open_dropdown(0);
    EXPECT_EQ(logged("View Details item is NULL in list"), 0);
}

TEST_F(DropdownTest, AChoiceWithoutAnAccessObjectHasNoSpokenText)
{
    open_dropdown();
    elm_config_access_set(EINA_TRUE);
    elm_object_item_access_unregister(choice(0));
    subpopupRealizedCb(app(), app()->action_genlist, choice(0));
    EXPECT_EQ(priority_of("access object NULL"), DLOG_ERROR);
    forget();
    subpopupRealizedCb(app(), app()->action_genlist, nullptr);
    EXPECT_THAT(log(), IsEmpty());
    elm_config_access_set(EINA_FALSE);
}

TEST_F(DropdownTest, TextsOfOtherPartsAndPositionsAreEmpty)
{
    for (const intptr_t position : {-1, 0, 1, 2, 3}) {
        char *text = _item_labell_get(reinterpret_cast<void *>(position), nullptr, "elm.text");
        EXPECT_EQ(*text != '\0', position >= 0 && position <= 2) << position;
        free(text);
        text = _item_labell_get(reinterpret_cast<void *>(position), nullptr, "elm.text.1");
        EXPECT_STREQ(text, "") << position;
        free(text);
    }
}

/* --- Dismissing --- */

struct DismissTest : DropdownTest, testing::WithParamInterface<const char *> {};

TEST_P(DismissTest, TheKeyClosesTheDropdownOnly)
{
    const std::vector<vesk_port::Device> before = registered();
    open_dropdown(1);
    press("Down");
    press(GetParam());
    expect_closed_with_the_list_focused(1);
    EXPECT_FALSE(app()->action_popup);
    EXPECT_FALSE(app()->action_genlist);
    EXPECT_FALSE(b_subpopup_entered);
    EXPECT_FALSE(elm_genlist_selected_item_get(app()->genlist));
    EXPECT_EQ(registered(), before);
    EXPECT_TRUE(running());
    press("Down");
    EXPECT_EQ(focused_row(), 2);
}

TEST_P(DismissTest, TheKeyIsSpokenWithTheChoiceOfTheCounter)
{
    open_dropdown(1);
    subpopup_position = 1;
    forget();
    press(GetParam());
    EXPECT_THAT(spoken(), ElementsAre("Deny"));
    EXPECT_EQ(subpopup_position, 1);
    EXPECT_EQ(logged(std::string("Key[") + GetParam() + "]"), 2);
}

INSTANTIATE_TEST_SUITE_P(Keys, DismissTest, testing::Values("XF86Back", "XF86Close", "XF86BackX", "XF86CloseWindow"));

/* --- What is spoken --- */

struct CounterCase {
    int before;
    const char *key;
    int after;
    const char *text;
};

struct CounterTest : DropdownTest, testing::WithParamInterface<CounterCase> {};

TEST_P(CounterTest, TheChoiceOfTheCounterIsSpoken)
{
    open_dropdown();
    subpopup_position = GetParam().before;
    forget();
    press(GetParam().key);
    EXPECT_EQ(subpopup_position, GetParam().after);
    EXPECT_THAT(spoken(), ElementsAre(GetParam().text));
    EXPECT_TRUE(dropdown_open());
}

INSTANTIATE_TEST_SUITE_P(Keys, CounterTest,
                         testing::Values(CounterCase{0, "Up", 2, "View details"}, CounterCase{1, "Up", 0, "Allow"},
                                         CounterCase{2, "Up", 1, "Deny"}, CounterCase{0, "Down", 1, "Deny"},
                                         CounterCase{1, "Down", 2, "View details"}, CounterCase{2, "Down", 0, "Allow"},
                                         CounterCase{0, "UpX", 2, "View details"}, CounterCase{0, "DownX", 1, "Deny"},
                                         CounterCase{-3, "Up", 2, "View details"}, CounterCase{9, "Down", 0, "Allow"},
                                         CounterCase{1, "Left", 1, "Deny"}, CounterCase{0, "a", 0, "Allow"},
                                         CounterCase{0, "U", 0, "Allow"}, CounterCase{0, "Dow", 0, "Allow"}));

TEST_F(DropdownTest, TheCounterCountsThreeAlsoWhileTheThirdIsDisabled)
{
    open_dropdown(2);
    subpopup_position = 1;
    forget();
    press("Down");
    EXPECT_EQ(focused_choice(), 0);
    EXPECT_THAT(spoken(), ElementsAre("View details"));
}

} // namespace
