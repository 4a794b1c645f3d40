/* What the action drop-down asks of the toolkit: place, sizes, signals and the clock that brings its focus. */

#include <gmock/gmock.h>

#include "dropdown_fixture.h"
#include "spy.h"
#include "ug/delete_popup.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Pair {
    int first;
    int second;
    bool operator==(const Pair &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Pair &pair)
{
    return out << pair.first << ", " << pair.second;
}

/* What a function was asked about an object, oldest first. */
std::vector<Pair> asked_of(const char *function, const Evas_Object *object)
{
    std::vector<Pair> found;
    for (const spy::Call &call : spy::calls_of(function, object))
        found.push_back({static_cast<int>(call.numbers.at(0)), static_cast<int>(call.numbers.at(1))});
    return found;
}

struct DropdownCallsTest : DropdownFixture {
    /* Back to the panel's scale. */
    ~DropdownCallsTest() override { elm_config_scale_set(2.0); }

    void open_on(const char *product, const char *orientation = "landscape", const char *language = "en_GB")
    {
        use_product(product);
        set("orientation", orientation);
        set("language", language);
        register_devices({phone("First"), phone("Second"), phone("Barred", false)});
        open();
    }

    /* The user's magnification, without what the toolkit draws anew for it. */
    static void magnify(double factor) { elm_config_scale_set(factor * elm_app_base_scale_get()); }

    /* Selects a row that lies at `place`, and nothing else: the main loop does not run. */
    void select(int index, const Eina_Rectangle &place = {100, 200, 800, 100})
    {
        Evas_Object *stand_in = evas_object_rectangle_add(panel().canvas());
        evas_object_geometry_set(stand_in, place.x, place.y, place.w, place.h);
        spy::forget();
        spy::overrides().row_area = stand_in;
        elm_genlist_item_selected_set(row(app()->genlist, index), EINA_TRUE);
        spy::overrides().row_area = nullptr;
        evas_object_del(stand_in);
        ASSERT_TRUE(app()->action_popup);
    }

    Pair place()
    {
        const std::vector<Pair> places = asked_of("evas_object_move", app()->action_popup);
        return places.empty() ? Pair{-1, -1} : places.back();
    }
};

/* --- Place --- */

struct PlaceCase {
    const char *name;
    const char *product;
    const char *orientation;
    const char *language;
    double scale;
    Pair expected;
};

void PrintTo(const PlaceCase &sample, std::ostream *out)
{
    *out << sample.name;
}

struct AskedPlaceTest : DropdownCallsTest, testing::WithParamInterface<PlaceCase> {};

TEST_P(AskedPlaceTest, OfARowAt100And200WithASizeOf800And100)
{
    const PlaceCase &sample = GetParam();
    open_on(sample.product, sample.orientation, sample.language);
    magnify(sample.scale);
    select(0);
    EXPECT_EQ(place(), sample.expected);
}

/* In a language written from right to left the product and its orientation make no difference; 2340 and 93 are never
 * scaled. */
INSTANTIATE_TEST_SUITE_P(
    Places, AskedPlaceTest,
    testing::Values(PlaceCase{"Television", "television", "landscape", "en_GB", 1.0, {520, 222}},
                    PlaceCase{"TelevisionTurned", "television", "portrait", "en_GB", 1.0, {520, 222}},
                    PlaceCase{"TelevisionTwice", "television", "landscape", "en_GB", 2.0, {140, 237}},
                    PlaceCase{"TelevisionArabic", "television", "landscape", "ar_AE", 1.0, {1440, 222}},
                    PlaceCase{"TelevisionArabicTwice", "television", "landscape", "ar_AE", 2.0, {1440, 237}},
                    PlaceCase{"Board", "board", "landscape", "en_GB", 1.0, {-290, -178}},
                    PlaceCase{"BoardHalf", "board", "landscape", "en_GB", 0.5, {305, 14}},
                    PlaceCase{"BoardHebrew", "board", "landscape", "he_IL", 1.0, {1440, 222}},
                    PlaceCase{"BoardTurned", "board", "portrait", "en_GB", 1.0, {229, -630}},
                    PlaceCase{"BoardTurnedTwice", "board", "portrait", "en_GB", 2.0, {-442, -1467}},
                    PlaceCase{"BoardTurnedArabic", "board", "portrait", "ar_AE", 1.0, {1440, 222}}),
    [](const testing::TestParamInfo<PlaceCase> &sample) { return sample.param.name; });

/* --- Size --- */

TEST_F(DropdownCallsTest, IsResizedAndAlignedAsAWholeOnATelevision)
{
    open_on("television");
    select(0);
    EXPECT_THAT(asked_of("evas_object_resize", app()->action_popup), Contains(Pair{300, 279}));
    EXPECT_THAT(asked_of("evas_object_resize", app()->action_genlist), testing::Not(Contains(Pair{300, 279})));
    EXPECT_EQ(spy::calls_of("elm_popup_align_set").size(), 1u);
    EXPECT_THAT(asked_of("elm_popup_align_set", app()->action_popup), ElementsAre(Pair{-1, -1}));
    EXPECT_EQ(min_of(app()->action_rect), (Size{250, 279}));
}

TEST_F(DropdownCallsTest, OnlyItsListIsResizedAndAlignedOnABoard)
{
    open_on("board");
    select(0);
    EXPECT_THAT(asked_of("evas_object_resize", app()->action_genlist), Contains(Pair{300, 279}));
    EXPECT_THAT(asked_of("evas_object_resize", app()->action_popup), testing::Not(Contains(Pair{300, 279})));
    EXPECT_EQ(spy::calls_of("elm_popup_align_set").size(), 1u);
    EXPECT_THAT(asked_of("elm_popup_align_set", app()->action_genlist), ElementsAre(Pair{-1, -1}));
}

/* The width goes by the toolkit's scale; the height by the window's own, cut to whole pixels. The wrapper scales both
 * once more. */
TEST_F(DropdownCallsTest, ItsWidthGoesByTheToolkitsScaleAndItsHeightByTheWindows)
{
    open_on("television");
    magnify(1.5);
    elm_object_scale_set(app()->win, 1.25);
    select(0);
    EXPECT_THAT(asked_of("evas_object_resize", app()->action_popup), Contains(Pair{450, 348}));
    EXPECT_EQ(min_of(app()->action_rect), (Size{563, 522}));
}

TEST_F(DropdownCallsTest, OnABoardTheWindowsScaleDoesNotMakeItsListHigher)
{
    open_on("board");
    magnify(1.5);
    elm_object_scale_set(app()->win, 1.25);
    select(0);
    EXPECT_THAT(asked_of("evas_object_resize", app()->action_genlist), Contains(Pair{450, 279}));
    EXPECT_EQ(min_of(app()->action_rect), (Size{563, 522}));
}

/* --- Signals --- */

TEST_F(DropdownCallsTest, DimsScreenAndWindowAndChangesItsOwnPicture)
{
    open_on("television");
    select(0);
    EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,dimmed,percent,20|"));
    EXPECT_THAT(spy::signals_to(app()->win), ElementsAre("theme,dimmed,percent,20|"));
    EXPECT_THAT(spy::signals_to(app()->action_popup), Contains("elm,change,image|elm"));
}

TEST_F(DropdownCallsTest, AChoiceThatChangesNothingLightsTheScreenUpAndTheListLooksFocused)
{
    open_on("television");
    open_dropdown(0);
    spy::forget();
    _item_selected(app());
    EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,undim|"));
    EXPECT_THAT(spy::signals_to(app()->genlist), Contains("elm,state,focused|elm"));
}

TEST_F(DropdownCallsTest, ADecisionLeavesTheLooksOfTheListToTheService)
{
    open_on("television");
    open_dropdown(2);
    elm_object_item_focus_set(choice(0), EINA_TRUE);
    spy::forget();
    _item_selected(app());
    EXPECT_EQ(logged("[VESKAUTOTC][ALLOW]"), 1);
    EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,undim|"));
    EXPECT_THAT(spy::signals_to(app()->genlist), testing::Not(Contains("elm,state,focused|elm")));
}

/* --- The clock --- */

TEST_F(DropdownCallsTest, OpeningGivesItsWrapperTheFocusSoon)
{
    open_on("television");
    select(0);
    const Evas_Object *wrapper = elm_object_content_get(app()->action_popup);
    ASSERT_TRUE(wrapper);
    EXPECT_THAT(spy::timers(), Contains(spy::Timer{0.01, _timer_cb, wrapper}));
    char line[64];
    snprintf(line, sizeof line, "  _timer_cb  [%p]", static_cast<const void *>(wrapper));
    EXPECT_TRUE(wait_for(line));
}

TEST_F(DropdownCallsTest, BackGivesTheMainListTheFocusSoon)
{
    open_on("television");
    open_dropdown(1);
    spy::forget();
    forget();
    press("XF86Back");
    EXPECT_THAT(spy::timers(), Contains(spy::Timer{0.01, _timer_cb, app()->genlist}));
    EXPECT_THAT(spy::signals_to(app()->base), ElementsAre("theme,undim|"));
    char line[64];
    snprintf(line, sizeof line, "  _timer_cb  [%p]", static_cast<const void *>(app()->genlist));
    EXPECT_TRUE(wait_for(line));
}

/* --- The record --- */

TEST_F(DropdownCallsTest, AChoiceLeavesTheHandlesInTheRecord)
{
    open_on("television");
    open_dropdown(0);
    const Evas_Object *popup = app()->action_popup;
    const Evas_Object *list = app()->action_genlist;
    press("Return");
    EXPECT_FALSE(dropdown_open());
    EXPECT_EQ(app()->action_popup, popup);
    EXPECT_EQ(app()->action_genlist, list);
}

} // namespace
