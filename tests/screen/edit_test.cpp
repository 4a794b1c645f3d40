/* Edit mode: buttons, marks, focus and spoken texts, by key and by touch. */

#include <algorithm>
#include <gmock/gmock.h>

#include "edit_mode_fixture.h"
#include "spy.h"
#include "ug/direction.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::UnorderedElementsAre;

namespace {

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

} // namespace
