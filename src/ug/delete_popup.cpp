#include "ug/delete_popup.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <rdm.h>
#include <string>

#include "log.h"
#include "translate.h"
#include "ug/app_data.h"
#include "ug/buttons.h"
#include "ug/edit_state.h"
#include "ug/focus.h"
#include "ug/keys.h"
#include "ug/main_list.h"
#include "ug/markup.h"
#include "ug/pending_focus.h"
#include "ug/screen_reader.h"
#include "vesk/device_actions.h"
#include "vesk/device_list.h"
#include "vesk/device_table.h"

bool b_disable_focus;
guint toastTimerTag;

static const char *const kPopupStyle = "P_PopupBasicBottom_02";
static const char *const kLabelStyle = "popup/P_PopupBasicBottom_02";

/* How long the toast is up. The notify hides it by its own clock; the timeout gives the focus back. */
constexpr double kToastSeconds = 3.0;
constexpr guint kToastMilliseconds = 3000;

/* A toast whose text is wider than this, in pixels, gets several lines. */
constexpr int kSingleLineWidth = 990;

/* The toast on the host's window. It is left to the window when the module closes before its end. */
static Evas_Object *toast;

void forget_toast()
{
    toast = nullptr;
}

static void toast_deleted(void * /*data*/, Evas * /*canvas*/, Evas_Object *obj, void * /*event_info*/)
{
    if (toast == obj)
        forget_toast();
}

static Evas_Object *add_question(Evas_Object *popup)
{
    char text[300];
    snprintf(text, sizeof text, "<align=center><font=CorvaneSans_400:style=Regular font_size=30>%s</font></align>",
             translated("COM_SID_DELETE_SELECTED_DEVICES"));
    Evas_Object *label = elm_label_add(popup);
    elm_object_style_set(label, kLabelStyle);
    elm_object_text_set(label, text);
    evas_object_show(label);
    elm_object_content_set(popup, label);
    return label;
}

static Evas_Object *add_answer(AppData *app, const char *part, const char *id, Evas_Smart_Cb clicked)
{
    Evas_Object *button = add_popup_button(app->delete_popup, part, translated(id), clicked, app);
    elm_access_info_cb_set(button, ELM_ACCESS_INFO, _delete_screen_reader, nullptr);
    return button;
}

void _create_delete_popup(AppData *app)
{
    /* A second touch may come before the confirmation covers the button; one that is forgotten could not be closed. */
    delete_object(app->delete_popup);
    b_delete_popup_entered = false;
    LOG_I("Enter");
    if (app->action_aux)
        evas_object_hide(app->action_aux);
    dim_behind(app->base, 50);

    Evas_Object *popup = elm_popup_add(app->base);
    elm_object_style_set(popup, kPopupStyle);
    app->delete_popup = popup;
    add_question(popup);
    add_answer(app, "button1", "COM_TV_SID_YES", _deletebutton_cb);
    Evas_Object *no = add_answer(app, "button2", "COM_TV_SID_NO", _cancelbutton_cb);
    elm_object_focus_set(no, EINA_TRUE);
    evas_object_event_callback_add(popup, EVAS_CALLBACK_KEY_DOWN, _close_delete_popup_on_returnkey, app);
    evas_object_show(popup);
    /* A popup that is shown moves the focus to its first button; the default is No. */
    elm_object_focus_set(no, EINA_TRUE);
    LOG_I("Exit");
}

static void dismiss(AppData *app)
{
    remove_popup(app->delete_popup);
    give_focus(app->genlist);
    undim_base(app);
}

void _cancelbutton_cb(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    dismiss(static_cast<AppData *>(data));
}

void _close_delete_popup_on_returnkey(void *data, Evas * /*canvas*/, Evas_Object * /*obj*/, void *event_info)
{
    const char *key = key_name(event_info);
    if (!key) {
        LOG_W("event null");
        return;
    }
    LOG_I("Key[%s]", key);
    /* The handler goes with the popup that it stands on. */
    if (is_close_key(key) || is_back_key(key))
        dismiss(static_cast<AppData *>(data));
    LOG_I("Exit");
}

static void delete_marked(AppData *app)
{
    const int rows = std::clamp(device_count, 0, kTableCapacity);
    const auto marked = std::count(b_remove_status, b_remove_status + rows, true);
    if (rows == 0 || marked == rows) {
        LOG_W("Removing all [%d] devices and list is empty", device_count);
        rdm_remove_all();
        return;
    }
    /* From the end, so that the rows before keep their index. */
    for (int row = rows - 1; row >= 0; --row) {
        if (b_remove_status[row])
            vesk_set_device(&app->table[row], kActionDelete);
    }
}

/* What the toast says: how many rows were marked, whatever the service made of them. */
static std::string toast_text()
{
    if (device_count == 0)
        return translated("COM_SID_ALL_DEVICES_DELTED");
    return text_with("COM_SID_MIX_DEVICES_DELETED", count_text(g_selected_count));
}

static Evas_Object *add_toast_layout(AppData *app, const std::string &text)
{
    Evas_Object *layout = elm_layout_add(app->win);
    elm_layout_theme_set(layout, "layout", "C_PopupToast_White", "SingleLine");
    elm_object_text_set(layout, text.c_str());
    evas_object_show(layout);
    int width = 0;
    edje_object_part_geometry_get(elm_layout_edje_get(layout), "elm.text", nullptr, nullptr, &width, nullptr);
    if (width > kSingleLineWidth)
        elm_layout_theme_set(layout, "layout", "C_PopupToast_White", "MultiLine");
    return layout;
}

/* A toast that is still up makes room for the next one: its clock would end that one early, or outlive the module. */
static void end_toast()
{
    if (toastTimerTag != 0 && g_main_context_find_source_by_id(nullptr, toastTimerTag))
        g_source_remove(toastTimerTag);
    delete_object(toast);
}

static void _remove_toast(AppData *app)
{
    LOG_I("Enter");
    b_disable_focus = true;
    elm_object_focus_set(app->close_button, EINA_FALSE);
    elm_object_focus_set(app->edit_button, EINA_FALSE);

    vesk_read_all();
    refresh_genlist(app);
    vesk_get_table(&app->table);
    for (Evas_Object *object : {app->genlist, app->edit_button, app->close_button})
        elm_object_focus_allow_set(object, EINA_FALSE);

    const std::string text = toast_text();
    Evas_Object *layout = add_toast_layout(app, text);
    end_toast();
    toast = elm_notify_add(app->win);
    evas_object_event_callback_add(toast, EVAS_CALLBACK_DEL, toast_deleted, nullptr);
    elm_notify_align_set(toast, 0.5, 0.5);
    elm_object_content_set(toast, layout);
    evas_object_size_hint_weight_set(toast, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    elm_access_say(text.c_str());
    evas_object_show(toast);
    elm_notify_timeout_set(toast, kToastSeconds);
    toastTimerTag = g_timeout_add(kToastMilliseconds, __toast_timer_expired, app);
    LOG_I("Exit");
}

void _deletebutton_cb(void *data, Evas_Object * /*obj*/, void * /*event_info*/)
{
    AppData *app = static_cast<AppData *>(data);
    LOG_I("Enter");
    delete_marked(app);
    remove_popup(app->delete_popup);
    _remove_toast(app);
    if (device_count != 0) {
        show_normal_buttons(app);
        delete_object(app->exit_button);
    }
    LOG_I("Exit");
}

gboolean __toast_timer_expired(gpointer data)
{
    AppData *app = static_cast<AppData *>(data);
    b_disable_focus = false;
    LOG_I("Enter");
    delete_object(toast);
    elm_object_focus_allow_set(app->edit_button, EINA_TRUE);
    elm_object_focus_allow_set(app->close_button, EINA_TRUE);
    undim_base(app);
    if (device_count != 0) {
        focus_list(app);
        set_main_focus_chain(app);
    }
    LOG_I("Exit");
    return G_SOURCE_REMOVE;
}
