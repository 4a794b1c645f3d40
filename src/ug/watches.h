#pragma once
/* The module's callbacks at the platform, and the end of them. */

#include <rdm.h>

struct AppData;

/* Asks the registered-device service to report changes to `callback`, and takes that back. The handle is kept in
 * gVeskHandler. */
void register_rdm_callback(rdm_callback callback, AppData *app);
void deregister_rdm_callback();

/* Asks to be told about turns of the menu until the module closes itself. */
void watch_orientation();

/* Closes the module: ends the watches, closes the registered-device service and asks the host to destroy the gadget,
 * which it does later from its main loop. Every way out of the module ends here. */
void destroy_ug(AppData *app);
