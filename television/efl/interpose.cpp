/* Functions that stand before the toolkit's own for the module. A program that exports its symbols is asked first when
   a shared object looks a function up; each function here does the host's part and passes the call on. Other libraries'
   calls come by as well, and are passed on as they are. */

#include "television/efl/interpose.h"

#include <Elementary.h>
#include <dlfcn.h>
#include <filesystem>

#include "desktop/fence.h"
#include "television/efl/mending.h"
#include "television/pictures.h"
#include "television/reader/reader.h"
#include "television/share.h"
#include "television/toolkit.h"

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
    return vesk_port::fenced(__func__, false, [caller] {
        static const auto toolkit = folder_of(reinterpret_cast<const void *>(&elm_init));
        return folder_of(caller) == toolkit;
    });
}

using vesk::efl::Focus;
using vesk::efl::Mending;

/* The present panel's mending gets what a module has called `function` for; without a panel nobody does. */
template <class Part> void mend(const char *function, Part part)
{
    if (auto *mending = Mending::current())
        vesk_port::fenced(function, [&] { part(*mending); });
}

/* Whether the focus that a module has asked for may be asked of the toolkit. */
template <class Part> bool allows(const char *function, const void *caller, Part part)
{
    auto *mending = Mending::current();
    return !mending || is_toolkit(caller) || vesk_port::fenced(function, true, [&] { return part(mending->focus); });
}

/* The desktop's copy of a file or folder of the television. */
std::string mapped(const char *function, const char *path)
{
    return vesk_port::fenced(function, std::string(path), [path] { return vesk::desktop_path(path); });
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
    PASS_ON(bindtextdomain, domain, mapped(__func__, folder).c_str());
}

Eina_Bool elm_image_file_set(Evas_Object *image, const char *file, const char *group)
{
    elm_image_preload_disabled_set(image, vesk::loads_at_once());
    static const auto next = behind(&elm_image_file_set, "elm_image_file_set");
    const std::string path = file ? mapped(__func__, file) : "";
    const Eina_Bool shown = next(image, file ? path.c_str() : nullptr, group);
    if (file)
        vesk_port::fenced(__func__, [&] { vesk::picture_asked(path, shown); });
    return shown;
}

Evas_Object *elm_popup_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_popup_add, "elm_popup_add");
    auto *popup = next(parent);
    if (popup)
        mend(__func__, [popup](Mending &mending) { mending.popup_added(popup); });
    return popup;
}

Evas_Object *elm_genlist_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_genlist_add, "elm_genlist_add");
    auto *list = next(parent);
    if (list)
        mend(__func__, [list](Mending &mending) { mending.key_taker_added(list); });
    return list;
}

Evas_Object *elm_button_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_button_add, "elm_button_add");
    auto *button = next(parent);
    if (button)
        mend(__func__, [button](Mending &mending) { mending.key_taker_added(button); });
    return button;
}

Evas_Object *elm_check_add(Evas_Object *parent)
{
    static const auto next = behind(&elm_check_add, "elm_check_add");
    auto *check = next(parent);
    if (check)
        mend(__func__, [=](Mending &mending) { mending.check_added(check, parent); });
    return check;
}

void elm_object_focus_set(Evas_Object *object, Eina_Bool focus)
{
    if (!allows(__func__, __builtin_return_address(0), [=](Focus &wish) { return wish.asked(object, focus); }))
        return;
    PASS_ON(elm_object_focus_set, object, focus);
}

void evas_object_focus_set(Evas_Object *object, Eina_Bool focus)
{
    if (focus &&
        !allows(__func__, __builtin_return_address(0), [=](const Focus &wish) { return wish.keys_asked(object); }))
        return;
    PASS_ON(evas_object_focus_set, object, focus);
}

void elm_object_focus_allow_set(Evas_Object *object, Eina_Bool allow)
{
    static const auto next = behind(&elm_object_focus_allow_set, "elm_object_focus_allow_set");
    next(object, allow);
    if (!allow)
        mend(__func__, [object](Mending &mending) { mending.focus.forbidden(object); });
}

void elm_object_item_focus_set(Elm_Object_Item *item, Eina_Bool focus)
{
    if (!allows(__func__, __builtin_return_address(0), [=](Focus &wish) { return wish.row_asked(item, focus); }))
        return;
    PASS_ON(elm_object_item_focus_set, item, focus);
}

/* The screen reader's calls. */

Eina_Bool elm_config_access_get(void)
{
    if (vesk::Reader::current() && !is_toolkit(__builtin_return_address(0)))
        return EINA_TRUE;
    static const auto next = behind(&elm_config_access_get, "elm_config_access_get");
    return next();
}

Evas_Object *elm_object_item_access_object_get(const Elm_Object_Item *row)
{
    auto *reader = vesk::Reader::current();
    if (reader && row)
        return vesk_port::fenced<Evas_Object *>(
            __func__, nullptr, [=] { return reader->object_of_row(const_cast<Elm_Object_Item *>(row)); });
    PASS_ON(elm_object_item_access_object_get, row);
}

void elm_access_info_cb_set(Evas_Object *object, int type, Elm_Access_Info_Cb callback, const void *data)
{
    auto *reader = vesk::Reader::current();
    if (reader && type == ELM_ACCESS_INFO) {
        vesk_port::fenced(__func__, [=] { reader->set_callback(object, callback, data); });
        return;
    }
    PASS_ON(elm_access_info_cb_set, object, type, callback, data);
}

void elm_access_say(const char *text)
{
    if (text)
        vesk_port::fenced(__func__, [text] { vesk::say_at_once(text); });
    if (!vesk::Reader::current()) {
        PASS_ON(elm_access_say, text);
    }
}

void ecore_animator_source_set(Ecore_Animator_Source source)
{
    PASS_ON(ecore_animator_source_set, vesk::tick_source(source));
}

} // extern "C"

namespace vesk {

void stand_before_toolkit() {}

} // namespace vesk
