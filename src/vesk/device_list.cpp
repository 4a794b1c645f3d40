#include "vesk/device_list.h"

#include <cstring>
#include <rdm.h>
#include <utility>

#include "log.h"
#include "vesk/device_table.h"

static void take_mac(char *field, const char *mac, uint32_t *state, uint32_t bit)
{
    if (!vesk_check_valid_mac(mac))
        return;
    memcpy(field, mac, kMacFieldSize - 1);
    *state |= bit;
}

static DeviceEntry entry_of(RdmDeviceInfo *info)
{
    DeviceEntry entry{};
    vesk_convert_capital_mac(info->bt_mac);
    vesk_convert_capital_mac(info->wifi_mac);
    vesk_convert_capital_mac(info->p2p_mac);
    take_mac(entry.bt_mac, info->bt_mac, &entry.state, kStateBluetooth);
    take_mac(entry.wifi_mac, info->wifi_mac, &entry.state, kStateWifi);
    take_mac(entry.p2p_mac, info->p2p_mac, &entry.state, kStateP2p);
    memcpy(entry.name, info->name, kNameMaxLength);
    entry.type = info->type;
    entry.icon = info->icon;
    if (info->status != 1)
        entry.state |= kStateAllowed;
    return entry;
}

static void vesk_get_RDMList()
{
    RdmDeviceInfo *list = nullptr;
    size_t count = 0;
    if (rdm_get_list(&list, &count) != 0) {
        LOG_E("[VESK] RDM List read fail");
        return;
    }
    LOG_W("\tRDM Count is %zu", count);
    if (count >= kTableCapacity) {
        LOG_E("\tTABLE FULL");
        count = kTableCapacity;
    }
    if (count == 0 || !list) {
        LOG_W("\tRDM List is empty");
        return;
    }
    for (size_t i = 0; i < count; ++i) {
        RdmDeviceInfo *info = &list[i];
        LOG_I("\tRDM >> Index[%zu] NAME[%.128s] BT[%.18s] WIFI[%.18s] P2P[%.18s] TYPE[%d] ICON[%d] Status[%s]", i,
              info->name, info->bt_mac, info->wifi_mac, info->p2p_mac, info->type, info->icon,
              vesk_status_name(info->status));
        gVeskTable[i] = entry_of(info);
    }
    rdm_free_list(list);
}

void vesk_sort_table()
{
    const int count = vesk_count_rows();
    if (count < 2) {
        LOG_I("Sorting is not needed.");
        return;
    }
    LOG_I("Sorting table...");
    for (int i = 0; i < count - 1; ++i) {
        DeviceEntry &row = gVeskTable[i];
        for (int j = i + 1; j < count; ++j) {
            DeviceEntry &other = gVeskTable[j];
            if ((row.state & kStateAllowed) || !(other.state & kStateAllowed))
                continue;
            LOG_I("Swapped [%s:0x%x] [%s:0x%x]", row.name, row.state, other.name, other.state);
            std::swap(row, other);
        }
    }
}

void vesk_read_all()
{
    memset(gVeskTable, 0, sizeof gVeskTable);
    vesk_get_RDMList();
    vesk_sort_table();
    vesk_print_table();
}
