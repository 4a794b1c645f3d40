/* A module that does not come up: it refuses to start, or builds no screen. */

#include "ui_gadget.h"

extern "C" {

#ifdef REFUSES_INIT
__attribute__((visibility("default"))) int UG_MODULE_INIT(struct ug_module_ops *)
{
    return -1;
}
#else
__attribute__((visibility("default"))) int UG_MODULE_INIT(struct ug_module_ops *ops)
{
    ops->create = [](ui_gadget_h, enum ug_mode, app_control_h, void *) -> void * { return nullptr; };
    return 0;
}
#endif

__attribute__((visibility("default"))) void UG_MODULE_EXIT(struct ug_module_ops *) {}

} // extern "C"
