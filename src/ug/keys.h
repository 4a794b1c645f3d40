#pragma once
/* Names of the remote control's keys. */

#include <Evas.h>

#include "combinate.h"

/* Names are compared over the length of the literal only, so that a longer name that begins with it is the same key;
 * remote controls rely on it. */
inline bool is_back_key(const char *key)
{
    return StartsWith("XF86Back", key);
}

inline bool is_close_key(const char *key)
{
    return StartsWith("XF86Close", key);
}

inline bool is_up_key(const char *key)
{
    return StartsWith("Up", key);
}

inline bool is_down_key(const char *key)
{
    return StartsWith("Down", key);
}

/* The key's name of a key-down event, or null when there is no event or no name. The event owns it. */
inline const char *key_name(const void *event_info)
{
    return event_info ? static_cast<const Evas_Event_Key_Down *>(event_info)->keyname : nullptr;
}
