#pragma once
/* A toolkit that refuses, for a program of one source: these stand before the toolkit's own for the module. */

#include <Elementary.h>
#include <dlfcn.h>

/* While set, there are no row classes; rows have no place in their list; there is no row with this number among a
 * list's rows, counted from 0. */
inline bool refuse_row_classes;
inline bool refuse_indexes;
inline int refuse_row = -1;

extern "C" Elm_Genlist_Item_Class *elm_genlist_item_class_new()
{
    static const auto next =
        reinterpret_cast<Elm_Genlist_Item_Class *(*)()>(dlsym(RTLD_NEXT, "elm_genlist_item_class_new"));
    return refuse_row_classes ? nullptr : next();
}

extern "C" Elm_Object_Item *elm_genlist_item_append(Evas_Object *list, const Elm_Genlist_Item_Class *row_class,
                                                    const void *data, Elm_Object_Item *parent,
                                                    Elm_Genlist_Item_Type type, Evas_Smart_Cb selected,
                                                    const void *user)
{
    static const auto next =
        reinterpret_cast<decltype(&elm_genlist_item_append)>(dlsym(RTLD_NEXT, "elm_genlist_item_append"));
    if (refuse_row >= 0 && elm_genlist_items_count(list) == static_cast<unsigned int>(refuse_row))
        return nullptr;
    return next(list, row_class, data, parent, type, selected, user);
}

extern "C" int elm_genlist_item_index_get(const Elm_Object_Item *item)
{
    static const auto next =
        reinterpret_cast<decltype(&elm_genlist_item_index_get)>(dlsym(RTLD_NEXT, "elm_genlist_item_index_get"));
    return refuse_indexes ? 0 : next(item);
}
