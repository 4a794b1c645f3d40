#include "bluez_choice.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "bluez_record.h"
#include "device.h"
#include "port_error.h"

namespace vesk_port {

BluezChoice BluezChoice::from_environment()
{
    const auto text_of = [](const char *variable) {
        const char *value = std::getenv(variable);
        return std::string(value ? value : "");
    };
    BluezChoice choice;
    choice.adapter = text_of("VESK_BLUEZ_ADAPTER");
    const std::string keep = text_of("VESK_BLUEZ_KEEP");
    constexpr const char *kSeparators = ", ";
    for (size_t at = keep.find_first_not_of(kSeparators); at != keep.npos;) {
        const size_t end = std::min(keep.find_first_of(kSeparators, at), keep.size());
        const std::string address = normal_mac(keep.substr(at, end - at));
        if (!is_address(address))
            throw PortError(-EINVAL, "\"" + keep.substr(at, end - at) +
                                         "\" in VESK_BLUEZ_KEEP is no address; give addresses such as "
                                         "AA:BB:CC:DD:EE:FF with commas between them.");
        choice.keep.push_back(address);
        at = keep.find_first_not_of(kSeparators, end);
    }
    return choice;
}

bool BluezChoice::takes(const std::string &adapter_path, const std::string &address) const
{
    return adapter.empty() || adapter_path.ends_with("/" + adapter) || address == normal_mac(adapter);
}

bool BluezChoice::keeps(const std::string &device_address) const
{
    return std::ranges::find(keep, device_address) != keep.end();
}

} // namespace vesk_port
