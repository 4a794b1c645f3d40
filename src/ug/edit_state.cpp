#include "ug/edit_state.h"

bool b_edit_status;
bool b_remove_status[kTableCapacity];
int32_t g_selected_count;
int32_t g_checkbox_index;
int32_t g_orientation_checkbox_count;
