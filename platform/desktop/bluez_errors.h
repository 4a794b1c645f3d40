#pragma once
/* Failures of the bus and of bluetoothd as the port's errors. */

#include "port_error.h"

typedef struct _GError GError;

namespace vesk_port {

PortError bluez_error(const GError *error);
PortError no_bus_error();
PortError no_daemon_error();

} // namespace vesk_port
