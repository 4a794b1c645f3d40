/* The module's run in a host: its opening and closing, in order, with every failure of the platform on the way. */

#include <algorithm>
#include <dlog.h>
#include <gmock/gmock.h>

#include "desktop/log.h"
#include "desktop/port_failures.h"
#include "screen_test.h"
#include "spy.h"
#include "ug/action_popup.h"
#include "ug/module.h"
#include "ug/settings_watch.h"
#include "vesk/device_table.h"

using testing::Contains;
using testing::IsSupersetOf;

namespace {

struct LifecycleTest : ScreenTest {
    void SetUp() override { register_devices(phones(2)); }

    /* The lines of some functions, as "function: message" in their order. */
    std::vector<std::string> lines_of(const std::vector<std::string> &functions) const
    {
        std::vector<std::string> lines;
        for (const LogLine &line : log()) {
            if (std::ranges::find(functions, line.function) != functions.end())
                lines.push_back(line.function + ": " + line.message);
        }
        return lines;
    }

    int priority_of(const std::string &message) const
    {
        for (const LogLine &line : log()) {
            if (line.message == message)
                return line.priority;
        }
        return -1;
    }
};

TEST_F(LifecycleTest, RunsInTheOrderOfTheHost)
{
    open();
    ASSERT_GT(gVeskHandler, 0);
    const std::string handle = std::to_string(gVeskHandler);
    press("XF86Back");
    ASSERT_TRUE(closed_itself());
    EXPECT_THAT(lines_of({"_on_create", "_on_start", "_on_destroy", "UG_MODULE_EXIT"}),
                testing::ElementsAre(
                    "_on_create: Enter", "_on_create: Exit", "_on_start: VESK started.", "_on_destroy: VESK destroyed.",
                    "UG_MODULE_EXIT: RDM callback already deregistered.", "UG_MODULE_EXIT: VESK EXIT"));
    EXPECT_EQ(priority_of("RDM callback already deregistered."), DLOG_WARN);
    EXPECT_EQ(logged("RDM callback registered successfully - handler[" + handle + "]"), 1);
    EXPECT_EQ(logged("Success to set RDM callback[0]"), 1);
    EXPECT_EQ(logged("RDM callback deregistered successfully - handler[" + handle + "]"), 1);
    EXPECT_EQ(logged("Sucess to unset RDM callback[0]"), 1);
    EXPECT_EQ(gVeskHandler, 0);
}

TEST_F(LifecycleTest, CreatesItsScreenInOrder)
{
    set("high-contrast", "on");
    open();
    EXPECT_EQ(elm_app_base_scale_get(), 2.0);

    /* From the board check on, without what the builder does. */
    std::vector<std::string> steps =
        spy::steps({"system_info_get_custom_bool", "ea_init", "ug_get_window", "elm_config_focus_highlight_enabled_set",
                    "elm_app_base_scale_set", "elm_object_signal_emit", "evas_object_event_callback_add"});
    std::erase(steps, "event callback");
    const auto first = std::ranges::find(steps, "system_info_get_custom_bool com.corvane/featureconf/quince_support");
    const auto builder = std::ranges::find(steps, "I _create_c_popup_right: Enter");
    const auto built = std::ranges::find(steps, "I _create_c_popup_right: Exit");
    const auto last = std::ranges::find(steps, "I _on_start: VESK started.");
    ASSERT_TRUE(first < builder && builder < built && built < last && last != steps.end());
    std::vector<std::string> around(first, builder + 1);
    around.insert(around.end(), built, last + 1);
    EXPECT_THAT(around, testing::ElementsAre("system_info_get_custom_bool com.corvane/featureconf/quince_support",
                                             "I is_quince_supported: is_quince status:[0]", "I _on_create: Enter",
                                             "ea_init 0 0", "ug_get_window", "focus highlight 1", "base scale 2.000000",
                                             "highcontrast_on from bg_set to object", "keys of the screen",
                                             "I _create_c_popup_right: Enter", "I _create_c_popup_right: Exit",
                                             "I _on_create: Exit", "I _on_start: VESK started."));
}

TEST_F(LifecycleTest, ReadsTheContrastBetweenThePopupAndItsContents)
{
    vesk_port::set_failures("vconf_get_int=-1");
    open();
    EXPECT_THAT(
        lines_of({"_on_create", "_set_bg_contrast", "_create_c_popup_right"}),
        testing::ElementsAre("_on_create: Enter", "_set_bg_contrast: Get high contrast vconf Fail or Null Pointer",
                             "_create_c_popup_right: Enter", "_create_c_popup_right: Exit", "_on_create: Exit"));
}

TEST_F(LifecycleTest, BuildsItsScreenOnAClearedRecord)
{
    open(); /* the toolkit has to be up first */
    close();
    reset_module_state();

    ug_module_ops ops{};
    ASSERT_EQ(UG_MODULE_INIT(&ops), 0);
    AppData *record = static_cast<AppData *>(ops.priv);
    /* Handles of an earlier screen; nobody looks at what is behind them. */
    Evas_Object *const stale = reinterpret_cast<Evas_Object *>(&ops);
    DeviceEntry stale_table{};
    record->table = &stale_table;
    for (Evas_Object **handle : {&record->action_aux, &record->action_popup, &record->action_genlist,
                                 &record->detail_popup, &record->close_button, &record->exit_button})
        *handle = stale;
    std::ranges::fill(record->checks, stale);

    AppData seen{};
    vesk_port::set_log_sink([&](int, const std::string &, const std::string &text) {
        if (text.find("_create_c_popup_right(") != std::string::npos && text.ends_with("Enter"))
            seen = *record;
    });
    const ui_gadget_h gadget = reinterpret_cast<ui_gadget_h>(&ops);
    EXPECT_EQ(ops.create(gadget, UG_MODE_FULLVIEW, nullptr, record), record->base);
    vesk_port::set_log_sink(nullptr);

    ASSERT_NE(seen.base, nullptr) << "the builder has not been seen";
    EXPECT_EQ(seen.base, record->base);
    EXPECT_EQ(seen.win, panel().window());
    EXPECT_EQ(seen.ug, gadget);
    EXPECT_EQ(seen.table, nullptr);
    EXPECT_EQ(seen.action_aux, nullptr);
    EXPECT_EQ(seen.action_popup, nullptr);
    EXPECT_EQ(seen.action_genlist, nullptr);
    EXPECT_EQ(seen.detail_popup, nullptr);
    EXPECT_EQ(seen.close_button, nullptr);
    EXPECT_EQ(seen.exit_button, nullptr);
    for (int slot = 0; slot < kCheckSlots; ++slot)
        EXPECT_EQ(seen.checks[slot], slot < 50 ? nullptr : stale) << slot;
    EXPECT_EQ(record->table, gVeskTable);

    ops.destroy(gadget, nullptr, record);
    UG_MODULE_EXIT(&ops);
}

TEST_F(LifecycleTest, AHostThatEndsItByItselfLeavesTheWatchAlone)
{
    open();
    close();
    EXPECT_EQ(logged("VESK destroyed."), 1);
    EXPECT_EQ(logged("VESK EXIT"), 1);
    EXPECT_EQ(logged("RDM callback already deregistered."), 0);
    EXPECT_EQ(logged("Sucess to unset RDM callback[0]"), 0);
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_EQ(logged("no screen to turn"), 1);
}

TEST_F(LifecycleTest, RunsAgainAndAgainWithoutGrowing)
{
    for (int i = 1; i <= 3; ++i) {
        open();
        EXPECT_EQ(focused(), app()->genlist);
        press("Return");
        close();
        reset_module_state();
        EXPECT_EQ(logged("VESK EXIT"), i);
    }
}

TEST_F(LifecycleTest, StartingClearsTheArmedState)
{
    open();
    b_popup_expanded = true;
    _on_start(nullptr, nullptr, app());
    EXPECT_FALSE(b_popup_expanded);
}

/* --- Failures of the platform --- */

TEST_F(LifecycleTest, AnUnopenedServiceGivesAnEmptyScreen)
{
    vesk_port::set_failures("rdm_init=-5");
    open();
    EXPECT_EQ(priority_of("RDM init failed -5"), DLOG_ERROR);
    EXPECT_EQ(logged("[VESK] RDM List read fail"), 1);
    EXPECT_TRUE(app()->noitem_label);
    press("Return");
    EXPECT_TRUE(closed_itself());
}

TEST_F(LifecycleTest, AFailedRegistrationIsTakenBackAllTheSame)
{
    vesk_port::set_failures("rdm_callback_register=-7");
    open();
    EXPECT_EQ(priority_of("Failed to set RDM callback[-7]"), DLOG_ERROR);
    EXPECT_EQ(gVeskHandler, -1);
    EXPECT_EQ(texts(app()->genlist).size(), 2U) << "the start goes on";
    press("XF86Back");
    ASSERT_TRUE(closed_itself());
    EXPECT_GE(
        std::ranges::count_if(
            messages(), [](const std::string &line) { return line.starts_with("Failed to unset RDM callback[-"); }),
        2)
        << "once by the close and once by the exit";
    EXPECT_EQ(logged("Sucess to unset RDM callback[0]"), 1) << "the orientation watch";
}

TEST_F(LifecycleTest, AFailedDeregistrationKeepsTheHandle)
{
    open();
    const int handle = gVeskHandler;
    vesk_port::set_failures("rdm_callback_deregister=-9,vconf_ignore_key_changed=-3");
    destroy_ug(app());
    EXPECT_EQ(priority_of("Failed to unset RDM callback[-9]"), DLOG_ERROR);
    EXPECT_EQ(priority_of("Failed to unset RDM callback[-3]"), DLOG_ERROR);
    EXPECT_EQ(gVeskHandler, handle);
    EXPECT_TRUE(closed_itself());
}

TEST_F(LifecycleTest, AFailedWatchOfTheOrientationIsLogged)
{
    open();
    close();
    reset_module_state();
    forget();
    vesk_port::set_failures("vconf_notify_key_changed=-4");
    open();
    EXPECT_EQ(priority_of("Failed to set RDM callback[-4]"), DLOG_ERROR);
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(LifecycleTest, UnknownFactsOfTheProductMeanATelevision)
{
    vesk_port::set_failures("system_info_get_custom_bool=-2");
    open();
    EXPECT_EQ(priority_of("sound_mirroring_supported error[-2]"), DLOG_ERROR);
    EXPECT_EQ(priority_of("system_info_get_value_bool() fail"), DLOG_ERROR);
    EXPECT_EQ(logged("is_quince status:[0]"), 1);
    EXPECT_FALSE(b_is_tablo);
    EXPECT_FALSE(b_sound_mirroring);
}

TEST_F(LifecycleTest, UnreadableSettingsAreLogged)
{
    use_product("board");
    vesk_port::set_failures("vconf_get_int=-1");
    open();
    EXPECT_EQ(priority_of("Get high contrast vconf Fail or Null Pointer"), DLOG_WARN);
    EXPECT_EQ(priority_of("error vconf_get_int : 0"), DLOG_ERROR);
    EXPECT_EQ(logged("is_quince status:[1]"), 1);
    EXPECT_EQ(focused(), app()->genlist);
}

TEST_F(LifecycleTest, WithoutAWindowThereIsNoScreen)
{
    open();
    close();
    reset_module_state();
    vesk_port::set_failures("ug_get_window=-1");
    EXPECT_THROW(open(), std::runtime_error);
    EXPECT_EQ(priority_of("window get failed"), DLOG_ERROR);
}

TEST_F(LifecycleTest, ASecondCloseOnlyAsksTheHost)
{
    open();
    destroy_ug(app());
    forget();
    destroy_ug(app());
    EXPECT_TRUE(log().empty());
    EXPECT_TRUE(closed_itself());
}

TEST_F(LifecycleTest, ArgumentsThatAreMissingAreRefused)
{
    EXPECT_EQ(UG_MODULE_INIT(nullptr), -1);
    EXPECT_TRUE(log().empty());
    EXPECT_FALSE(_on_create(nullptr, UG_MODE_FULLVIEW, nullptr, nullptr));
    EXPECT_THAT(lines_of({"_on_create"}), testing::ElementsAre("_on_create: Enter"));
}

} // namespace
