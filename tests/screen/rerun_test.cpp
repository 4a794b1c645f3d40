/* The module that runs again without being unloaded, with and without a reset of its state in between. */

#include <gmock/gmock.h>

#include "edit_fixture.h"
#include "spy.h"
#include "toolkit_complaints.h"
#include "ug/action_popup.h"
#include "ug/pending_focus.h"
#include "ug/service_list.h"
#include "vesk/device_services.h"

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

struct RerunTest : EditTest {
    /* Deletes the first row; the toast is up then. */
    void delete_first()
    {
        turn_over({0});
        ask_for_deletion();
        answer_yes();
        ASSERT_TRUE(b_disable_focus);
    }

    std::vector<Evas_Object *> dropdowns() { return shown_popups(panel().canvas(), "C_ListDropdown_White"); }

    static size_t freed_classes() { return spy::calls_of("elm_genlist_item_class_free").size(); }

    /* All state of the module anew, and the record and the table of the screen that stays open. */
    static void reset_under_the_screen()
    {
        AppData *const record = app_data;
        const int handle = gVeskHandler;
        const DeviceEntry first = gVeskTable[0];
        const int32_t devices = device_count;
        reset_module_state();
        app_data = record;
        gVeskHandler = handle;
        gVeskTable[0] = first;
        device_count = devices;
    }
};

TEST_F(RerunTest, AToastThatWasUpAtTheCloseDoesNotMeetTheNext)
{
    open_edit(3);
    delete_first();
    close();
    ASSERT_THAT(toasts(), IsEmpty()) << "it went with the window's contents";

    b_disable_focus = false; /* keys are taken again */
    open();
    const ToolkitComplaints complaints;
    begin_edit();
    delete_first();
    EXPECT_THAT(complaints.texts(), Not(Contains(HasSubstr("is not a valid object"))));
    EXPECT_EQ(toasts().size(), 1u);
    EXPECT_EQ(registered().size(), 1u);
}

TEST_F(RerunTest, AResetForgetsTheToast)
{
    open_edit(3);
    delete_first();
    g_source_remove(toastTimerTag);
    reset_under_the_screen();
    __toast_timer_expired(app());
    EXPECT_EQ(toasts().size(), 1u) << "the window's own now";
}

TEST_F(RerunTest, AResetForgetsTheDropDownAndTheClassOfItsRows)
{
    register_devices(phones(1));
    open();
    press("Return");
    ASSERT_EQ(dropdowns().size(), 1u);
    spy::forget();
    reset_under_the_screen();
    EXPECT_EQ(freed_classes(), 1u);
    _create_popup(app(), app()->genlist, nullptr);
    EXPECT_EQ(freed_classes(), 1u) << "a class is given back once";
    EXPECT_EQ(dropdowns().size(), 2u) << "the one before is the window's own now";
}

TEST_F(RerunTest, AResetForgetsThePendingFocus)
{
    register_devices(phones(1));
    open();
    forget();
    focus_soon(app()->close_button);
    reset_under_the_screen();
    panel().run_until([] { return false; }, 100);
    EXPECT_THAT(lines_of("_timer_cb"), IsEmpty());
}

TEST_F(RerunTest, AResetLetsTheServicesBeginAnew)
{
    use_product("television");
    register_devices({device("Phone", 1, true, "bw")});
    open();
    const auto next_text = [this] {
        char *text = _service_item_label_get(&gVeskTable[0], app()->genlist, "elm.text");
        const std::string result = text;
        free(text);
        return result;
    };
    const auto next_picture = [this] {
        Evas_Object *icon = _service_item_content_get(&gVeskTable[0], app()->genlist, "elm.swallow.icon");
        const char *file = nullptr;
        elm_image_file_get(icon, &file, nullptr);
        const std::string result = file ? file : "";
        evas_object_del(icon);
        return result;
    };
    const std::string text = next_text();
    const std::string picture = next_picture();
    ASSERT_NE(picture, "") << "the picture has been found";
    reset_under_the_screen();
    EXPECT_EQ(next_text(), text);
    EXPECT_EQ(next_picture(), picture);
    EXPECT_NE(next_text(), text) << "without a reset the next service comes";
    EXPECT_NE(next_picture(), picture);
}

} // namespace
