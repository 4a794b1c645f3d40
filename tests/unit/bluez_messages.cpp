#include "bluez_messages.h"

#include <algorithm>
#include <memory>

namespace {

/* The variant that the text stands for. */
std::unique_ptr<GVariant, decltype(&g_variant_unref)> parsed(const std::string &text)
{
    GError *error = nullptr;
    GVariant *variant = g_variant_parse(nullptr, text.c_str(), nullptr, nullptr, &error);
    if (!variant)
        throw std::runtime_error(text + ": " + error->message);
    return {variant, g_variant_unref};
}

std::string text_of(int number)
{
    char text[4];
    g_snprintf(text, sizeof text, "%02X", static_cast<unsigned>(number) & 0xff);
    return text;
}

} // namespace

std::string adapter_path(int adapter)
{
    return "/org/bluez/hci" + std::to_string(adapter);
}

std::string device_path(int last, int adapter)
{
    return adapter_path(adapter) + "/dev_AA_BB_CC_DD_EE_" + text_of(last);
}

std::string address_of(int last)
{
    return "AA:BB:CC:DD:EE:" + text_of(last);
}

void BluezCacheTest::objects(std::vector<int> adapters)
{
    std::string all = "@a{oa{sa{sv}}} {";
    for (const int adapter : adapters)
        all += (all.ends_with("{") ? "" : ",") + ("'" + adapter_path(adapter)) +
               "': {'org.bluez.Adapter1': {'Address': <'00:00:00:00:00:" + text_of(adapter) + "'>}}";
    cache.managed_objects(parsed("(" + all + "},)").get(), now);
}

void BluezCacheTest::plug(int adapter, const std::string &address)
{
    const std::string own = address.empty() ? "00:00:00:00:00:" + text_of(adapter) : address;
    cache.interfaces_added(parsed("(objectpath '" + adapter_path(adapter) + "', {'org.bluez.Adapter1': {'Address': <'" +
                                  own + "'>, 'Powered': <true>}})")
                               .get(),
                           now);
}

void BluezCacheTest::add_raw(const std::string &path, const std::string &properties)
{
    cache.interfaces_added(
        parsed("(objectpath '" + path + "', {'org.bluez.Device1': @a{sv} {" + properties + "}})").get(), now);
}

void BluezCacheTest::add(int last, const std::string &properties, int adapter)
{
    add_raw(device_path(last, adapter), "'Address': <'" + address_of(last) + "'>, 'Adapter': <objectpath '" +
                                            adapter_path(adapter) + "'>, " + properties);
}

void BluezCacheTest::pair(int last, const std::string &name, int adapter)
{
    add(last, "'Paired': <true>, 'Alias': <'" + name + "'>", adapter);
}

void BluezCacheTest::change(int last, const std::string &properties, int adapter)
{
    cache.properties_changed(device_path(last, adapter),
                             parsed("('org.bluez.Device1', @a{sv} {" + properties + "}, @as [])").get());
}

void BluezCacheTest::remove(int last, int adapter)
{
    cache.interfaces_removed(parsed("(objectpath '" + device_path(last, adapter) + "', ['org.bluez.Device1'])").get(),
                             now);
}

void BluezCacheTest::unplug(int adapter)
{
    cache.interfaces_removed(parsed("(objectpath '" + adapter_path(adapter) + "', ['org.bluez.Adapter1'])").get(), now);
}

int BluezCacheTest::pass(Time duration)
{
    const Time end = now + duration;
    int reports = 0;
    for (;;) {
        const auto next = cache.look_again();
        if (!next || *next > end)
            break;
        now = std::max(now, *next);
        reports += cache.advance(now);
    }
    now = end;
    return reports;
}

std::vector<std::string> BluezCacheTest::names()
{
    std::vector<std::string> names;
    for (const auto &device : cache.list())
        names.push_back(device.name);
    return names;
}

vesk_port::Device BluezCacheTest::device(int last)
{
    const auto all = cache.list();
    const auto found = std::ranges::find(all, address_of(last), &vesk_port::Device::bt_mac);
    return found == all.end() ? vesk_port::Device{} : *found;
}
