#pragma once
/* Where the registered devices come from: what stands behind the calls of rdm.h. */

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device.h"

namespace vesk_port {

/* What a panel can show. A user who marks all rows has seen no more than these. */
inline constexpr size_t kListedDevices = 50;

/* One service, open as long as the object lives. All of it belongs to the main loop's thread. The functions throw
 * PortError with a sentence where they fail. */
class DeviceService {
public:
    DeviceService() = default;
    virtual ~DeviceService() = default;
    DeviceService(const DeviceService &) = delete;
    DeviceService &operator=(const DeviceService &) = delete;

    /* The first kListedDevices of all, in the service's order. */
    virtual std::vector<Device> list() = 0;

    /* `status` is 0 (allow) or 1 (deny). */
    virtual void set_status(std::string_view mac, MacKind kind, int32_t status) = 0;
    virtual void remove(std::string_view mac, MacKind kind) = 0;

    /* Removes what list() lists. */
    virtual void remove_all() = 0;

    /* `changed` is called from the main loop (GLib's default context) when list() may answer something else than
     * before, never inside another call of this object. Several changes may come as one call, and a call may come
     * without a change. */
    virtual void on_changed(std::function<void()> changed) = 0;
};

enum class ServiceKind { sqlite, bluez };

/* The service of that name: "sqlite" or "bluez". Throws PortError for another. */
ServiceKind service_kind_of(const std::string &name);

/* What VESK_SERVICE says; sqlite where it is unset. Throws PortError. */
ServiceKind chosen_service();

/* Opens the chosen service. Throws PortError. */
std::unique_ptr<DeviceService> make_device_service();

} // namespace vesk_port
