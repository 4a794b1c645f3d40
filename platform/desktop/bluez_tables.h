#pragma once
/* Which family and picture a Bluetooth device gets, from what it tells of itself. */

#include <cstdint>
#include <string>
#include <vector>

namespace vesk_port {

/* `type` and `icon` of a Device. */
struct BluezKind {
    int32_t type = 0;
    int32_t icon = 0;

    bool operator==(const BluezKind &) const = default;
};

/* Properties of org.bluez.Device1; 0 or empty where the device tells nothing. */
struct BluezTraits {
    uint32_t device_class = 0;
    uint16_t appearance = 0;
    std::string icon;
    std::vector<std::string> uuids;

    bool operator==(const BluezTraits &) const = default;
};

/* The answer of the first that has one: class, appearance, icon, services. */
BluezKind kind_of(const BluezTraits &traits);

/* Whether it may be what the user steers the panel with: a keyboard, a pointer, a gamepad, a remote control. */
bool is_input(const BluezTraits &traits);

} // namespace vesk_port
