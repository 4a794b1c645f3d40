/* Functions that stand before the toolkit's own for the module. A program that exports its symbols is asked first when
   a shared object looks a function up; each function here does the host's part and passes the call on. Other libraries'
   calls come by as well, and are passed on as they are. */

#include "television/efl/interpose.h"

#include <Elementary.h>
#include <dlfcn.h>
#include <filesystem>

#include "desktop/text.h"
#include "television/efl/focus.h"
#include "television/efl/widgets.h"
#include "television/gadget.h"
#include "television/pictures.h"
#include "television/reader/reader.h"
#include "television/settings_overlay.h"
#include "television/share.h"
#include "television/toolkit.h"
#include "vconf.h"

namespace {

/* The function of that name behind this program. */
template <class Function> Function behind(Function, const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/* The folder of the library or program that some code belongs to. */
std::filesystem::path folder_of(const void *code)
{
    Dl_info info{};
    return dladdr(code, &info) && info.dli_fname ? std::filesystem::path(info.dli_fname).parent_path() : "";
}

/* Whether a call came from the toolkit's own code, which is no wish of a module. The toolkit's libraries call each
   other's callbacks, so any library that is installed beside it counts. */
bool is_toolkit(const void *caller)
{
    static const auto toolkit = folder_of(reinterpret_cast<const void *>(&elm_init));
    return folder_of(caller) == toolkit;
}

} // namespace

/* Calls the function behind this one with these arguments. */
#define PASS_ON(function, ...)                                                                                         \
    static const auto next = behind(&function, #function);                                                             \
    return next(__VA_ARGS__)

extern "C" {

__attribute__((visibility("default"))) char *bindtextdomain(const char *domain, const char *folder) noexcept
{
    if (!folder) {
        PASS_ON(bindtextdomain, domain, folder);
    }
    const std::string mapped = vesk::desktop_path(folder);
    PASS_ON(bindtextdomain, domain, mapped.c_str());
}

Eina_Bool elm_image_file_set(Evas_Object *image, const char *file, const char *group)
{
    const std::string mapped = file ? vesk::desktop_path(file) : "";
    elm_image_preload_disabled_set(image, vesk::loads_at_once());
    static const auto next = behind(&elm_image_file_set, "elm_image_file_set");
    const Eina_Bool shown = next(image, file ? mapped.c_str() : nullptr, group);
    if (file)
        vesk::picture_asked(mapped, shown);
    return shown;
}

Evas_Object *elm_popup_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_popup_add, "elm_popup_add");
    auto *popup = next(parent);
    if (popup)
        vesk::efl::popup_added(popup);
    return popup;
}

Evas_Object *elm_genlist_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_genlist_add, "elm_genlist_add");
    auto *list = next(parent);
    if (list)
        vesk::efl::key_taker_added(list);
    return list;
}

Evas_Object *elm_button_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_button_add, "elm_button_add");
    auto *button = next(parent);
    if (button)
        vesk::efl::key_taker_added(button);
    return button;
}

Evas_Object *elm_check_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_check_add, "elm_check_add");
    auto *check = next(parent);
    if (check)
        vesk::efl::check_added(check, parent);
    return check;
}

void elm_object_focus_set(Evas_Object *object, Eina_Bool focus)
{
    if (!is_toolkit(__builtin_return_address(0)))
        vesk::efl::focus_asked(object, focus);
    PASS_ON(elm_object_focus_set, object, focus);
}

void elm_object_focus_allow_set(Evas_Object *object, Eina_Bool allow)
{
    static const auto next = behind(&elm_object_focus_allow_set, "elm_object_focus_allow_set");
    next(object, allow);
    if (!allow)
        vesk::efl::focus_forbidden(object);
}

void elm_object_item_focus_set(Elm_Object_Item *item, Eina_Bool focus)
{
    if (!is_toolkit(__builtin_return_address(0)))
        vesk::efl::row_asked(item, focus);
    PASS_ON(elm_object_item_focus_set, item, focus);
}

/* The screen reader's calls. */

Eina_Bool elm_config_access_get(void)
{
    if (vesk::reader::is_on() && !is_toolkit(__builtin_return_address(0)))
        return EINA_TRUE;
    static const auto next = behind(&elm_config_access_get, "elm_config_access_get");
    return next();
}

Evas_Object *elm_object_item_access_object_get(const Elm_Object_Item *row)
{
    if (vesk::reader::is_on() && row)
        return vesk::reader::object_of_row(const_cast<Elm_Object_Item *>(row));
    PASS_ON(elm_object_item_access_object_get, row);
}

void elm_access_info_cb_set(Evas_Object *object, int type, Elm_Access_Info_Cb callback, const void *data)
{
    if (vesk::reader::is_on() && type == ELM_ACCESS_INFO) {
        vesk::reader::set_callback(object, callback, data);
        return;
    }
    PASS_ON(elm_access_info_cb_set, object, type, callback, data);
}

/* Weak: a test that wants what the module says at once has a function of its own in this one's place. */
__attribute__((weak)) void elm_access_say(const char *text)
{
    if (text)
        vesk::reader::say(text);
    if (!vesk::reader::is_on()) {
        PASS_ON(elm_access_say, text);
    }
}

void ecore_animator_source_set(Ecore_Animator_Source source)
{
    PASS_ON(ecore_animator_source_set, vesk::tick_source(source));
}

/* Options of the command line come before the stored settings. */

__attribute__((visibility("default"))) int vconf_get_int(const char *key, int *value)
{
    const auto overlay = key && value ? vesk::overlaid_setting(key) : std::nullopt;
    const auto number = overlay ? vesk_port::parse_int(*overlay) : std::nullopt;
    if (number) {
        *value = *number;
        return 0;
    }
    PASS_ON(vconf_get_int, key, value);
}

__attribute__((visibility("default"))) char *vconf_get_str(const char *key)
{
    if (const auto overlay = key ? vesk::overlaid_setting(key) : std::nullopt)
        return vesk_port::allocated_copy(*overlay);
    PASS_ON(vconf_get_str, key);
}

__attribute__((visibility("default"))) int vconf_notify_key_changed(const char *key, vconf_callback_fn callback,
                                                                    void *user_data)
{
    static const auto next = behind(&vconf_notify_key_changed, "vconf_notify_key_changed");
    const int result = next(key, callback, user_data);
    if (result == 0)
        vesk::setting_watched(key, callback);
    return result;
}

__attribute__((visibility("default"))) int vconf_ignore_key_changed(const char *key, vconf_callback_fn callback)
{
    static const auto next = behind(&vconf_ignore_key_changed, "vconf_ignore_key_changed");
    const int result = next(key, callback);
    if (result == 0)
        vesk::setting_left(key, callback);
    return result;
}

} // extern "C"

namespace vesk {

void stand_before_toolkit() {}

} // namespace vesk
