#include "module_fixture.h"
#include "ug/device_list_screen.h"
#include "ug/edit_mode.h"
#include "ug/live_updates.h"
#include "ug/module.h"
#include "ug/settings_watch.h"

using testing::ElementsAre;

namespace {

constexpr const char *kLanguage = "db/menu_widget/language";
constexpr const char *kReadLanguage = "vconf_get_str(\"db/menu_widget/language\")";
constexpr const char *kOrientation = "db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation";
constexpr const char *kContrast = "db/menu/system/accessibility/highcontrast";

} // namespace

using SettingsTest = ModuleTest;

TEST_F(SettingsTest, FiveLanguagesReadFromTheRight)
{
    const struct {
        const char *language;
        bool reverse;
    } cases[] = {{"ur_PK", true},        {"fa_IR.UTF-8", true}, {"ar_AE.UTF-8", true}, {"he_IL", true},
                 {"ckb_IQ@latin", true}, {"ar_SA", false},      {"ar", false},         {"AR_AE", false},
                 {" ar_AE", false},      {"en_US", false},      {"", false},           {"ckb_IR", false},
                 {"ckb", false},         {"ur_IN", false},      {"fa_AF", false},      {"he", false}};
    for (const auto &sample : cases) {
        fake::reset();
        gbReverse = false;
        fake::platform().text_settings[kLanguage] = sample.language;
        IsReveseOSD();
        EXPECT_EQ(gbReverse, sample.reverse) << sample.language;
        EXPECT_THAT(fake::platform().chronicle,
                    ElementsAre(kReadLanguage, "I  the languagelocale is " + std::string(sample.language) + " "));
    }
}

TEST_F(SettingsTest, MissingLanguageIsLogged)
{
    IsReveseOSD();
    EXPECT_FALSE(gbReverse);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre(kReadLanguage, "I  the languagelocale is NULL"));
    EXPECT_EQ(fake::platform().log[0].function, "IsReveseOSD");
}

TEST_F(SettingsTest, LayoutStaysReversed)
{
    fake::platform().text_settings[kLanguage] = "he_IL";
    IsReveseOSD();
    fake::platform().text_settings[kLanguage] = "en_GB";
    IsReveseOSD();
    EXPECT_TRUE(gbReverse);
}

TEST_F(SettingsTest, EveryOrientationButZeroIsPortrait)
{
    for (const int orientation : {1, 2, -1, 90}) {
        fake::platform().settings[kOrientation] = {orientation};
        EXPECT_TRUE(is_portrait_mode()) << orientation;
    }
    fake::platform().settings[kOrientation] = {0};
    EXPECT_FALSE(is_portrait_mode());
    EXPECT_THAT(fake::lines(), testing::IsEmpty());
}

TEST_F(SettingsTest, UnreadableOrientationIsLandscape)
{
    EXPECT_FALSE(is_portrait_mode());
    EXPECT_THAT(fake::lines(), ElementsAre("E error vconf_get_int : 0"));
}

TEST_F(SettingsTest, UnreadableContrastIsLoggedAndSaysNothing)
{
    fake::platform().settings[kContrast] = {1, -1};
    _set_bg_contrast(nullptr);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("vconf_get_int(\"db/menu/system/accessibility/highcontrast\")",
                                                        "W Get high contrast vconf Fail or Null Pointer"));
}

TEST_F(SettingsTest, PlatformIntegerThatCannotBeReadIsZero)
{
    int value = 99;
    fake::platform().platform_ints["com.corvane/feature/screen.width"] = {1920};
    get_system_info_int("com.corvane/feature/screen.width", &value);
    EXPECT_EQ(value, 1920);
    get_system_info_int("com.corvane/feature/screen.height", &value);
    EXPECT_EQ(value, 0);
    value = 99;
    fake::platform().platform_ints["com.corvane/feature/screen.height"] = {1080, -1};
    get_system_info_int("com.corvane/feature/screen.height", &value);
    EXPECT_EQ(value, 0) << "a value that comes with a failure is none";
    EXPECT_EQ(fake::calls().front(), "system_info_get_platform_int(\"com.corvane/feature/screen.width\")");
}

TEST_F(SettingsTest, TurnBeforeTheScreenExistsResetsTheCheckBoxCounters)
{
    g_checkbox_index = 3;
    g_orientation_checkbox_count = 4;
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(g_checkbox_index, 0);
    EXPECT_EQ(g_orientation_checkbox_count, 0);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("I ROTATION callback", "W no screen to turn"));
}

using StatusCallbackTest = ModuleTest;

TEST_F(StatusCallbackTest, IgnoresOrRefusesWhatIsNeitherAllowedNorDenied)
{
    AppData app{};
    const auto line = [](int status) {
        return "I Status changed >> BTMAC[aa], WIFIMAC[bb], P2PMAC[cc], STATUS[" + std::to_string(status) + "]";
    };
    for (const int status : {3, 4}) {
        fake::platform().chronicle.clear();
        RdmDeviceInfo info = fake::device("x", "aa", "bb", "cc", status);
        vesk_rdm_callback(&app, &info);
        EXPECT_THAT(fake::platform().chronicle, ElementsAre(line(status)));
    }
    for (const int status : {2, -1, 5, 1000}) {
        fake::platform().chronicle.clear();
        RdmDeviceInfo info = fake::device("x", "aa", "bb", "cc", status);
        vesk_rdm_callback(&app, &info);
        EXPECT_THAT(fake::platform().chronicle,
                    ElementsAre(line(status), "W Invalid status[" + std::to_string(status) + "]"));
    }
}

TEST_F(StatusCallbackTest, WaitsForTheEndOfEditMode)
{
    AppData app{};
    b_edit_status = true;
    for (const int status : {0, 1}) {
        fake::platform().chronicle.clear();
        RdmDeviceInfo info = fake::device("x", "", "", "", status);
        vesk_rdm_callback(&app, &info);
        EXPECT_THAT(
            fake::platform().chronicle,
            ElementsAre("I Status changed >> BTMAC[], WIFIMAC[], P2PMAC[], STATUS[" + std::to_string(status) + "]",
                        "W Edit mode now. refresh canceled."));
    }
}

TEST_F(StatusCallbackTest, NeverReadsPastAField)
{
    AppData app{};
    RdmDeviceInfo info = fake::device("x", std::string(18, 'b'), std::string(18, 'w'), std::string(18, 'p'), 3);
    vesk_rdm_callback(&app, &info);
    EXPECT_THAT(fake::lines(),
                ElementsAre("I Status changed >> BTMAC[" + std::string(18, 'b') + "], WIFIMAC[" + std::string(18, 'w') +
                            "], P2PMAC[" + std::string(18, 'p') + "], STATUS[3]"));
}

TEST_F(StatusCallbackTest, WithoutARecordIsRefused)
{
    AppData app{};
    vesk_rdm_callback(&app, nullptr);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("W callback without a record"));
}

TEST_F(StatusCallbackTest, WithoutAScreenOnlyTheTableIsRead)
{
    AppData not_created{};
    for (AppData *app : {static_cast<AppData *>(nullptr), &not_created}) {
        fake::platform().chronicle.clear();
        RdmDeviceInfo info{};
        vesk_rdm_callback(app, &info);
        const auto &lines = fake::platform().chronicle;
        ASSERT_GE(lines.size(), 3U);
        EXPECT_EQ(lines[0], "I Status changed >> BTMAC[], WIFIMAC[], P2PMAC[], STATUS[0]");
        EXPECT_THAT(lines, testing::Contains(testing::HasSubstr("RDM List is empty")));
        EXPECT_EQ(lines.back(), "W no screen to refresh");
    }
}
