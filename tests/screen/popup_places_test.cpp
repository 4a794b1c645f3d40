/* Where the drop-down stands when the panel turns or the language changes under the open screen, and what a window
 * does that a display is too small for. */

#include <cmath>
#include <gmock/gmock.h>

#include "dropdown_fixture.h"
#include "television/window_size.h"

namespace {

struct PopupPlacesTest : DropdownFixture {
    void open_on(const std::string &product, const std::string &orientation = "landscape",
                 const std::string &language = "en_GB")
    {
        use_product(product);
        set("orientation", orientation);
        set("language", language);
        register_devices(phones(12));
        open();
    }

    void change_language(const std::string &language)
    {
        set("language", language);
        panel().settle();
    }

    void keep_picture(const std::string &name)
    {
        if (const char *pictures = getenv("VESK_PICTURES"))
            panel().save(std::filesystem::path(pictures) / (name + ".png"));
    }

    /* Where the drop-down belongs, on every product and in both forms of the panel: near the end of the row. */
    void expect_beside_row(int index, double measure, bool mirrored = false)
    {
        ASSERT_TRUE(dropdown_open());
        const Eina_Rectangle row_place = row_area(row(app()->genlist, index));
        const Eina_Rectangle place = drawn();
        EXPECT_NEAR(place.w, 300 * measure, 1);
        EXPECT_NEAR(place.y, row_place.y + row_place.h - std::round(78 * measure), 5);
        if (mirrored)
            EXPECT_NEAR(place.x, row_place.x + std::round(80 * measure), 5);
        else
            EXPECT_NEAR(place.x + place.w, row_place.x + row_place.w - std::round(80 * measure), 5);
        EXPECT_EQ(focused(), app()->action_genlist);
    }
};

struct TurnedDropdownTest : PopupPlacesTest, testing::WithParamInterface<const char *> {};

TEST_P(TurnedDropdownTest, StaysBesideItsRowAndUsable)
{
    const bool board = GetParam() == std::string("board");
    open_on(GetParam());
    open_dropdown(3);
    turn("portrait");
    keep_picture(std::string(GetParam()) + "-turned");
    expect_beside_row(3, board ? 0.5625 : 1.0);
    turn("landscape");
    expect_beside_row(3, 1.0);
    turn("portrait");
    press("XF86Back");
    EXPECT_FALSE(dropdown_open());
    EXPECT_EQ(focused(), app()->genlist);
    const auto base = drawings(app()->base, "elm/popup/base/C_PopupBasic_WhiteRight");
    ASSERT_EQ(base.size(), 1U);
    EXPECT_EQ(state_of(base[0], "dim"), "default");
}

INSTANTIATE_TEST_SUITE_P(Products, TurnedDropdownTest, testing::Values("television", "board"),
                         [](const auto &product) { return std::string(product.param); });

struct ChangedLanguageTest : PopupPlacesTest, testing::WithParamInterface<std::tuple<const char *, const char *>> {
    const char *product() const { return std::get<0>(GetParam()); }
    const char *orientation() const { return std::get<1>(GetParam()); }
    bool compact() const { return product() == std::string("board") && orientation() == std::string("portrait"); }
};

TEST_P(ChangedLanguageTest, TheNextDropDownStandsAtTheOtherEndOfItsRow)
{
    open_on(product(), orientation());
    open_dropdown(2);
    expect_beside_row(2, compact() ? 0.5625 : 1.0);
    press("XF86Back");
    change_language("ar_AE");
    press("Return");
    keep_picture(std::string("to-arabic-") + product() + "-" + orientation());
    expect_beside_row(2, compact() ? 0.5625 : 1.0, true);
    press("XF86Back");
    change_language("en_GB");
    press("Return"); /* a module stays with the direction that it has once met */
    expect_beside_row(2, compact() ? 0.5625 : 1.0, true);
}

TEST_P(ChangedLanguageTest, AModuleThatHasNotMetTheFirstLanguagePlacesByTheSecond)
{
    open_on(product(), orientation(), "ar_AE");
    change_language("en_GB");
    open_dropdown(2);
    keep_picture(std::string("from-arabic-") + product() + "-" + orientation());
    expect_beside_row(2, compact() ? 0.5625 : 1.0);
}

INSTANTIATE_TEST_SUITE_P(Products, ChangedLanguageTest,
                         testing::Combine(testing::Values("television", "board"),
                                          testing::Values("landscape", "portrait")),
                         [](const auto &where) {
                             return std::string(std::get<0>(where.param)) + "_" + std::get<1>(where.param);
                         });

/* Locales whose texts run from right to left, and which the television places from left to right all the same. */
struct OtherRightToLeftTest : PopupPlacesTest, testing::WithParamInterface<const char *> {};

TEST_P(OtherRightToLeftTest, TheLayoutIsNotMirroredAndTheDropDownLeavesTheNameFree)
{
    open_on("television", "landscape", GetParam());
    EXPECT_FALSE(elm_config_mirrored_get());
    open_dropdown(1);
    keep_picture(GetParam());
    expect_beside_row(1, 1.0);
    EXPECT_LT(area(app()->genlist).x, area(app()->edit_button).x);
}

INSTANTIATE_TEST_SUITE_P(Locales, OtherRightToLeftTest, testing::Values("ar_SA", "he", "fa_AF", "ckb_IR"));

TEST(WindowSizeTest, AWindowIsNeverLargerThanTheDisplayAndKeepsItsProportions)
{
    using vesk::Size;
    using vesk::size_on_screen;
    EXPECT_EQ(size_on_screen({1280, 720}, {1366, 768}), (Size{1280, 720}));
    EXPECT_EQ(size_on_screen({720, 1280}, {1366, 768}), (Size{432, 768}));
    EXPECT_EQ(size_on_screen({1280, 720}, {800, 1280}), (Size{800, 450}));
    EXPECT_EQ(size_on_screen({720, 1280}, {0, 0}), (Size{720, 1280})) << "off-screen";
}

} // namespace
