/* A module that starts and never comes back to the main loop. */

#include <unistd.h>

#include "dlog.h"
#include "ui_gadget.h"

extern "C" {

__attribute__((visibility("default"))) int UG_MODULE_INIT(struct ug_module_ops *ops)
{
    ops->create = [](ui_gadget_h, enum ug_mode, app_control_h, void *) -> void * { return ug_get_window(); };
    ops->start = [](ui_gadget_h, app_control_h, void *) {
        __dlog_print(LOG_ID_MAIN, DLOG_INFO, "VESK_LOG", "VESK started.");
        for (;;)
            pause();
    };
    return 0;
}

__attribute__((visibility("default"))) void UG_MODULE_EXIT(struct ug_module_ops *) {}

} // extern "C"
