/* The functions that stand before those of the toolkit and of the platform. */

#include <cstring>
#include <dlfcn.h>
#include <ea.h>
#include <libintl.h>
#include <rdm.h>
#include <system_info.h>
#include <ui_gadget.h>

#include "spy.h"
#include "ug/app_data.h"
#include "ug/app_keys.h"

using namespace spy;

namespace {

/* The function of that name behind this program. */
template <class Function> Function behind(Function, const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/* What an object is to the screen now. */
std::string role(const Evas_Object *object)
{
    if (!object)
        return "nothing";
    if (!app_data)
        return "object";
    return object == app_data->base           ? "base"
           : object == app_data->win          ? "window"
           : object == app_data->genlist      ? "list"
           : object == app_data->edit_button  ? "edit button"
           : object == app_data->close_button ? "close button"
                                              : "object";
}

const char *type_of(const Evas_Object *object)
{
    const char *type = object ? evas_object_type_get(object) : nullptr;
    return type ? type : "";
}

std::string flag_on(const char *what, bool value, const Evas_Object *object)
{
    return what + std::to_string(value) + " on " + role(object);
}

} // namespace

#define BEHIND(function) static const auto next = behind(&function, #function)

extern "C" {

/* --- Signals, focus and dimming --- */

void elm_object_signal_emit(Evas_Object *object, const char *emission, const char *source)
{
    BEHIND(elm_object_signal_emit);
    note({__func__, object, std::string(emission) + " from " + source + " to " + role(object)});
    next(object, emission, source);
}

void elm_object_item_signal_emit(Elm_Object_Item *item, const char *emission, const char *source)
{
    BEHIND(elm_object_item_signal_emit);
    note({__func__, item, std::string(emission) + " from " + source + " to row"});
    next(item, emission, source);
}

void elm_object_focus_next_object_set(Evas_Object *from, Evas_Object *to, Elm_Focus_Direction direction)
{
    BEHIND(elm_object_focus_next_object_set);
    note({__func__, from, "link", {static_cast<double>(direction)}, to});
    next(from, to, direction);
}

void elm_config_focus_highlight_enabled_set(Eina_Bool enabled)
{
    BEHIND(elm_config_focus_highlight_enabled_set);
    note({__func__, nullptr, "focus highlight " + std::to_string(enabled)});
    next(enabled);
}

void elm_win_focus_highlight_enabled_set(Evas_Object *object, Eina_Bool enabled)
{
    BEHIND(elm_win_focus_highlight_enabled_set);
    note({__func__, object, flag_on("focus highlight ", enabled, object)});
    next(object, enabled);
}

/* The television has functions of these names; the linker lets these stand before them. */
void __real_evas_object_focus_set(Evas_Object *object, Eina_Bool focus);
__attribute__((visibility("default"))) /* the linker wants it so, as libraries call the function as well */
void __wrap_evas_object_focus_set(Evas_Object *object, Eina_Bool focus)
{
    note({"evas_object_focus_set", object, flag_on("canvas focus ", focus, object)});
    __real_evas_object_focus_set(object, focus);
}

void __real_elm_object_focus_set(Evas_Object *object, Eina_Bool focus);
void __wrap_elm_object_focus_set(Evas_Object *object, Eina_Bool focus)
{
    note({"elm_object_focus_set", object, flag_on("focus ", focus, object)});
    __real_elm_object_focus_set(object, focus);
}

void __real_elm_object_focus_allow_set(Evas_Object *object, Eina_Bool allow);
void __wrap_elm_object_focus_allow_set(Evas_Object *object, Eina_Bool allow)
{
    note({"elm_object_focus_allow_set", object, flag_on("allow ", allow, object)});
    __real_elm_object_focus_allow_set(object, allow);
}

/* --- Sizes, places and looks --- */

void elm_app_base_scale_set(double scale)
{
    BEHIND(elm_app_base_scale_set);
    note({__func__, nullptr, "base scale " + std::to_string(scale), {scale}});
    next(scale);
}

void evas_object_show(Evas_Object *object)
{
    BEHIND(evas_object_show);
    note({__func__, object, flag_on("show ", true, object)});
    next(object);
}

void evas_object_move(Evas_Object *object, Evas_Coord x, Evas_Coord y)
{
    BEHIND(evas_object_move);
    note({__func__, object, "moved", {static_cast<double>(x), static_cast<double>(y)}});
    next(object, x, y);
}

void evas_object_resize(Evas_Object *object, Evas_Coord width, Evas_Coord height)
{
    BEHIND(evas_object_resize);
    note({__func__, object, "resized", {static_cast<double>(width), static_cast<double>(height)}});
    next(object, width, height);
}

void evas_object_size_hint_min_set(Evas_Object *object, Evas_Coord width, Evas_Coord height)
{
    BEHIND(evas_object_size_hint_min_set);
    note({__func__, object, type_of(object), {static_cast<double>(width), static_cast<double>(height)}});
    next(object, width, height);
}

void elm_popup_align_set(Evas_Object *popup, double horizontal, double vertical)
{
    BEHIND(elm_popup_align_set);
    note({__func__, popup, "popup aligned", {horizontal, vertical}});
    next(popup, horizontal, vertical);
}

Eina_Bool __real_elm_object_style_set(Evas_Object *object, const char *style);
Eina_Bool __wrap_elm_object_style_set(Evas_Object *object, const char *style)
{
    note({"elm_object_style_set", object, style ? style : ""});
    return __real_elm_object_style_set(object, style);
}

/* --- Rows --- */

Elm_Genlist_Item_Class *elm_genlist_item_class_new(void)
{
    BEHIND(elm_genlist_item_class_new);
    return overrides().no_row_classes ? nullptr : next();
}

void elm_genlist_item_class_free(Elm_Genlist_Item_Class *row_class)
{
    BEHIND(elm_genlist_item_class_free);
    note({__func__, row_class, "free row class"});
    next(row_class);
}

Elm_Object_Item *elm_genlist_item_append(Evas_Object *list, const Elm_Genlist_Item_Class *row_class, const void *data,
                                         Elm_Object_Item *parent, Elm_Genlist_Item_Type type, Evas_Smart_Cb selected,
                                         const void *selected_data)
{
    BEHIND(elm_genlist_item_append);
    const int wanted = overrides().no_row;
    if (wanted >= 0 && elm_genlist_items_count(list) == static_cast<unsigned int>(wanted))
        return nullptr;
    if (overrides().on_append)
        overrides().on_append(*const_cast<Elm_Genlist_Item_Class *>(row_class));
    return next(list, row_class, data, parent, type, selected, selected_data);
}

int elm_genlist_item_index_get(const Elm_Object_Item *item)
{
    BEHIND(elm_genlist_item_index_get);
    return overrides().no_indexes ? 0 : next(item);
}

Evas_Object *elm_object_item_track(Elm_Object_Item *item)
{
    BEHIND(elm_object_item_track);
    return overrides().row_area ? overrides().row_area : next(item);
}

void elm_object_item_untrack(Elm_Object_Item *item)
{
    BEHIND(elm_object_item_untrack);
    if (!overrides().row_area)
        next(item);
}

/* --- Callbacks and clocks --- */

void evas_object_event_callback_add(Evas_Object *object, Evas_Callback_Type type, Evas_Object_Event_Cb callback,
                                    const void *data)
{
    BEHIND(evas_object_event_callback_add);
    note({__func__,
          object,
          callback == Close_app_On_returnKey ? "keys of the screen" : "event callback",
          {static_cast<double>(type)},
          reinterpret_cast<const void *>(callback)});
    next(object, type, callback, data);
}

Ecore_Timer *ecore_timer_add(double seconds, Ecore_Task_Cb callback, const void *data)
{
    BEHIND(ecore_timer_add);
    note({__func__, data, "timer", {seconds}, reinterpret_cast<const void *>(callback)});
    return next(seconds, callback, data);
}

/* --- Catalogue --- */

char *dcgettext(const char *domain, const char *id, int category) noexcept
{
    static const auto next =
        reinterpret_cast<char *(*)(const char *, const char *, int)>(dlsym(RTLD_NEXT, "dcgettext"));
    const auto own = overrides().texts.find(id);
    return own == overrides().texts.end() ? next(domain, id, category) : own->second.data();
}

/* --- Platform --- */

int system_info_get_custom_bool(const char *key, bool *value)
{
    BEHIND(system_info_get_custom_bool);
    note({__func__, nullptr, std::string(__func__) + " " + key});
    return next(key, value);
}

int system_info_get_custom_string(const char *key, char **value)
{
    BEHIND(system_info_get_custom_string);
    note({__func__, nullptr, key});
    return next(key, value);
}

int system_info_get_value_string(int key, char **value)
{
    BEHIND(system_info_get_value_string);
    note({__func__, nullptr, std::to_string(key)});
    return next(key, value);
}

int ea_init(int first, int second)
{
    BEHIND(ea_init);
    note({__func__, nullptr, "ea_init " + std::to_string(first) + " " + std::to_string(second)});
    return next(first, second);
}

void *ug_get_window(void)
{
    BEHIND(ug_get_window);
    note({__func__, nullptr, __func__});
    return next();
}

int ug_destroy_me(ui_gadget_h gadget)
{
    BEHIND(ug_destroy_me);
    note({__func__, gadget, __func__});
    return next(gadget);
}

int rdm_remove_device(const char *mac, int mac_kind)
{
    BEHIND(rdm_remove_device);
    note({__func__, nullptr, mac});
    return next(mac, mac_kind);
}

int rdm_remove_all(void)
{
    BEHIND(rdm_remove_all);
    note({__func__, nullptr, "all"});
    return next();
}

} // extern "C"
