/* The checks find what they are for: each is shown a scene that has been spoilt. */

#include <Edje.h>
#include <algorithm>
#include <gmock/gmock.h>

#include "checks.h"
#include "chosen.h"

using namespace vesk::looks;
using testing::Contains;
using testing::Each;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

struct ChecksTest : testing::Test {
    Shown show(const char *state, const Setting &setting = {})
    {
        scene_.reset();
        scene_ = std::make_unique<Scene>(*find_state(state), setting);
        return shown(*scene_);
    }

    using Check = void (*)(const Shown &, std::vector<Finding> &);
    static std::vector<std::string> found(Check check, const Shown &seen)
    {
        std::vector<Finding> findings;
        check(seen, findings);
        std::vector<std::string> sentences;
        for (const Finding &finding : findings)
            sentences.push_back(finding.what);
        return sentences;
    }

    static void fill(Picture &picture, const Rect &place, Color color)
    {
        for (int y = place.y; y < place.bottom(); ++y) {
            for (int x = place.x; x < place.right(); ++x)
                picture.set(x, y, color);
        }
    }

    std::unique_ptr<Scene> scene_;
};

TEST_F(ChecksTest, ASecondFocusedRowIsFound)
{
    const Shown seen = show("six-rows");
    ASSERT_THAT(found(check_focus, seen), IsEmpty());
    const auto other = std::ranges::find_if_not(seen.sight.rows, &Drawing::focused);
    ASSERT_NE(other, seen.sight.rows.end());
    edje_object_signal_emit(other->object, "elm,state,focused", "elm");
    scene_->panel().settle();
    EXPECT_THAT(found(check_focus, shown(*scene_)), Contains("2 things look focused instead of 1."));
}

TEST_F(ChecksTest, AScreenWithoutFocusIsFound)
{
    const Shown seen = show("six-rows");
    const auto focused = std::ranges::find_if(seen.sight.rows, &Drawing::focused);
    ASSERT_NE(focused, seen.sight.rows.end());
    edje_object_signal_emit(focused->object, "elm,state,unfocused", "elm");
    scene_->panel().settle();
    EXPECT_THAT(found(check_focus, shown(*scene_)), Contains("0 things look focused instead of 1."));
}

TEST_F(ChecksTest, ATextThatIsTooLongForItsButtonIsFound)
{
    const Shown seen = show("six-rows");
    ASSERT_THAT(found(check_texts, seen), IsEmpty());
    edje_object_part_text_set(seen.sight.buttons[0].object, "elm.text",
                              "A text that no button of this size has room for, on one line or on two or on three");
    scene_->panel().settle();
    EXPECT_THAT(found(check_texts, shown(*scene_)), Contains(HasSubstr("A text is cut")));
}

TEST_F(ChecksTest, ATextThatIsTooLongForItsLineIsFound)
{
    const Shown seen = show("six-rows");
    edje_object_part_text_set(seen.sight.grounds[0].drawing.object, "elm.text.title",
                              "A title that goes on and on, beyond everything that the panel of the list has room for");
    scene_->panel().settle();
    EXPECT_THAT(found(check_texts, shown(*scene_)), Contains(HasSubstr("A text is cut")));
}

TEST_F(ChecksTest, ALongNameOfADeviceIsNoFinding)
{
    const Shown seen = show("names");
    EXPECT_THAT(seen.sight.texts, Contains(testing::AllOf(Field(&Text::cut, true), Field(&Text::name, true))));
    EXPECT_THAT(found(check_texts, seen), IsEmpty());
}

TEST_F(ChecksTest, TextsThatOverlapAreFound)
{
    Shown seen = show("six-rows");
    seen.sight.texts[1].area = seen.sight.texts[0].area;
    EXPECT_THAT(found(check_texts, seen), Contains(HasSubstr("Two texts overlap")));
}

TEST_F(ChecksTest, ATextThatIsTooPaleIsFound)
{
    Shown seen = show("six-rows");
    ASSERT_THAT(found(check_contrast, seen), IsEmpty());
    const Rect place = seen.sight.texts[0].shown;
    fill(seen.picture, place, {255, 255, 255});
    fill(seen.picture, {place.x, place.y, 5, 5}, {150, 150, 150});
    EXPECT_THAT(found(check_contrast, seen), Contains(HasSubstr("contrast of 2.9")));
}

TEST_F(ChecksTest, HighContrastAsksForMore)
{
    Shown seen = show("six-rows", {"television", false, "en_GB", true});
    ASSERT_THAT(found(check_contrast, seen), IsEmpty());
    const Rect place = seen.sight.texts[0].shown;
    fill(seen.picture, place, {0, 0, 0});
    fill(seen.picture, {place.x, place.y, 5, 5}, {130, 130, 130});
    EXPECT_THAT(found(check_contrast, seen), Contains(HasSubstr("instead of 7.00:1")));
}

TEST_F(ChecksTest, ARowOutOfPlaceIsFound)
{
    Shown seen = show("six-rows");
    ASSERT_THAT(found(check_places, seen), IsEmpty());
    seen.sight.rows[2].area.x += 24;
    EXPECT_THAT(found(check_places, seen), Contains(HasSubstr("A row is 820 x 80 at 744")));
}

TEST_F(ChecksTest, ADropDownOutOfPlaceIsFound)
{
    Shown seen = show("dropdown-allowed");
    ASSERT_THAT(found(check_places, seen), IsEmpty());
    seen.sight.grounds.back().area.x += 30;
    EXPECT_THAT(found(check_places, seen), Contains(HasSubstr("The drop-down ends 50 before the row does")));
}

TEST_F(ChecksTest, AButtonAtThePanelsEdgeIsFound)
{
    Shown seen = show("six-rows");
    seen.sight.buttons[0].shown.x = 1920 - seen.sight.buttons[0].shown.w;
    EXPECT_THAT(found(check_places, seen), Contains(HasSubstr("too near to the panel's edge")));
}

TEST_F(ChecksTest, AMirroredScreenThatIsNotMirroredIsFound)
{
    const Shown seen = show("six-rows");
    const Setting arabic{"television", false, "ar_AE", false};
    const Shown mirrored{seen.state, arabic, seen.sight, seen.picture};
    EXPECT_THAT(found(check_places, mirrored), Contains(HasSubstr("on the wrong side")));
}

TEST_F(ChecksTest, AMissingPictureIsFound)
{
    Shown seen = show("six-rows");
    ASSERT_THAT(found(check_pictures, seen), IsEmpty());
    seen.sight.pictures[0].loaded = false;
    EXPECT_THAT(found(check_pictures, seen), Contains(HasSubstr("A picture is missing")));
}

TEST_F(ChecksTest, AnEmptyPictureIsFound)
{
    Shown seen = show("six-rows");
    fill(seen.picture, seen.sight.pictures[1].area, {255, 255, 255});
    EXPECT_THAT(found(check_pictures, seen), Contains(HasSubstr("A picture cannot be seen")));
}

TEST_F(ChecksTest, TheMarkedPictureShowsThePlace)
{
    const Shown seen = show("six-rows");
    const auto folder = Stage::here().next_folder();
    auto *canvas = scene_->panel().canvas();
    const auto file = save_marked(canvas, seen, {{"something", {700, 300, 100, 50}}}, folder);
    const Picture marked = Picture::load(canvas, file);
    EXPECT_NE(marked.at(750, 291), seen.picture.at(750, 291));
    EXPECT_EQ(marked.at(750, 320), seen.picture.at(750, 320));
}

/* --- Pictures that are compared --- */

struct DifferenceTest : ChecksTest {
    Picture drawn(const char *state, const Setting &setting = {}) { return show(state, setting).picture.shrunk(4); }
};

TEST_F(DifferenceTest, TheSameSceneTwiceIsAlike)
{
    EXPECT_TRUE(looks_like(difference(drawn("row-focused"), drawn("row-focused"))));
}

TEST_F(DifferenceTest, GlyphsALittlePalerAreAlike)
{
    const Picture first = drawn("row-focused");
    Picture second = first;
    const Rect list{180, 75, 205, 120};
    for (int y = list.y; y < list.bottom(); ++y) {
        for (int x = list.x; x < list.right(); ++x) {
            const Color color = second.at(x, y);
            if (color.green < 150) /* the letters, not the accent */
                second.set(x, y, {color.red + 12, color.green + 12, color.blue + 12});
        }
    }
    EXPECT_TRUE(looks_like(difference(first, second)));
}

TEST_F(DifferenceTest, AnotherRowFocusedIsNot)
{
    EXPECT_FALSE(looks_like(difference(drawn("row-focused"), drawn("six-rows"))));
}

TEST_F(DifferenceTest, AnotherAccentIsNot)
{
    const Picture first = drawn("row-focused");
    edje_color_class_set("vesk/focus", 186, 163, 37, 255, 0, 0, 0, 0, 0, 0, 0, 0);
    const Picture second = shown(*scene_).picture.shrunk(4);
    edje_color_class_del("vesk/focus");
    EXPECT_FALSE(looks_like(difference(first, second)));
}

TEST_F(DifferenceTest, AButtonWithoutItsTextIsNot)
{
    const Shown seen = show("six-rows");
    edje_object_part_text_set(seen.sight.buttons[0].object, "elm.text", "");
    scene_->panel().settle();
    EXPECT_FALSE(looks_like(difference(seen.picture.shrunk(4), shown(*scene_).picture.shrunk(4))));
}

TEST_F(DifferenceTest, AnotherSizeIsNot)
{
    EXPECT_FALSE(looks_like(difference(drawn("six-rows"), drawn("six-rows", {"television", true, "en_GB", false}))));
}

} // namespace
