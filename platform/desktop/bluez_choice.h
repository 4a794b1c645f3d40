#pragma once
/* Which adapters and devices the user leaves to others. */

#include <string>
#include <vector>

namespace vesk_port {

struct BluezChoice {
    std::string adapter;           /* a name such as hci0, or an address; empty: all adapters */
    std::vector<std::string> keep; /* addresses of devices that are never listed: upper case with ':' */

    /* As VESK_BLUEZ_ADAPTER and VESK_BLUEZ_KEEP say. Throws PortError for what is no address. */
    static BluezChoice from_environment();

    /* Whether the adapter's devices are listed; its path, and its address where that is known. */
    bool takes(const std::string &adapter_path, const std::string &address) const;

    bool keeps(const std::string &device_address) const;
};

} // namespace vesk_port
