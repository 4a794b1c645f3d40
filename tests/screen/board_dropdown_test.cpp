/* The action drop-down on an interactive board, where choices and what lies outside are touched. */

#include "desktop/port_failures.h"
#include "dropdown_fixture.h"
#include "rdm.h"
#include "ug/edit_mode.h"

namespace {

struct BoardDropdownTest : DropdownTest {
    void SetUp() override
    {
        use_product("board");
        DropdownTest::SetUp();
    }

    void tap_choice(int position)
    {
        const Eina_Rectangle place = row_area(choice(position));
        panel().tap(place.x + place.w / 2, place.y + place.h / 2);
    }
};

TEST_F(BoardDropdownTest, ItsPreselectionArmsIt)
{
    EXPECT_FALSE(b_popup_expanded);
    open_dropdown();
    EXPECT_TRUE(dropdown_open());
    EXPECT_EQ(logged("Item is not selected."), 1);
    EXPECT_TRUE(b_popup_expanded);
}

TEST_F(BoardDropdownTest, ATapOnAChoiceRunsIt)
{
    open_dropdown();
    tap_choice(1);
    EXPECT_EQ(status_of("First"), 1);
    EXPECT_EQ(logged("[VESKAUTOTC][DENY]"), 1);
    expect_closed_with_the_list_focused(0);
}

TEST_F(BoardDropdownTest, ATapOnTheDisabledDetailsDoesNothing)
{
    open_dropdown(2);
    tap_choice(2);
    EXPECT_FALSE(app()->detail_popup);
    EXPECT_EQ(status_of("Barred"), 1);
    EXPECT_TRUE(dropdown_open());
}

TEST_F(BoardDropdownTest, ATouchOutsideRunsTheFocusedChoice)
{
    open_dropdown();
    panel().tap(5, 5);
    expect_closed_with_the_list_focused(0);
    EXPECT_EQ(status_of("First"), 0) << "the preselected choice is the state it has";

    open_dropdown();
    press("Down");
    panel().tap(5, 5);
    EXPECT_EQ(status_of("First"), 1);
    EXPECT_TRUE(running()) << "the touch was the drop-down's";
}

TEST_F(BoardDropdownTest, AFreshOneIsArmedByTheFirstTouchAndRunByTheSecond)
{
    open_dropdown();
    press("Down");
    b_popup_expanded = false;
    forget();
    panel().tap(5, 5);
    EXPECT_EQ(logged("Item is not selected."), 1);
    EXPECT_TRUE(b_popup_expanded);
    EXPECT_TRUE(dropdown_open());
    panel().tap(5, 5);
    EXPECT_FALSE(dropdown_open());
    EXPECT_EQ(status_of("First"), 1);
}

TEST_F(BoardDropdownTest, ReturnRunsTheFocusedChoice)
{
    open_dropdown();
    press({"Down", "Return"});
    EXPECT_EQ(status_of("First"), 1);
    EXPECT_EQ(logged("another button pressed"), 0) << "the list has no key handler on a board";
    expect_closed_with_the_list_focused(0);
}

TEST_F(BoardDropdownTest, SelectingAnotherRowRunsTheArmedOneFirst)
{
    open_dropdown();
    press("Down");
    forget();
    elm_genlist_item_selected_set(row(app()->genlist, 1), EINA_TRUE);
    EXPECT_EQ(logged("[VESKAUTOTC][DENY]"), 1);
    panel().settle();
    EXPECT_LE(dropdowns().size(), 1U);
}

TEST_F(BoardDropdownTest, OneThatAKeyHasClosedIsNotInTheWayOfTheNextNorOfEditMode)
{
    open_dropdown(1);
    press("XF86Back");
    EXPECT_FALSE(b_popup_expanded);
    forget();
    press("Return");
    EXPECT_EQ(dropdowns().size(), 1U);
    EXPECT_EQ(focused_choice(), 0);
    EXPECT_EQ(logged("[VESKAUTOTC][ALLOW]") + logged("[VESKAUTOTC][DENY]"), 0);
    press("XF86Back");
    tap(app()->edit_button);
    EXPECT_TRUE(b_edit_status);
}

TEST_F(BoardDropdownTest, OneWhoseDecisionWasRefusedRunsNothingWhenTheNextOpens)
{
    ASSERT_EQ(rdm_callback_deregister(gVeskHandler), 0) << "a service that does not answer";
    vesk_port::set_failures("rdm_set_status=-5");
    open_dropdown();
    press({"Down", "Return"});
    ASSERT_FALSE(dropdown_open());
    EXPECT_TRUE(b_popup_expanded) << "no report has come that would clear it";
    vesk_port::clear_failures();
    forget();
    elm_genlist_item_selected_set(row(app()->genlist, 1), EINA_TRUE);
    panel().settle();
    EXPECT_EQ(dropdowns().size(), 1U);
    EXPECT_EQ(logged("[VESKAUTOTC][ALLOW]") + logged("[VESKAUTOTC][DENY]"), 0);
}

TEST_F(BoardDropdownTest, EditModeWaitsWhileItIsArmed)
{
    open_dropdown();
    evas_object_smart_callback_call(app()->edit_button, "clicked", nullptr);
    EXPECT_FALSE(b_edit_status);
}

TEST_F(BoardDropdownTest, ATouchOutsideMeansNothingOnATelevision)
{
    close();
    use_product("television");
    open();
    open_dropdown();
    press("Down");
    panel().tap(5, 5);
    EXPECT_TRUE(dropdown_open());
    EXPECT_EQ(status_of("First"), 0);
    EXPECT_FALSE(b_popup_expanded);
}

} // namespace
