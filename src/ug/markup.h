#pragma once
/* Texts as the toolkit wants them. */

#include <Elementary.h>
#include <cstdlib>
#include <cstring>
#include <string>

#include "combinate.h"
#include "translate.h"
#include "ug/direction.h"

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

/* The text of the string id with `word` in place of its argument marker. */
inline std::string text_with(const char *id, const std::string &word)
{
    char *text = combinate_string(translated(id), word.c_str());
    std::string result = text ? text : "";
    free(text);
    return result;
}

/* A count as the screens write it: at most four characters. */
inline std::string count_text(int32_t count)
{
    return std::to_string(count).substr(0, 4);
}
