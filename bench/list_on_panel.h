#pragma once
/* The device list as it stands on the panel, whoever made it. */

#include <Elementary.h>
#include <string>

namespace bench {

/* The last list with rows that was made, or null. */
Evas_Object *list_on_panel();

/* Whether the panel shows a list of that many rows, and as many of them as fit are drawn. */
bool shows_rows(int count);

/* What a row of the list shows as its status; empty when the row is not drawn. */
std::string status_shown(int row);

/* The row with the focus, from 0, or -1. */
int focused_row();

} // namespace bench
