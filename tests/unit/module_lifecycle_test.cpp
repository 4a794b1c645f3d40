/* The module's entry points up to its end, on a platform without a window. */

#include <Elementary.h>
#include <cstring>

#include "lifecycle_fixture.h"
#include "ug/action_popup.h"
#include "ug/live_updates.h"
#include "ug/settings_watch.h"
#include "ug/watches.h"

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/* Stand before the toolkit's own: a toolkit that was not started cannot make a popup. */
void elm_config_focus_highlight_enabled_set(Eina_Bool enable)
{
    fake::platform().chronicle.push_back("focus highlight " + std::to_string(enable));
}

Evas_Object *elm_popup_add(Evas_Object *parent)
{
    EXPECT_EQ(parent, fake::platform().window);
    fake::platform().chronicle.push_back("no popup");
    return nullptr;
}

/* The module's calls of calloc come here (a linker option). */
static bool out_of_memory;

extern "C" void *__real_calloc(size_t count, size_t size);

extern "C" void *__wrap_calloc(size_t count, size_t size)
{
    return out_of_memory ? nullptr : __real_calloc(count, size);
}

namespace {

constexpr const char *kSound = "com.corvane/featureconf/sound_mirroring_supported";
constexpr const char *kBoard = "com.corvane/featureconf/quince_support";
constexpr const char *kReadSound = "system_info_get_custom_bool(\"com.corvane/featureconf/sound_mirroring_supported\")";
constexpr const char *kReadBoard = "system_info_get_custom_bool(\"com.corvane/featureconf/quince_support\")";
constexpr const char *kWatch =
    "vconf_notify_key_changed(\"db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation\")";
constexpr const char *kUnwatch =
    "vconf_ignore_key_changed(\"db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation\")";

void host_key_event(ui_gadget_h, int, app_control_h, void *) {}

} // namespace

TEST_F(LifecycleTest, InitOpensWatchesAndReadsInOrder)
{
    fake::platform().custom_bools[kSound] = {true};
    fake::platform().devices = {fake::device("Phone", "", "", "", 2)};
    EXPECT_EQ(UG_MODULE_INIT(&ops), 0);
    const std::string no_mac(17, ' ');
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("bindtextdomain(\"ug-VeskUG-efl\", \"/usr/ug/res/locale\")", kReadSound,
                            "I SOUND_MIRRORING is supported", "rdm_init()", "rdm_callback_register()",
                            "I RDM callback registered successfully - handler[7]", kWatch,
                            "I Success to set RDM callback[0]", "rdm_get_list()", "W \tRDM Count is 1",
                            "I \tRDM >> Index[0] NAME[Phone] BT[] WIFI[] P2P[] TYPE[0] ICON[0] Status[Deny]",
                            "rdm_free_list()", "I Sorting is not needed.",
                            "I \t" + std::string(102, '=') + " VESK Table [  1/ 50]",
                            "I \tNAME[               Phone] BT[" + no_mac + "] WIFI[" + no_mac + "] P2P[" + no_mac +
                                "] TYPE[0] ICON[0] STATE[ 1]",
                            "I \t" + std::string(118, '=') + " END"));
    EXPECT_EQ(gVeskHandler, 7);
    EXPECT_TRUE(b_sound_mirroring);
}

TEST_F(LifecycleTest, InitHandsOverItsCallbacks)
{
    ASSERT_EQ(UG_MODULE_INIT(&ops), 0);
    EXPECT_EQ(fake::platform().callback, vesk_rdm_callback);
    EXPECT_EQ(fake::platform().callback_data, ops.priv);
    EXPECT_EQ(fake::platform().watch, VconfNotifyCB);
    EXPECT_EQ(fake::platform().watch_data, nullptr);
}

TEST_F(LifecycleTest, InitFillsItsSlotsOfTheOperationsAndLeavesTheHostsAlone)
{
    memset(&ops, 0x5A, sizeof ops);
    ops.key_event = host_key_event;
    ASSERT_EQ(UG_MODULE_INIT(&ops), 0);
    EXPECT_EQ(ops.create, _on_create);
    EXPECT_EQ(ops.start, _on_start);
    EXPECT_EQ(ops.pause, _on_pause);
    EXPECT_EQ(ops.resume, _on_resume);
    EXPECT_EQ(ops.destroy, _on_destroy);
    EXPECT_EQ(ops.message, nullptr);
    EXPECT_EQ(ops.event, nullptr);
    EXPECT_EQ(ops.key_event, host_key_event);
    EXPECT_EQ(ops.opt, 0);
}

TEST_F(LifecycleTest, InitHandsOverABlankRecord)
{
    ASSERT_EQ(UG_MODULE_INIT(&ops), 0);
    const AppData blank{};
    EXPECT_EQ(memcmp(ops.priv, &blank, sizeof blank), 0);
    EXPECT_EQ(app_data, nullptr) << "stored by the screen's builder, not yet";
}

TEST_F(LifecycleTest, InitWithoutOperationsDoesNothing)
{
    EXPECT_EQ(UG_MODULE_INIT(nullptr), -1);
    EXPECT_THAT(fake::platform().chronicle, IsEmpty());
}

TEST_F(LifecycleTest, InitWithoutMemoryDoesNothing)
{
    ops.opt = 5;
    out_of_memory = true;
    const int result = UG_MODULE_INIT(&ops);
    out_of_memory = false;
    EXPECT_EQ(result, -1);
    EXPECT_EQ(ops.create, nullptr);
    EXPECT_EQ(ops.opt, 5);
    EXPECT_THAT(fake::platform().chronicle, IsEmpty());
}

TEST_F(LifecycleTest, InitWithoutDevicesSucceeds)
{
    EXPECT_EQ(UG_MODULE_INIT(&ops), 0);
    EXPECT_EQ(fake::lines().back(), "I [VESK] Table is empty");
}

TEST_F(LifecycleTest, InitGoesOnAfterEveryFailure)
{
    fake::platform().custom_bools[kSound] = {true, -61};
    fake::platform().results = {{"rdm_init", {-62}},
                                {"rdm_callback_register", {-63}},
                                {"vconf_notify_key_changed", {-64}},
                                {"rdm_get_list", {-65}}};
    EXPECT_EQ(UG_MODULE_INIT(&ops), 0);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("bindtextdomain(\"ug-VeskUG-efl\", \"/usr/ug/res/locale\")", kReadSound,
                            "E sound_mirroring_supported error[-61]", "rdm_init()", "E RDM init failed -62",
                            "rdm_callback_register()", "E Failed to set RDM callback[-63]", kWatch,
                            "E Failed to set RDM callback[-64]", "rdm_get_list()", "E [VESK] RDM List read fail",
                            "I Sorting is not needed.", "I [VESK] Table is empty"));
    EXPECT_FALSE(b_sound_mirroring) << "a value that comes with a failure is none";
    EXPECT_EQ(gVeskHandler, -1) << "as the service left it";
    EXPECT_NE(ops.priv, nullptr);
}

TEST_F(LifecycleTest, InitNotesThatSoundMirroringIsMissing)
{
    b_sound_mirroring = true;
    fake::platform().custom_bools[kSound] = {false};
    EXPECT_EQ(UG_MODULE_INIT(&ops), 0);
    EXPECT_THAT(fake::lines(), Contains("W SOUND_MIRRORING is NOT supported"));
    EXPECT_FALSE(b_sound_mirroring);
}

TEST_F(LifecycleTest, CreateRefusesMissingHandlesAfterTheBoardCheck)
{
    AppData *app = init();
    fake::platform().custom_bools[kBoard] = {true};
    EXPECT_EQ(_on_create(nullptr, UG_MODE_FULLVIEW, nullptr, app), nullptr);
    EXPECT_TRUE(b_is_tablo);
    EXPECT_EQ(_on_create(gadget, UG_MODE_FULLVIEW, nullptr, nullptr), nullptr);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre(kReadBoard, "I is_quince status:[1]", "I Enter", kReadBoard,
                                                        "I is_quince status:[1]", "I Enter"));
    EXPECT_THAT(fake::platform().log, Contains(testing::Field(&fake::LogLine::function, "_on_create")).Times(2));
}

TEST_F(LifecycleTest, CreateTakesAnUnreadableBoardFactForAbsent)
{
    b_is_tablo = true;
    fake::platform().custom_bools[kBoard] = {true, -2};
    EXPECT_EQ(_on_create(nullptr, UG_MODE_FULLVIEW, nullptr, nullptr), nullptr);
    EXPECT_THAT(fake::lines(), ElementsAre("E system_info_get_value_bool() fail", "I is_quince status:[0]", "I Enter"));
    EXPECT_FALSE(b_is_tablo);
}

TEST_F(LifecycleTest, CreateFailsWithoutAWindow)
{
    AppData *app = init();
    app->ug = nullptr;
    fake::platform().custom_bools[kBoard] = {false};
    EXPECT_EQ(_on_create(gadget, UG_MODE_FULLVIEW, nullptr, app), nullptr);
    EXPECT_EQ(app->ug, gadget);
    EXPECT_EQ(app->base, nullptr);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre(kReadBoard, "I is_quince status:[0]", "I Enter",
                                                        "ea_init(0, 0)", "ug_get_window()", "E window get failed"));
}

TEST_F(LifecycleTest, CreateFailsWithoutAPopup)
{
    AppData *app = init();
    fake::platform().custom_bools[kBoard] = {false};
    fake::platform().window = &ops;
    EXPECT_EQ(_on_create(gadget, UG_MODE_FULLVIEW, nullptr, app), nullptr);
    EXPECT_EQ(app->base, nullptr);
    EXPECT_EQ(app->win, nullptr);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre(kReadBoard, "I is_quince status:[0]", "I Enter", "ea_init(0, 0)", "ug_get_window()",
                            "focus highlight 1", "no popup", "E base create failed"));
}

TEST_F(LifecycleTest, StartClearsTheOpenDropDown)
{
    b_popup_expanded = true;
    _on_start(gadget, nullptr, init());
    EXPECT_FALSE(b_popup_expanded);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("I VESK started."));
}

TEST_F(LifecycleTest, PauseAndResumeChangeNothing)
{
    AppData *app = init();
    const AppData before = *app;
    b_popup_expanded = true;
    _on_pause(gadget, nullptr, app);
    _on_resume(gadget, nullptr, app);
    EXPECT_EQ(memcmp(app, &before, sizeof before), 0);
    EXPECT_TRUE(b_popup_expanded);
    EXPECT_THAT(fake::platform().chronicle, IsEmpty());
}

TEST_F(LifecycleTest, DestroyUgUndoesWhatInitDid)
{
    AppData *app = init();
    destroy_ug(app);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("rdm_callback_deregister(7)", "I RDM callback deregistered successfully - handler[7]",
                            kUnwatch, "I Sucess to unset RDM callback[0]", "rdm_deinit()", "ug_destroy_me()"));
    EXPECT_EQ(gVeskHandler, 0);
    EXPECT_EQ(fake::platform().ignored, VconfNotifyCB);
    EXPECT_EQ(fake::platform().ended, gadget);
}

TEST_F(LifecycleTest, SecondDestroyUgOnlyAsksTheHost)
{
    AppData *app = init();
    destroy_ug(app);
    fake::platform().chronicle.clear();
    destroy_ug(app);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("ug_destroy_me()"));
}

TEST_F(LifecycleTest, DestroyUgTriesToDeregisterWhatWasNeverRegistered)
{
    fake::platform().results = {{"rdm_callback_register", {-63}}, {"rdm_callback_deregister", {-66}}};
    AppData *app = init();
    const auto sequence = ElementsAre("rdm_callback_deregister(-1)", "E Failed to unset RDM callback[-66]", kUnwatch,
                                      "I Sucess to unset RDM callback[0]", "rdm_deinit()", "ug_destroy_me()");
    destroy_ug(app);
    EXPECT_THAT(fake::platform().chronicle, sequence);
    EXPECT_EQ(gVeskHandler, -1);

    fake::platform().chronicle.clear();
    destroy_ug(app);
    EXPECT_THAT(fake::platform().chronicle, sequence) << "the handle was kept, so all of it is done again";
}

TEST_F(LifecycleTest, DestroyUgGoesOnAfterFailures)
{
    AppData *app = init();
    fake::platform().results = {
        {"rdm_callback_deregister", {-66}}, {"vconf_ignore_key_changed", {-67}}, {"rdm_deinit", {-68}}};
    destroy_ug(app);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("rdm_callback_deregister(7)", "E Failed to unset RDM callback[-66]", kUnwatch,
                            "E Failed to unset RDM callback[-67]", "rdm_deinit()", "ug_destroy_me()"));
    EXPECT_EQ(gVeskHandler, 7);
}

TEST_F(LifecycleTest, ExitDeregistersWhatIsStillRegisteredAndLeavesTheWatch)
{
    init();
    UG_MODULE_EXIT(&ops);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("rdm_callback_deregister(7)", "I RDM callback deregistered successfully - handler[7]",
                            "rdm_deinit()", "I VESK EXIT"));
    EXPECT_EQ(gVeskHandler, 0);
    EXPECT_EQ(ops.priv, nullptr) << "freed, and not to be freed again by the host";
}

TEST_F(LifecycleTest, ExitAfterDestroyUgClosesTheServiceAgain)
{
    destroy_ug(init());
    fake::platform().chronicle.clear();
    UG_MODULE_EXIT(&ops);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("W RDM callback already deregistered.", "rdm_deinit()", "I VESK EXIT"));
}

TEST_F(LifecycleTest, ExitKeepsTheHandleWhenDeregisteringFails)
{
    init();
    fake::platform().results["rdm_callback_deregister"] = {-66};
    UG_MODULE_EXIT(&ops);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("rdm_callback_deregister(7)", "E Failed to unset RDM callback[-66]", "rdm_deinit()",
                            "I VESK EXIT"));
    EXPECT_EQ(gVeskHandler, 7);
}

TEST_F(LifecycleTest, ExitWithoutOperationsOrRecord)
{
    gVeskHandler = 0;
    UG_MODULE_EXIT(nullptr);
    UG_MODULE_EXIT(&ops);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("W RDM callback already deregistered.", "rdm_deinit()", "I VESK EXIT",
                            "W RDM callback already deregistered.", "rdm_deinit()", "I VESK EXIT"));
}

TEST_F(LifecycleTest, TurnAfterExitFindsNoRecord)
{
    app_data = init();
    UG_MODULE_EXIT(&ops);
    EXPECT_EQ(app_data, nullptr) << "the watch outlives a gadget that its host destroys by itself";
    fake::platform().chronicle.clear();
    VconfNotifyCB(nullptr, nullptr);
    EXPECT_THAT(fake::platform().chronicle, Each(testing::AnyOf("I ROTATION callback", "W no screen to turn")));
}
