#pragma once
/* The services that a device can use, told by the links it has. */

struct DeviceEntry;

/* Bits of the service mask. */
constexpr unsigned int kServiceWifi = 0x1;      /* play mobile content */
constexpr unsigned int kServiceP2p = 0x2;       /* mirroring app */
constexpr unsigned int kServiceBluetooth = 0x4; /* play sound on the device */
constexpr unsigned int kServiceAll = 0x7;       /* shown as the one home-connect service */

/* Texts of the services that the detail popup shows, in display order, filled by get_service_count. Entries behind the
 * count keep old values; nobody frees an entry. */
extern const char *services[5];

/* Returns the service mask of a table row; whether the device is allowed does not enter it. */
unsigned int vesk_get_service(const DeviceEntry *entry);
