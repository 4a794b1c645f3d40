/* The toast that acknowledges a deletion: what it says and shows, and that the screen only hears keys meanwhile. */

#include <gmock/gmock.h>

#include "canvas_parts.h"
#include "edit_fixture.h"
#include "spy.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int kEnd = 3500; /* ms: past the toast's three seconds */

struct ToastTest : EditTest {

    /* Deletes the first of the devices; the toast is up then. */
    void delete_first(int devices)
    {
        open_edit(devices);
        turn_over({0});
        ask_for_deletion();
        forget();
        answer_yes();
        ASSERT_TRUE(b_disable_focus);
    }

    Evas_Object *layout() { return elm_object_content_get(toasts().at(0)); }

    std::string group()
    {
        const char *name = nullptr;
        edje_object_file_get(elm_layout_edje_get(layout()), nullptr, &name);
        return name ? name : "";
    }

    int text_width()
    {
        int width = 0;
        edje_object_part_geometry_get(elm_layout_edje_get(layout()), "elm.text", nullptr, nullptr, &width, nullptr);
        return width;
    }

    /* By touch, which the toast keeps away until a change elsewhere gives the list its focus back: deletes another row
       while a toast is up. */
    void delete_by_touch(int index)
    {
        vesk_port::DeviceStore store = service();
        store.set_status(store.list().front().id, 1);
        ASSERT_TRUE(
            panel().run_until([this] { return logged("ListRefreshed [" + std::to_string(device_count) + "]"); }, 2000));
        panel().settle();
        tap(app()->edit_button);
        ASSERT_TRUE(b_edit_status);
        const Eina_Rectangle place = row_area(row(app()->genlist, index));
        panel().tap(place.x + place.w / 2, place.y + place.h / 2);
        ASSERT_THAT(marked(), ElementsAre(index));
        tap(app()->close_button);
        ASSERT_NE(app()->delete_popup, nullptr);
        tap(yes());
        ASSERT_EQ(app()->delete_popup, nullptr);
    }

    static bool is_running(guint timer) { return g_main_context_find_source_by_id(nullptr, timer) != nullptr; }

    /* Lets the toast end by its own clock. */
    bool wait_for_end()
    {
        return panel().run_until([] { return !b_disable_focus; }, 2 * kEnd);
    }
};

TEST_F(ToastTest, StandsUnderTheListWithItsTextOnOneLine)
{
    delete_first(3);
    std::string text = translated("COM_SID_MIX_DEVICES_DELETED");
    text.replace(text.find("%1"), 2, "1");
    ASSERT_EQ(toasts().size(), 1u);
    EXPECT_EQ(text_of(layout()), text);
    EXPECT_EQ(group(), "elm/layout/C_PopupToast_White/SingleLine");
    EXPECT_LE(text_width(), 990);
    EXPECT_THAT(spoken(), ElementsAre(text));
    const Eina_Rectangle place = area(layout());
    EXPECT_NEAR(place.x + place.w / 2, panel().width() / 2, 1);
    EXPECT_NEAR(place.y + place.h / 2, 960, 1);
    const auto named = [this](const char *message) {
        return std::ranges::count_if(log(), [message](const LogLine &line) {
            return line.function == "_remove_toast" && line.message == message;
        });
    };
    EXPECT_EQ(named("Enter"), 1);
    EXPECT_EQ(named("Exit"), 1);
}

TEST_F(ToastTest, TakesSeveralLinesForATextThatIsTooWide)
{
    std::string text = "%1";
    for (int i = 0; i < 20; ++i)
        text += " Geräte wurden gelöscht";
    spy::overrides().texts["COM_SID_MIX_DEVICES_DELETED"] = text;
    delete_first(3);
    EXPECT_EQ(group(), "elm/layout/C_PopupToast_White/MultiLine");
    EXPECT_EQ(text_of(layout()), text.replace(0, 2, "1"));
    const Eina_Rectangle place = area(layout());
    EXPECT_GE(place.x, 0);
    EXPECT_LE(place.x + place.w, panel().width());
}

TEST_F(ToastTest, TheLimitIsMoreThan990Pixels)
{
    int single = 0;
    /* The text grows until the toast changes: the widest single line is within a few letters of the limit. */
    for (size_t letters = 36; letters < 90; letters += 3) {
        spy::overrides().texts["COM_SID_MIX_DEVICES_DELETED"] = "%1" + std::string(letters, 'n');
        delete_first(2);
        if (group() == "elm/layout/C_PopupToast_White/MultiLine")
            break;
        single = text_width();
        close();
        reset_module_state();
    }
    EXPECT_EQ(group(), "elm/layout/C_PopupToast_White/MultiLine");
    EXPECT_LE(single, 990);
    EXPECT_GT(single, 990 - 100);
}

TEST_F(ToastTest, LastsThreeSecondsAndGivesTheFocusBack)
{
    constexpr gint64 kThreeSeconds = 3'000'000; /* as the main loop counts */
    const gint64 before_yes = g_get_monotonic_time();
    delete_first(5);
    GSource *clock = g_main_context_find_source_by_id(nullptr, toastTimerTag);
    ASSERT_NE(clock, nullptr);
    EXPECT_GE(g_source_get_ready_time(clock), before_yes + kThreeSeconds);
    EXPECT_LE(g_source_get_ready_time(clock), g_get_monotonic_time() + kThreeSeconds);
    EXPECT_TRUE(wait_for_end());
    panel().settle();
    EXPECT_THAT(toasts(), IsEmpty());
    EXPECT_EQ(log().back().function, "__toast_timer_expired");
    EXPECT_EQ(log().back().message, "Exit");
    EXPECT_EQ(focused(), app()->genlist);
    ASSERT_GE(focused_row(), 0);
    const int before = focused_row();
    press("Down");
    EXPECT_EQ(focused_row(), (before + 1) % 4);
    press("Right");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Down");
    EXPECT_EQ(focused(), app()->close_button);
    press("Left");
    EXPECT_EQ(focused(), app()->genlist);
    press("XF86Back");
    EXPECT_TRUE(closed_itself());
}

TEST_F(ToastTest, NothingOnTheScreenTakesTheFocusMeanwhile)
{
    delete_first(5);
    for (const Evas_Object *object : {app()->genlist, app()->edit_button, app()->close_button})
        EXPECT_FALSE(focusable(object));
}

TEST_F(ToastTest, ItsEndLightsTheScreenUpAndLeavesTheLooksOfTheButtonsAlone)
{
    delete_first(5);
    const guint timer = toastTimerTag;
    g_source_remove(timer);
    spy::forget();
    EXPECT_EQ(__toast_timer_expired(app()), FALSE);
    EXPECT_EQ(toastTimerTag, timer) << "the spent id stays until the module closes";
    EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,undim|"));
    EXPECT_THAT(spy::signals_to(app()->genlist), Contains("elm,state,focused|elm"));
    for (const Evas_Object *button : {app()->edit_button, app()->close_button}) {
        EXPECT_THAT(spy::signals_to(button), testing::Each(testing::Not(testing::StartsWith("elm,state,undimmed"))));
        EXPECT_TRUE(focusable(button));
    }
    EXPECT_TRUE(focusable(app()->genlist));
    EXPECT_THAT(spy::links(), testing::UnorderedElementsAreArray(
                                  spy::main_chain(app()->genlist, app()->edit_button, app()->close_button, false)));
    toastTimerTag = 0; /* taken out above, not by its end */
}

TEST_F(ToastTest, InALanguageWrittenFromRightToLeftTheButtonsAreOnTheOtherSideAfterIt)
{
    set("language", "ar_AE");
    register_devices(phones(5));
    open();
    press({"Return", "XF86Back"}); /* the direction is read when a drop-down opens */
    tap(app()->edit_button);
    turn_over({0});
    tap(app()->close_button);
    tap(yes());
    ASSERT_TRUE(b_disable_focus);
    spy::forget();
    EXPECT_TRUE(wait_for_end());
    panel().settle();
    EXPECT_THAT(spy::links(), testing::UnorderedElementsAreArray(
                                  spy::main_chain(app()->genlist, app()->edit_button, app()->close_button, true)));
    EXPECT_NE(toastTimerTag, 0u);
    EXPECT_EQ(focused(), app()->genlist);
    press("Left");
    EXPECT_EQ(focused(), app()->edit_button);
    press("Right");
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(ToastTest, ASecondDeletionMeanwhileBringsAToastThatLastsItsOwnTime)
{
    delete_first(5);
    const guint first = toastTimerTag;
    const Evas_Object *old = toasts().at(0);
    panel().run_until([] { return false; }, 700);
    ASSERT_NO_FATAL_FAILURE(delete_by_touch(1));
    EXPECT_EQ(registered().size(), 3u);
    ASSERT_EQ(toasts().size(), 1u) << "the first has gone";
    EXPECT_NE(toasts().at(0), old);
    EXPECT_NE(toastTimerTag, first);
    EXPECT_FALSE(is_running(first));
    EXPECT_TRUE(is_running(toastTimerTag));
    EXPECT_TRUE(b_disable_focus);

    EXPECT_TRUE(wait_for_end());
    panel().settle();
    EXPECT_THAT(toasts(), IsEmpty());
    EXPECT_EQ(focused(), app()->genlist);
    press("Right");
    EXPECT_EQ(focused(), app()->edit_button);
}

TEST_F(ToastTest, ClosingTheModuleAfterASecondDeletionLeavesNeitherToastBehind)
{
    delete_first(5);
    const guint first = toastTimerTag;
    ASSERT_NO_FATAL_FAILURE(delete_by_touch(1));
    const guint second = toastTimerTag;
    forget();
    close();
    EXPECT_EQ(logged("toastTimerTag is removed!!"), 1);
    EXPECT_FALSE(is_running(first));
    EXPECT_FALSE(is_running(second));
    EXPECT_THAT(toasts(), IsEmpty());
}

TEST_F(ToastTest, KeysAreOnlyLogged)
{
    delete_first(5);
    for (const char *key : {"Up", "Down", "Left", "Right", "Return", "XF86Back", "XF86Close"}) {
        forget();
        const int position = current_position;
        press(key);
        EXPECT_THAT(messages(), ElementsAre("key[" + std::string(key) + "]", "b_disable_focus"));
        EXPECT_TRUE(running()) << key;
        EXPECT_FALSE(b_edit_status) << key;
        EXPECT_EQ(current_position, position) << key;
        EXPECT_EQ(toasts().size(), 1u) << key;
    }
    EXPECT_EQ(registered().size(), 4u);
}

TEST_F(ToastTest, OnABoardTheScreenIsAsBeforeAfterIt)
{
    use_product("board");
    delete_first(5);
    EXPECT_TRUE(wait_for_end());
    panel().settle();
    tap(app()->edit_button);
    EXPECT_TRUE(b_edit_status);
    tap(app()->exit_button);
    EXPECT_FALSE(b_edit_status);
    panel().tap(5, 5);
    EXPECT_TRUE(closed_itself());
}

TEST_F(ToastTest, ClosingTheModuleWhileItIsUpLeavesNothingBehind)
{
    delete_first(5);
    forget();
    const guint timer = toastTimerTag;
    close();
    EXPECT_EQ(logged("toastTimerTag is removed!!"), 1);
    EXPECT_FALSE(is_running(timer));
    EXPECT_THAT(toasts(), IsEmpty());
    forget();
    panel().run_until([] { return false; }, kEnd);
    EXPECT_THAT(messages(), IsEmpty());
    EXPECT_TRUE(b_disable_focus) << "the end of the toast was never called";
}

TEST_F(ToastTest, DeletingAllClosesTheModuleAndLeavesNothingBehind)
{
    open_edit(3);
    press({"Right", "Return", "Down", "Return"});
    forget();
    answer_yes();
    EXPECT_THAT(spoken(), ElementsAre(translated("COM_SID_ALL_DEVICES_DELTED")));
    ASSERT_TRUE(closed_itself());
    EXPECT_EQ(logged("toastTimerTag is removed!!"), 1);
    forget();
    panel().run_until([] { return false; }, kEnd);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ToastTest, WithAHostThatIsSlowToDestroyTheAllDeletedToastEndsToo)
{
    open_edit(3);
    press({"Right", "Return", "Down", "Return"});
    panel().key_down("Left");
    panel().key_up("Left");
    panel().key_down("Return"); /* the host destroys from its main loop, which has not run yet */
    ASSERT_EQ(device_count, 0);
    EXPECT_EQ(text_of(layout()), translated("COM_SID_ALL_DEVICES_DELTED"));
    EXPECT_EQ(text_of(app()->edit_button), translated("COM_SID_DESELECT_ALL")) << "the labels are left alone";
    forget();
    Evas_Object *list = app()->genlist;
    g_source_remove(toastTimerTag);
    EXPECT_EQ(__toast_timer_expired(app()), FALSE);
    toastTimerTag = 0;
    EXPECT_FALSE(b_disable_focus);
    EXPECT_FALSE(elm_object_focus_allow_get(list)) << "an empty list gets no focus";
    EXPECT_THAT(messages(), ElementsAre("Enter", "Exit"));
    EXPECT_TRUE(closed_itself());
}

TEST_F(ToastTest, AServiceEventMeanwhileShowsInTheListAndTheToastStays)
{
    delete_first(5);
    service().add({phone("New")});
    panel().settle();
    EXPECT_THAT(names(), Contains(shown_name("New")));
    EXPECT_EQ(toasts().size(), 1u);
    press("XF86Back");
    EXPECT_TRUE(running());
    EXPECT_TRUE(wait_for_end());
    panel().settle();
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(ToastTest, ATurnMeanwhileDoesNoHarm)
{
    delete_first(5);
    set("orientation", "portrait");
    panel().settle();
    EXPECT_EQ(toasts().size(), 1u);
    EXPECT_TRUE(wait_for_end());
    panel().settle();
    press("Down");
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(ToastTest, TheFocusTimerLogsAndEnds)
{
    register_devices(phones(2));
    open();
    forget();
    EXPECT_EQ(_timer_cb(app()->close_button), ECORE_CALLBACK_CANCEL);
    char line[64];
    snprintf(line, sizeof line, "  _timer_cb  [%p]", static_cast<void *>(app()->close_button));
    EXPECT_THAT(messages(), ElementsAre(line));
    panel().settle();
    EXPECT_EQ(focused(), app()->close_button);
}

} // namespace
