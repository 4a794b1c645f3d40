#pragma once
/* What BlueZ tells of its objects: one adapter, or one device as one adapter knows it. */

#include <string>

#include "bluez_tables.h"

typedef struct _GVariant GVariant;

namespace vesk_port {

inline constexpr const char *kBluezName = "org.bluez";
inline constexpr const char *kAdapterInterface = "org.bluez.Adapter1";
inline constexpr const char *kDeviceInterface = "org.bluez.Device1";

struct BluezAdapter {
    std::string path;
    std::string address;
    std::string alias;
    bool powered = false;

    bool operator==(const BluezAdapter &) const = default;
};

struct BluezRecord {
    std::string adapter; /* path of the object */
    std::string address; /* upper case with ':'; empty when BlueZ told none that is one */
    std::string alias;
    BluezTraits traits;
    bool paired = false;
    bool bonded = false;
    bool trusted = false;
    bool blocked = false;
    bool connected = false;

    bool operator==(const BluezRecord &) const = default;

    /* Trusted counts since gamepads that were paired by cable have nothing else, and Blocked since a device that was
     * denied would be gone from the list otherwise. */
    bool registered() const { return !address.empty() && (paired || bonded || trusted || blocked); }
};

/* Take over what `properties` (a{sv}) holds of the object. A property of a wrong type is passed over. */
void take_properties(BluezAdapter &adapter, GVariant *properties);
void take_properties(BluezRecord &record, GVariant *properties);

/* Forget a property that BlueZ says is no longer there. */
void drop_property(BluezRecord &record, const std::string &name);

/* The name for people: the alias, or the address with dashes, cut where the record of rdm.h ends. */
std::string name_of(const BluezRecord &record);

/* Whether the text is six groups of two hexadecimal digits with ':' between them. */
bool is_address(const std::string &text);

} // namespace vesk_port
