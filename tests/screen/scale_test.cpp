/* The screen at the greatest scale: everything has grown once, and lies on the panel. */

#include <cmath>
#include <gmock/gmock.h>
#include <ui_gadget.h>

#include "canvas_parts.h"
#include "screen_test.h"
#include "television/language.h"
#include "television/theme_variants.h"
#include "ug/module.h"

namespace {

constexpr double kScale = vesk::kGreatestScale;

struct ScaleTest : ScreenTest {
    ~ScaleTest() override
    {
        gadget_.reset();
        panel_.reset();
    }

    /* The toolkit starts once in a process, with the scale of these tests. */
    static const vesk::Toolkit &toolkit()
    {
        static const vesk::Toolkit started([] {
            vesk::ToolkitOptions options;
            options.animations = false;
            options.scale = kScale;
            return options;
        }());
        return started;
    }

    void open_with(const char *language = "en_GB", const char *orientation = "landscape")
    {
        set("language", language);
        set("orientation", orientation);
        register_devices(
            {phone("First"), phone("Second"), phone("Third"), phone("Fourth"), phone("Fifth"), phone("Sixth")});
        const vesk::Toolkit &started = toolkit();
        vesk::use_language(language);
        panel_ = std::make_unique<vesk::Panel>(started);
        gadget_ = std::make_unique<vesk::Gadget>(*panel_, vesk::Gadget::Module{UG_MODULE_INIT, UG_MODULE_EXIT});
        gadget_->start();
        panel_->settle();
    }

    vesk::Panel &shown() { return *panel_; }

    void expect_on_the_panel(Evas_Object *object)
    {
        const Eina_Rectangle place = area(object);
        EXPECT_GE(place.x, 0);
        EXPECT_GE(place.y, 0);
        EXPECT_LE(place.x + place.w, shown().width());
        EXPECT_LE(place.y + place.h, shown().height());
        EXPECT_GT(place.w, 0);
    }

    static Eina_Rectangle part_of(Evas_Object *drawing, const char *part)
    {
        const Eina_Rectangle whole = area(drawing);
        Eina_Rectangle place{};
        edje_object_part_geometry_get(drawing, part, &place.x, &place.y, &place.w, &place.h);
        return {whole.x + place.x, whole.y + place.y, place.w, place.h};
    }

private:
    std::unique_ptr<vesk::Panel> panel_;
    std::unique_ptr<vesk::Gadget> gadget_;
};

int grown(int size)
{
    return static_cast<int>(std::lround(size * kScale));
}

TEST_F(ScaleTest, TheListGrowsOnceAndStaysOnThePanel)
{
    open_with();
    const Eina_Rectangle list = area(app()->genlist);
    EXPECT_NEAR(list.w, grown(820), 2);
    EXPECT_NEAR(list.h, grown(491), 2);
    EXPECT_EQ(row_area(row(app()->genlist, 0)).h, grown(80));
    for (Evas_Object *object : {app()->genlist, app()->edit_button, app()->close_button})
        expect_on_the_panel(object);
    EXPECT_LE(area(app()->edit_button).x + area(app()->edit_button).w, shown().width() - 60);
}

TEST_F(ScaleTest, FromRightToLeftToo)
{
    open_with("ar_AE");
    for (Evas_Object *object : {app()->genlist, app()->edit_button, app()->close_button})
        expect_on_the_panel(object);
    EXPECT_GE(area(app()->edit_button).x, 60);
    EXPECT_LE(area(app()->genlist).x + area(app()->genlist).w, shown().width() - 60);
}

struct ScaledDropdownTest : ScaleTest, testing::WithParamInterface<const char *> {};

TEST_P(ScaledDropdownTest, StandsBesideItsRowAsAtAScaleOfOne)
{
    open_with(GetParam());
    shown().press("Down");
    shown().press("Return");
    ASSERT_NE(app()->action_popup, nullptr);
    const std::vector<Evas_Object *> drawing = drawings(app()->action_popup, "elm/popup/base/C_ListDropdown_White");
    ASSERT_EQ(drawing.size(), 1U);
    const Eina_Rectangle place = part_of(drawing[0], "panel");
    const Eina_Rectangle row = row_area(elm_genlist_selected_item_get(app()->genlist));
    EXPECT_NEAR(place.w, grown(300), 1);
    EXPECT_NEAR(place.h, grown(279), 1);
    EXPECT_NEAR(place.y, row.y + row.h - grown(78), 2);
    if (elm_config_mirrored_get())
        EXPECT_NEAR(place.x, row.x + grown(80), 2);
    else
        EXPECT_NEAR(place.x + place.w, row.x + row.w - grown(80), 2);
    for (int i = 0; i < 3; ++i) {
        const Eina_Rectangle choice = row_area(ScreenTest::row(app()->action_genlist, i));
        EXPECT_GE(choice.y, place.y - 1);
        EXPECT_LE(choice.y + choice.h, place.y + place.h + 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, ScaledDropdownTest, testing::Values("en_GB", "ar_AE"),
                         [](const auto &language) { return std::string(language.param); });

TEST_F(ScaleTest, TheDetailsGrowOnceAndStayOnThePanel)
{
    open_with();
    for (const char *key : {"Return", "Down", "Down", "Return"})
        shown().press(key);
    ASSERT_NE(app()->detail_popup, nullptr);
    EXPECT_NEAR(area(app()->service_genlist).w, grown(780), 8);
    expect_on_the_panel(app()->service_genlist);
    expect_on_the_panel(app()->detail_close_button);
    const std::vector<Evas_Object *> drawing = drawings(app()->detail_popup, "elm/popup/base/C_PopupBasic_WhiteRight");
    ASSERT_EQ(drawing.size(), 1U);
    EXPECT_GE(part_of(drawing[0], "panel").y, 0);
    EXPECT_LE(part_of(drawing[0], "panel").y + part_of(drawing[0], "panel").h, shown().height());
}

TEST_F(ScaleTest, ATurnedPanelTakesAsMuchAsFits)
{
    open_with("en_GB", "portrait");
    for (Evas_Object *object : {app()->genlist, app()->edit_button, app()->close_button})
        expect_on_the_panel(object);
    EXPECT_GT(area(app()->genlist).w, 820);
    EXPECT_GE(area(app()->genlist).x, 60);
    set("orientation", "landscape");
    shown().settle();
    EXPECT_NEAR(area(app()->genlist).w, grown(820), 2) << "the scale that was asked for";
    expect_on_the_panel(app()->edit_button);
}

} // namespace
