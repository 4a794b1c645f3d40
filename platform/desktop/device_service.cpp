#include "device_service.h"

#include "paths.h"
#include "sqlite_service.h"

namespace vesk_port {

std::unique_ptr<DeviceService> make_device_service()
{
    return std::make_unique<SqliteService>(devices_file());
}

} // namespace vesk_port
