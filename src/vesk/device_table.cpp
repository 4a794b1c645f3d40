#include "vesk/device_table.h"

#include <cstring>
#include <string>

#include "log.h"

/* The module's state is global by design: the platform loads one instance for a process, and the toolkit's and the
 * service's callbacks reach it without a context of their own. reset_module_state brings all of it back to what it is
 * right after loading. */
DeviceEntry gVeskTable[kTableCapacity];
int32_t device_count = -1;

const char *vesk_status_name(int32_t status)
{
    return status == 0 ? "Allow" : "Deny";
}

int vesk_count_rows()
{
    int count = 0;
    while (count < kTableCapacity && gVeskTable[count].state != 0)
        ++count;
    return count;
}

int vesk_get_table(DeviceEntry **out)
{
    *out = gVeskTable;
    device_count = vesk_count_rows();
    return device_count;
}

bool vesk_check_valid_mac(const char *mac)
{
    return strnlen(mac, kMacFieldSize) == kMacFieldSize - 1 && strcmp(mac, "00:00:00:00:00:00") != 0;
}

void vesk_convert_capital_mac(char *mac)
{
    const size_t length = strnlen(mac, kMacFieldSize);
    if (length != kMacFieldSize - 1) {
        if (length > 0)
            LOG_W("Incorrect mac address form >> [%17.18s]", mac);
        memset(mac, 0, kMacFieldSize);
        return;
    }
    for (size_t i = 0; i < length; ++i) {
        if (mac[i] >= 'a' && mac[i] <= 'z')
            mac[i] = static_cast<char>(mac[i] - 'a' + 'A');
        else if (mac[i] == '-')
            mac[i] = ':';
    }
}

void vesk_print_table()
{
    const int count = vesk_count_rows();
    if (count == 0) {
        LOG_I("[VESK] Table is empty");
        return;
    }
    LOG_I("\t%s VESK Table [%3d/%3d]", std::string(102, '=').c_str(), count, kTableCapacity);
    for (int i = 0; i < count; ++i)
        vesk_print_item(&gVeskTable[i]);
    LOG_I("\t%s END", std::string(118, '=').c_str());
}

void vesk_print_item(const DeviceEntry *row)
{
    LOG_I("\tNAME[%20.129s] BT[%17.18s] WIFI[%17.18s] P2P[%17.18s] TYPE[%d] ICON[%d] STATE[%2d]", row->name,
          row->bt_mac, row->wifi_mac, row->p2p_mac, row->type, row->icon, static_cast<int>(row->state));
}
