#pragma once
/* What a turn of the menu changes on the open screens. */

#include <vconf.h>

/* Change callback of the orientation: gives what is open the sizes and places of the turned screen. Its arguments are
 * not used. */
void VconfNotifyCB(keynode_t *node, void *user_data);
