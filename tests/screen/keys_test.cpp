/* Keys of the main screen, and touches beside it. */

#include <gmock/gmock.h>

#include "dlog.h"
#include "edit_fixture.h"
#include "spy.h"
#include "ug/action_popup.h"
#include "ug/settings_watch.h"

using testing::Contains;
using testing::ElementsAre;

namespace {

struct KeysTest : EditTest {
    void open_list(int devices)
    {
        register_devices(phones(devices));
        open();
        current_position = 0;
        forget();
    }

    /* A key as the handler hears it, whatever has the focus. */
    void hear(const char *name)
    {
        Evas_Event_Key_Down event{};
        std::string text = name;
        event.keyname = text.data();
        Close_app_On_returnKey(app(), panel().canvas(), app()->base, &event);
    }
};

TEST_F(KeysTest, UpAndDownKeepTrackOfTheRowRoundTheEnds)
{
    open_list(3);
    for (int expected : {1, 2, 0, 1}) {
        press("Down");
        EXPECT_EQ(current_position, expected);
        EXPECT_EQ(focused_row(), expected);
    }
    for (int expected : {0, 2, 1}) {
        press("Up");
        EXPECT_EQ(current_position, expected);
        EXPECT_EQ(focused_row(), expected);
    }
    EXPECT_THAT(messages(), Contains("key[Up]"));
    EXPECT_EQ(logged("done"), 7);
}

TEST_F(KeysTest, UpAndDownAreTrackedInEditModeToo)
{
    open_list(3);
    begin_edit();
    current_position = 0;
    press("Up");
    EXPECT_EQ(current_position, 2);
    press("Down");
    EXPECT_EQ(current_position, 0);
}

TEST_F(KeysTest, OnAButtonNothingIsTracked)
{
    open_list(3);
    press({"Right", "Down", "Up"});
    EXPECT_EQ(current_position, 0);
}

TEST_F(KeysTest, BehindADropDownNothingIsTracked)
{
    open_list(3);
    press("Return");
    ASSERT_NE(app()->action_genlist, nullptr);
    hear("Down");
    EXPECT_EQ(current_position, 0);
}

TEST_F(KeysTest, ALongerNameIsTheKeyThatItBeginsWith)
{
    open_list(3);
    hear("DownRight");
    EXPECT_EQ(current_position, 1);
    hear("UpLeft");
    EXPECT_EQ(current_position, 0);
    hear("Dow");
    hear("up");
    EXPECT_EQ(current_position, 0);
}

TEST_F(KeysTest, BackAndCloseCloseTheModule)
{
    for (const char *key : {"XF86Back", "XF86Close", "XF86BackForward", "XF86CloseAll"}) {
        open_list(2);
        press(key);
        EXPECT_TRUE(closed_itself()) << key;
        EXPECT_EQ(logged(std::string("key[") + key + "]"), 1);
        EXPECT_EQ(logged("done"), 1) << "processing goes on after the wish to close";
        reset_module_state();
    }
}

TEST_F(KeysTest, OtherKeysDoNothing)
{
    open_list(2);
    for (const char *key : {"XF86Bac", "Menu", "F1", "0", "XF86AudioMute", "xf86back"}) {
        forget();
        press(key);
        EXPECT_THAT(messages(), ElementsAre("key[" + std::string(key) + "]", "done"));
        EXPECT_TRUE(running()) << key;
        EXPECT_EQ(focused_row(), 0) << key;
    }
}

TEST_F(KeysTest, CloseDoesNothingInEditMode)
{
    open_list(3);
    begin_edit();
    turn_over({1});
    forget();
    press("XF86Close");
    EXPECT_THAT(messages(), ElementsAre("key[XF86Close]", "done"));
    EXPECT_TRUE(b_edit_status);
    EXPECT_TRUE(running());
    EXPECT_THAT(marked(), ElementsAre(1));
    EXPECT_EQ(focused_row(), 1);
}

TEST_F(KeysTest, BackInEditModeOnlyLeavesIt)
{
    open_list(3);
    begin_edit();
    press("XF86Back");
    EXPECT_FALSE(b_edit_status);
    EXPECT_TRUE(running());
    press("XF86Back");
    EXPECT_TRUE(closed_itself());
}

TEST_F(KeysTest, FromRightToLeftEditModeLeavesTheListToTheRightOfTheButtons)
{
    set("language", "he_IL");
    open_list(2);
    press({"Return", "XF86Back"});
    ASSERT_TRUE(gbReverse);
    begin_edit();
    press("XF86Back");
    ASSERT_FALSE(b_edit_status);

    Evas_Object *list = app()->genlist;
    Evas_Object *first = app()->edit_button;
    Evas_Object *second = app()->close_button;
    const auto next = [](const Evas_Object *object, Elm_Focus_Direction direction) {
        return elm_object_focus_next_object_get(object, direction);
    };
    EXPECT_EQ(next(first, ELM_FOCUS_NEXT), list);
    EXPECT_EQ(next(second, ELM_FOCUS_NEXT), list);
    EXPECT_EQ(next(first, ELM_FOCUS_RIGHT), list);
    EXPECT_EQ(next(second, ELM_FOCUS_RIGHT), list);
    EXPECT_EQ(next(list, ELM_FOCUS_LEFT), first);
    EXPECT_EQ(next(list, ELM_FOCUS_UP), list);
    EXPECT_EQ(next(list, ELM_FOCUS_DOWN), list);
    EXPECT_EQ(next(first, ELM_FOCUS_DOWN), second);
    EXPECT_EQ(next(second, ELM_FOCUS_UP), first);
    for (const Evas_Object *button : {first, second})
        EXPECT_NE(next(button, ELM_FOCUS_LEFT), list);
    EXPECT_NE(next(list, ELM_FOCUS_RIGHT), first);

    EXPECT_EQ(focused(), list);
    press("Left");
    EXPECT_EQ(focused(), first);
    press("Down");
    EXPECT_EQ(focused(), second);
    press("Right");
    EXPECT_EQ(focused(), list);
}

TEST_F(KeysTest, WhileTheToastIsUpKeysAreOnlyHeard)
{
    open_list(3);
    b_disable_focus = true;
    hear("XF86Back");
    hear("Down");
    const std::string key = "I Close_app_On_returnKey: key";
    const std::string refusal = "I Close_app_On_returnKey: b_disable_focus";
    EXPECT_THAT(spy::screen_steps(), ElementsAre(key + "[XF86Back]", refusal, key + "[Down]", refusal));
    EXPECT_EQ(current_position, 0);
    EXPECT_TRUE(running());
    b_disable_focus = false;
}

TEST_F(KeysTest, AKeyThatComesToTheScreenBehindTheDetailsIsLogged)
{
    open_list(2);
    press({"Return", "Down", "Down", "Return"});
    ASSERT_NE(app()->detail_popup, nullptr);
    forget();
    hear("Left");
    EXPECT_THAT(spy::screen_steps(),
                ElementsAre("I Close_app_On_returnKey: key[Left]", "I Close_app_On_returnKey: detail_popup unset",
                            "I Close_app_On_returnKey: done"));
    EXPECT_NE(app()->detail_popup, nullptr);
}

TEST_F(KeysTest, AnEventWithoutContentIsLogged)
{
    open_list(2);
    Close_app_On_returnKey(app(), panel().canvas(), app()->base, nullptr);
    EXPECT_THAT(messages(), ElementsAre("event null"));
    EXPECT_EQ(log().back().priority, DLOG_WARN);
}

TEST_F(KeysTest, OnATelevisionATouchBesideTheScreenDoesNothing)
{
    open_list(2);
    panel().tap(5, 5);
    EXPECT_TRUE(running());
    begin_edit();
    panel().tap(5, 5);
    EXPECT_TRUE(b_edit_status);
}

TEST_F(KeysTest, OnABoardATouchBesideTheScreenClosesTheModule)
{
    use_product("board");
    open_list(2);
    panel().tap(5, 5);
    EXPECT_TRUE(closed_itself());
}

TEST_F(KeysTest, OnABoardATouchBesideTheScreenLeavesEditMode)
{
    use_product("board");
    open_list(3);
    begin_edit();
    turn_over({2});
    g_checkbox_index = g_orientation_checkbox_count = 17;
    panel().tap(5, 5);
    EXPECT_TRUE(running());
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(g_checkbox_index, 0);
    EXPECT_EQ(g_orientation_checkbox_count, 0);
    EXPECT_EQ(app()->exit_button, nullptr);
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_GE(focused_row(), 0);
}

TEST_F(KeysTest, WithADropDownOpenLeavingEditModeOnlyClosesTheDropDown)
{
    use_product("board");
    open_list(3);
    press("Return");
    ASSERT_TRUE(b_popup_expanded);
    b_edit_status = true;
    Clicked_outside_app_cb(app(), nullptr, nullptr);
    EXPECT_FALSE(b_popup_expanded);
    EXPECT_TRUE(b_edit_status);
    EXPECT_TRUE(running());
    b_edit_status = false;
}

TEST_F(KeysTest, WithoutADeviceEditModeIsNotLeft)
{
    open_list(3);
    begin_edit();
    device_count = 0;
    Clicked_outside_app_cb(app(), nullptr, nullptr);
    EXPECT_TRUE(b_edit_status);
    device_count = 3;
}

} // namespace
