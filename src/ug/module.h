#pragma once
/* Life of the module between the host's calls. */

#include <ui_gadget.h>

#include "ug/platform_facts.h"
#include "ug/watches.h"

struct AppData;

/* The host's lifecycle callbacks; `priv` is the AppData. _on_create returns the base popup, or null when a handle is
 * missing or the window or the popup cannot be had. */
void *_on_create(ui_gadget_h ug, enum ug_mode mode, app_control_h app_control, void *priv);
void _on_start(ui_gadget_h ug, app_control_h app_control, void *priv);
void _on_pause(ui_gadget_h ug, app_control_h app_control, void *priv);
void _on_resume(ui_gadget_h ug, app_control_h app_control, void *priv);
void _on_destroy(ui_gadget_h ug, app_control_h app_control, void *priv);
