#include "ug/module.h"

#include <algorithm>
#include <cstdlib>
#include <ea.h>
#include <libintl.h>
#include <rdm.h>

#include "log.h"
#include "translate.h"
#include "ug/action_popup.h"
#include "ug/app_data.h"
#include "ug/app_keys.h"
#include "ug/delete_popup.h"
#include "ug/device_list_screen.h"
#include "ug/live_updates.h"
#include "ug/pending_focus.h"
#include "ug/platform_facts.h"
#include "ug/settings_watch.h"
#include "ug/watches.h"
#include "vesk/device_list.h"

/* Half of the check slots is cleared and deleted here; the check boxes in the others go with their list. */
constexpr int kOwnedCheckSlots = 50;

static const char *const kCatalogueFolder = "/usr/ug/res/locale";

extern "C" __attribute__((visibility("default"))) int UG_MODULE_INIT(struct ug_module_ops *ops)
{
    if (!ops)
        return -1;
    AppData *app = static_cast<AppData *>(calloc(1, sizeof(AppData)));
    if (!app)
        return -1;

    bindtextdomain(kTextDomain, kCatalogueFolder);

    ops->create = _on_create;
    ops->start = _on_start;
    ops->pause = _on_pause;
    ops->resume = _on_resume;
    ops->destroy = _on_destroy;
    ops->message = nullptr;
    ops->event = nullptr;
    ops->priv = app;
    ops->opt = 0;

    b_sound_mirroring = is_sound_mirroring_supported();
    const int result = rdm_init();
    if (result != 0)
        LOG_E("RDM init failed %d", result);
    register_rdm_callback(vesk_rdm_callback, app);
    watch_orientation();
    vesk_read_all();
    return 0;
}

extern "C" __attribute__((visibility("default"))) void UG_MODULE_EXIT(struct ug_module_ops *ops)
{
    if (gVeskHandler != 0)
        deregister_rdm_callback();
    else
        LOG_W("RDM callback already deregistered.");
    /* After destroy_ug this closes the service a second time; the service counts on it. */
    rdm_deinit();
    LOG_I("VESK EXIT");
    if (!ops || !ops->priv)
        return;
    /* The orientation watch outlives a gadget that the host has destroyed by itself. */
    if (app_data == ops->priv)
        app_data = nullptr;
    free(ops->priv);
    ops->priv = nullptr;
}

void *_on_create(ui_gadget_h ug, enum ug_mode /*mode*/, app_control_h /*app_control*/, void *priv)
{
    b_is_tablo = is_quince_supported();
    LOG_I("Enter");
    if (!ug || !priv)
        return nullptr;
    AppData *app = static_cast<AppData *>(priv);

    ea_init(0, 0);
    app->ug = ug;
    Evas_Object *win = static_cast<Evas_Object *>(ug_get_window());
    if (!win) {
        LOG_E("window get failed");
        return nullptr;
    }
    elm_config_focus_highlight_enabled_set(EINA_TRUE);
    Evas_Object *base = elm_popup_add(win);
    if (!base) {
        LOG_E("base create failed");
        return nullptr;
    }
    elm_app_base_scale_set(2.0);
    _set_bg_contrast(base);
    evas_object_event_callback_add(base, EVAS_CALLBACK_KEY_DOWN, Close_app_On_returnKey, app);

    app->base = base;
    app->win = win;
    app->table = nullptr;
    app->action_aux = nullptr;
    app->action_popup = nullptr;
    app->action_genlist = nullptr;
    app->detail_popup = nullptr;
    app->close_button = nullptr;
    app->exit_button = nullptr;
    std::fill_n(app->checks, kOwnedCheckSlots, nullptr);

    _create_c_popup_right(app);
    LOG_I("Exit");
    return app->base;
}

void _on_start(ui_gadget_h /*ug*/, app_control_h /*app_control*/, void * /*priv*/)
{
    b_popup_expanded = false;
    LOG_I("VESK started.");
}

void _on_pause(ui_gadget_h /*ug*/, app_control_h /*app_control*/, void * /*priv*/) {}

void _on_resume(ui_gadget_h /*ug*/, app_control_h /*app_control*/, void * /*priv*/) {}

void _on_destroy(ui_gadget_h ug, app_control_h /*app_control*/, void *priv)
{
    ea_shutdown();
    LOG_I("VESK destroyed.");
    AppData *app = static_cast<AppData *>(priv);
    if (!ug || !app || !app->base)
        return;

    if (toastTimerTag != 0) {
        LOG_I("toastTimerTag is removed!!");
        g_source_remove(toastTimerTag);
    }
    forget_focus();
    release_choice_class();

    /* What lies inside the base popup goes with it; the toolkit rejects the handles that are stale by then. */
    delete_object(app->noitem_label);
    delete_object(app->base);
    delete_object(app->aux_object);
    delete_object(app->genlist);
    app->table = nullptr;
    if (app->action_popup) {
        delete_object(app->action_popup);
        delete_object(app->action_aux);
        delete_object(app->action_genlist);
    }
    delete_object(app->detail_popup);
    std::for_each_n(app->checks, kOwnedCheckSlots, delete_object);
    delete_object(app->edit_button);
    delete_object(app->close_button);
}
