#pragma once
/* Life of the module between the host's calls. */

#include <ui_gadget.h>

struct AppData;

/* The host's lifecycle callbacks; `priv` is the AppData. _on_create returns the base popup, or null when a handle is
 * missing or the window or the popup cannot be had. */
void *_on_create(ui_gadget_h ug, enum ug_mode mode, app_control_h app_control, void *priv);
void _on_start(ui_gadget_h ug, app_control_h app_control, void *priv);
void _on_pause(ui_gadget_h ug, app_control_h app_control, void *priv);
void _on_resume(ui_gadget_h ug, app_control_h app_control, void *priv);
void _on_destroy(ui_gadget_h ug, app_control_h app_control, void *priv);

/* Closes the module: ends the watches, closes the registered-device service and asks the host to destroy the gadget,
 * which it does later from its main loop. Every way out of the module ends here. */
void destroy_ug(AppData *app);

/* Stores the platform's integer `key` in `*out`, or 0 when it cannot be read. */
void get_system_info_int(const char *key, int *out);
