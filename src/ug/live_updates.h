#pragma once
/* Changes that the registered-device service reports while the module is open. */

#include <rdm.h>

#include "ug/main_list.h"

struct AppData;

/* Status callback of the registered-device service; `app` is the AppData. Refreshes the list for the statuses allowed
 * and denied, unless edit mode is on. The result is not used. */
int vesk_rdm_callback(void *app, RdmDeviceInfo *info);

/* Reads the devices again, rebuilds the list and gives it the focus. */
void vesk_refresh_list(AppData *app);
