/* The end of the screen: what is deleted, in which order, and what runs no more afterwards. */

#include <Ecore_Evas.h>
#include <Elementary.h>
#include <cstdlib>
#include <dlfcn.h>
#include <glib.h>

#include "lifecycle_fixture.h"
#include "ug/app_keys.h"
#include "ug/delete_popup.h"
#include "ug/pending_focus.h"
#include "ug/watches.h"
#include "vesk/device_table.h"

using testing::ElementsAre;

/* Stand before the toolkit's own, and note how the focus moves. */
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
