/* The confirmation of a deletion. */

#include <gmock/gmock.h>

#include "delete_fixture.h"
#include "dlog.h"
#include "ug/module.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST_F(DeleteTest, TheConfirmationAsksWithNoAsItsDefault)
{
    open_edit(3);
    turn_over({1});
    b_delete_popup_entered = true;
    forget();
    spy::forget();
    ask_for_deletion();
    EXPECT_FALSE(b_delete_popup_entered);
    EXPECT_STREQ(elm_object_style_get(app()->delete_popup), "P_PopupBasicBottom_02");
    EXPECT_STREQ(elm_object_style_get(elm_object_content_get(app()->delete_popup)), "popup/P_PopupBasicBottom_02");
    for (const Evas_Object *button : {yes(), no()})
        EXPECT_STREQ(elm_object_style_get(button), "C_ButtonBasic_WhiteText");
    EXPECT_EQ(text_of(elm_object_content_get(app()->delete_popup)),
              "<align=center><font=CorvaneSans_400:style=Regular font_size=30>" +
                  std::string(translated("COM_SID_DELETE_SELECTED_DEVICES")) + "</font></align>");
    EXPECT_EQ(text_of(yes()), translated("COM_TV_SID_YES"));
    EXPECT_EQ(text_of(no()), translated("COM_TV_SID_NO"));
    EXPECT_EQ(focused(), no());
    EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,dimmed,percent,50|"));
    EXPECT_EQ(logged("Enter"), 1);
    EXPECT_EQ(logged("Exit"), 1);
}

TEST_F(DeleteTest, BothAnswersAreReadWithTheQuestionFirst)
{
    open_edit(2);
    turn_over({0});
    for (int times = 0; times < 2; ++times) {
        ask_for_deletion();
        forget();
        const auto read = [](Evas_Object *button) {
            char *text = elm_access_info_get(button, ELM_ACCESS_INFO);
            const std::string result = text ? text : "";
            free(text);
            return result;
        };
        const std::string yes_text = translated("COM_TV_SID_YES");
        const std::string question = std::string(translated("COM_SID_DELETE")) + "," +
                                     translated("COM_SID_DELETE_SELECTED_DEVICES") + "," + yes_text;
        EXPECT_EQ(read(no()), question);
        EXPECT_TRUE(b_delete_popup_entered);
        EXPECT_EQ(read(no()), yes_text) << "No is read as Yes, too";
        EXPECT_EQ(read(yes()), yes_text);
        EXPECT_THAT(spoken(), ElementsAre(question, yes_text, yes_text));
        press("Return");
        ASSERT_EQ(app()->delete_popup, nullptr);
    }
}

TEST_F(DeleteTest, ALongQuestionIsCut)
{
    open_edit(2);
    turn_over({0});
    spy::overrides().texts["COM_SID_DELETE_SELECTED_DEVICES"].assign(400, 'x');
    ask_for_deletion();
    const std::string text = text_of(elm_object_content_get(app()->delete_popup));
    EXPECT_EQ(text.size(), 299u);
    EXPECT_EQ(text.back(), 'x');
}

TEST_F(DeleteTest, TheDropdownsCompanionIsHidden)
{
    open_edit(2);
    turn_over({0});
    Evas_Object *companion = evas_object_rectangle_add(panel().canvas());
    evas_object_show(companion);
    app()->action_aux = companion;
    ask_for_deletion();
    EXPECT_FALSE(evas_object_visible_get(companion));
    app()->action_aux = nullptr;
    evas_object_del(companion);
}

TEST_F(DeleteTest, AskingAgainPutsANewConfirmationInThePlaceOfTheFirst)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    b_delete_popup_entered = true;
    forget();
    click(app()->close_button);
    EXPECT_EQ(confirmations(), 1u);
    EXPECT_FALSE(b_delete_popup_entered) << "read with its introduction again";
    EXPECT_EQ(logged("Enter"), 1);
    panel().settle();
    EXPECT_EQ(focused(), no());
    press("Return");
    EXPECT_EQ(confirmations(), 0u);
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_THAT(removals(), IsEmpty());
}

TEST_F(DeleteTest, AScreenThatIsBuiltAnewOnTheSameRecordAsksAgain)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    AppData *record = app();
    _on_destroy(record->ug, nullptr, record);
    EXPECT_EQ(confirmations(), 0u);
    ASSERT_EQ(_on_create(record->ug, UG_MODE_FULLVIEW, nullptr, record), record->base);
    panel().settle();
    b_edit_status = true;
    forget();
    click(app()->close_button);
    EXPECT_EQ(confirmations(), 1u);
    EXPECT_EQ(logged("Enter"), 1);
    panel().settle();
    EXPECT_EQ(focused(), no());
    press("Return");
    EXPECT_EQ(confirmations(), 0u);
}

TEST_F(DeleteTest, TheSameKeyTwiceNeverDeletes)
{
    for (const char *product : {"television", "board"}) {
        use_product(product);
        open_edit(5);
        turn_over({1});
        press("Right");
        press_at_once({"Return", "Return"});
        panel().settle();
        EXPECT_LE(confirmations(), 1u) << product;
        EXPECT_TRUE(b_edit_status);
        EXPECT_THAT(removals(), IsEmpty());
        EXPECT_THAT(marked(), ElementsAre(1));
        if (app()->delete_popup)
            press("Return");
        EXPECT_EQ(confirmations(), 0u) << product;
        EXPECT_THAT(removals(), IsEmpty());
        close();
        reset_module_state();
    }
}

TEST_F(DeleteTest, TwoTouchesAtOnceAskOnce)
{
    open_edit(5);
    turn_over({1});
    const Eina_Rectangle place = area(app()->close_button);
    Evas *canvas = panel().canvas();
    evas_event_feed_mouse_in(canvas, 0, nullptr);
    evas_event_feed_mouse_move(canvas, place.x + place.w / 2, place.y + place.h / 2, 0, nullptr);
    for (unsigned int time : {1u, 2u}) {
        evas_event_feed_mouse_down(canvas, 1, EVAS_BUTTON_NONE, time, nullptr);
        evas_event_feed_mouse_up(canvas, 1, EVAS_BUTTON_NONE, time, nullptr);
    }
    panel().settle();
    EXPECT_EQ(confirmations(), 1u);
    press("XF86Back");
    EXPECT_EQ(confirmations(), 0u);
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(DeleteTest, ReturnAnyNumberOfTimesNeverDeletes)
{
    open_edit(5);
    turn_over({1});
    press("Right");
    for (int times = 0; times < 30; ++times) {
        press_at_once({"Return"});
        if (times % 3 == 0)
            panel().settle();
    }
    panel().settle();
    EXPECT_THAT(removals(), IsEmpty());
    EXPECT_EQ(registered().size(), 5u);
    EXPECT_TRUE(running());
}

TEST_F(DeleteTest, ReturnAfterTheConfirmationHasSettledDeletesNothingEither)
{
    open_edit(5);
    turn_over({0, 1});
    ask_for_deletion();
    panel().settle();
    press("Return");
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_THAT(removals(), IsEmpty());
}

TEST_F(DeleteTest, NoBackAndCloseDismiss)
{
    open_edit(5);
    turn_over({1, 3});
    for (const char *key : {"Return", "XF86Back", "XF86Close", "XF86BackForward", "XF86CloseAll"}) {
        ask_for_deletion();
        forget();
        spy::forget();
        press(key);
        EXPECT_EQ(app()->delete_popup, nullptr) << key;
        EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,undim|")) << key;
        EXPECT_TRUE(b_edit_status);
        EXPECT_TRUE(running());
        EXPECT_THAT(marked(), ElementsAre(1, 3));
        EXPECT_EQ(expect_checks_agree(), 5);
        EXPECT_EQ(focused(), app()->genlist) << key;
        EXPECT_EQ(focused_row(), 3) << key;
        if (std::string(key) != "Return") {
            EXPECT_EQ(logged(std::string("Key[") + key + "]"), 1);
            EXPECT_EQ(logged("Exit"), 1);
        }
    }
    EXPECT_THAT(removals(), IsEmpty());
}

TEST_F(DeleteTest, ATouchOnNoDismisses)
{
    open_edit(3);
    turn_over({2});
    ask_for_deletion();
    tap(no());
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_THAT(removals(), IsEmpty());
    press("Down");
    EXPECT_EQ(focused_row(), 0);
}

TEST_F(DeleteTest, OtherKeysLeaveItOpen)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    for (const char *key : {"Up", "Down", "Left", "Right", "XF86Bac", "XF86Clos", "Menu", "1"}) {
        forget();
        press(key);
        ASSERT_NE(app()->delete_popup, nullptr) << key;
        EXPECT_THAT(messages(), ElementsAre("Key[" + std::string(key) + "]", "Exit"));
        EXPECT_TRUE(focused() == yes() || focused() == no()) << key;
    }
}

TEST_F(DeleteTest, ArrowsLeadFromNoToYesAndBack)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    press("Left");
    EXPECT_EQ(focused(), yes());
    press("Right");
    EXPECT_EQ(focused(), no());
}

TEST_F(DeleteTest, AKeyEventWithoutContentIsLogged)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    forget();
    _close_delete_popup_on_returnkey(app(), panel().canvas(), app()->delete_popup, nullptr);
    EXPECT_THAT(messages(), ElementsAre("event null"));
    EXPECT_EQ(log().back().priority, DLOG_WARN);
    EXPECT_NE(app()->delete_popup, nullptr);
}

TEST_F(DeleteTest, AfterATurnTheConfirmationStillWorks)
{
    open_edit(5);
    turn_over({2});
    ask_for_deletion();
    turn("portrait");
    EXPECT_EQ(focused(), no());
    answer_yes();
    EXPECT_EQ(registered().size(), 4u);
}

} // namespace
