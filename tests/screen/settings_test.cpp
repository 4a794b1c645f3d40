/* High contrast and the menu language, as they stand when the module begins and when they change. */

#include <dlog.h>
#include <gmock/gmock.h>

#include "canvas_parts.h"
#include "desktop/port_failures.h"
#include "details.h"
#include "spy.h"
#include "ug/detail_popup.h"
#include "ug/settings_watch.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct SettingsTest : DetailsTest {
    SettingsTest() { register_devices({with_services("Phone", 5), with_services("Tablet", 7, 2)}); }

    /* The signals of the contrast that popups have been sent since the last forget(). */
    std::vector<std::string> contrast_signals() const
    {
        std::vector<std::string> signals = spy::screen_steps();
        std::erase_if(signals, [](const std::string &step) { return !step.starts_with("highcontrast"); });
        return signals;
    }

    void store(const std::string &alias, const std::string &value)
    {
        vesk_port::write_setting(vesk_port::setting_key(alias), value);
    }

    int logged_in(const std::string &function, const std::string &message) const
    {
        return static_cast<int>(std::ranges::count_if(
            log(), [&](const LogLine &line) { return line.function == function && line.message == message; }));
    }
};

/* ---- High contrast ---- */

struct ContrastTest : SettingsTest, testing::WithParamInterface<std::pair<std::string, std::string>> {};

TEST_P(ContrastTest, IsToldToTheBasePopupOnce)
{
    const auto &[value, signal] = GetParam();
    store("high-contrast", value);
    ScreenTest::open();
    EXPECT_THAT(contrast_signals(), ElementsAre(signal + " from bg_set to object"));
    EXPECT_EQ(logged("Get high contrast vconf Fail or Null Pointer"), 0);
    EXPECT_TRUE(running());
}

INSTANTIATE_TEST_SUITE_P(Values, ContrastTest,
                         testing::Values(std::pair("0", "highcontrast_off"), std::pair("1", "highcontrast_on"),
                                         std::pair("2", "highcontrast_off"), std::pair("-1", "highcontrast_off")),
                         [](const auto &sample) {
                             const std::string &value = sample.param.first;
                             return value == "-1" ? "negative" : "value_" + value;
                         });

TEST_F(SettingsTest, AContrastThatCannotBeReadIsLoggedAndNotTold)
{
    vesk_port::set_failures("vconf_get_int=-1");
    ScreenTest::open();
    EXPECT_THAT(contrast_signals(), IsEmpty());
    EXPECT_EQ(logged_in("_set_bg_contrast", "Get high contrast vconf Fail or Null Pointer"), 1);
    for (const LogLine &line : log()) {
        if (line.function == "_set_bg_contrast") {
            EXPECT_EQ(line.priority, DLOG_WARN);
        }
    }
    EXPECT_EQ(focused(), app()->genlist) << "and the screen is there all the same";
}

TEST_F(SettingsTest, TheContrastIsReadAtTheBeginningOnly)
{
    open();
    forget();
    set("high-contrast", "on");
    panel().settle();
    open_details(0);
    EXPECT_THAT(contrast_signals(), IsEmpty());
    close();
    ScreenTest::open();
    EXPECT_THAT(contrast_signals(), ElementsAre("highcontrast_on from bg_set to object"));
}

/* ---- The language at the beginning ---- */

TEST_F(SettingsTest, TextsAreThoseOfTheLanguage)
{
    set("language", "de_DE");
    open();
    const std::string title = elm_object_part_text_get(app()->base, "title,text");
    EXPECT_NE(title, "Device list");
    EXPECT_NE(title, "COM_SID_DEVICE_LIST_KR_LIST");
    EXPECT_FALSE(gbReverse);
    open_details("Phone");
    EXPECT_FALSE(gbReverse);
    EXPECT_STRNE(elm_object_part_text_get(app()->detail_popup, "title,text"), "View details");
}

TEST_F(SettingsTest, ALanguageWithoutACatalogueIsEnglish)
{
    set("language", "xx_XX");
    open();
    EXPECT_STREQ(elm_object_part_text_get(app()->base, "title,text"), "Device list");
}

/* ---- From right to left ---- */

struct LanguageTest : SettingsTest, testing::WithParamInterface<std::pair<std::string, bool>> {};

TEST_P(LanguageTest, DecidesTheDirectionWhenADropDownOpens)
{
    const auto &[language, reverse] = GetParam();
    store("language", language);
    open();
    EXPECT_FALSE(gbReverse) << "not before";
    open_dropdown(0);
    EXPECT_EQ(gbReverse, reverse);
    EXPECT_EQ(logged_in("IsReveseOSD", " the languagelocale is " + language + " "), 1);
    press("XF86Back");
    EXPECT_EQ(gbReverse, reverse) << "and it stays";
}

INSTANTIATE_TEST_SUITE_P(Names, LanguageTest,
                         testing::Values(std::pair("ar_AE.UTF-8", true), std::pair("ur_PK", true),
                                         std::pair("fa_IR.UTF-8", true), std::pair("he_IL.UTF-8", true),
                                         std::pair("ckb_IQ", true), std::pair("ar_SA.UTF-8", false),
                                         std::pair("en_GB.UTF-8", false)),
                         [](const auto &sample) { return sample.param.first.substr(0, sample.param.first.find('.')); });

TEST_F(SettingsTest, AnUnreadableLanguageReadsFromTheLeft)
{
    open();
    vesk_port::set_failures("vconf_get_str=-1");
    open_dropdown(0);
    EXPECT_FALSE(gbReverse);
    EXPECT_EQ(logged_in("IsReveseOSD", " the languagelocale is NULL"), 1);
    EXPECT_TRUE(evas_object_visible_get(app()->action_popup));
}

TEST_F(SettingsTest, AChangeOfLanguageCountsFromTheNextDropDownOn)
{
    open();
    open_dropdown(0);
    const Eina_Rectangle left_to_right = area(app()->action_popup);
    press("XF86Back");

    set("language", "ar_AE");
    panel().settle();
    EXPECT_FALSE(gbReverse);
    selected_item_index = 0;
    show_detail_popup(app());
    panel().settle();
    EXPECT_FALSE(gbReverse) << "the details do not ask";
    press("XF86Back");

    open_dropdown(0);
    EXPECT_TRUE(gbReverse);
    EXPECT_NE(area(app()->action_popup).x, left_to_right.x) << "at the row's other end";
    press("XF86Back");

    set("language", "en_GB");
    panel().settle();
    open_dropdown(0);
    EXPECT_TRUE(gbReverse) << "and never back while the module is loaded";
}

TEST_F(SettingsTest, TheDetailsAreAlignedAtTheRightOnceReversed)
{
    set("language", "he_IL");
    open();
    open_details("Phone");
    ASSERT_TRUE(gbReverse);
    EXPECT_EQ(focused(), app()->detail_close_button);
    press("Right");
    EXPECT_EQ(focused(), app()->service_genlist) << "the list is on the other side of the buttons";
    press("XF86Back");
    EXPECT_EQ(focused(), app()->genlist);
}

/* ---- The orientation, with a drop-down open ---- */

struct OrientationTest : SettingsTest {
    void SetUp() override
    {
        use_product("board");
        open();
        open_dropdown(1);
        ASSERT_TRUE(b_popup_expanded) << "armed by its preselection";
        forget();
    }

    ~OrientationTest() override { elm_config_scale_set(2.0); }

    /* The orientation's callback, with the setting as it is by then. */
    void turn_to(const std::string &orientation)
    {
        set("orientation", orientation);
        VconfNotifyCB(nullptr, nullptr);
    }
};

TEST_F(OrientationTest, SizesTheDropDownByTheScaleTwiceInWidthAndOnceInHeight)
{
    elm_config_scale_set(3.0);
    turn_to("landscape");
    EXPECT_EQ(min_of(app()->action_rect), (Size{563, 419})) << "250 -> 375 -> 563, 279 -> 419";
    turn_to("portrait");
    EXPECT_EQ(min_of(app()->action_rect), (Size{315, 234})) << "375 -> 210.9, cut to 210 -> 315; 156 -> 234";
    elm_config_scale_set(4.0);
    turn_to("landscape");
    EXPECT_EQ(min_of(app()->action_rect), (Size{1000, 558}));
    turn_to("portrait");
    EXPECT_EQ(min_of(app()->action_rect), (Size{562, 312})) << "500 -> 281.25, cut to 281";
}

TEST_F(OrientationTest, ShowsADropDownThatWasHidden)
{
    for (const char *orientation : {"portrait", "landscape"}) {
        evas_object_hide(app()->action_popup);
        ASSERT_FALSE(evas_object_visible_get(app()->action_popup));
        turn_to(orientation);
        EXPECT_TRUE(evas_object_visible_get(app()->action_popup)) << orientation;
    }
}

TEST_F(OrientationTest, WithoutADropDownSizesTheRectangleAndAlignsNothing)
{
    Evas_Object *const popup = app()->action_popup;
    evas_object_hide(popup);
    for (const bool gone : {true, false}) {
        app()->action_popup = gone ? nullptr : popup;
        elm_config_scale_set(gone ? 4.0 : 2.0);
        forget();
        turn_to("portrait");
        if (gone)
            EXPECT_THAT(spy::screen_steps(), ElementsAre("I VconfNotifyCB: ROTATION callback"));
        else
            EXPECT_THAT(spy::screen_steps(), ElementsAre("I VconfNotifyCB: ROTATION callback", "popup aligned"));
        EXPECT_EQ(evas_object_visible_get(popup) == EINA_TRUE, !gone);
        EXPECT_EQ(min_of(app()->action_rect), (gone ? Size{562, 312} : Size{140, 156}));
    }
}

} // namespace
