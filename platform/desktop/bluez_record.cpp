#include "bluez_record.h"

#include <algorithm>
#include <glib.h>

#include "device.h"
#include "glib_owner.h"
#include "rdm.h"

namespace vesk_port {

namespace {

/* Calls `take` with the property when it is there and of the type. */
template <class Take> void with(GVariant *properties, const char *name, const char *type, Take take)
{
    const GlibOwner<GVariant, g_variant_unref> value(g_variant_lookup_value(properties, name, G_VARIANT_TYPE(type)));
    if (value)
        take(value.get());
}

void take_text(GVariant *properties, const char *name, const char *type, std::string &text)
{
    with(properties, name, type, [&](GVariant *value) { text = g_variant_get_string(value, nullptr); });
}

void take_flag(GVariant *properties, const char *name, bool &flag)
{
    with(properties, name, "b", [&](GVariant *value) { flag = g_variant_get_boolean(value); });
}

void take_address(GVariant *properties, std::string &address)
{
    std::string text;
    take_text(properties, "Address", "s", text);
    if (is_address(text))
        address = normal_mac(text);
}

struct Flag {
    const char *name;
    bool BluezRecord::*flag;
};

constexpr Flag kFlags[] = {
    {"Paired", &BluezRecord::paired},   {"Bonded", &BluezRecord::bonded},       {"Trusted", &BluezRecord::trusted},
    {"Blocked", &BluezRecord::blocked}, {"Connected", &BluezRecord::connected},
};

} // namespace

void take_properties(BluezAdapter &adapter, GVariant *properties)
{
    take_address(properties, adapter.address);
    take_text(properties, "Alias", "s", adapter.alias);
    take_flag(properties, "Powered", adapter.powered);
}

void take_properties(BluezRecord &record, GVariant *properties)
{
    take_text(properties, "Adapter", "o", record.adapter);
    take_address(properties, record.address);
    take_text(properties, "Alias", "s", record.alias);
    take_text(properties, "Icon", "s", record.traits.icon);
    with(properties, "Class", "u", [&](GVariant *value) { record.traits.device_class = g_variant_get_uint32(value); });
    with(properties, "Appearance", "q",
         [&](GVariant *value) { record.traits.appearance = g_variant_get_uint16(value); });
    with(properties, "UUIDs", "as", [&](GVariant *value) {
        gsize count = 0;
        const GlibOwner<const gchar *, g_free> uuids(g_variant_get_strv(value, &count));
        record.traits.uuids.assign(uuids.get(), uuids.get() + count);
    });
    for (const Flag &flag : kFlags)
        take_flag(properties, flag.name, record.*flag.flag);
}

void drop_property(BluezRecord &record, const std::string &name)
{
    if (name == "Alias")
        record.alias.clear();
    else if (name == "Icon")
        record.traits.icon.clear();
    else if (name == "Class")
        record.traits.device_class = 0;
    else if (name == "Appearance")
        record.traits.appearance = 0;
    else if (name == "UUIDs")
        record.traits.uuids.clear();
    for (const Flag &flag : kFlags) {
        if (name == flag.name)
            record.*flag.flag = false;
    }
}

std::string name_of(const BluezRecord &record)
{
    std::string name = record.alias;
    if (name.empty()) {
        name = record.address;
        std::ranges::replace(name, ':', '-');
    }
    constexpr size_t kSize = sizeof(RdmDeviceInfo::name);
    if (name.size() > kSize) {
        size_t end = kSize;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xc0) == 0x80)
            --end;
        name.resize(end);
    }
    return name;
}

bool is_address(const std::string &text)
{
    if (text.size() != 17)
        return false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (i % 3 == 2 ? text[i] != ':' : !g_ascii_isxdigit(text[i]))
            return false;
    }
    return true;
}

} // namespace vesk_port
