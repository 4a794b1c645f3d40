/* Where the drop-down stands beside its row, measured from what is drawn. */

#include <cmath>
#include <gmock/gmock.h>

#include "dropdown_fixture.h"
#include "ug/settings_watch.h"

namespace {

struct Place {
    const char *name;
    const char *product;
    const char *orientation;
    const char *language;
    double measure; /* what design sizes are multiplied by */
    int tolerance;
};

void PrintTo(const Place &place, std::ostream *out)
{
    *out << place.name;
}

struct DropdownPlaceTest : DropdownFixture {
    void open_at(const Place &place)
    {
        use_product(place.product);
        set("orientation", place.orientation);
        set("language", place.language);
        register_devices(phones(12));
        open();
    }

    Eina_Rectangle selected_row() { return row_area(elm_genlist_selected_item_get(app()->genlist)); }
};

/* Rows at the top, in the middle, at the bottom, and one that the list has to scroll to. */
const int kRows[] = {0, 2, 5, 11};

struct EachPlaceTest : DropdownPlaceTest, testing::WithParamInterface<Place> {};

TEST_P(EachPlaceTest, BesideItsRow)
{
    const Place &where = GetParam();
    open_at(where);
    for (const int index : kRows) {
        SCOPED_TRACE(index);
        open_dropdown(index);
        ASSERT_TRUE(dropdown_open());
        const Eina_Rectangle row = selected_row();
        const Eina_Rectangle place = drawn();
        EXPECT_NEAR(place.w, 300 * where.measure, 1);
        EXPECT_NEAR(place.h, 279 * where.measure, 1);
        EXPECT_NEAR(place.y, row.y + row.h - std::round(78 * where.measure), where.tolerance);
        if (gbReverse)
            EXPECT_NEAR(place.x, row.x + std::round(80 * where.measure), where.tolerance);
        else
            EXPECT_NEAR(place.x + place.w, row.x + row.w - std::round(80 * where.measure), where.tolerance);
        if (const char *pictures = getenv("VESK_PICTURES"))
            panel().save(std::filesystem::path(pictures) / (std::string(where.name) + std::to_string(index) + ".png"));
        press("XF86Back");
    }
}

TEST_P(EachPlaceTest, ItsChoicesAreWhollyWithinIt)
{
    open_at(GetParam());
    open_dropdown();
    const Eina_Rectangle whole = drawn();
    for (int i = 0; i < 3; ++i) {
        const Eina_Rectangle choice_area = row_area(choice(i));
        EXPECT_NEAR(choice_area.h, 93 * GetParam().measure, 1);
        EXPECT_GE(choice_area.x, whole.x);
        EXPECT_GE(choice_area.y, whole.y - 1);
        EXPECT_LE(choice_area.x + choice_area.w, whole.x + whole.w);
        EXPECT_LE(choice_area.y + choice_area.h, whole.y + whole.h + 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Places, EachPlaceTest,
                         testing::Values(Place{"Television", "television", "landscape", "en_GB", 1.0, 0},
                                         Place{"TelevisionArabic", "television", "landscape", "ar_AE", 1.0, 0},
                                         Place{"TelevisionTurned", "television", "portrait", "en_GB", 1.0, 0},
                                         Place{"Board", "board", "landscape", "en_GB", 1.0, 5},
                                         Place{"BoardArabic", "board", "landscape", "ar_AE", 1.0, 5},
                                         Place{"BoardTurned", "board", "portrait", "en_GB", 0.5625, 5}),
                         [](const testing::TestParamInfo<Place> &place) { return place.param.name; });

} // namespace
