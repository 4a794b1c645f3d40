#include "veskctl_registry.h"

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "desktop/paths.h"
#include "desktop/port_error.h"
#include "desktop/text.h"
#include "veskctl_device.h"
#include "veskctl_service.h"

namespace veskctl {

using vesk_port::Device;
using vesk_port::DeviceStore;
using vesk_port::in_quotes;
using vesk_port::PortError;

namespace {

constexpr size_t kShownMatches = 5;

class StoreRegistry : public DeviceRegistry {
public:
    std::vector<Device> list() override { return store_.list(); }
    void set_status(const Device &device, int32_t status) override { store_.set_status(device.id, status); }
    void rename(const Device &device, const std::string &name) override { store_.rename(device.id, name); }
    void remove(const Device &device) override { store_.remove(device.id); }

private:
    DeviceStore store_ = open_store();
};

bool has_address(const Device &device, const std::string &normal)
{
    return std::ranges::any_of(kAddresses, [&](const Address &address) {
        const std::string &mac = device.*address.mac;
        return !mac.empty() && vesk_port::normal_mac(mac) == normal;
    });
}

std::string any_address(const Device &device)
{
    for (const Address &address : kAddresses) {
        if (!(device.*address.mac).empty())
            return vesk_port::escaped(device.*address.mac);
    }
    return "none";
}

template <class Word> std::string enumerated(const std::vector<Device> &devices, Word word)
{
    std::string words;
    for (size_t i = 0; i < devices.size() && i < kShownMatches; ++i)
        words.append(i == 0 ? "" : ", ").append(word(devices[i]));
    return words + (devices.size() > kShownMatches ? ", ..." : "");
}

} // namespace

std::unique_ptr<DeviceRegistry> open_registry()
{
    if (vesk_port::chosen_service() == vesk_port::ServiceKind::bluez)
        return open_bluez_registry();
    return std::make_unique<StoreRegistry>();
}

DeviceStore open_store()
{
    /* Nobody waits at a panel here, so another program gets more time to end its change. */
    return DeviceStore(vesk_port::devices_file(), std::chrono::seconds(2));
}

Device find_device(DeviceRegistry &registry, const std::string &what)
{
    const std::string mac = vesk_port::normal_mac(what);
    std::vector<Device> reached;
    std::vector<Device> named;
    for (Device &device : registry.list()) {
        if (has_address(device, mac))
            reached.push_back(std::move(device));
        else if (device.name == what)
            named.push_back(std::move(device));
    }
    if (reached.size() == 1)
        return reached.front();
    if (!reached.empty())
        throw PortError(-EINVAL, std::to_string(reached.size()) + " devices have the address " + in_quotes(what) +
                                     ": " +
                                     enumerated(reached, [](const Device &device) { return in_quotes(device.name); }) +
                                     "; give the name or another address of one");
    if (named.size() == 1)
        return named.front();
    if (named.empty())
        throw PortError(-ENODEV, "no registered device has the address or name " + in_quotes(what) +
                                     "; see them with: veskctl devices list");
    throw PortError(-EINVAL, std::to_string(named.size()) + " devices are named " + in_quotes(what) +
                                 "; give the address of one: " + enumerated(named, any_address));
}

} // namespace veskctl
