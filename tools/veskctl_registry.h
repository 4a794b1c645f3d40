#pragma once
/* The registered devices that the commands work on, whichever service they come from. */

#include <memory>
#include <string>
#include <vector>

#include "desktop/device_store.h"

namespace veskctl {

/* What every service can do. The functions throw PortError. */
class DeviceRegistry {
public:
    DeviceRegistry() = default;
    virtual ~DeviceRegistry() = default;
    DeviceRegistry(const DeviceRegistry &) = delete;
    DeviceRegistry &operator=(const DeviceRegistry &) = delete;

    /* All devices in the service's order. */
    virtual std::vector<vesk_port::Device> list() = 0;

    /* Change one of list(). */
    virtual void set_status(const vesk_port::Device &device, int32_t status) = 0;
    virtual void rename(const vesk_port::Device &device, const std::string &name) = 0;
    virtual void remove(const vesk_port::Device &device) = 0;
};

/* The service that the programs use. */
std::unique_ptr<DeviceRegistry> open_registry();

/* The file's table, for what only a table of our own can do: take devices that nobody has paired. */
vesk_port::DeviceStore open_store();

/* The device that one of its addresses or its name, when no other has it, stands for. Throws PortError. */
vesk_port::Device find_device(DeviceRegistry &registry, const std::string &what);

} // namespace veskctl
