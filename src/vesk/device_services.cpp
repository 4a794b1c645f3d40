#include "vesk/device_services.h"

#include "log.h"
#include "vesk/device_table.h"

const char *services[5];

unsigned int vesk_get_service(const DeviceEntry *entry)
{
    unsigned int mask = 0;
    if (entry->state & kStateWifi)
        mask |= kServiceWifi;
    if (entry->state & kStateP2p)
        mask |= kServiceP2p;
    if (entry->state & kStateBluetooth)
        mask |= kServiceBluetooth;
    LOG_I("Returned 0x%X", mask);
    return mask;
}
