#include "vesk/device_actions.h"

#include <rdm.h>

#include "log.h"
#include "vesk/device_table.h"

namespace {

enum MacKind { kMacBluetooth = 1, kMacWifi = 2, kMacP2p = 3 };

struct Address {
    const char *mac;
    MacKind kind;
};

} // namespace

/* The first valid address in the order in which the service is asked; the mac is null when there is none. */
static Address address_of(const DeviceEntry *entry)
{
    const Address candidates[] = {
        {entry->bt_mac, kMacBluetooth}, {entry->wifi_mac, kMacWifi}, {entry->p2p_mac, kMacP2p}};
    for (const Address &candidate : candidates) {
        if (vesk_check_valid_mac(candidate.mac))
            return candidate;
    }
    return {nullptr, kMacBluetooth};
}

void vesk_set_device(const DeviceEntry *entry, int action)
{
    if (!entry) {
        LOG_W("[VESK] TargetDevice pointer is null");
        return;
    }
    if (entry->state > 255) {
        LOG_W("[VESK] TargetDevice is invalid %d", static_cast<int>(entry->state));
        return;
    }
    const Address address = address_of(entry);
    if (!address.mac) {
        LOG_E("[VESK] Not valid device");
        return;
    }
    LOG_I("bBTmac[%s] bP2Pmac[%s] bWIFImac[%s]", entry->bt_mac, entry->p2p_mac, entry->wifi_mac);
    switch (action) {
    case kActionDeny:
        if (rdm_set_status(address.mac, address.kind, 1) == 0)
            LOG_I("[VESKAUTOTC][DENY]");
        break;
    case kActionDelete:
        if (rdm_remove_device(address.mac, address.kind) == 0)
            LOG_I("[VESKAUTOTC][DELETE]");
        break;
    case kActionAllow:
        if (rdm_set_status(address.mac, address.kind, 0) == 0)
            LOG_I("[VESKAUTOTC][ALLOW]");
        break;
    default:
        LOG_E("[VESK] Invalid user input for set device");
        break;
    }
}
