#include <Ecore_Evas.h>
#include <Elementary.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <glib.h>
#include <type_traits>

#include "module_fixture.h"
#include "ug/action_popup.h"
#include "ug/app_keys.h"
#include "ug/delete_popup.h"
#include "ug/edit_mode.h"
#include "ug/live_updates.h"
#include "ug/module.h"
#include "ug/screen_reader.h"
#include "ug/settings_watch.h"
#include "vesk/device_services.h"
#include "vesk/device_table.h"

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

static bool all_zero(const void *bytes, size_t size)
{
    const char *begin = static_cast<const char *>(bytes);
    return std::all_of(begin, begin + size, [](char byte) { return byte == 0; });
}

/* The module's globals as they stand when the record is made. */
struct Globals {
    const AppData *record = app_data;
    bool sound_mirroring = b_sound_mirroring;
    bool board = b_is_tablo;
    int handle = gVeskHandler;
    bool blank_table = all_zero(gVeskTable, sizeof gVeskTable);
    int32_t devices = device_count;
    bool no_services = all_zero(services, sizeof services);
    bool reversed = gbReverse;
    int32_t position = current_position;
    bool dropdown_armed = b_popup_expanded;
    bool dropdown_introduced = b_subpopup_entered;
    int32_t choice = g_subpopup_index;
    int32_t device = selected_item_index;
    int32_t spoken_choice = subpopup_position;
    const Elm_Object_Item *preselected = pItem;
    bool editing = b_edit_status;
    bool no_marks = all_zero(b_remove_status, sizeof b_remove_status);
    int32_t marks = g_selected_count;
    int32_t next_check = g_checkbox_index;
    int32_t checks_since_turn = g_orientation_checkbox_count;
    bool confirmation_introduced = b_delete_popup_entered;
    bool toast_up = b_disable_focus;
    guint toast_timer = toastTimerTag;
    bool introduction_due = b_check_tts;

    bool operator==(const Globals &) const = default;
};

/* Read before any test has run. */
static const Globals after_loading;

/* The record is exact in names, order and types. */
#define FOLLOWS(field, before)                                                                                         \
    static_assert(offsetof(AppData, field) == offsetof(AppData, before) + sizeof(AppData::before))
static_assert(offsetof(AppData, base) == 0);
FOLLOWS(win, base);
FOLLOWS(genlist, win);
FOLLOWS(action_popup, genlist);
FOLLOWS(action_rect, action_popup);
FOLLOWS(list_rect, action_rect);
FOLLOWS(action_aux, list_rect);
FOLLOWS(edit_button, action_aux);
FOLLOWS(action_genlist, edit_button);
FOLLOWS(noitem_label, action_genlist);
FOLLOWS(ug, noitem_label);
FOLLOWS(aux_object, ug);
FOLLOWS(table, aux_object);
FOLLOWS(close_button, table);
FOLLOWS(exit_button, close_button);
FOLLOWS(detail_close_button, exit_button);
FOLLOWS(detail_popup, detail_close_button);
FOLLOWS(delete_popup, detail_popup);
FOLLOWS(service_genlist, delete_popup);
FOLLOWS(checks, service_genlist);
FOLLOWS(edit_icon, checks);
FOLLOWS(close_icon, edit_icon);
static_assert(sizeof(AppData) == offsetof(AppData, close_icon) + sizeof(AppData::close_icon));
static_assert(std::is_same_v<decltype(AppData::ug), ui_gadget_h>);
static_assert(std::is_same_v<decltype(AppData::table), DeviceEntry *>);
static_assert(std::is_same_v<decltype(AppData::checks), Evas_Object *[100]>);
static_assert(std::is_trivial_v<AppData>);

/* Stand before the toolkit's own: a toolkit that was not started, cannot make a popup and notes how the focus moves. */
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

static void note(const std::string &call, const Evas_Object *object)
{
    const char *name = evas_object_name_get(object);
    fake::platform().chronicle.push_back(call + ": " + (name ? name : "?"));
}

void elm_object_focus_set(Evas_Object *object, Eina_Bool focus)
{
    note("focus " + std::to_string(focus), object);
}

Eina_Bool elm_object_focus_get(const Evas_Object * /*object*/)
{
    return EINA_FALSE;
}

void elm_win_focus_highlight_enabled_set(Evas_Object *window, Eina_Bool enabled)
{
    note("focus highlight " + std::to_string(enabled), window);
}

/* The module's timers are the toolkit's, but for the note; they never expire here, where no main loop runs. */
static const Ecore_Timer *focus_timer;

extern "C" Ecore_Timer *ecore_timer_add(double seconds, Ecore_Task_Cb callback, const void *data)
{
    static const auto next = reinterpret_cast<decltype(&ecore_timer_add)>(dlsym(RTLD_NEXT, "ecore_timer_add"));
    Ecore_Timer *timer = next(seconds, callback, data);
    if (callback == _timer_cb) {
        focus_timer = timer;
        note("timer", static_cast<const Evas_Object *>(data));
    }
    return timer;
}

extern "C" void *ecore_timer_del(Ecore_Timer *timer)
{
    static const auto next = reinterpret_cast<decltype(&ecore_timer_del)>(dlsym(RTLD_NEXT, "ecore_timer_del"));
    void *data = next(timer);
    if (timer && timer == focus_timer) {
        focus_timer = nullptr;
        note("timer deleted", static_cast<const Evas_Object *>(data));
    }
    return data;
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

class LifecycleTest : public ModuleTest {
protected:
    ~LifecycleTest() override
    {
        if (ops.priv)
            UG_MODULE_EXIT(&ops);
    }

    /* Runs UG_MODULE_INIT and begins the chronicle anew. */
    AppData *init()
    {
        EXPECT_EQ(UG_MODULE_INIT(&ops), 0);
        fake::platform().chronicle.clear();
        fake::platform().log.clear();
        AppData *app = static_cast<AppData *>(ops.priv);
        app->ug = gadget;
        return app;
    }

    ug_module_ops ops{};
};

void host_key_event(ui_gadget_h, int, app_control_h, void *) {}

} // namespace

TEST_F(LifecycleTest, StateAfterLoading)
{
    EXPECT_EQ(after_loading.record, nullptr);
    EXPECT_FALSE(after_loading.sound_mirroring);
    EXPECT_FALSE(after_loading.board);
    EXPECT_EQ(after_loading.handle, -1);
    EXPECT_TRUE(after_loading.blank_table);
    EXPECT_EQ(after_loading.devices, -1);
    EXPECT_TRUE(after_loading.no_services);
    EXPECT_FALSE(after_loading.reversed);
    EXPECT_EQ(after_loading.position, 0);
    EXPECT_FALSE(after_loading.dropdown_armed);
    EXPECT_FALSE(after_loading.dropdown_introduced);
    EXPECT_EQ(after_loading.choice, 0);
    EXPECT_EQ(after_loading.device, 0);
    EXPECT_EQ(after_loading.spoken_choice, 0);
    EXPECT_EQ(after_loading.preselected, nullptr);
    EXPECT_FALSE(after_loading.editing);
    EXPECT_TRUE(after_loading.no_marks);
    EXPECT_EQ(after_loading.marks, 0);
    EXPECT_EQ(after_loading.next_check, 0);
    EXPECT_EQ(after_loading.checks_since_turn, 0);
    EXPECT_FALSE(after_loading.confirmation_introduced);
    EXPECT_FALSE(after_loading.toast_up);
    EXPECT_EQ(after_loading.toast_timer, 0U);
    EXPECT_TRUE(after_loading.introduction_due) << "the screen's introduction is still to be read";
}

TEST_F(LifecycleTest, AResetBringsBackTheStateAfterLoading)
{
    AppData record{};
    app_data = &record;
    b_sound_mirroring = b_is_tablo = gbReverse = b_popup_expanded = b_subpopup_entered = b_edit_status = true;
    b_delete_popup_entered = b_disable_focus = true;
    b_check_tts = false;
    memset(gVeskTable, 1, sizeof gVeskTable);
    memset(services, 1, sizeof services);
    memset(b_remove_status, 1, sizeof b_remove_status);
    gVeskHandler = device_count = current_position = g_subpopup_index = selected_item_index = subpopup_position = 5;
    g_selected_count = g_checkbox_index = g_orientation_checkbox_count = 5;
    pItem = reinterpret_cast<Elm_Object_Item *>(&record);
    toastTimerTag = 5;
    reset_module_state();
    EXPECT_TRUE(Globals{} == after_loading);
}

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

namespace {

/* Plain canvas objects in place of the screen's. They write their end to the chronicle. */
class TearDownTest : public LifecycleTest {
protected:
    /* Stays up until the process ends: the toolkit loses memory when it is shut down and started again. */
    static void SetUpTestSuite()
    {
        setenv("ECORE_NO_SYSTEM_MODULES", "1", 1); /* no system bus is needed */
        ecore_evas_init();
    }

    TearDownTest() : ecore_evas(ecore_evas_buffer_new(16, 16)) {}

    ~TearDownTest() override { ecore_evas_free(ecore_evas); }

    Evas_Object *object(const char *name)
    {
        Evas_Object *rectangle = evas_object_rectangle_add(ecore_evas_get(ecore_evas));
        evas_object_name_set(rectangle, name);
        evas_object_event_callback_add(rectangle, EVAS_CALLBACK_DEL, write_end, const_cast<char *>(name));
        return rectangle;
    }

    static void write_end(void *name, Evas *, Evas_Object *, void *)
    {
        fake::platform().chronicle.push_back("end of " + std::string(static_cast<const char *>(name)));
    }

    Ecore_Evas *ecore_evas;
};

} // namespace

TEST_F(TearDownTest, StopsWithoutHandles)
{
    AppData *app = init();
    _on_destroy(gadget, nullptr, app);
    app->base = object("base");
    _on_destroy(nullptr, nullptr, app);
    _on_destroy(gadget, nullptr, nullptr);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("ea_shutdown()", "I VESK destroyed.", "ea_shutdown()",
                                                        "I VESK destroyed.", "ea_shutdown()", "I VESK destroyed."));
    EXPECT_NE(app->base, nullptr);
}

TEST_F(TearDownTest, DeletesTheScreenInOrder)
{
    AppData *app = init();
    app->close_button = object("close_button");
    app->edit_button = object("edit_button");
    app->checks[0] = object("check 0");
    app->checks[49] = object("check 49");
    app->checks[50] = object("check 50");
    app->detail_popup = object("detail_popup");
    app->action_genlist = object("action_genlist");
    app->action_aux = object("action_aux");
    app->action_popup = object("action_popup");
    app->genlist = object("genlist");
    app->aux_object = object("aux_object");
    app->base = object("base");
    app->noitem_label = object("noitem_label");
    app->table = gVeskTable;
    _on_destroy(gadget, nullptr, app);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("ea_shutdown()", "I VESK destroyed.", "end of noitem_label", "end of base",
                            "end of aux_object", "end of genlist", "end of action_popup", "end of action_aux",
                            "end of action_genlist", "end of detail_popup", "end of check 0", "end of check 49",
                            "end of edit_button", "end of close_button"));
    const AppData cleared = *app;
    for (const void *handle :
         {static_cast<const void *>(cleared.noitem_label), static_cast<const void *>(cleared.base),
          static_cast<const void *>(cleared.aux_object), static_cast<const void *>(cleared.genlist),
          static_cast<const void *>(cleared.table), static_cast<const void *>(cleared.action_popup),
          static_cast<const void *>(cleared.action_aux), static_cast<const void *>(cleared.action_genlist),
          static_cast<const void *>(cleared.detail_popup), static_cast<const void *>(cleared.checks[0]),
          static_cast<const void *>(cleared.checks[49]), static_cast<const void *>(cleared.edit_button),
          static_cast<const void *>(cleared.close_button)})
        EXPECT_EQ(handle, nullptr);
    EXPECT_NE(cleared.checks[50], nullptr) << "goes with its list";
}

TEST_F(TearDownTest, LeavesTheCompanionsOfAClosedDropDownAlone)
{
    AppData *app = init();
    app->base = object("base");
    app->action_genlist = object("action_genlist");
    _on_destroy(gadget, nullptr, app);
    EXPECT_THAT(fake::platform().chronicle, ElementsAre("ea_shutdown()", "I VESK destroyed.", "end of base"));
}

TEST_F(TearDownTest, RemovesTheToastsTimer)
{
    AppData *app = init();
    app->base = object("base");
    toastTimerTag = g_timeout_add(
        3000, [](gpointer) -> gboolean { return FALSE; }, nullptr);
    const guint tag = toastTimerTag;
    _on_destroy(gadget, nullptr, app);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("ea_shutdown()", "I VESK destroyed.", "I toastTimerTag is removed!!", "end of base"));
    EXPECT_EQ(g_main_context_find_source_by_id(nullptr, tag), nullptr);
    EXPECT_EQ(toastTimerTag, tag) << "the tag is kept";
}

TEST_F(TearDownTest, ASpentToastsTimerIsRemovedAllTheSame)
{
    AppData *app = init();
    app->base = object("base");
    toastTimerTag = g_timeout_add(
        3000, [](gpointer) -> gboolean { return FALSE; }, nullptr);
    g_source_remove(toastTimerTag);
    /* GLib's complaint about a source that it does not have. */
    const guint handler = g_log_set_handler(
        "GLib", G_LOG_LEVEL_CRITICAL,
        [](const gchar *, GLogLevelFlags, const gchar *, gpointer) {
            fake::platform().chronicle.push_back("no such source");
        },
        nullptr);
    _on_destroy(gadget, nullptr, app);
    g_log_remove_handler("GLib", handler);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("ea_shutdown()", "I VESK destroyed.", "I toastTimerTag is removed!!", "no such source",
                            "end of base"));
    EXPECT_EQ(fake::platform().log.back().function, "_on_destroy");
}

TEST_F(TearDownTest, NothingIsFocusedSoonAfterwards)
{
    AppData *app = init();
    app->base = object("base");
    focus_soon(app->base);
    _on_destroy(gadget, nullptr, app);
    EXPECT_THAT(fake::platform().chronicle,
                ElementsAre("timer: base", "ea_shutdown()", "I VESK destroyed.", "timer deleted: base", "end of base"));
}

TEST_F(TearDownTest, WithoutAScreenTurnsAndReportsTouchNothing)
{
    fake::platform().devices = {fake::device("Phone", "AA:BB:CC:DD:EE:FF")};
    AppData *app = init();
    const auto expect_no_screen = [this](const std::string &name) {
        for (const int status : {0, 1}) {
            fake::platform().chronicle.clear();
            fake::platform().devices = {fake::device(name, "AA:BB:CC:DD:EE:FF", "", "", status)};
            fake::platform().callback(ops.priv, fake::platform().devices.data());
            EXPECT_EQ(fake::platform().chronicle.front(),
                      "I Status changed >> BTMAC[AA:BB:CC:DD:EE:FF], WIFIMAC[], P2PMAC[], STATUS[" +
                          std::to_string(status) + "]");
            EXPECT_THAT(fake::calls(), ElementsAre("rdm_get_list()", "rdm_free_list()"));
            EXPECT_EQ(gVeskTable[0].name, name) << "the table is read all the same";
            EXPECT_EQ(fake::platform().chronicle.back(), "W no screen to refresh");
        }
        fake::platform().chronicle.clear();
        fake::platform().watch(nullptr, nullptr);
        EXPECT_THAT(fake::platform().chronicle, ElementsAre("I ROTATION callback", "W no screen to turn"));
    };
    expect_no_screen("before the screen");

    app->base = object("base");
    app_data = app;
    _on_destroy(gadget, nullptr, app);
    expect_no_screen("after the screen");
}

TEST_F(TearDownTest, AClosingKeyTakesTheFocusBeforeItAsksForTheEnd)
{
    AppData *app = init();
    destroy_ug(app); /* so that the next one only asks the host */
    app->win = object("win");
    app->base = object("base");
    app->genlist = object("genlist");
    for (const bool with_aux_object : {false, true}) {
        if (with_aux_object)
            app->aux_object = object("aux_object");
        for (const char *key : {"XF86Back", "XF86Close"}) {
            fake::platform().chronicle.clear();
            Evas_Event_Key_Down event{};
            std::string name = key;
            event.keyname = name.data();
            Close_app_On_returnKey(app, nullptr, app->base, &event);
            std::vector<std::string> expected{"I key[" + name + "]",    "focus 0: base",   "focus 0: genlist",
                                              "focus highlight 1: win", "ug_destroy_me()", "I done"};
            if (with_aux_object)
                expected.insert(expected.begin() + 1, "focus 0: aux_object");
            EXPECT_THAT(fake::platform().chronicle, testing::ElementsAreArray(expected));
        }
    }
}
