/* Leaving edit mode, what waits until then, and what keeps edit mode or a mark from being made. */

#include <algorithm>
#include <gmock/gmock.h>

#include "dlog.h"
#include "edit_mode_fixture.h"
#include "spy.h"

using testing::Each;
using testing::ElementsAre;

namespace {

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

} // namespace
