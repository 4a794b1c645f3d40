#include "device_service.h"

#include <cerrno>
#include <cstdlib>

#include "bluez_service.h"
#include "paths.h"
#include "port_error.h"
#include "sqlite_service.h"

namespace vesk_port {

ServiceKind service_kind_of(const std::string &name)
{
    if (name == "sqlite")
        return ServiceKind::sqlite;
    if (name == "bluez")
        return ServiceKind::bluez;
    throw PortError(-EINVAL, "unknown service \"" + name + "\"; use sqlite or bluez");
}

ServiceKind chosen_service()
{
    const char *name = std::getenv("VESK_SERVICE");
    return name && *name ? service_kind_of(name) : ServiceKind::sqlite;
}

std::unique_ptr<DeviceService> make_device_service()
{
    if (chosen_service() == ServiceKind::bluez)
        return std::make_unique<BluezService>(BluezChoice::from_environment());
    return std::make_unique<SqliteService>(devices_file());
}

} // namespace vesk_port
