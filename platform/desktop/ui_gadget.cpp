#include "ui_gadget.h"

#include <utility>

#include "gadget_host.h"
#include "port_call.h"

namespace vesk_port {

namespace {

void *gadget_window = nullptr;
std::function<int(ui_gadget_h)> destroy_handler;

} // namespace

void set_gadget_window(void *window)
{
    gadget_window = window;
}

void set_destroy_handler(std::function<int(ui_gadget_h)> handler)
{
    destroy_handler = std::move(handler);
}

} // namespace vesk_port

using namespace vesk_port;

void *ug_get_window(void)
{
    void *window = nullptr;
    port_call(__func__, [&] {
        if (!gadget_window)
            throw PortError(-ENODEV, "the host has no window.");
        window = gadget_window;
    });
    return window;
}

int ug_destroy_me(ui_gadget_h ug)
{
    return port_call(__func__, [&] {
        if (!ug || !destroy_handler)
            throw PortError(-EINVAL, ug ? "the host runs no gadget." : "the gadget is missing.");
        const auto handler = destroy_handler;
        if (const int code = handler(ug))
            throw PortError(code, "the host does not run that gadget.");
    });
}
