#pragma once
/* What lies on a canvas, as the tests of the screens look at it. */

#include <Edje.h>
#include <Elementary.h>
#include <algorithm>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

inline bool is_of_type(const Evas_Object *object, const char *type)
{
    const char *actual = evas_object_type_get(object);
    return actual && std::strcmp(actual, type) == 0;
}

inline void collect_with_members(Evas_Object *object, std::vector<Evas_Object *> &found)
{
    found.push_back(object);
    Eina_List *members = evas_object_smart_members_get(object);
    for (const Eina_List *link = members; link; link = eina_list_next(link))
        collect_with_members(static_cast<Evas_Object *>(eina_list_data_get(link)), found);
    eina_list_free(members);
}

/* An object with everything within it. */
inline std::vector<Evas_Object *> objects_within(Evas_Object *object)
{
    std::vector<Evas_Object *> found;
    collect_with_members(object, found);
    return found;
}

/* Every object of a canvas, the lowest first. */
inline std::vector<Evas_Object *> objects_on(const Evas *canvas)
{
    std::vector<Evas_Object *> found;
    for (Evas_Object *object = evas_object_bottom_get(canvas); object; object = evas_object_above_get(object))
        collect_with_members(object, found);
    return found;
}

/* The popups of a style that are shown, the lowest first. */
inline std::vector<Evas_Object *> shown_popups(const Evas *canvas, const std::string &style)
{
    std::vector<Evas_Object *> found = objects_on(canvas);
    std::erase_if(found, [&](const Evas_Object *object) {
        return !is_of_type(object, "elm_popup") || !evas_object_visible_get(object) ||
               elm_object_style_get(object) != style;
    });
    return found;
}

/* The drawings of `group` within an object. */
inline std::vector<Evas_Object *> drawings(Evas_Object *object, const std::string &group)
{
    std::vector<Evas_Object *> found = objects_within(object);
    std::erase_if(found, [&](const Evas_Object *candidate) {
        if (!is_of_type(candidate, "edje"))
            return true;
        const char *name = nullptr;
        edje_object_file_get(candidate, nullptr, &name);
        return !name || group != name;
    });
    return found;
}

/* The state that a part of a drawing is in. */
inline std::string state_of(const Evas_Object *drawing, const char *part)
{
    double value = 0;
    const char *state = edje_object_part_state_get(drawing, part, &value);
    return state ? state : "";
}

struct Size {
    int width;
    int height;
    bool operator==(const Size &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const Size &size)
{
    return out << size.width << " x " << size.height;
}

inline Size min_of(const Evas_Object *object)
{
    Size size{};
    evas_object_size_hint_min_get(object, &size.width, &size.height);
    return size;
}
