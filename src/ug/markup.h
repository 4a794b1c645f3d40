#pragma once
/* Texts as the toolkit wants them. */

#include <Elementary.h>

#include <cstring>
#include <string>

#include "ug/settings_watch.h"

/* The word that aligns a paragraph at the side where reading begins. */
inline const char *align_word()
{
    return gbReverse ? "right" : "left";
}

/* A text that the toolkit frees. */
inline char *new_text(const std::string &text)
{
    return strdup(text.c_str());
}

/* The text that a realized row shows in a theme part; empty when it shows none. */
inline std::string row_text(const Elm_Object_Item *item, const char *part)
{
    const char *text = item ? elm_object_item_part_text_get(item, part) : nullptr;
    return text ? text : "";
}
