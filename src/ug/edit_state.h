#pragma once
/* The state of edit mode: whether it is on, and which rows are marked. */

#include <cstdint>

#include "vesk/device_table.h"

/* Edit mode is on. */
extern bool b_edit_status;

/* Marks for deletion, by table row; cleared when edit mode begins and kept when it ends. */
extern bool b_remove_status[kTableCapacity];

/* Number of marked rows, as the handlers count them. */
extern int32_t g_selected_count;

/* Next slot of AppData::checks, and the number of check boxes made since the last reset. Both run on while the list
 * makes its contents again and again; beyond the slots and marks that exist nothing is read or written. */
extern int32_t g_checkbox_index;
extern int32_t g_orientation_checkbox_count;
