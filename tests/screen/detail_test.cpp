/* The detail popup: what it holds, how it closes, and what is said of it. */

#include <cstdlib>
#include <dlog.h>
#include <gmock/gmock.h>

#include "desktop/port_failures.h"
#include "details.h"
#include "spy.h"
#include "ug/detail_popup.h"

using testing::ElementsAre;

namespace {

constexpr const char *kTitle = "View details";
constexpr const char *kHeading = "Services used by the selected device";
constexpr const char *kCaption = "Allowed services";

struct DetailTest : DetailsTest {
    DetailTest()
    {
        register_devices({with_services("First", 5), with_services("Second", 5), with_services("Third", 0)});
    }

    std::string title()
    {
        const char *text = elm_object_part_text_get(app()->detail_popup, "title,text");
        return text ? text : "";
    }

    /* After a close: the list has the focus, nothing is selected, and the keys work at once. */
    void expect_back_on_the_list(int index)
    {
        EXPECT_EQ(app()->detail_popup, nullptr);
        EXPECT_EQ(focused(), app()->genlist);
        EXPECT_EQ(focused_row(), index);
        EXPECT_EQ(elm_genlist_selected_item_get(app()->genlist), nullptr);
        for (const Evas_Object *object : {app()->genlist, app()->edit_button, app()->close_button})
            EXPECT_TRUE(elm_object_focus_allow_get(object));
        press("Down");
        EXPECT_EQ(focused_row(), (index + 1) % device_count);
        press("Up");
        EXPECT_EQ(focused_row(), index);
        press("Right");
        EXPECT_EQ(focused(), app()->edit_button);
        press("Left");
        EXPECT_EQ(focused_row(), index);
        open_details(index);
        EXPECT_EQ(title(), kTitle) << "and it opens again";
    }

    std::string spoken_of_popup()
    {
        char *text = elm_access_info_get(app()->detail_close_button, ELM_ACCESS_INFO);
        const std::string result = text ? text : "(nothing)";
        free(text);
        return result;
    }
};

/* A key that is not on every remote control, given to the popup as the toolkit does. */
void send_key(AppData *app, const char *name)
{
    Evas_Event_Key_Down event{};
    event.keyname = const_cast<char *>(name);
    Close_detail_popup_On_returnKey(app, nullptr, app->detail_popup, &event);
}

/* ---- Opening ---- */

TEST_F(DetailTest, HasTitleButtonAndTheFocusOnIt)
{
    open();
    open_details(0);
    EXPECT_EQ(title(), kTitle);
    EXPECT_STREQ(elm_object_style_get(app()->detail_popup), "C_PopupBasic_WhiteRight");
    EXPECT_EQ(elm_object_part_content_get(app()->detail_popup, "button1"), app()->detail_close_button);
    EXPECT_STREQ(elm_object_style_get(app()->detail_close_button), "C_ButtonBasic_WhiteText");
    EXPECT_STREQ(elm_object_text_get(app()->detail_close_button), "Close");
    EXPECT_EQ(focused(), app()->detail_close_button);
    EXPECT_FALSE(elm_object_focus_allow_get(app()->genlist));
    EXPECT_FALSE(elm_object_focus_allow_get(app()->close_button));
    EXPECT_EQ(elm_genlist_select_mode_get(app()->service_genlist), ELM_OBJECT_SELECT_MODE_ALWAYS);
    EXPECT_TRUE(elm_object_focus_allow_get(app()->service_genlist));
}

TEST_F(DetailTest, ThereIsNoDropDownBehindIt)
{
    open();
    open_dropdown(0);
    bool deleted = false;
    evas_object_event_callback_add(
        app()->action_popup, EVAS_CALLBACK_DEL,
        [](void *flag, Evas *, Evas_Object *, void *) { *static_cast<bool *>(flag) = true; }, &deleted);
    selected_item_index = 0;
    show_detail_popup(app());
    EXPECT_TRUE(deleted);
    EXPECT_EQ(app()->action_popup, nullptr);
    EXPECT_EQ(app()->action_genlist, nullptr);
    EXPECT_EQ(app()->action_aux, nullptr);
    panel().settle();
    EXPECT_EQ(focused(), app()->detail_close_button);
}

TEST_F(DetailTest, TheDropDownsCompanionGoesFirst)
{
    open();
    open_dropdown(0);
    std::vector<const Evas_Object *> gone;
    const auto note = [](void *list, Evas *, Evas_Object *object, void *) {
        static_cast<std::vector<const Evas_Object *> *>(list)->push_back(object);
    };
    Evas_Object *companion = evas_object_rectangle_add(panel().canvas());
    Evas_Object *popup = app()->action_popup;
    app()->action_aux = companion;
    for (Evas_Object *object : {companion, popup, app()->action_genlist})
        evas_object_event_callback_add(object, EVAS_CALLBACK_DEL, note, &gone);
    selected_item_index = 0;
    show_detail_popup(app());
    ASSERT_EQ(gone.size(), 3U);
    EXPECT_EQ(gone[0], companion);
    EXPECT_EQ(app()->action_aux, nullptr);
}

TEST_F(DetailTest, LightsTheScreenBehindItUp)
{
    open();
    selected_item_index = 0;
    spy::forget();
    show_detail_popup(app());
    EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,undim|"));
}

TEST_F(DetailTest, LogsItsWay)
{
    open();
    forget();
    open_details(0);
    const auto lines = lines_of("show_detail_popup");
    EXPECT_THAT(lines, ElementsAre("Enter", "Exit"));
    EXPECT_EQ(logged("widthrect[780]"), 1);
    EXPECT_EQ(logged("service count:[2]"), 1);
}

TEST_F(DetailTest, ArrowsStayWithinThePopup)
{
    open();
    open_details(0);
    press({"Right", "Up"});
    EXPECT_EQ(focused(), app()->detail_close_button) << "nothing stands there";
    press("Left");
    EXPECT_EQ(focused(), app()->service_genlist);
    press("Left");
    EXPECT_EQ(focused(), app()->service_genlist);
    for (const char *key : {"Up", "Up", "Right", "Down", "Down", "Down", "Left"}) {
        press(key);
        EXPECT_THAT(focused(), testing::AnyOf(app()->detail_close_button, app()->service_genlist)) << key;
    }
}

/* ---- Closing ---- */

TEST_F(DetailTest, TheButtonCloses)
{
    open();
    open_details(1);
    forget();
    press("Return");
    EXPECT_THAT(lines_of("_close_button_cb"), ElementsAre("Enter", "Exit"));
    EXPECT_TRUE(evas_object_visible_get(app()->base));
    EXPECT_TRUE(evas_object_visible_get(app()->genlist));
    expect_back_on_the_list(1);
}

TEST_F(DetailTest, TheButtonShowsTheScreenAgain)
{
    open();
    open_details(1);
    evas_object_hide(app()->base);
    evas_object_hide(app()->genlist);
    evas_object_smart_callback_call(app()->detail_close_button, "clicked", nullptr);
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_TRUE(evas_object_visible_get(app()->base));
    EXPECT_TRUE(evas_object_visible_get(app()->genlist));
}

TEST_F(DetailTest, ATapOnTheButtonCloses)
{
    open();
    open_details(1);
    tap(app()->detail_close_button);
    expect_back_on_the_list(1);
}

struct ClosingKeyTest : DetailTest, testing::WithParamInterface<const char *> {};

TEST_P(ClosingKeyTest, ClosesThePopupAndNotTheModule)
{
    open();
    open_details(1);
    forget();
    press(GetParam());
    EXPECT_TRUE(running());
    EXPECT_EQ(logged(std::string("Key[") + GetParam() + "]"), 1);
    EXPECT_THAT(lines_of("Close_detail_popup_On_touch_outside"), ElementsAre("Enter", "Exit"));
    expect_back_on_the_list(1);
}

TEST_P(ClosingKeyTest, DoesNotShowTheScreenAgain)
{
    open();
    open_details(1);
    evas_object_hide(app()->base);
    evas_object_hide(app()->genlist);
    send_key(app(), GetParam());
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_FALSE(evas_object_visible_get(app()->base));
    EXPECT_FALSE(evas_object_visible_get(app()->genlist));
}

TEST_P(ClosingKeyTest, ClosesFromTheListOfServicesToo)
{
    open();
    open_details(1);
    press("Left");
    ASSERT_EQ(focused(), app()->service_genlist);
    press(GetParam());
    EXPECT_TRUE(running());
    expect_back_on_the_list(1);
}

INSTANTIATE_TEST_SUITE_P(Names, ClosingKeyTest,
                         testing::Values("XF86Back", "XF86Close", "XF86BackForward", "XF86CloseAll"));

TEST_F(DetailTest, OtherKeysDoNotClose)
{
    open();
    open_details(0);
    for (const char *name : {"XF86Bac", "xf86back", "XF86Clos", "Escape", ""}) {
        forget();
        send_key(app(), name);
        EXPECT_EQ(messages(), std::vector<std::string>{std::string("Key[") + name + "]"});
        EXPECT_NE(app()->detail_popup, nullptr) << name;
    }
    forget();
    Close_detail_popup_On_returnKey(app(), nullptr, app()->detail_popup, nullptr);
    EXPECT_THAT(messages(), ElementsAre("event null"));
    EXPECT_EQ(log()[0].priority, DLOG_WARN);
}

TEST_F(DetailTest, ATouchOutsideClosesOnABoard)
{
    use_product("board");
    open();
    selected_item_index = 1;
    elm_genlist_item_selected_set(row(app()->genlist, 1), EINA_FALSE);
    show_detail_popup(app());
    panel().settle();
    ASSERT_NE(app()->detail_popup, nullptr);
    forget();
    panel().tap(60, 540);
    panel().settle();
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_THAT(lines_of("Close_detail_popup_On_touch_outside"), ElementsAre("Enter", "Exit"));
    EXPECT_TRUE(running());
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_EQ(elm_genlist_selected_item_get(app()->genlist), nullptr);
    press("Down");
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_GE(focused_row(), 0);
}

TEST_F(DetailTest, ATouchOutsideDoesNothingOnATelevision)
{
    open();
    open_details(0);
    panel().tap(60, 540);
    panel().settle();
    EXPECT_NE(app()->detail_popup, nullptr);
    EXPECT_TRUE(running());
}

TEST_F(DetailTest, ATouchInsideDoesNotClose)
{
    use_product("board");
    open();
    selected_item_index = 0;
    show_detail_popup(app());
    panel().settle();
    const Eina_Rectangle list = area(app()->service_genlist);
    panel().tap(list.x + list.w / 2, list.y + list.h - 20);
    panel().settle();
    EXPECT_NE(app()->detail_popup, nullptr);
}

TEST_F(DetailTest, ClosingWithoutASelectedRowIsFine)
{
    open();
    selected_item_index = 2;
    show_detail_popup(app());
    panel().settle();
    ASSERT_EQ(elm_genlist_selected_item_get(app()->genlist), nullptr);
    _close_button_cb(app(), nullptr, nullptr);
    panel().settle();
    EXPECT_EQ(focused(), app()->genlist);
}

/* ---- Live updates behind it ---- */

TEST_F(DetailTest, AChangeOfTheDevicesBehindItLeavesItOpen)
{
    open();
    open_details(1);
    auto devices = registered();
    devices[0].status = 1;
    for (auto &device : devices)
        device.id = 0;
    forget();
    register_devices(devices);
    ASSERT_TRUE(panel().run_until([this] { return logged("ListRefreshed [3]") > 0; }, 2000));
    panel().settle();
    EXPECT_NE(app()->detail_popup, nullptr);
    press("XF86Back");
    EXPECT_TRUE(running());
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_EQ(focused(), app()->genlist);
    press("Down");
    EXPECT_EQ(focused(), app()->genlist);
    EXPECT_GE(focused_row(), 0);
}

/* ---- The spoken text ---- */

TEST_F(DetailTest, SpeaksTheWholePopup)
{
    open();
    open_details("First");
    const std::string lead = std::string(kTitle) + "," + kHeading + "," + kCaption + ":";
    forget();
    EXPECT_EQ(spoken_of_popup(),
              lead + "Play mobile content on the TV,Sound mirroring / Play TV sound on the phone,Close");
    EXPECT_EQ(logged("service count:[2]"), 3) << "counted before every row and at the end";
    EXPECT_TRUE(spoken().empty()) << "the reader speaks it, nobody else";
    selected_item_index = row_of("Third");
    EXPECT_EQ(spoken_of_popup(), lead + "Close");
}

TEST_F(DetailTest, SpeakingDoesNotMoveTheRows)
{
    open();
    open_details("First");
    spoken_of_popup();
    press("XF86Back");
    open_details("First");
    EXPECT_THAT(service_texts(),
                ElementsAre("Play mobile content on the TV", "Sound mirroring / Play TV sound on the phone"));
}

/* ---- Without services ---- */

TEST_F(DetailTest, WithoutAServiceTheShadedAreaIsEmpty)
{
    open();
    open_details("Third");
    EXPECT_EQ(elm_genlist_items_count(app()->service_genlist), 0U);
    EXPECT_TRUE(evas_object_visible_get(app()->service_genlist));
    const Eina_Rectangle list = area(app()->service_genlist);
    EXPECT_EQ(list.w, 780);
    EXPECT_GE(list.h, 460);
    press({"Left", "Up", "Down"});
    EXPECT_NE(focused(), nullptr);
    press("XF86Back");
    expect_back_on_the_list(row_of("Third"));
}

} // namespace
