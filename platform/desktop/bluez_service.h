#pragma once
/* The Bluetooth devices that this machine knows, as registered devices: BlueZ behind DeviceService. */

#include <memory>
#include <optional>

#include "bluez_bus.h"
#include "bluez_cache.h"
#include "device_service.h"

namespace vesk_port {

class BluezService : public DeviceService, private BluezBus::Listener {
public:
    /* Succeeds without a bus or bluetoothd too: devices are listed once both are there. */
    explicit BluezService(BluezChoice choice);

    std::vector<Device> list() override;
    void set_status(std::string_view mac, MacKind kind, int32_t status) override;

    /* The device leaves the list at once. bluetoothd may take seconds; when it refuses, the device is listed again. */
    void remove(std::string_view mac, MacKind kind) override;
    void remove_all() override;
    void on_changed(std::function<void()> changed) override;

    /* --- Beside the interface, for programs --- */

    /* list() without its limit. */
    std::vector<Device> all();

    void rename(std::string_view mac, const std::string &name);

    /* Waits until all removals have been answered, and throws PortError for the first that was refused since the last
     * call. */
    void finish_removals();

    /* Why devices are missing that should be there; nothing when all is well. */
    std::optional<PortError> trouble() const;

    std::vector<BluezAdapter> adapters() const { return cache_.adapters(); }

    /* Whether the adapter's devices are listed. */
    bool uses(const BluezAdapter &adapter) const { return cache_.choice().takes(adapter.path, adapter.address); }
    std::string name_at(const std::string &path) const { return cache_.name_at(path); }
    BluezBus &bus() { return *bus_; }

private:
    void managed_objects(GVariant *reply) override;
    void interfaces_added(const std::string &path, GVariant *signal) override;
    void interfaces_removed(const std::string &path, GVariant *signal) override;
    void properties_changed(const std::string &path, GVariant *signal) override;
    void daemon_lost() override;

    void need_daemon() const;
    void start_removal(std::string_view mac);
    void look_again();

    BluezCache cache_;
    std::function<void()> changed_;
    GlibSource timer_;      /* when to look at the cache again */
    unsigned removals_ = 0; /* under way */
    std::optional<PortError> refused_;
    std::unique_ptr<BluezBus> bus_; /* last, since its end must not find the others gone */
};

} // namespace vesk_port
