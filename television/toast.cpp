#include "television/toast.h"

#include <string_view>

namespace vesk {

namespace {

bool is_shown_toast(const Evas_Object *object)
{
    const char *type = evas_object_type_get(object);
    return type && std::string_view(type) == "elm_notify" && evas_object_visible_get(object) &&
           elm_notify_timeout_get(object) > 0.0;
}

} // namespace

Evas_Object *shown_toast(const Evas_Object *window)
{
    auto *object = evas_object_top_get(evas_object_evas_get(window));
    while (object && !is_shown_toast(object))
        object = evas_object_below_get(object);
    return object;
}

} // namespace vesk
