/* The confirmation of a deletion, and the deletion. */

#include <algorithm>
#include <gmock/gmock.h>

#include "canvas_parts.h"
#include "desktop/port_failures.h"
#include "dlog.h"
#include "edit_fixture.h"
#include "spy.h"
#include "ug/module.h"
#include "vesk/device_actions.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct DeleteTest : EditTest {
    /* What the service was asked to remove, in order: addresses, and "all". */
    static std::vector<std::string> removals()
    {
        std::vector<std::string> asked;
        for (const spy::Call &call : spy::journal()) {
            if (call.function.starts_with("rdm_remove_"))
                asked.push_back(call.text);
        }
        return asked;
    }

    static std::vector<std::string> service_names(const std::vector<vesk_port::Device> &devices)
    {
        std::vector<std::string> result;
        for (const auto &device : devices)
            result.push_back(device.name);
        return result;
    }
    std::vector<std::string> service_names() const { return service_names(registered()); }

    /* Keys one after the other, without the main loop in between. */
    void press_at_once(std::initializer_list<const char *> keys)
    {
        for (const char *key : keys) {
            panel().key_down(key);
            panel().key_up(key);
        }
    }

    size_t confirmations() { return shown_popups(panel().canvas(), "P_PopupBasicBottom_02").size(); }

    std::string toast_marker(const std::string &number) const
    {
        std::string text = translated("COM_SID_MIX_DEVICES_DELETED");
        return text.replace(text.find("%1"), 2, number);
    }
};

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

TEST_F(DeleteTest, OneOfFive)
{
    open_edit(5);
    const auto before = registered();
    turn_over({2});
    ask_for_deletion();
    forget();
    answer_yes();
    EXPECT_THAT(removals(), ElementsAre(before[2].bt_mac));
    EXPECT_THAT(service_names(), ElementsAre("Phone 1", "Phone 2", "Phone 4", "Phone 5"));
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 1);
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 1"), shown_name("Phone 2"), shown_name("Phone 4"),
                                     shown_name("Phone 5")));
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_EDIT"));
    EXPECT_EQ(text_of(app()->close_button), translated("COM_SID_CLOSE"));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("1")));
}

TEST_F(DeleteTest, TwoOfFiveTheHighestRowFirst)
{
    open_edit(5);
    const auto before = registered();
    turn_over({3, 1});
    ask_for_deletion();
    forget();
    answer_yes();
    EXPECT_THAT(removals(), ElementsAre(before[3].bt_mac, before[1].bt_mac));
    EXPECT_THAT(service_names(), ElementsAre("Phone 1", "Phone 3", "Phone 5"));
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 2);
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("2")));
}

TEST_F(DeleteTest, AllOfFiveInOneCall)
{
    open_edit(5);
    press({"Right", "Return", "Down", "Return"});
    ASSERT_NE(app()->delete_popup, nullptr);
    forget();
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(removals(), ElementsAre("all"));
    EXPECT_THAT(registered(), IsEmpty());
    EXPECT_EQ(logged("Removing all [5] devices and list is empty"), 1);
    const auto line = std::ranges::find(log(), "Removing all [5] devices and list is empty", &LogLine::message);
    EXPECT_EQ(line->priority, DLOG_WARN);
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 0);
    EXPECT_THAT(spoken(), ElementsAre(translated("COM_SID_ALL_DEVICES_DELTED")));
}

TEST_F(DeleteTest, AllOfFiveMarkedByHandIsOneCallToo)
{
    open_edit(5);
    turn_over({0, 1, 2, 3, 4});
    ask_for_deletion();
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(removals(), ElementsAre("all"));
}

TEST_F(DeleteTest, AllOfFifty)
{
    open_edit(50);
    press({"Right", "Return", "Down", "Return"});
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(removals(), ElementsAre("all"));
    EXPECT_THAT(registered(), IsEmpty());
    EXPECT_EQ(logged("Removing all [50] devices and list is empty"), 1);
}

TEST_F(DeleteTest, FortyNineOfFifty)
{
    open_edit(50);
    press({"Right", "Return", "Left"});
    turn_over({20});
    ask_for_deletion();
    forget();
    answer_yes();
    EXPECT_EQ(removals().size(), 49u);
    EXPECT_THAT(service_names(), ElementsAre("Phone 21"));
    EXPECT_TRUE(running());
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("49")));
}

TEST_F(DeleteTest, AnEmptyTableIsRemovedInOneCallToo)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    forget();
    device_count = 0;
    _deletebutton_cb(app(), yes(), nullptr);
    EXPECT_THAT(removals(), ElementsAre("all"));
    EXPECT_EQ(logged("Removing all [0] devices and list is empty"), 1);
    EXPECT_TRUE(closed_itself());
}

TEST_F(DeleteTest, NothingMarkedDeletesNothing)
{
    open_edit(3);
    click(app()->close_button);
    panel().settle();
    answer_yes();
    EXPECT_THAT(removals(), IsEmpty());
    EXPECT_EQ(registered().size(), 3u);
    EXPECT_THAT(spoken().back(), toast_marker("0"));
}

TEST_F(DeleteTest, AServiceThatRefusesOneKeepsItInTheList)
{
    open_edit(5);
    turn_over({0, 2, 4});
    ask_for_deletion();
    forget();
    vesk_port::set_failures("rdm_remove_device=-5@3");
    answer_yes();
    EXPECT_EQ(removals().size(), 3u);
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 2);
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 1"), shown_name("Phone 2"), shown_name("Phone 4")));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("3"))) << "what was marked, whatever the service made of it";
}

TEST_F(DeleteTest, AServiceThatRefusesToRemoveAllKeepsTheList)
{
    open_edit(3);
    press({"Right", "Return", "Down", "Return"});
    forget();
    vesk_port::set_failures("rdm_remove_all=-5");
    answer_yes();
    EXPECT_TRUE(running());
    EXPECT_EQ(names().size(), 3u);
    EXPECT_FALSE(b_edit_status);
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_EDIT"));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("3")));
}

TEST_F(DeleteTest, AMarkedDeviceThatIsGoneMeanwhileIsNoObstacle)
{
    open_edit(5);
    turn_over({1, 3});
    ask_for_deletion();
    forget();
    service().remove(registered()[3].id);
    panel().settle();
    EXPECT_EQ(logged("Edit mode now. refresh canceled."), 1);
    EXPECT_NE(app()->delete_popup, nullptr);
    EXPECT_EQ(focused(), no());
    answer_yes();
    EXPECT_THAT(service_names(), ElementsAre("Phone 1", "Phone 3", "Phone 5"));
    EXPECT_EQ(logged("[VESKAUTOTC][DELETE]"), 1);
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 1"), shown_name("Phone 3"), shown_name("Phone 5")));
    EXPECT_THAT(spoken(), ElementsAre(toast_marker("2")));
}

TEST_F(DeleteTest, AnotherDeviceThatIsGoneMeanwhileIsGoneFromTheListToo)
{
    open_edit(5);
    turn_over({1, 3});
    ask_for_deletion();
    service().remove(registered()[0].id);
    panel().settle();
    answer_yes();
    EXPECT_THAT(names(), ElementsAre(shown_name("Phone 3"), shown_name("Phone 5")));
}

TEST_F(DeleteTest, WithAllOthersGoneMeanwhileTheModuleCloses)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    const auto devices = registered();
    service().remove(devices[0].id);
    service().remove(devices[2].id);
    panel().settle();
    forget();
    answer_yes();
    EXPECT_TRUE(closed_itself());
    EXPECT_THAT(spoken(), ElementsAre(translated("COM_SID_ALL_DEVICES_DELTED")));
}

TEST_F(DeleteTest, WithAllGoneMeanwhileNoLeavesAListToGoBackFrom)
{
    open_edit(3);
    turn_over({1});
    ask_for_deletion();
    register_devices({});
    panel().settle();
    press("Return");
    EXPECT_EQ(app()->delete_popup, nullptr);
    EXPECT_TRUE(b_edit_status);
    EXPECT_EQ(names().size(), 3u) << "the list waits until edit mode ends";
    press("XF86Back");
    press("XF86Back");
    EXPECT_TRUE(closed_itself());
}

TEST_F(DeleteTest, ADeviceRegisteredMeanwhileStaysEvenWhenAllAreMarked)
{
    open_edit(3);
    turn_over({0, 1});
    ask_for_deletion();
    service().add({phone("New")});
    panel().settle();
    answer_yes();
    EXPECT_THAT(service_names(), testing::UnorderedElementsAre("Phone 3", "New"));
    EXPECT_THAT(names(), testing::UnorderedElementsAre(shown_name("Phone 3"), shown_name("New")));
}

TEST_F(DeleteTest, OnABoardTheButtonsAndIconsAreAsBefore)
{
    use_product("board");
    open_edit(5);
    turn_over({2});
    ask_for_deletion();
    answer_yes();
    EXPECT_EQ(app()->exit_button, nullptr);
    EXPECT_STREQ(elm_icon_standard_get(app()->edit_icon), "i_edit");
    EXPECT_STREQ(elm_icon_standard_get(app()->close_icon), "i_close_cancel");
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
