/* What the screen reader is given to say, asked as the toolkit asks. */

#include <cstdlib>
#include <dlog.h>
#include <gmock/gmock.h>

#include "details.h"
#include "ug/delete_popup.h"
#include "ug/detail_popup.h"
#include "ug/device_list_screen.h"
#include "ug/edit_mode.h"
#include "ug/screen_reader.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char *kNothing = "(nothing)";

/* The name as a row shows it, between marks that keep its direction. */
std::string shown(const std::string &name)
{
    return "\u200e" + name + "\u200e";
}

std::string taken(char *text)
{
    const std::string result = text ? text : kNothing;
    free(text);
    return result;
}

struct ReaderTest : DetailsTest {
    ReaderTest() { register_devices({phone("One"), phone("Two"), phone("Three", false), phone("Four", false)}); }
    ~ReaderTest() override { elm_config_access_set(EINA_FALSE); }

    void open_with_reader()
    {
        ScreenTest::open(); /* the toolkit has to be up first */
        close();
        b_check_tts = true;
        elm_config_access_set(EINA_TRUE);
        ScreenTest::open();
        forget();
    }

    /* What the toolkit gets when it asks a row or a widget. */
    static std::string asked_row(const Elm_Object_Item *item)
    {
        const Evas_Object *access = elm_object_item_access_object_get(item);
        return access ? taken(elm_access_info_get(access, ELM_ACCESS_INFO)) : "(no access object)";
    }
    static std::string asked(const Evas_Object *object) { return taken(elm_access_info_get(object, ELM_ACCESS_INFO)); }

    std::string read_row(int index) { return taken(_list_reader(row(app()->genlist, index), nullptr)); }
};

/* ---- Rows of the main list ---- */

TEST_F(ReaderTest, TheFirstRowIsReadWithTheIntroduction)
{
    open_with_reader();
    EXPECT_EQ(asked_row(row(app()->genlist, 0)), "Device list,Items: 4," + shown("One") + ",Allowed");
    EXPECT_EQ(asked_row(row(app()->genlist, 1)), shown("Two") + ",Allowed");
    EXPECT_EQ(asked_row(row(app()->genlist, 2)), shown("Three") + ",Denied");
    EXPECT_EQ(asked_row(row(app()->genlist, 0)), shown("One") + ",Allowed");
    EXPECT_THAT(spoken(), IsEmpty()) << "the reader speaks it, nobody else";
}

TEST_F(ReaderTest, TheIntroductionIsReadOnceForAsLongAsTheModuleIsLoaded)
{
    open_with_reader();
    EXPECT_TRUE(b_check_tts);
    asked_row(row(app()->genlist, 0));
    EXPECT_FALSE(b_check_tts);
    close();
    ScreenTest::open();
    EXPECT_EQ(asked_row(row(app()->genlist, 0)), shown("One") + ",Allowed") << "opened again";
}

TEST_F(ReaderTest, WithoutDevicesTheIntroductionHasNoCount)
{
    open();
    device_count = 0;
    EXPECT_EQ(read_row(0), "Device list," + shown("One") + ",Allowed");
}

TEST_F(ReaderTest, TheCountIsCutToFourDigits)
{
    open();
    device_count = 123456;
    EXPECT_EQ(read_row(0), "Device list,Items: 1234," + shown("One") + ",Allowed");
}

TEST_F(ReaderTest, WithTheReaderOffRowsHaveNoCallback)
{
    open();
    for (int i = 0; i < device_count; ++i)
        EXPECT_EQ(elm_object_item_access_object_get(row(app()->genlist, i)), nullptr);
    EXPECT_EQ(logged("access object NULL"), 0);
    open_dropdown(0);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(elm_object_item_access_object_get(row(app()->action_genlist, i)), nullptr);
}

TEST_F(ReaderTest, ARowWithoutAnAccessObjectIsLogged)
{
    open_with_reader();
    elm_object_item_access_unregister(row(app()->genlist, 0));
    forget();
    genlistRealizedCb(app(), app()->genlist, row(app()->genlist, 0));
    EXPECT_EQ(logged("access object NULL"), 1);
    for (const LogLine &line : log()) {
        if (line.message == "access object NULL") {
            EXPECT_EQ(line.priority, DLOG_ERROR);
        }
    }
}

TEST_F(ReaderTest, InEditModeEveryRowIsReadAsNotTicked)
{
    open_with_reader();
    _editbutton_cb(app(), app()->edit_button, nullptr);
    panel().settle();
    ASSERT_TRUE(b_edit_status);
    EXPECT_EQ(asked_row(row(app()->genlist, 0)), "Tick box,Not ticked," + shown("One") + ",Allowed");
    EXPECT_TRUE(b_check_tts) << "the introduction is still to come";
    _editbutton_cb(app(), app()->edit_button, nullptr);
    panel().settle();
    ASSERT_EQ(g_selected_count, 4);
    EXPECT_EQ(asked_row(row(app()->genlist, 2)), "Tick box,Not ticked," + shown("Three") + ",Denied");
}

TEST_F(ReaderTest, ARowThatIsMissingIsReadWithoutItsTexts)
{
    open();
    EXPECT_EQ(taken(_list_reader(nullptr, nullptr)), "Device list,Items: 4,,");
    EXPECT_EQ(taken(_list_reader(nullptr, nullptr)), ",");
    b_edit_status = true;
    EXPECT_EQ(taken(_list_reader(nullptr, nullptr)), "Tick box,Not ticked,,");
    b_edit_status = false;
}

/* ---- The empty screen ---- */

TEST_F(ReaderTest, TheEmptyScreenIsReadOnce)
{
    register_devices({});
    open();
    b_check_tts = true;
    EXPECT_EQ(asked(app()->close_button), "Device list,No devices registered,Close")
        << "whether the reader is on or not";
    EXPECT_FALSE(b_check_tts);
    EXPECT_EQ(taken(_noitem_screen_reader(nullptr, nullptr)), kNothing);
}

TEST_F(ReaderTest, AScreenWithDevicesIsNotReadAsEmpty)
{
    open();
    EXPECT_EQ(taken(_noitem_screen_reader(nullptr, nullptr)), kNothing);
    EXPECT_TRUE(b_check_tts);
}

/* ---- The drop-down ---- */

TEST_F(ReaderTest, TheDropDownIsIntroducedOnce)
{
    open();
    open_dropdown(0);
    forget();
    subpopup_position = 2;
    const std::string introduction = shown("One") + ",Items: 3, Allow";
    EXPECT_EQ(taken(_subpopup_screen_reader(nullptr, nullptr)), introduction);
    EXPECT_THAT(spoken(), ElementsAre(introduction));
    EXPECT_TRUE(b_subpopup_entered);
    EXPECT_EQ(subpopup_position, 0);
    EXPECT_EQ(taken(_subpopup_screen_reader(nullptr, nullptr)), kNothing);
    EXPECT_EQ(spoken().size(), 1U);

    press("XF86Back");
    EXPECT_FALSE(b_subpopup_entered);
    open_dropdown(2);
    EXPECT_EQ(taken(_subpopup_screen_reader(nullptr, nullptr)), shown("Three") + ",Items: 3, Deny");
    EXPECT_EQ(subpopup_position, 1);
}

TEST_F(ReaderTest, AChoiceEndsTheIntroductionToo)
{
    open();
    open_dropdown(0);
    taken(_subpopup_screen_reader(nullptr, nullptr));
    press("Return");
    EXPECT_FALSE(b_subpopup_entered);
}

TEST_F(ReaderTest, ChoicesHaveTheCallbackWhenTheReaderIsOn)
{
    open_with_reader();
    elm_genlist_item_selected_set(row(app()->genlist, 1), EINA_TRUE);
    panel().settle();
    ASSERT_TRUE(evas_object_visible_get(app()->action_popup));
    EXPECT_EQ(asked_row(row(app()->action_genlist, 0)), shown("Two") + ",Items: 3, Allow");
    EXPECT_EQ(asked_row(row(app()->action_genlist, 1)), kNothing);
}

TEST_F(ReaderTest, ADropDownWithoutASelectedRowIsNotIntroduced)
{
    open();
    forget();
    EXPECT_EQ(taken(_subpopup_screen_reader(nullptr, nullptr)), kNothing);
    EXPECT_EQ(logged("no row is selected"), 1);
    EXPECT_FALSE(b_subpopup_entered);
    EXPECT_THAT(spoken(), IsEmpty());
}

TEST_F(ReaderTest, ADropDownWithoutAScreenIsNotIntroduced)
{
    open();
    open_dropdown(0);
    forget();
    AppData *const screen = app_data;
    app_data = nullptr;
    EXPECT_EQ(taken(_subpopup_screen_reader(nullptr, nullptr)), kNothing);
    app_data = screen;
    EXPECT_THAT(messages(), ElementsAre("no row is selected"));
    EXPECT_EQ(log().back().priority, DLOG_WARN);
    EXPECT_FALSE(b_subpopup_entered);
    EXPECT_THAT(spoken(), IsEmpty());
}

TEST_F(ReaderTest, ADropDownRowWithoutAnAccessObjectIsLogged)
{
    open();
    open_dropdown(0);
    elm_config_access_set(EINA_TRUE);
    elm_object_item_access_unregister(row(app()->action_genlist, 0));
    forget();
    subpopupRealizedCb(app(), app()->action_genlist, row(app()->action_genlist, 0));
    EXPECT_EQ(logged("access object NULL"), 1);
    forget();
    subpopupRealizedCb(app(), app()->action_genlist, nullptr);
    EXPECT_THAT(messages(), IsEmpty());
}

/* ---- The confirmation ---- */

TEST_F(ReaderTest, BothButtonsOfTheConfirmationReadTheSame)
{
    open();
    press({"Right", "Return"});
    ASSERT_TRUE(b_edit_status);
    for (int time : {1, 2}) {
        SCOPED_TRACE(time);
        _create_delete_popup(app());
        panel().settle();
        EXPECT_FALSE(b_delete_popup_entered) << "armed with each opening";
        Evas_Object *yes = elm_object_part_content_get(app()->delete_popup, "button1");
        Evas_Object *no = elm_object_part_content_get(app()->delete_popup, "button2");
        forget();
        const std::string question = "Delete,Delete the selected devices?,Yes";
        EXPECT_EQ(asked(no), question) << "also with the reader off";
        EXPECT_TRUE(b_delete_popup_entered);
        EXPECT_EQ(asked(no), "Yes");
        EXPECT_EQ(asked(yes), "Yes");
        EXPECT_THAT(spoken(), ElementsAre(question, "Yes", "Yes"));
        _cancelbutton_cb(app(), nullptr, nullptr);
        panel().settle();
    }
}

/* ---- Rows of services ---- */

TEST_F(ReaderTest, ServicesAreReadLikeRows)
{
    register_devices({with_services("Phone", 5)});
    open_with_reader();
    b_check_tts = false;
    selected_item_index = 0;
    show_detail_popup(app());
    panel().settle();
    const auto texts = service_texts();
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(asked_row(row(app()->service_genlist, 0)), texts[0] + ",");
    EXPECT_EQ(asked_row(row(app()->service_genlist, 1)), texts[1] + ",");
}

TEST_F(ReaderTest, AServiceWithoutAnAccessObjectIsLogged)
{
    register_devices({with_services("Phone", 5)});
    open();
    open_details(0);
    elm_config_access_set(EINA_TRUE);
    elm_object_item_access_unregister(row(app()->service_genlist, 0));
    forget();
    genlistRealizedCbDetail(app(), app()->service_genlist, row(app()->service_genlist, 0));
    EXPECT_THAT(messages(), ElementsAre("Enter", "access object NULL", "Exit"));
}

} // namespace
