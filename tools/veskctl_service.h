#pragma once
/* Which service the commands work on. */

#include <memory>

#include "desktop/bluez_service.h"
#include "veskctl_registry.h"

namespace CLI {
class App;
}

namespace veskctl {

/* The option --service, and the commands that tell of the service. */
void add_service_option(CLI::App &program);
void add_service_commands(CLI::App &program);

/* BlueZ as what the commands work on. Both throw PortError when bluetoothd cannot be asked. */
std::unique_ptr<DeviceRegistry> open_bluez_registry();
std::unique_ptr<vesk_port::BluezService> open_bluez();

/* The command that lets new devices pair. */
void add_pair_command(CLI::App &program);

/* Throws PortError with the reason when `command`, which works on the device file alone, does not fit the service. */
void need_device_file(const char *command);

} // namespace veskctl
