/* Edit mode: buttons, marks, focus and spoken texts, by key and by touch. */

#include <algorithm>
#include <gmock/gmock.h>

#include "dlog.h"
#include "edit_fixture.h"
#include "spy.h"
#include "ug/action_popup.h"
#include "ug/settings_watch.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

namespace {

struct EditModeTest : EditTest {

    static std::string icon_of(const Evas_Object *icon)
    {
        const char *name = elm_icon_standard_get(icon);
        return name ? name : "";
    }

    static std::string spoken_button(const char *id)
    {
        return std::string(translated(id)) + ", " + translated("TV_SID_BUTTON");
    }

    static std::string spoken_row(const char *state, const std::string &name)
    {
        return std::string(translated("TV_SID_CHECKBOX")) + "," + translated(state) + "," + shown_name(name) + "," +
               translated("COM_SID_ALLOWED");
    }
};

struct BoardEditTest : EditModeTest {
    BoardEditTest() { use_product("board"); }
};

TEST_F(EditModeTest, FirstButtonTurnsTheListIntoCheckBoxes)
{
    register_devices(phones(5));
    open();
    const auto names_before = names();
    std::fill(std::begin(b_remove_status), std::end(b_remove_status), true);
    g_selected_count = 7;
    forget();
    begin_edit();

    EXPECT_EQ(names(), names_before);
    EXPECT_EQ(expect_checks_agree(), 5);
    EXPECT_THAT(b_remove_status, Each(false));
    EXPECT_EQ(g_selected_count, 0);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_SELECT_ALL"));
    EXPECT_EQ(text_of(app()->close_button), translated("COM_SID_DELETE"));
    EXPECT_FALSE(focusable(app()->close_button));
    EXPECT_EQ(app()->exit_button, nullptr);
    EXPECT_THAT(spoken(), ElementsAre(spoken_button("COM_SID_SELECT_ALL")));
}

TEST_F(EditModeTest, TheFocusIsOnARowAndArrowsMoveAsInTheNormalList)
{
    open_edit(5);
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(focused_row(), 0);
    press("Up");
    EXPECT_EQ(focused_row(), 4);
    press("Down");
    EXPECT_EQ(focused_row(), 0);
    press({"Down", "Down", "Right"});
    EXPECT_EQ(focused(), app()->edit_button);
    press("Down");
    EXPECT_EQ(focused(), app()->edit_button) << "nothing to delete: the second button takes no focus";
    press("Left");
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(focused_row(), 2);
}

TEST_F(EditModeTest, ReturnTurnsTheRowsMarkOver)
{
    open_edit(3);
    forget();
    press("Return");
    EXPECT_THAT(marked(), ElementsAre(0));
    EXPECT_EQ(g_selected_count, 1);
    EXPECT_TRUE(elm_check_state_get(check(0)));
    EXPECT_EQ(focused_row(), 0);
    EXPECT_THAT(spoken(), ElementsAre(spoken_row("TV_SID_CHECKED", "Phone 1")));
    char line[64];
    snprintf(line, sizeof line, "Item Index [%d] [%p]", 0, static_cast<void *>(check(0)));
    EXPECT_EQ(logged(line), 1);
    EXPECT_TRUE(focusable(app()->close_button));

    forget();
    press("Return");
    EXPECT_THAT(marked(), ElementsAre());
    EXPECT_EQ(g_selected_count, 0);
    EXPECT_FALSE(elm_check_state_get(check(0)));
    EXPECT_THAT(spoken(), ElementsAre(spoken_row("TV_SID_UNCHECKED", "Phone 1")));
    EXPECT_EQ(logged(line), 1);
    EXPECT_FALSE(focusable(app()->close_button));
}

TEST_F(EditModeTest, ReturnWorksOnEveryRowOfALongList)
{
    open_edit(50);
    for (int i = 0; i < 50; ++i) {
        ASSERT_EQ(focused_row(), i);
        press("Return");
        ASSERT_TRUE(b_remove_status[i]);
        ASSERT_TRUE(elm_check_state_get(check(i))) << i;
        press("Down");
    }
    EXPECT_EQ(g_selected_count, 50);
}

TEST_F(EditModeTest, BesideTheListStandsTheButtonThatTheMarksCallFor)
{
    open_edit(3);
    press("Right");
    EXPECT_EQ(focused(), app()->edit_button);
    press({"Left", "Return", "Right"});
    EXPECT_EQ(focused(), app()->close_button);
    press("Up");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Down");
    EXPECT_EQ(focused(), app()->close_button);
    press({"Left", "Return", "Right"});
    EXPECT_EQ(focused(), app()->edit_button);
}

TEST_F(EditModeTest, BesideMeansTheOtherSideInLanguagesWrittenFromRightToLeft)
{
    set("language", "ar_AE");
    register_devices(phones(3));
    open();
    press({"Return", "XF86Back"}); /* the direction is read when a drop-down opens */
    tap(app()->edit_button);
    ASSERT_TRUE(b_edit_status);
    EXPECT_EQ(focused(), app()->genlist);
    press("Left");
    EXPECT_EQ(focused(), app()->edit_button);
    press({"Right", "Return", "Left"});
    EXPECT_EQ(focused(), app()->close_button);
    press({"Up", "Return"});
    EXPECT_THAT(marked(), ElementsAre(0, 1, 2));
    press("Right");
    EXPECT_EQ(focused(), app()->genlist);
    press("Left");
    EXPECT_EQ(focused(), app()->close_button);
}

TEST_F(EditModeTest, CheckingTheLastRowByHandOffersToDeselectAll)
{
    open_edit(3);
    turn_over({0, 1});
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_SELECT_ALL"));
    g_selected_count = 40;
    turn_over({2});
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_DESELECT_ALL"));
    EXPECT_EQ(g_selected_count, 3);
    turn_over({2});
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_SELECT_ALL"));
    EXPECT_EQ(g_selected_count, 2);
}

TEST_F(EditModeTest, SelectAllMarksTheWholeTableAndDeselectAllClearsIt)
{
    open_edit(3);
    press("Right");
    forget();
    press("Return");
    EXPECT_THAT(b_remove_status, Each(true));
    EXPECT_EQ(g_selected_count, 3);
    EXPECT_EQ(expect_checks_agree(), 3);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_DESELECT_ALL"));
    EXPECT_TRUE(focusable(app()->close_button));
    EXPECT_EQ(focused(), app()->edit_button);
    EXPECT_THAT(spoken(), ElementsAre(spoken_button("COM_SID_DESELECT_ALL")));
    press("Left");
    EXPECT_EQ(focused(), app()->genlist);
    press("Right");
    EXPECT_EQ(focused(), app()->close_button);

    press("Up");
    forget();
    press("Return");
    EXPECT_THAT(b_remove_status, Each(false));
    EXPECT_EQ(g_selected_count, 0);
    EXPECT_EQ(expect_checks_agree(), 3);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_SELECT_ALL"));
    EXPECT_FALSE(focusable(app()->close_button));
    EXPECT_EQ(focused(), app()->edit_button);
    EXPECT_THAT(spoken(), ElementsAre(spoken_button("COM_SID_SELECT_ALL")));
    press({"Left", "Right"});
    EXPECT_EQ(focused(), app()->edit_button);
}

TEST_F(EditModeTest, SelectAllCompletesAPartialSelection)
{
    open_edit(4);
    turn_over({1, 2});
    press({"Right", "Up", "Return"});
    EXPECT_THAT(marked(), ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(expect_checks_agree(), 4);
    EXPECT_EQ(g_selected_count, 4);
}

TEST_F(EditModeTest, TouchOnARowOrOnItsCheckBoxTurnsTheMarkOver)
{
    for (const char *product : {"television", "board"}) {
        use_product(product);
        open_edit(4);
        const Eina_Rectangle place = row_area(row(app()->genlist, 2));
        panel().tap(place.x + place.w / 2, place.y + place.h / 2);
        panel().settle();
        EXPECT_THAT(marked(), ElementsAre(2)) << product;
        tap(check(2));
        EXPECT_THAT(marked(), ElementsAre()) << product;
        tap(check(1));
        EXPECT_THAT(marked(), ElementsAre(1)) << product;
        tap(check(3));
        EXPECT_THAT(marked(), ElementsAre(1, 3)) << product;
        EXPECT_EQ(expect_checks_agree(), 4);
        EXPECT_EQ(g_selected_count, 2);
        EXPECT_EQ(focused(), app()->genlist);
        close();
        reset_module_state();
    }
}

TEST_F(EditModeTest, TheLayoutWithACheckBoxIsTheLastThatARowHears)
{
    register_devices(phones(5));
    open();
    spy::forget();
    begin_edit();
    const auto expect_check_layouts = [this](const std::string &when) {
        for (int i = 0; i < 5; ++i) {
            const std::vector<std::string> layouts = spy::layouts_of(row(app()->genlist, i));
            ASSERT_GE(layouts.size(), 2u) << "row " << i << when;
            EXPECT_EQ(layouts.front(), "theme,singleline,icon,2text|") << "row " << i << when;
            EXPECT_EQ(layouts.back(), "theme,singleline,check,icon,2text|") << "row " << i << when;
        }
    };
    expect_check_layouts(" at the beginning");
    for (const char *when : {" after the first press", " after the second press"}) {
        click(app()->edit_button);
        spy::forget();
        elm_genlist_realized_items_update(app()->genlist);
        panel().settle();
        expect_check_layouts(when);
    }
}

TEST_F(EditModeTest, EveryPressOfTheFirstButtonRegistersTheLayoutOnceMore)
{
    open_edit(2);
    const std::string plain = "theme,singleline,icon,2text|";
    const std::string check = "theme,singleline,check,icon,2text|";
    for (size_t presses = 1; presses <= 3; ++presses) {
        spy::forget();
        Elm_Object_Item *first = row(app()->genlist, 0);
        evas_object_smart_callback_call(app()->genlist, "realized", first);
        std::vector<std::string> expected(presses, check);
        expected.insert(expected.begin(), plain);
        EXPECT_EQ(spy::layouts_of(first), expected) << presses << " presses";
        click(app()->edit_button);
    }
}

TEST_F(EditModeTest, AllAreTurnedOverInTheFiftySlotsBehindTheNumberOfDevices)
{
    open_edit(3);
    std::vector<Evas_Object *> own;
    for (Evas_Object *&slot : app()->checks)
        own.push_back(slot = elm_check_add(app()->base));
    for (const bool marking : {true, false}) {
        for (Evas_Object *box : own)
            elm_check_state_set(box, !marking);
        click(app()->edit_button);
        for (size_t slot = 0; slot < own.size(); ++slot) {
            const bool reached = slot >= 3 && slot < 3 + 50;
            EXPECT_EQ(elm_check_state_get(own[slot]) == EINA_TRUE, reached == marking) << "slot " << slot;
        }
        EXPECT_EQ(expect_checks_agree(), 3) << "whatever lies in the slots";
    }
}

TEST_F(EditModeTest, TheFocusChainLeadsFromTheFirstButtonToTheSecond)
{
    register_devices(phones(3));
    open();
    spy::forget();
    begin_edit();
    const Evas_Object *list = app()->genlist;
    const Evas_Object *first = app()->edit_button;
    const Evas_Object *second = app()->close_button;
    EXPECT_THAT(spy::links(),
                UnorderedElementsAre(spy::Link{first, ELM_FOCUS_NEXT, list}, spy::Link{first, ELM_FOCUS_LEFT, list},
                                     spy::Link{list, ELM_FOCUS_RIGHT, first}, spy::Link{list, ELM_FOCUS_DOWN, list},
                                     spy::Link{first, ELM_FOCUS_DOWN, second}, spy::Link{list, ELM_FOCUS_UP, list},
                                     spy::Link{second, ELM_FOCUS_UP, first}));
}

TEST_F(EditModeTest, TheFocusChainIsMirroredInLanguagesWrittenFromRightToLeft)
{
    register_devices(phones(3));
    open();
    gbReverse = true;
    spy::forget();
    begin_edit();
    EXPECT_THAT(spy::links(), IsSupersetOf({spy::Link{app()->edit_button, ELM_FOCUS_NEXT, app()->genlist},
                                            spy::Link{app()->edit_button, ELM_FOCUS_RIGHT, app()->genlist},
                                            spy::Link{app()->genlist, ELM_FOCUS_LEFT, app()->edit_button}}));
}

TEST_F(BoardEditTest, TheFocusChainEndsAtTheThirdButton)
{
    register_devices(phones(3));
    open();
    spy::forget();
    begin_edit();
    EXPECT_THAT(spy::links(), IsSupersetOf({spy::Link{app()->edit_button, ELM_FOCUS_DOWN, app()->close_button},
                                            spy::Link{app()->close_button, ELM_FOCUS_DOWN, app()->exit_button},
                                            spy::Link{app()->exit_button, ELM_FOCUS_UP, app()->close_button},
                                            spy::Link{app()->close_button, ELM_FOCUS_UP, app()->edit_button}}));
}

TEST_F(EditModeTest, TouchOnTheButtonsWorksLikeTheKeys)
{
    register_devices(phones(3));
    open();
    tap(app()->edit_button);
    ASSERT_TRUE(b_edit_status);
    EXPECT_EQ(focused(), app()->genlist);
    tap(app()->edit_button);
    EXPECT_THAT(marked(), ElementsAre(0, 1, 2));
    tap(app()->close_button);
    EXPECT_NE(app()->delete_popup, nullptr);
}

TEST_F(EditModeTest, BackReturnsToTheListAndTheArrowsGoOn)
{
    open_edit(5);
    turn_over({1, 3});
    g_orientation_checkbox_count = 9;
    press("XF86Back");
    EXPECT_FALSE(b_edit_status);
    EXPECT_TRUE(running());
    EXPECT_EQ(g_orientation_checkbox_count, 0);
    EXPECT_EQ(g_checkbox_index, 0);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_EDIT"));
    EXPECT_EQ(text_of(app()->close_button), translated("COM_SID_CLOSE"));
    EXPECT_THAT(marked(), ElementsAre(1, 3)) << "marks stay until edit mode begins again";
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(check(i), nullptr);
    EXPECT_EQ(focused(), app()->genlist);
    const int before = focused_row();
    press("Down");
    EXPECT_EQ(focused_row(), before + 1);
    press("Right");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Down");
    EXPECT_EQ(focused(), app()->close_button);
    press({"Up", "Return"});
    EXPECT_THAT(marked(), ElementsAre());
}

TEST_F(EditModeTest, BackReturnsToTheListFromAButtonToo)
{
    open_edit(5);
    press({"Right", "Return", "XF86Back"});
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(focused(), app()->genlist);
    const int before = focused_row();
    press("Down");
    EXPECT_EQ(focused_row(), before + 1);
}

TEST_F(EditModeTest, EnteringAndLeavingManyTimesNeverLosesTheFocus)
{
    register_devices(phones(5));
    open();
    for (int i = 0; i < 8; ++i) {
        if (i % 2)
            tap(app()->edit_button);
        else
            press({"Right", "Return"});
        ASSERT_TRUE(b_edit_status) << i;
        ASSERT_EQ(focused(), app()->genlist) << i;
        press("Return");
        ASSERT_THAT(marked(), ElementsAre(focused_row())) << i;
        press("XF86Back");
        ASSERT_FALSE(b_edit_status) << i;
        ASSERT_EQ(focused(), app()->genlist) << i;
        ASSERT_GE(focused_row(), 0) << i;
    }
}

TEST_F(EditModeTest, AStatusChangeWaits)
{
    open_edit(3);
    turn_over({1});
    forget();
    auto devices = registered();
    devices[0].status = 1;
    service().set_status(devices[0].id, 1);
    panel().settle();
    EXPECT_EQ(logged("Edit mode now. refresh canceled."), 1);
    EXPECT_TRUE(b_edit_status);
    EXPECT_THAT(marked(), ElementsAre(1));
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 1"), shown_name("Phone 2"), shown_name("Phone 3")));
    EXPECT_THAT(texts(app()->genlist, "elm.text.1"), Each(std::string(translated("COM_SID_ALLOWED"))));
    EXPECT_EQ(expect_checks_agree(), 3);

    /* The table is read again with the next change after edit mode. */
    press("XF86Back");
    service().set_status(devices[1].id, 1);
    EXPECT_TRUE(panel().run_until([this] { return names().front() == shown_name("Phone 3"); }, 2000));
    const std::string denied = translated("COM_SID_DENIED_KR_DENY");
    EXPECT_THAT(texts(app()->genlist, "elm.text.1"), ElementsAre(translated("COM_SID_ALLOWED"), denied, denied));
}

TEST_F(EditModeTest, AnEmptyTableHasNothingToEdit)
{
    register_devices({});
    open();
    forget();
    click(app()->edit_button);
    EXPECT_EQ(logged("Disabled Edit Button in case of Empty Device List"), 1);
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_EDIT"));
    EXPECT_EQ(focused(), app()->close_button);
}

TEST_F(EditModeTest, WithoutARowClassThereIsNoEditMode)
{
    register_devices(phones(3));
    open();
    press("Right");
    b_remove_status[1] = true;
    g_selected_count = g_checkbox_index = 7;
    forget();
    spy::overrides().no_row_classes = true;
    press("Return");
    EXPECT_THAT(marked(), ElementsAre(1)) << "the marks stay";
    EXPECT_EQ(g_selected_count, 0);
    EXPECT_EQ(g_checkbox_index, 0);
    EXPECT_EQ(elm_genlist_items_count(app()->genlist), 0u);
    EXPECT_EQ(logged("Cannot create genlist item class"), 1);
    const auto line = std::ranges::find(log(), "Cannot create genlist item class", &LogLine::message);
    EXPECT_EQ(line->priority, DLOG_ERROR);
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_EDIT"));
    press("XF86Back");
    EXPECT_TRUE(closed_itself());
}

TEST_F(EditModeTest, WithoutASelectedRowNothingIsMarked)
{
    open_edit(3);
    forget();
    _checkbox_cb(app(), app()->genlist, nullptr);
    EXPECT_THAT(messages(), ElementsAre("Enter", "elm_genlist_selected_item_get Failed"));
    EXPECT_EQ(log().back().priority, DLOG_WARN);
    EXPECT_THAT(b_remove_status, Each(false));
}

TEST_F(EditModeTest, ARowWithoutAnIndexIsNotMarked)
{
    open_edit(3);
    turn_over({0});
    forget();
    spy::overrides().no_indexes = true;
    _checkbox_cb(app(), app()->genlist, nullptr);
    EXPECT_THAT(messages(), ElementsAre("Enter", "elm_genlist_item_index_get Failed"));
    EXPECT_EQ(log().back().priority, DLOG_WARN);
    EXPECT_THAT(marked(), ElementsAre(0));
}

TEST_F(EditModeTest, ARowOutOfSightIsMarkedWithoutACheckBox)
{
    open_edit(50);
    ASSERT_EQ(check(49), nullptr);
    forget();
    elm_genlist_item_selected_set(row(app()->genlist, 49), EINA_TRUE);
    EXPECT_EQ(logged("Check box is null [49]"), 1);
    EXPECT_THAT(marked(), ElementsAre(49));
    EXPECT_EQ(g_selected_count, 1);
    elm_genlist_item_show(row(app()->genlist, 49), ELM_GENLIST_ITEM_SCROLLTO_IN);
    panel().settle();
    ASSERT_NE(check(49), nullptr);
    EXPECT_TRUE(elm_check_state_get(check(49)));
}

TEST_F(EditModeTest, TheSecondButtonAsksEvenWithNothingMarked)
{
    open_edit(3);
    forget();
    click(app()->close_button);
    EXPECT_NE(app()->delete_popup, nullptr);
    EXPECT_EQ(logged("b_selected_any[0]"), 0);
}

TEST_F(EditModeTest, TheSecondButtonClosesTheModuleInNormalMode)
{
    register_devices(phones(2));
    open();
    press({"Right", "Down", "Return"});
    EXPECT_TRUE(closed_itself());
}

TEST_F(BoardEditTest, AThirdButtonLeavesEditMode)
{
    open_edit(3);
    ASSERT_NE(app()->exit_button, nullptr);
    EXPECT_EQ(text_of(app()->exit_button), translated("COM_SID_CLOSE"));
    EXPECT_STREQ(elm_object_style_get(app()->exit_button), "C_ButtonBasic_WhiteText");
    EXPECT_EQ(elm_object_part_content_get(app()->base, "button3"), app()->exit_button);
    EXPECT_TRUE(evas_object_visible_get(app()->exit_button));
    press("Return");
    press("Right");
    EXPECT_EQ(focused(), app()->close_button);
    press("Down");
    EXPECT_EQ(focused(), app()->exit_button);
    press("Up");
    EXPECT_EQ(focused(), app()->close_button);
    press({"Down", "Return"});
    EXPECT_FALSE(b_edit_status);
    EXPECT_TRUE(running());
    EXPECT_EQ(app()->exit_button, nullptr);
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_GE(focused_row(), 0);
}

TEST_F(BoardEditTest, TheThirdButtonCanBeReachedWithNothingMarked)
{
    open_edit(3);
    press({"Right", "Down"});
    EXPECT_EQ(focused(), app()->exit_button);
    press("Up");
    EXPECT_EQ(focused(), app()->edit_button);
}

TEST_F(BoardEditTest, TheFirstButtonsIconFollowsTheRowsMarkedByHand)
{
    open_edit(2);
    EXPECT_EQ(icon_of(app()->edit_icon), "i_edit");
    turn_over({0});
    EXPECT_EQ(icon_of(app()->edit_icon), "i_select_all");
    turn_over({1});
    EXPECT_EQ(icon_of(app()->edit_icon), "i_deselect_all");
    tap(app()->edit_button);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_SELECT_ALL"));
    EXPECT_EQ(icon_of(app()->edit_icon), "i_deselect_all") << "the button itself changes no icon";
    press("XF86Back");
    EXPECT_EQ(icon_of(app()->edit_icon), "i_edit");
    EXPECT_EQ(icon_of(app()->close_icon), "i_close_cancel");
}

TEST_F(BoardEditTest, TheSecondButtonAsksOnlyWithADeviceMarked)
{
    open_edit(3);
    forget();
    click(app()->close_button);
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_EQ(logged("b_selected_any[0]"), 1);
    EXPECT_EQ(log().back().function, "check_selected_any");
    turn_over({1});
    forget();
    click(app()->close_button);
    EXPECT_NE(app()->delete_popup, nullptr);
    EXPECT_EQ(logged("b_selected_any[1]"), 1);
}

TEST_F(BoardEditTest, AMarkBeyondTheTableIsNoMark)
{
    open_edit(3);
    b_remove_status[3] = true;
    EXPECT_FALSE(check_selected_any());
    b_remove_status[2] = true;
    EXPECT_TRUE(check_selected_any());
}

TEST_F(BoardEditTest, TheFirstButtonDoesNothingBehindADropDown)
{
    register_devices(phones(3));
    open();
    press("Return");
    ASSERT_TRUE(b_popup_expanded);
    click(app()->edit_button);
    EXPECT_FALSE(b_edit_status);
}

TEST_F(BoardEditTest, AnEmptyTableLeavesTheFirstButtonWithoutAHandler)
{
    register_devices({});
    open();
    forget();
    click(app()->edit_button);
    EXPECT_THAT(messages(), ElementsAre());
}

} // namespace
