#pragma once
/* What a host tells the port so that the calls of ui_gadget.h find it. */

#include <functional>

#include "ui_gadget.h"

namespace vesk_port {

/* The window that ug_get_window hands out; it stays the host's. Null when there is none any more. */
void set_gadget_window(void *window);

/* Takes the wish of ug_destroy_me. It only notes it and returns 0, or a negative code when that gadget is not running;
 * the host destroys from its main loop. An empty handler ends that. */
void set_destroy_handler(std::function<int(ui_gadget_h gadget)> handler);

} // namespace vesk_port
