/* What the checks tell from pixels and places, on small scenes that are drawn here: each is right until it is spoilt.
 */

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "checks.h"
#include "faults.h"
#include "pixels.h"

using namespace vesk::looks;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr Color kWhite{255, 255, 255};
constexpr Color kGrey{150, 150, 150};
constexpr Color kInk{10, 17, 22};
constexpr Color kAccent{37, 163, 186};
constexpr Color kSoft{239, 242, 245};

constexpr char kDeviceRow[] = "elm/genlist/item/C_TextItem_WhiteSingleline05/default";
constexpr char kButton[] = "elm/button/base/C_ButtonBasic_WhiteText";

/* A panel of 600 x 400 with two rows of a list and two buttons; the first row has the focus. */
class RulesTest : public testing::Test {
protected:
    RulesTest()
    {
        fill(picture().area(), kWhite);
        sight().grounds.push_back(
            {drawing("elm/popup/base/C_PopupBasic_WhiteRight", picture().area(), -1), picture().area(), 1});
        sight().lists.push_back({{20, 20, 300, 200}, {}, false, 0});
        for (int i = 0; i < 2; ++i) {
            const Rect row{20, 20 + 80 * i, 300, 80};
            sight().rows.push_back(drawing(kDeviceRow, row, 1 + i));
            sight().rows.back().list = 0;
            add_text("row", sight().rows.back(), {120, row.y + 25, 100, 30}, kInk);
            sight().texts.back().name = true;
            add_picture(sight().rows.back(), {70, row.y + 12, 40, 56});
        }
        for (int i = 0; i < 2; ++i) {
            sight().buttons.push_back(drawing(kButton, {340, 20 + 100 * i, 200, 80}, 3 + i));
            draw_button(sight().buttons.back(), kSoft, kGrey);
            add_text("button", sight().buttons.back(), {390, 45 + 100 * i, 100, 30}, kInk);
        }
        focus_row(0);
    }

    Picture &picture() { return shown_.picture; }
    Sight &sight() { return shown_.sight; }

    static Drawing drawing(const char *group, const Rect &area, int number)
    {
        static int objects[16]; /* known by their addresses alone */
        Drawing result;
        result.object = reinterpret_cast<Evas_Object *>(&objects[static_cast<unsigned>(number) % std::size(objects)]);
        result.group = group;
        result.area = area;
        result.shown = area;
        result.ground = 0;
        return result;
    }

    void fill(const Rect &place, Color color)
    {
        for (int y = place.y; y < place.bottom(); ++y) {
            for (int x = place.x; x < place.right(); ++x)
                picture().set(x, y, color);
        }
    }

    void draw_frame(const Rect &place, Color line, Color inside)
    {
        fill(place, line);
        fill(place.grown(-4), inside);
    }

    /* Stripes, as letters have them. */
    void draw_letters(const Rect &place, Color color)
    {
        for (int x = place.x; x + 3 <= place.right(); x += 10)
            fill({x, place.y, 3, place.h}, color);
        fill({place.right() - 3, place.y, 3, place.h}, color);
    }

    void add_text(const char *words, const Drawing &within, const Rect &place, Color color)
    {
        draw_letters(place, color);
        sight().texts.push_back({words, within, place, place, false, false, within.ground, false, false});
    }

    void add_picture(const Drawing &within, const Rect &place)
    {
        fill(place, kInk);
        fill(place.grown(-4), kWhite);
        sight().pictures.push_back({"phone.webp", within, place, false, true});
    }

    void draw_button(const Drawing &button, Color color, Color line) { draw_frame(button.area.grown(-4), line, color); }

    void focus_row(size_t index)
    {
        auto &row = sight().rows[index];
        draw_frame(row.area.grown(-2), kInk, kAccent);
        draw_frame(sight().pictures[index].area, kInk, kAccent);
        draw_letters(sight().texts[index].area, kInk);
        row.focused = true;
        for (auto &text : sight().texts) {
            if (text.within.object == row.object)
                text.within.focused = true;
        }
    }

    void unfocus_row(size_t index)
    {
        fill(sight().rows[index].area, kWhite);
        draw_letters(sight().texts[index].area, kInk);
        sight().rows[index].focused = false;
    }

    /* A box, drawn as it says, in a row. */
    void add_check(size_t row, bool on)
    {
        const Rect box{30, sight().rows[row].area.y + 24, 32, 32};
        draw_frame(box, kInk, on ? kInk : kWhite);
        if (on)
            fill({box.x + 12, box.y + 12, 8, 8}, kWhite);
        sight().checks.push_back({sight().rows[row], box, on, false});
    }

    using Rule = void (*)(const Shown &, std::vector<Finding> &);
    std::vector<std::string> found(Rule rule) const
    {
        std::vector<Finding> findings;
        rule(shown_, findings);
        std::vector<std::string> sentences;
        for (const auto &finding : findings)
            sentences.push_back(finding.what);
        return sentences;
    }

    State state_{"drawn", "Drawn by a test", nullptr, {}};
    Setting setting_;
    Shown shown_{state_, setting_, {}, Picture(600, 400)};
};

TEST_F(RulesTest, AFocusThatIsNotDrawnOnARowIsFound)
{
    ASSERT_THAT(found(check_focus), IsEmpty());
    unfocus_row(0);
    sight().rows[0].focused = true;
    EXPECT_THAT(found(check_focus), Contains("The focus cannot be seen on a row."));
}

TEST_F(RulesTest, AFocusThatIsTooPaleIsFound)
{
    draw_frame(sight().rows[0].area.grown(-2), kSoft, kWhite);
    EXPECT_THAT(found(check_focus), Contains("The focus cannot be seen on a row."));
}

TEST_F(RulesTest, AFocusAtOneEndOfARowIsNotEnough)
{
    unfocus_row(0);
    sight().rows[0].focused = true;
    fill({20, 20, 12, 80}, kInk);
    EXPECT_THAT(found(check_focus), Contains("The focus cannot be seen on a row."));
}

TEST_F(RulesTest, AFocusThatIsNotDrawnOnAButtonIsFound)
{
    unfocus_row(0);
    sight().buttons[1].focused = true;
    draw_button(sight().buttons[1], kAccent, kInk);
    draw_frame(sight().buttons[1].area, kInk, kAccent);
    ASSERT_THAT(found(check_focus), IsEmpty());
    fill(sight().buttons[1].area, kWhite);
    draw_button(sight().buttons[1], kSoft, kGrey);
    EXPECT_THAT(found(check_focus), Contains("The focus cannot be seen on a button."));
}

TEST_F(RulesTest, AButtonInTheColourOfTheFocusIsFound)
{
    draw_button(sight().buttons[0], kAccent, kInk);
    EXPECT_THAT(found(check_focus), Contains("2 things look focused instead of 1."));
}

TEST_F(RulesTest, ADisabledButtonThatLooksEnabledIsFound)
{
    sight().buttons[1].off = true;
    sight().texts.back().within.off = true;
    EXPECT_THAT(found(check_choices), Contains(HasSubstr("A button that cannot be chosen looks as if it could")));
    draw_letters(sight().texts.back().area, kGrey);
    EXPECT_THAT(found(check_choices), IsEmpty());
}

TEST_F(RulesTest, APanelThatWaitsAndIsNotDimmedIsFound)
{
    const Rect before{200, 300, 200, 80};
    sight().grounds.push_back({drawing("elm/popup/base/C_ListDropdown_White", before, 9), before, 5});
    EXPECT_THAT(found(check_dimming), Contains(HasSubstr("A panel that waits is as bright")));
    fill(picture().area(), kGrey);
    fill(before, kWhite);
    EXPECT_THAT(found(check_dimming), IsEmpty());
}

TEST_F(RulesTest, ATickThatCannotBeSeenIsFound)
{
    add_check(0, true);
    add_check(1, false);
    ASSERT_THAT(found(check_boxes), IsEmpty());
    fill(sight().checks[0].area, kInk);
    EXPECT_THAT(found(check_boxes), Contains("A checked box shows no tick."));
}

TEST_F(RulesTest, ACheckedBoxThatLooksUncheckedIsFound)
{
    add_check(0, true);
    add_check(1, false);
    draw_frame(sight().checks[0].area, kInk, kWhite);
    EXPECT_THAT(found(check_boxes), Contains("A checked box looks like an unchecked one."));
}

TEST_F(RulesTest, AnUncheckedBoxWithSomethingInItIsFound)
{
    add_check(1, false);
    fill({40, 134, 12, 12}, kInk);
    EXPECT_THAT(found(check_boxes), Contains("An unchecked box shows something."));
}

TEST_F(RulesTest, ACheckBoxOutOfLineIsFound)
{
    add_check(0, true);
    add_check(1, true);
    sight().checks[1].area.y += 8;
    EXPECT_THAT(found(check_boxes), Contains(HasSubstr("A check box is out of line")));
}

TEST_F(RulesTest, APictureOfTheWrongSizeIsFound)
{
    ASSERT_THAT(found(check_pictures), IsEmpty());
    sight().pictures[1].area = {70, 101, 40, 78};
    EXPECT_THAT(found(check_pictures), Contains(HasSubstr("A picture is 78 high")));
    sight().pictures[1].area = {70, 130, 20, 20};
    EXPECT_THAT(found(check_pictures), Contains(HasSubstr("A picture is 20 high")));
}

TEST_F(RulesTest, APictureOverATextIsFound)
{
    sight().pictures[1].area.x = 90;
    EXPECT_THAT(found(check_pictures), Contains("A picture lies over a text: \"row\"."));
}

TEST_F(RulesTest, AButtonsTextAsideIsFound)
{
    ASSERT_THAT(found(check_buttons), IsEmpty());
    auto &text = sight().texts.back();
    draw_button(sight().buttons[1], kSoft, kGrey);
    text.area.x += 40;
    text.shown = text.area;
    draw_letters(text.area, kInk);
    EXPECT_THAT(found(check_buttons), Contains("A button's text is 40 off the middle: \"button\"."));
}

TEST_F(RulesTest, AButtonsTextAtItsLineIsFound)
{
    auto &text = sight().texts.back();
    draw_button(sight().buttons[1], kSoft, kGrey);
    text.area = text.shown = {355, 145, 170, 30};
    draw_letters(text.area, kInk);
    EXPECT_THAT(found(check_buttons), Contains("A button's text comes within 7 of its line: \"button\"."));
}

TEST_F(RulesTest, AScrollBarThatCannotBeSeenIsFound)
{
    sight().lists[0].longer = true;
    sight().lists[0].bar = {324, 40, 6, 60};
    fill(sight().lists[0].bar, kInk);
    EXPECT_THAT(found(check_places), Not(Contains(HasSubstr("scroll bar"))));
    fill(sight().lists[0].bar, kSoft);
    EXPECT_THAT(found(check_places), Contains(HasSubstr("its scroll bar cannot be seen")));
}

TEST_F(RulesTest, ATitleOnTheWrongSideIsFound)
{
    add_text("title", sight().grounds[0].drawing, {440, 350, 140, 30}, kInk);
    sight().texts.back().title = true;
    sight().texts.back().ground = 0;
    EXPECT_THAT(found(check_places), Contains("A title stands on the wrong side: \"title\"."));
}

TEST_F(RulesTest, AToastInACornerIsFound)
{
    const Rect toast{20, 340, 200, 50};
    sight().grounds.push_back({drawing("elm/layout/C_PopupToast_White/SingleLine", toast, 9), toast, 5});
    EXPECT_THAT(found(check_places), Contains("The toast is 180 off the middle."));
}

TEST_F(RulesTest, AToastOverANameIsFound)
{
    const Rect toast{200, 110, 200, 50};
    sight().grounds.push_back({drawing("elm/layout/C_PopupToast_White/SingleLine", toast, 9), toast, 5});
    EXPECT_THAT(found(check_places), Contains("The toast lies over a text: \"row\"."));
}

TEST_F(RulesTest, AMarkOnTheWrongSideIsFound)
{
    const Rect dropdown{100, 260, 200, 100};
    sight().grounds.push_back({drawing("elm/popup/base/C_ListDropdown_White", dropdown, 9), dropdown, 5});
    sight().rows[1].selected = true;
    EXPECT_THAT(found(check_places), Contains("The row of the drop-down has no mark at its start."));
    fill({28, 118, 8, 44}, kInk);
    EXPECT_THAT(found(check_places), Not(Contains(HasSubstr(" mark "))));
    fill({300, 118, 8, 44}, kInk);
    EXPECT_THAT(found(check_places), Contains("The row of the drop-down has its mark on the wrong side."));
}

TEST(Frame, IsAsMuchAsItsShortestSide)
{
    const Rect area{0, 0, 80, 40};
    const auto at_left_half = [](int x, int) { return x < 40; };
    EXPECT_DOUBLE_EQ(frame_around(area, 4, [](int, int) { return true; }), 1);
    EXPECT_DOUBLE_EQ(frame_around(area, 4, at_left_half), 0);
    EXPECT_DOUBLE_EQ(frame_around(area, 4, [](int x, int y) { return x < 3 || y < 3 || x > 76 || y > 36; }), 1);
}

TEST(Faults, EachHasASceneAndAFinding)
{
    EXPECT_GE(read_faults().size(), 20U); /* it throws when one of them has not */
}

TEST(FurtherScenes, HaveEveryCatalogueOnceAndEveryProduct)
{
    const auto languages = all_languages(VESK_SHARE);
    EXPECT_THAT(languages, Contains("ar_AE"));
    EXPECT_THAT(languages, Contains("sr@latin"));
    EXPECT_THAT(languages, Contains("zh_TW"));
    EXPECT_THAT(languages, Not(Contains("zh_HK")));
    std::ifstream file(LINGUAS_FILE);
    size_t catalogues = 0;
    for (std::string line; std::getline(file, line);)
        catalogues += !line.empty() && line[0] != '#';
    EXPECT_EQ(languages.size(), catalogues);
    EXPECT_THAT(all_products(VESK_SHARE), Contains("projector"));
}

} // namespace
