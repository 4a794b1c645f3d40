#pragma once
/* The user's decision about one device, carried to the registered-device service. */

struct DeviceEntry;

enum DeviceAction { kActionAllow = 0, kActionDeny = 1, kActionDelete = 3 };

/* Allows, denies or deletes the device of a table row (a DeviceAction). The table stays as it is: the service reports
 * the change through its callback, or the caller reads the list again. A refusal is logged; a failure of the service
 * shows only in the missing "[VESKAUTOTC]" line, which test harnesses follow. */
void vesk_set_device(const DeviceEntry *entry, int action);
