#include "ug/app_keys.h"

#include <initializer_list>

#include "log.h"
#include "ug/app_data.h"
#include "ug/delete_popup.h"
#include "ug/edit_mode.h"
#include "ug/edit_state.h"
#include "ug/keys.h"
#include "ug/watches.h"
#include "vesk/device_table.h"

int32_t current_position;

static void close_module(AppData *app)
{
    for (Evas_Object *object : {app->aux_object, app->base, app->genlist}) {
        if (object)
            elm_object_focus_set(object, EINA_FALSE);
    }
    elm_win_focus_highlight_enabled_set(app->win, EINA_TRUE);
    destroy_ug(app);
}

static void track_row(const AppData *app, const char *key)
{
    if (app->action_genlist || !elm_object_focus_get(app->genlist))
        return;
    if (is_up_key(key))
        current_position = current_position < 1 ? device_count - 1 : current_position - 1;
    else if (is_down_key(key))
        current_position = current_position < device_count - 1 ? current_position + 1 : 0;
}

void Close_app_On_returnKey(void *data, Evas * /*canvas*/, Evas_Object * /*obj*/, void *event_info)
{
    AppData *app = static_cast<AppData *>(data);
    const char *key = key_name(event_info);
    if (!key) {
        LOG_W("event null");
        return;
    }
    LOG_I("key[%s]", key);
    if (app->detail_popup) {
        LOG_I("detail_popup unset");
        /* Finds nothing: the handler stands on the base popup only. Kept for the log's readers. */
        if (app->action_aux)
            evas_object_event_callback_del(app->action_aux, EVAS_CALLBACK_KEY_DOWN, Close_app_On_returnKey);
    }
    if (b_disable_focus) {
        LOG_I("b_disable_focus");
        return;
    }
    if (b_edit_status) {
        if (is_back_key(key))
            Clicked_outside_app_cb(app, nullptr, nullptr);
    } else if (is_close_key(key) || is_back_key(key)) {
        close_module(app);
    }
    track_row(app, key);
    LOG_I("done");
}
