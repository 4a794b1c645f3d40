/* A row of the device list: its texts, its picture, and what prepares it. */

#include <dlog.h>
#include <gmock/gmock.h>

#include "canvas_parts.h"
#include "screen_test.h"
#include "spy.h"
#include "ug/device_list_screen.h"
#include "ug/edit_mode.h"
#include "ug/rows.h"
#include "vesk/device_table.h"

namespace {

struct RowsTest : ScreenTest {

    int priority_of(const std::string &message) const
    {
        for (const LogLine &line : log()) {
            if (line.message == message)
                return line.priority;
        }
        return -1;
    }

    static std::string label(const DeviceEntry *entry, const char *part)
    {
        char *text = _item_label_get(const_cast<DeviceEntry *>(entry), nullptr, part);
        const std::string result = text;
        free(text);
        return result;
    }
};

/* --- Names --- */

struct NameTest : RowsTest, testing::WithParamInterface<std::string> {};

TEST_P(NameTest, IsShownAsItStands)
{
    register_devices({phone(GetParam())});
    open();
    const std::vector<Evas_Object *> row =
        drawings(app()->genlist, "elm/genlist/item/C_TextItem_WhiteSingleline05/default");
    ASSERT_EQ(row.size(), 1U);
    const std::string expected = GetParam().empty() ? "UNKNOWN" : GetParam();
    EXPECT_EQ(edje_object_part_text_get(row[0], "elm.text"), "\u200e" + expected + "\u200e");
    EXPECT_TRUE(is_of_type(edje_object_part_object_get(row[0], "elm.text"), "text")) << "which obeys no markup";
}

INSTANTIATE_TEST_SUITE_P(Names, NameTest,
                         testing::Values("", "x", "<b>Tom</b> & Ann", "<br/>", "100%s%n", std::string(128, 'W'),
                                         "\u0647\u0627\u062a\u0641", "\uac24\ub7ed\uc2dc"));

TEST_F(RowsTest, TextsOfOtherPartsAndOfNoDeviceAreEmpty)
{
    DeviceEntry entry{};
    EXPECT_EQ(label(nullptr, "elm.text"), "");
    EXPECT_EQ(label(nullptr, "elm.text.1"), "");
    EXPECT_EQ(label(&entry, "elm.text.2"), "");
    EXPECT_EQ(label(&entry, "elm.tex"), "");
    EXPECT_EQ(label(&entry, "elm.text"), "&#x200e;UNKNOWN&#x200e;");
}

/* --- Pictures --- */

TEST_F(RowsTest, EveryFamilyHasItsPicture)
{
    for (int type = -1; type <= 37; ++type) {
        SCOPED_TRACE(type);
        if (type == 5)
            continue;
        register_devices({device("Device", type, true, "b")});
        open();
        Evas_Object *icon = elm_object_item_part_content_get(row(app()->genlist, 0), "elm.swallow.icon");
        ASSERT_TRUE(icon);
        const char *file = nullptr;
        elm_image_file_get(icon, &file, nullptr);
        ASSERT_TRUE(file);
        EXPECT_TRUE(std::filesystem::exists(file)) << file;
        int width = 0;
        int height = 0;
        elm_image_object_size_get(icon, &width, &height);
        EXPECT_GT(width, 0);
        EXPECT_GT(height, 0);
        close();
        reset_module_state();
    }
}

TEST_F(RowsTest, AnInputDeviceOfAnUnknownKindHasNoPicture)
{
    register_devices({device("Pen", 5, true, "b")});
    open();
    EXPECT_GE(logged(" icon path [/usr/share/resources/image/icon/r_icon_convergence/(null)]"), 1);
    Evas_Object *icon = elm_object_item_part_content_get(row(app()->genlist, 0), "elm.swallow.icon");
    ASSERT_TRUE(icon);
    int width = -1;
    int height = -1;
    elm_image_object_size_get(icon, &width, &height);
    EXPECT_LE(width, 0);
    EXPECT_LE(height, 0);
}

TEST_F(RowsTest, OtherPartsHaveNoContentButRefreshTheTable)
{
    register_devices(phones(3));
    open();
    device_count = -1;
    app()->table = nullptr;
    EXPECT_FALSE(_item_content_get(&gVeskTable[0], app()->genlist, "elm.swallow.end"));
    EXPECT_EQ(device_count, 3);
    EXPECT_EQ(app()->table, gVeskTable);
}

/* --- Realized rows --- */

TEST_F(RowsTest, ARowThatIsRealizedIsPreparedAndLogged)
{
    register_devices(phones(1));
    open();
    forget();
    spy::forget();
    elm_genlist_item_select_mode_set(row(app()->genlist, 0), ELM_OBJECT_SELECT_MODE_DEFAULT);
    genlistRealizedCb(app(), app()->genlist, row(app()->genlist, 0));
    EXPECT_EQ(elm_genlist_item_select_mode_get(row(app()->genlist, 0)), ELM_OBJECT_SELECT_MODE_ALWAYS);
    EXPECT_THAT(messages(),
                testing::ElementsAre("Enter", testing::StartsWith(" Item ["),
                                     "Item Index = [0], status = [0], count = [1]", "Check box is null", "Exit"));
    EXPECT_THAT(spy::layouts_of(row(app()->genlist, 0)), testing::ElementsAre("theme,singleline,icon,2text|"));
    forget();
    genlistRealizedCb(app(), app()->genlist, nullptr);
    EXPECT_TRUE(log().empty());
}

TEST_F(RowsTest, ARowWithoutAPlaceIsLeftAsItIs)
{
    register_devices(phones(1));
    open();
    press({"Right", "Return"});
    ASSERT_TRUE(b_edit_status);
    Elm_Object_Item *first = row(app()->genlist, 0);
    b_remove_status[0] = true;
    forget();
    spy::overrides().no_indexes = true;
    genlistRealizedCb(app(), app()->genlist, first);
    EXPECT_THAT(messages(), testing::ElementsAre("Enter", "elm_genlist_item_index_get Failed"));
    EXPECT_EQ(priority_of("elm_genlist_item_index_get Failed"), DLOG_WARN);
    EXPECT_FALSE(elm_check_state_get(check_of_item(first)));
}

TEST_F(RowsTest, ACheckBoxTakesItsRowsMarkAndIsLoggedEitherWay)
{
    register_devices(phones(3));
    open();
    press({"Right", "Return"});
    ASSERT_TRUE(b_edit_status);
    Elm_Object_Item *second = row(app()->genlist, 1);
    Evas_Object *check = check_of_item(second);
    ASSERT_TRUE(check);
    for (const bool marked : {true, false}) {
        b_remove_status[1] = marked;
        elm_check_state_set(check, !marked);
        forget();
        genlistRealizedCb(app(), app()->genlist, second);
        char status[64];
        char box[64];
        snprintf(status, sizeof status, "Item Index = [1], status = [%d], count = [3]", marked);
        snprintf(box, sizeof box, "Item Index [1] [%p]", static_cast<void *>(check));
        EXPECT_THAT(messages(), testing::ElementsAre("Enter", status, box, "Exit"));
        EXPECT_EQ(elm_check_state_get(check) == EINA_TRUE, marked);
    }
}

TEST_F(RowsTest, ARowWithoutAnAccessObjectIsAnError)
{
    register_devices(phones(1));
    open();
    elm_config_access_set(EINA_TRUE);
    elm_object_item_access_unregister(row(app()->genlist, 0));
    genlistRealizedCb(app(), app()->genlist, row(app()->genlist, 0));
    EXPECT_EQ(priority_of("access object NULL"), DLOG_ERROR);
    elm_config_access_set(EINA_FALSE);
}

TEST_F(RowsTest, WithoutARowClassTheScreenIsBuiltWithoutRows)
{
    register_devices(phones(2));
    spy::overrides().no_row_classes = true;
    open();
    EXPECT_EQ(priority_of("Cannot create genlist item class"), DLOG_ERROR);
    EXPECT_EQ(elm_genlist_items_count(app()->genlist), 0U);
    EXPECT_TRUE(running());
    press("XF86Back");
    EXPECT_TRUE(closed_itself());
}

} // namespace
