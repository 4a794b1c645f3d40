/* Edit mode on an interactive board: the third button and the icons. */

#include <gmock/gmock.h>

#include "edit_fixture.h"
#include "spy.h"
#include "ug/action_popup.h"

using testing::ElementsAre;
using testing::IsSupersetOf;

namespace {

struct BoardEditTest : EditTest {
    BoardEditTest() { use_product("board"); }

    static std::string icon_of(const Evas_Object *icon)
    {
        const char *name = elm_icon_standard_get(icon);
        return name ? name : "";
    }
};

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
