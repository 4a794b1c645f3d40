/* The names of the module that programs outside this project reach, each by its address and with its exact type. */

#include <Elementary.h>
#include <cstddef>
#include <cstdint>
#include <glib.h>

#include "combinate.h"
#include "ug/action_popup.h"
#include "ug/app_data.h"
#include "ug/app_keys.h"
#include "ug/delete_popup.h"
#include "ug/detail_popup.h"
#include "ug/device_icons.h"
#include "ug/device_list_screen.h"
#include "ug/edit_mode.h"
#include "ug/live_updates.h"
#include "ug/module.h"
#include "ug/screen_reader.h"
#include "ug/service_list.h"
#include "ug/settings_watch.h"
#include "vesk/device_actions.h"
#include "vesk/device_list.h"
#include "vesk/device_services.h"
#include "vesk/device_table.h"
#include "vesk/product_name.h"

using Smart = void(void *data, Evas_Object *obj, void *event_info);
using Event = void(void *data, Evas *canvas, Evas_Object *obj, void *event_info);
using Text = char *(void *data, Evas_Object *obj, const char *part);
using Content = Evas_Object *(void *data, Evas_Object *obj, const char *part);
using Reader = char *(void *data, Evas_Object *obj);
using Lifecycle = void(ui_gadget_h ug, app_control_h app_control, void *priv);

extern Smart *const names_smart[] = {
    Clicked_outside_app_cb,
    genlistRealizedCb,
    _create_popup,
    _item_selected_cb_tablo,
    subpopupRealizedCb,
    _editbutton_cb,
    _checkbox_cb,
    _edit_item_realized_cb,
    _closebutton_cb,
    _deletebutton_cb,
    _cancelbutton_cb,
    _close_button_cb,
    Close_detail_popup_On_touch_outside,
    _service_genlist_cb,
    genlistRealizedCbDetail,
    _service_item_focus_cb,
    _service_item_unfocus_cb,
};
extern Event *const names_event[] = {
    Close_app_On_returnKey,          _item_selected_cb, Close_popup_On_returnKey, _close_delete_popup_on_returnkey,
    Close_detail_popup_On_returnKey,
};
extern Text *const names_text[] = {_item_label_get, _item_labell_get, _service_item_label_get};
extern Content *const names_content[] = {_item_content_get, _checkbox_content_get, _service_item_content_get};
extern Reader *const names_reader[] = {
    _detail_screen_reader, _noitem_screen_reader, _list_reader, _subpopup_screen_reader, _delete_screen_reader,
};
extern Lifecycle *const names_lifecycle[] = {_on_start, _on_pause, _on_resume, _on_destroy};

extern void (*const names_plain[])() = {vesk_print_table, vesk_read_all, vesk_sort_table, IsReveseOSD};
extern void (*const names_of_record[])(AppData *) = {
    destroy_ug,     vesk_refresh_list,    refresh_genlist,   _create_c_popup_right,
    _item_selected, _create_delete_popup, show_detail_popup,
};
extern bool (*const names_question[])() = {is_portrait_mode, check_selected_any};

extern char *(*const names_combinate_string)(const char *, const char *) = combinate_string;
extern bool (*const names_starts_with)(const char *, const char *) = StartsWith;
extern int (*const names_get_table)(DeviceEntry **) = vesk_get_table;
extern bool (*const names_check_valid_mac)(const char *) = vesk_check_valid_mac;
extern void (*const names_convert_capital_mac)(char *) = vesk_convert_capital_mac;
extern void (*const names_print_item)(const DeviceEntry *) = vesk_print_item;
extern void (*const names_set_device)(const DeviceEntry *, int) = vesk_set_device;
extern char *(*const names_get_product_name)() = get_product_name;
extern unsigned int (*const names_get_service)(const DeviceEntry *) = vesk_get_service;
extern void *(*const names_on_create)(ui_gadget_h, enum ug_mode, app_control_h, void *) = _on_create;
extern void (*const names_get_system_info_int)(const char *, int *) = get_system_info_int;
extern void (*const names_vconf_notify)(keynode_t *, void *) = VconfNotifyCB;
extern void (*const names_set_bg_contrast)(Evas_Object *) = _set_bg_contrast;
extern int (*const names_rdm_callback)(void *, RdmDeviceInfo *) = vesk_rdm_callback;
extern void (*const names_create_genlist)(AppData *, int) = create_genlist;
extern Evas_Object *(*const names_widget_min_set)(Evas_Object *, Evas_Object *, int, int, bool) = widget_min_set;
extern void (*const names_load_device_icon)(Evas_Object *, int32_t, int32_t) = _load_device_icon;
extern gboolean (*const names_toast_timer_expired)(gpointer) = __toast_timer_expired;
extern Eina_Bool (*const names_timer)(void *) = _timer_cb;
extern int (*const names_get_service_count)() = get_service_count;
extern int (*const names_init)(ug_module_ops *) = UG_MODULE_INIT;
extern void (*const names_exit)(ug_module_ops *) = UG_MODULE_EXIT;

extern bool *const names_flags[] = {
    &b_sound_mirroring, &b_is_tablo,     &gbReverse,   &b_popup_expanded, &b_subpopup_entered,
    &b_edit_status,     b_remove_status, &b_check_tts, &b_disable_focus,  &b_delete_popup_entered,
};
extern int32_t *const names_numbers[] = {
    &device_count,      &current_position, &g_subpopup_index, &selected_item_index,
    &subpopup_position, &g_selected_count, &g_checkbox_index, &g_orientation_checkbox_count,
};
extern DeviceEntry (*const names_table)[50] = &gVeskTable;
extern bool (*const names_remove_status)[50] = &b_remove_status;
extern const char *(*const names_services)[5] = &services;
extern AppData **const names_app_data = &app_data;
extern int *const names_handler = &gVeskHandler;
extern Elm_Object_Item **const names_item = &pItem;
extern guint *const names_toast_timer_tag = &toastTimerTag;

int main()
{
    return 0;
}
