#include "vesk/device_actions.h"

#include <cstring>
#include <rdm.h>

#include "log.h"
#include "vesk/device_table.h"

namespace {

enum MacKind { kMacBluetooth = 1, kMacWifi = 2, kMacP2p = 3 };

/* A copy of a row's address, since the service may have the table read again before its call returns. */
struct Address {
    char mac[kMacFieldSize];
    MacKind kind;
};

} // namespace

/* Stores the first valid address in the order in which the service is asked; false when there is none. */
static bool find_address(const DeviceEntry *entry, Address *address)
{
    const struct {
        const char *mac;
        MacKind kind;
    } candidates[] = {{entry->bt_mac, kMacBluetooth}, {entry->wifi_mac, kMacWifi}, {entry->p2p_mac, kMacP2p}};
    for (const auto &candidate : candidates) {
        if (!vesk_check_valid_mac(candidate.mac))
            continue;
        memcpy(address->mac, candidate.mac, kMacFieldSize);
        address->kind = candidate.kind;
        return true;
    }
    return false;
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
    Address address;
    if (!find_address(entry, &address)) {
        LOG_E("[VESK] Not valid device");
        return;
    }
    LOG_I("bBTmac[%.18s] bP2Pmac[%.18s] bWIFImac[%.18s]", entry->bt_mac, entry->p2p_mac, entry->wifi_mac);
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
