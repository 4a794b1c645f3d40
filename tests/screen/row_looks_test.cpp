/* How rows look: names as they were typed, the access at a glance, the current choice, and the same height of the
 * details whatever the script. */

#include <gmock/gmock.h>

#include "canvas_parts.h"
#include "details.h"
#include "dropdown_fixture.h"
#include "television/efl/texts.h"
#include "ug/detail_popup.h"

namespace {

constexpr const char *kDeviceRow = "elm/genlist/item/C_TextItem_WhiteSingleline05/default";
constexpr const char *kChoice = "elm/genlist/item/C_ListDropdown_White/C_ListDropdown_White";
constexpr const char *kLeftToRight = "\u200e"; /* of the module, around a name */

std::string drawn_name(const Evas_Object *row)
{
    const char *text = evas_object_text_text_get(edje_object_part_object_get(row, "elm.text"));
    return text ? text : "";
}

struct Name {
    const char *typed;
    const char *shown;
};

struct ShownNameTest : ScreenTest, testing::WithParamInterface<Name> {};

TEST_P(ShownNameTest, IsDrawnAsTypedAndVisible)
{
    register_devices({phone(GetParam().typed)});
    open();
    const std::vector<Evas_Object *> rows = drawings(app()->genlist, kDeviceRow);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(drawn_name(rows[0]), kLeftToRight + std::string(GetParam().shown) + kLeftToRight);
}

INSTANTIATE_TEST_SUITE_P(Names, ShownNameTest,
                         testing::Values(Name{"Tom &amp; Ann", "Tom &amp; Ann"}, Name{"a &lt;b&gt; c", "a &lt;b&gt; c"},
                                         Name{"<b>R&D</b>", "<b>R&D</b>"}, Name{"abc\u202etxt", "abctxt"},
                                         Name{"a\u2066b\u2069", "ab"}, Name{"one\ntwo", "one two"},
                                         Name{"\u00a0\u3000", "\u2423\u2423"}, Name{"\u202e", "\u2423"},
                                         Name{"a b", "a b"}));

TEST(ShownName, NeverDisappears)
{
    EXPECT_EQ(vesk::efl::shown_name("   "), "\u2423\u2423\u2423");
    EXPECT_EQ(vesk::efl::shown_name(""), "\u2423");
    EXPECT_EQ(vesk::efl::shown_name(" a "), " a ");
}

struct RowLooksTest : ScreenTest {};

TEST_F(RowLooksTest, AllowedAndDeniedHaveMarksOfTheirOwnAndDeniedIsStronger)
{
    register_devices({phone("A"), phone("B", false)});
    open();
    std::vector<std::pair<std::string, std::string>> seen;
    for (const Evas_Object *row : drawings(app()->genlist, kDeviceRow)) {
        seen.emplace_back(state_of(row, "access"), state_of(row, "elm.text.1"));
        int width = 0;
        edje_object_part_geometry_get(row, "access", nullptr, nullptr, &width, nullptr);
        EXPECT_EQ(width, 32);
    }
    EXPECT_THAT(seen, testing::UnorderedElementsAre(std::pair("allowed", "default"), std::pair("denied", "strong")));
}

TEST_F(RowLooksTest, AChangedAccessChangesTheMark)
{
    register_devices({phone("A")});
    open();
    register_devices({phone("A", false)});
    panel().settle();
    const std::vector<Evas_Object *> rows = drawings(app()->genlist, kDeviceRow);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(state_of(rows[0], "access"), "denied");
}

TEST_F(RowLooksTest, WhereNothingMovesALongNameTakesSeveralLinesWithTheFocus)
{
    register_devices({phone("A"), phone("A name that is much longer than the place beside the access has space for")});
    open();
    const auto long_row = [this] {
        for (const Evas_Object *row : drawings(app()->genlist, kDeviceRow)) {
            if (drawn_name(row).size() > 20)
                return row;
        }
        return static_cast<const Evas_Object *>(nullptr);
    };
    ASSERT_NE(long_row(), nullptr);
    EXPECT_EQ(state_of(long_row(), "elm.text"), "default");
    press("Down");
    EXPECT_EQ(state_of(long_row(), "elm.text"), "hidden");
    EXPECT_THAT(state_of(long_row(), "vesk.name"), testing::AnyOf("two", "three"));
    press("Up");
    EXPECT_EQ(state_of(long_row(), "elm.text"), "default");
    EXPECT_EQ(state_of(long_row(), "vesk.name"), "default");
}

struct CurrentChoiceTest : DropdownFixture {};

TEST_F(CurrentChoiceTest, HasATickThatTheFocusDoesNotHide)
{
    register_devices({phone("A", false)});
    open();
    open_dropdown(0);
    const auto ticks = [this] {
        std::vector<std::pair<int, std::string>> found;
        for (Evas_Object *choice : drawings(app()->action_genlist, kChoice))
            found.emplace_back(area(choice).y, state_of(choice, "tick"));
        std::ranges::sort(found);
        std::vector<std::string> states;
        for (const auto &[y, state] : found)
            states.push_back(state);
        return states;
    };
    EXPECT_THAT(ticks(), testing::ElementsAre("default", "chosen", "default"));
    press("Up");
    EXPECT_THAT(ticks(), testing::ElementsAre("default", "chosen", "default"));
}

struct DetailsLanguageTest : DetailsTest, testing::WithParamInterface<const char *> {};

TEST_P(DetailsLanguageTest, AreAsHighAsInEnglish)
{
    register_devices({with_services("First", 5)});
    set("language", GetParam());
    open();
    selected_item_index = 0;
    show_detail_popup(app());
    panel().settle();
    const std::vector<Evas_Object *> drawing = drawings(app()->detail_popup, "elm/popup/base/C_PopupBasic_WhiteRight");
    ASSERT_EQ(drawing.size(), 1U);
    int height = 0;
    edje_object_part_geometry_get(drawing[0], "panel", nullptr, nullptr, nullptr, &height);
    EXPECT_EQ(height, 672) << "a title, a heading, a caption, the list and a margin";
}

INSTANTIATE_TEST_SUITE_P(Languages, DetailsLanguageTest,
                         testing::Values("en_GB", "de_DE", "ar_AE", "he_IL", "hi_IN", "ja_JP", "ko_KR", "th_TH",
                                         "zh_CN", "zh_TW"),
                         [](const auto &language) { return std::string(language.param); });

} // namespace
