#pragma once
/* The table of registered devices that every screen reads by row index.
 *
 * It is refilled as a whole from the registered-device service and never edited by the screens. A row with state 0
 * ends it: a denied device without a valid address hides itself and all rows behind it, on purpose, and every count
 * of rows follows that rule. */

#include <cstdint>

constexpr int kTableCapacity = 50;  /* rows */
constexpr int kMacFieldSize = 18;   /* bytes: 17 characters and the terminator */
constexpr int kNameMaxLength = 128; /* bytes, without the terminator */

/* Bits of DeviceEntry::state. */
constexpr uint32_t kStateAllowed = 0x1;
constexpr uint32_t kStateWifi = 0x2;
constexpr uint32_t kStateP2p = 0x4;
constexpr uint32_t kStateBluetooth = 0x8;

struct DeviceEntry {
    char name[kNameMaxLength + 1];
    char bt_mac[kMacFieldSize]; /* upper case, separated by ':', or empty; so are the next two */
    char wifi_mac[kMacFieldSize];
    char p2p_mac[kMacFieldSize];
    int32_t type;
    int32_t icon;
    uint32_t state;
};

extern DeviceEntry gVeskTable[kTableCapacity];

/* Rows in use at the last vesk_get_table; -1 before the first. */
extern int32_t device_count;

/* The access status as the log writes it: everything that is not 0 reads as a denial. */
const char *vesk_status_name(int32_t status);

/* Counts the rows in use without touching device_count. */
int vesk_count_rows();

/* Stores the table's address in `*out`, counts the rows in use into device_count and returns the count. */
int vesk_get_table(DeviceEntry **out);

/* True for a text of 17 characters that is not the all-zero address; digits and separators are not examined. */
bool vesk_check_valid_mac(const char *mac);

/* Brings a field of kMacFieldSize bytes, terminated or not, into upper case with ':' as the separator; clears it when
 * it does not hold 17 characters. */
void vesk_convert_capital_mac(char *mac);

/* Writes the rows in use to the log, and one row. */
void vesk_print_table();
void vesk_print_item(const DeviceEntry *row);
