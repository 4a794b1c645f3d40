#pragma once
/* Registered-device service: the television's list of external devices and the user's decision about each.
 *
 * Every call belongs to the main-loop thread. A result of 0 is success, a negative number is the error code of the
 * platform. MAC texts may use lower case and '-' separators. */

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One registered device. Text fields are zero-terminated when they are shorter than the field; a reader must not
 * look past the end of a field. */
typedef struct {
    char name[128];
    char bt_mac[18];   /* Bluetooth address, MAC kind 1; empty when the device has none */
    char wifi_mac[18]; /* Wi-Fi address, MAC kind 2 */
    char p2p_mac[18];  /* Wi-Fi peer-to-peer address, MAC kind 3 */
    /* two bytes of padding */
    int32_t type;   /* device family */
    int32_t icon;   /* variant within the family */
    int32_t status; /* 0 allowed, 1 denied; a callback may carry other values */
    char rest[12];  /* the service's own */
} RdmDeviceInfo;

#ifdef __cplusplus
static_assert(sizeof(RdmDeviceInfo) == 208, "the record's size is part of the service's interface");
static_assert(offsetof(RdmDeviceInfo, type) == 184, "type stands at byte 184");
static_assert(offsetof(RdmDeviceInfo, status) == 192, "status stands at byte 192");
#endif

/* Reports one changed device on the main loop. `info` belongs to the service and is valid during the call only.
 * The result is not used. */
typedef int (*rdm_callback)(void *user_data, RdmDeviceInfo *info);

/* Opens the service for this process. Calls nest: each success wants one rdm_deinit. */
int rdm_init(void);

/* Closes what rdm_init opened. A call without a matching rdm_init changes nothing and fails. */
int rdm_deinit(void);

/* Hands out all registered devices in the service's order: `*list` is an array of `*count` records that the caller
 * may write to and gives back with rdm_free_list. With no device `*count` is 0 and `*list` null. On failure neither
 * is to be used. */
int rdm_get_list(RdmDeviceInfo **list, size_t *count);

/* Takes back an array of rdm_get_list; null is allowed. */
void rdm_free_list(RdmDeviceInfo *list);

/* Sets the access status (0 allowed, 1 denied) of the device whose address of kind `mac_kind` (1 Bluetooth, 2 Wi-Fi,
 * 3 peer-to-peer) is `mac`. The change comes back through the registered callbacks. Fails when no device has that
 * address or the change cannot be stored; the device is unchanged then. */
int rdm_set_status(const char *mac, int mac_kind, int status);

/* Removes the registration of the device with that address. Fails when no device has it or the change cannot be
 * stored. */
int rdm_remove_device(const char *mac, int mac_kind);

/* Removes every registration. */
int rdm_remove_all(void);

/* Registers `callback` for every change of a device's access status; `user_data` is handed back to it. `*handle`
 * receives a positive number for rdm_callback_deregister; it is left alone on failure. */
int rdm_callback_register(rdm_callback callback, void *user_data, int *handle);

/* Ends a registration; the callback is not called afterwards. An unknown handle is a failure. */
int rdm_callback_deregister(int handle);

#ifdef __cplusplus
}
#endif
