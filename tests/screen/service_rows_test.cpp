/* The rows of the services: how often the list asks for their contents, their looks and their focus. */

#include <algorithm>
#include <gmock/gmock.h>

#include "services_fixture.h"

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

/* ---- How often the toolkit asks ---- */

TEST_F(ServicesTest, EachRowIsMeasuredOnceAndShownOnce)
{
    register_devices({with_services("Two", 5, 1), with_services("None", 0, 1), with_services("One", 7, 1)});
    open();
    for (const char *name : {"Two", "None", "One"}) {
        SCOPED_TRACE(name);
        requests.clear();
        selected_item_index = row_of(name);
        show_detail_popup(app());
        const auto measured = requests;
        const int rows = get_service_count();
        EXPECT_EQ(std::ranges::count(measured, "text elm.text"), rows) << "while the rows are appended";
        EXPECT_EQ(std::ranges::count(measured, "picture elm.swallow.icon"), rows);
        EXPECT_EQ(measured.size(), 2U * static_cast<unsigned>(rows)) << "nothing else is asked for";
        panel().settle();
        const std::vector<std::string> shown(requests.begin() + static_cast<long>(measured.size()), requests.end());
        EXPECT_EQ(shown, measured) << "and once more to be shown";
        _close_button_cb(app(), nullptr, nullptr);
        panel().settle();
    }
}

TEST_F(ServicesTest, KeysAndFocusAskForNothingMore)
{
    register_devices({with_services("Two", 5, 1)});
    open();
    open_details(0);
    const auto asked = requests.size();
    press({"Left", "Down", "Up", "Return", "Right"});
    EXPECT_EQ(requests.size(), asked);
    EXPECT_EQ(shown(),
              (std::vector<ServiceRow>{{"Play mobile content on the TV", kContent}, {sound_text(1, true), kSound}}));
}

/* ---- Rows ---- */

TEST_F(ServicesTest, RowsHaveTheStyleAndTheLayoutOfTheTelevision)
{
    register_devices({with_services("Two", 5)});
    open();
    spy::forget();
    open_details(0);
    ASSERT_EQ(elm_genlist_items_count(app()->service_genlist), 2U);
    for (int i = 0; i < 2; ++i) {
        Elm_Object_Item *item = row(app()->service_genlist, i);
        EXPECT_STREQ(elm_genlist_item_item_class_get(item)->item_style, "C_TextItem_WhiteSingleline02");
        EXPECT_THAT(spy::layouts_of(item), AllOf(Not(IsEmpty()), Each("theme,singleline,icon,2text|"))) << i;
    }
}

TEST_F(ServicesTest, ChoosingTakesTheLookOffTheSelectedAndTheFocusedRow)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    press("Left");
    Evas_Object *list = app()->service_genlist;
    Elm_Object_Item *first = row(list, 0);
    Elm_Object_Item *second = row(list, 1);
    const std::string unselected = "elm,state,unselected|elm";
    spy::forget();
    press("Return");
    EXPECT_EQ(std::ranges::count(spy::signals_to(first), unselected), 2) << "selected and focused";
    EXPECT_EQ(std::ranges::count(spy::signals_to(second), unselected), 0);

    ASSERT_EQ(elm_genlist_selected_item_get(list), first);
    press("Down");
    ASSERT_EQ(elm_object_focused_item_get(list), second);
    spy::forget();
    _service_genlist_cb(app(), list, nullptr);
    EXPECT_EQ(std::ranges::count(spy::signals_to(first), unselected), 1) << "selected";
    EXPECT_EQ(std::ranges::count(spy::signals_to(second), unselected), 1) << "focused";
}

TEST_F(ServicesTest, PicturesExist)
{
    register_devices({with_services("All", 7), with_services("Sound", 6), with_services("Content", 1)});
    open();
    for (int row = 0; row < device_count; ++row) {
        open_details(row);
        for (Elm_Object_Item *item = elm_genlist_first_item_get(app()->service_genlist); item;
             item = elm_genlist_item_next_get(item)) {
            const char *file = nullptr;
            Evas_Object *icon = elm_object_item_part_content_get(item, "elm.swallow.icon");
            elm_image_file_get(icon, &file, nullptr);
            EXPECT_TRUE(std::filesystem::exists(file)) << file;
            const Eina_Rectangle place = area(icon);
            EXPECT_GE(place.w, 40);
            EXPECT_GE(place.h, 40);
        }
        press("XF86Back");
    }
}

TEST_F(ServicesTest, FocusTurnsThePictureBlackAndBackToWhite)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    EXPECT_EQ(focused(), app()->detail_close_button);
    Evas_Object *icon = elm_object_item_part_content_get(row(app()->service_genlist, 0), "elm.swallow.icon");
    const auto colour = [icon] {
        std::vector<int> rgba(4);
        evas_object_color_get(icon, &rgba[0], &rgba[1], &rgba[2], &rgba[3]);
        return rgba;
    };
    forget();
    press("Left");
    ASSERT_EQ(focused(), app()->service_genlist);
    EXPECT_EQ(focused_row(), 0);
    EXPECT_THAT(colour(), ElementsAre(0, 0, 0, 255));
    EXPECT_EQ(logged("genlist item focused: Play mobile content on the TV\n"), 1);
    EXPECT_THAT(messages(), testing::Contains(testing::MatchesRegex("Item  .0x.* has focus, change icon .0x.* color")));
    forget();
    press("Down");
    EXPECT_EQ(focused_row(), 1);
    EXPECT_THAT(colour(), ElementsAre(255, 255, 255, 255));
    EXPECT_EQ(logged("genlist item unfocused: Play mobile content on the TV\n"), 1);
    EXPECT_THAT(messages(), testing::Contains(testing::MatchesRegex("Item\t.0x.* has focus, change icon .0x.* color")));
    press("Right");
    EXPECT_EQ(focused(), app()->detail_close_button);
}

TEST_F(ServicesTest, ARowWithoutAPictureTakesTheFocusToo)
{
    register_devices({with_services("One", 1)});
    open();
    open_details(0);
    Elm_Object_Item *item = row(app()->service_genlist, 0);
    evas_object_del(elm_object_item_part_content_unset(item, "elm.swallow.icon"));
    forget();
    _service_item_focus_cb(nullptr, app()->service_genlist, item);
    _service_item_unfocus_cb(nullptr, app()->service_genlist, item);
    EXPECT_EQ(logged("genlist item focused: Play mobile content on the TV\n"), 1);
    EXPECT_EQ(logged("genlist item unfocused: Play mobile content on the TV\n"), 1);
}

TEST_F(ServicesTest, ChoosingARowKeepsItSelectedWithoutTheLook)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    press("Left");
    forget();
    press("Return");
    const auto entered = std::ranges::count_if(
        log(), [](const LogLine &line) { return line.function == "_service_genlist_cb" && line.message == "Enter"; });
    EXPECT_EQ(entered, 1);
    EXPECT_EQ(elm_genlist_selected_item_get(app()->service_genlist), row(app()->service_genlist, 0));
    EXPECT_NE(app()->detail_popup, nullptr);
    EXPECT_EQ(focused(), app()->service_genlist);
    forget();
    press("Return");
    EXPECT_GE(logged("Enter"), 1) << "a selected row answers again";
}

TEST_F(ServicesTest, RealizedRowsAreLogged)
{
    register_devices({with_services("Two", 5)});
    open();
    open_details(0);
    int entered = 0;
    for (const LogLine &line : log())
        entered += line.function == "genlistRealizedCbDetail" && line.message == "Enter";
    EXPECT_EQ(entered, 2);
    forget();
    genlistRealizedCbDetail(app(), app()->service_genlist, nullptr);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ServicesTest, WithoutARowClassThePopupIsThereWithoutRows)
{
    register_devices({with_services("Two", 5)});
    open();
    selected_item_index = 0;
    spy::overrides().no_row_classes = true;
    show_detail_popup(app());
    spy::overrides().no_row_classes = false;
    panel().settle();
    EXPECT_EQ(logged("Cannot create genlist item class"), 1);
    EXPECT_EQ(elm_genlist_items_count(app()->service_genlist), 0U);
    EXPECT_FALSE(evas_object_visible_get(app()->service_genlist));
    EXPECT_EQ(elm_genlist_select_mode_get(app()->service_genlist), ELM_OBJECT_SELECT_MODE_DEFAULT);
    EXPECT_TRUE(evas_object_visible_get(app()->detail_popup));
    EXPECT_EQ(focused(), app()->detail_close_button);
    press("Return");
    EXPECT_EQ(app()->detail_popup, nullptr);
    EXPECT_EQ(focused(), app()->genlist);
}

} // namespace
