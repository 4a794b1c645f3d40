#include "bluez_cache.h"

#include <algorithm>
#include <cerrno>
#include <glib.h>
#include <set>
#include <tuple>
#include <utility>

#include "glib_owner.h"
#include "port_error.h"

namespace vesk_port {

namespace {

using namespace std::chrono_literals;

constexpr BluezCache::Time kQuietAfterRemoval = 500ms;
constexpr BluezCache::Time kLongestLeaving = 2s;
constexpr BluezCache::Time kHold = 10s;
constexpr BluezCache::Time kReturn = 3s; /* for a device whose adapter is back */
constexpr BluezCache::Time kBetweenReports = 150ms;

using Variant = GlibOwner<GVariant, g_variant_unref>;

/* The properties (a{sv}) of an interface among `interfaces` (a{sa{sv}}); null when the object does not have it. */
Variant properties_of(GVariant *interfaces, const char *interface)
{
    return Variant(g_variant_lookup_value(interfaces, interface, G_VARIANT_TYPE_VARDICT));
}

bool is_type(GVariant *message, const char *type)
{
    return message && g_variant_is_of_type(message, G_VARIANT_TYPE(type));
}

/* The place among names as people count: "Phone 9" before "phone 10". */
std::string sort_key(const std::string &name)
{
    const GlibText folded(g_utf8_casefold(name.c_str(), -1));
    const GlibText key(g_utf8_collate_key_for_filename(folded.get(), -1));
    return key.get();
}

} // namespace

void BluezCache::managed_objects(GVariant *reply, Time now)
{
    if (!is_type(reply, "(a{oa{sa{sv}}})"))
        return;
    const Variant objects(g_variant_get_child_value(reply, 0));
    std::set<std::string> there;
    /* Adapters first, since a device's return depends on its adapter. */
    for (const char *interface : {kAdapterInterface, kDeviceInterface}) {
        GVariantIter iter;
        g_variant_iter_init(&iter, objects.get());
        const char *path = nullptr;
        GVariant *interfaces = nullptr;
        while (g_variant_iter_loop(&iter, "{&o@a{sa{sv}}}", &path, &interfaces)) {
            const Variant properties = properties_of(interfaces, interface);
            if (!properties)
                continue;
            there.insert(path);
            if (interface == kAdapterInterface)
                add_adapter(path, properties.get(), now);
            else
                add_device(path, properties.get());
        }
    }
    std::vector<std::string> gone;
    for (const auto &[path, entry] : entries_) {
        if (entry.presence == Presence::present && !there.contains(path))
            gone.push_back(path);
    }
    for (const std::string &path : gone)
        remove_device(path, now);
    for (auto &[path, adapter] : adapters_) {
        if (adapter.present && !there.contains(path))
            lose_adapter(adapter, now);
    }
}

void BluezCache::interfaces_added(GVariant *signal, Time now)
{
    if (!is_type(signal, "(oa{sa{sv}})"))
        return;
    const char *path = nullptr;
    GVariant *child = nullptr;
    g_variant_get(signal, "(&o@a{sa{sv}})", &path, &child);
    const Variant interfaces(child);
    if (const Variant adapter = properties_of(child, kAdapterInterface))
        add_adapter(path, adapter.get(), now);
    if (const Variant device = properties_of(child, kDeviceInterface))
        add_device(path, device.get());
}

void BluezCache::interfaces_removed(GVariant *signal, Time now)
{
    if (!is_type(signal, "(oas)"))
        return;
    const char *path = nullptr;
    const gchar **interfaces = nullptr;
    g_variant_get(signal, "(&o^a&s)", &path, &interfaces);
    if (g_strv_contains(interfaces, kDeviceInterface))
        remove_device(path, now);
    const auto adapter = adapters_.find(path);
    if (adapter != adapters_.end() && g_strv_contains(interfaces, kAdapterInterface))
        lose_adapter(adapter->second, now);
    g_free(interfaces);
}

void BluezCache::properties_changed(const std::string &path, GVariant *signal)
{
    if (!is_type(signal, "(sa{sv}as)"))
        return;
    const char *interface = nullptr;
    GVariant *child = nullptr;
    const gchar **dropped = nullptr;
    g_variant_get(signal, "(&s@a{sv}^a&s)", &interface, &child, &dropped);
    const Variant properties(child);
    const GlibOwner<const gchar *, g_free> names(dropped);
    const auto adapter = adapters_.find(path);
    if (interface == std::string_view(kAdapterInterface) && adapter != adapters_.end())
        take_properties(adapter->second.facts, child);
    const auto found = entries_.find(path);
    if (interface != std::string_view(kDeviceInterface) || found == entries_.end())
        return;
    BluezRecord &record = found->second.record;
    const BluezRecord before = record;
    take_properties(record, child);
    for (const gchar **name = dropped; *name; ++name)
        drop_property(record, *name);
    /* Strangers come and go all the time. */
    if (before.registered() || record.registered())
        changed_ |= record != before;
}

void BluezCache::daemon_lost(Time now)
{
    for (auto &[path, adapter] : adapters_)
        lose_adapter(adapter, now);
}

void BluezCache::add_adapter(const std::string &path, GVariant *properties, Time now)
{
    Adapter &adapter = adapters_[path];
    adapter = {.facts = {.path = path, .address = {}, .alias = {}}};
    take_properties(adapter.facts, properties);
    changed_ = true; /* its address may be the chosen one */
    for (auto &[device, entry] : entries_) {
        if (entry.presence != Presence::held)
            continue;
        /* An adapter that was plugged in again may have another number. */
        const auto own = adapters_.find(entry.record.adapter);
        if (own != adapters_.end() && own->second.facts.address == adapter.facts.address)
            entry.until = now + kReturn;
    }
}

void BluezCache::add_device(const std::string &path, GVariant *properties)
{
    Entry entry;
    entry.record.adapter = path.substr(0, path.rfind('/'));
    take_properties(entry.record, properties);
    const auto before = entries_.find(path);
    if (before != entries_.end()) {
        entry.hidden = before->second.hidden;
        changed_ |= before->second.record.registered();
    }
    changed_ |= entry.record.registered();
    entries_[path] = std::move(entry);
}

void BluezCache::remove_device(const std::string &path, Time now)
{
    const auto found = entries_.find(path);
    if (found == entries_.end())
        return;
    Entry &entry = found->second;
    if (entry.hidden || !entry.record.registered()) {
        entries_.erase(found);
        changed_ = true;
    } else if (entry.presence == Presence::present) {
        entry.presence = Presence::leaving;
        first_leaving_ = first_leaving_.value_or(now);
        last_leaving_ = now;
    }
}

void BluezCache::lose_adapter(Adapter &adapter, Time now)
{
    adapter.present = false;
    for (auto &[path, entry] : entries_) {
        if (entry.record.adapter == adapter.facts.path && entry.presence != Presence::held) {
            entry.presence = Presence::held;
            entry.until = now + kHold;
        }
    }
}

std::vector<BluezCache::Target> BluezCache::targets_to_change(std::string_view mac) const
{
    const std::string address = normal_mac(mac);
    const Rows all = rows();
    const auto row = all.find(address);
    std::vector<Target> targets;
    bool away = false;
    if (row != all.end()) {
        for (const auto *element : row->second) {
            const auto &[path, entry] = *element;
            if (entry.presence == Presence::present && !entry.hidden)
                targets.push_back({path, entry.record.adapter});
            away |= entry.presence == Presence::held;
        }
    }
    if (targets.empty() && away)
        throw PortError(-EHOSTDOWN, "the Bluetooth adapter of the device " + address +
                                        " is away. Plug it in again, or start bluetoothd.");
    if (targets.empty())
        throw PortError(-ENODEV, "no registered Bluetooth device has the address " + address +
                                     ". See the registered devices with: veskctl --service bluez devices list");
    return targets;
}

std::vector<BluezCache::Target> BluezCache::targets_to_lose(std::string_view mac) const
{
    std::vector<Target> targets = targets_to_change(mac);
    if (is_last_connected_input(normal_mac(mac)))
        throw PortError(-EPERM, "the device " + normal_mac(mac) +
                                    " is the last input device that is connected. Connect another one first.");
    return targets;
}

bool BluezCache::is_last_connected_input(const std::string &address) const
{
    std::set<std::string> inputs;
    for (const auto &[path, entry] : entries_) {
        if (entry.presence == Presence::present && !entry.hidden && entry.record.connected && !entry.record.blocked &&
            is_input(entry.record.traits))
            inputs.insert(entry.record.address);
    }
    return inputs.size() == 1 && inputs.contains(address);
}

void BluezCache::blocked(const std::string &path, bool blocked)
{
    const auto found = entries_.find(path);
    if (found == entries_.end())
        return;
    found->second.record.blocked = blocked;
    changed_ = true;
}

void BluezCache::removed(const std::string &path)
{
    const auto found = entries_.find(path);
    /* One that is not hidden was found anew after its removal. */
    if (found != entries_.end() && found->second.hidden)
        entries_.erase(found);
}

void BluezCache::hide(const std::string &path, bool hidden)
{
    const auto found = entries_.find(path);
    if (found == entries_.end())
        return;
    found->second.hidden = hidden;
    changed_ = true;
    /* Who removed it has read the list without it since, whether or not that was reported. */
    returned_ |= !hidden;
}

bool BluezCache::wanted(const BluezRecord &record) const
{
    if (!record.registered() || choice_.keeps(record.address))
        return false;
    const auto adapter = adapters_.find(record.adapter);
    return choice_.takes(record.adapter, adapter == adapters_.end() ? "" : adapter->second.facts.address);
}

BluezCache::Rows BluezCache::rows() const
{
    Rows rows;
    for (const auto &element : entries_) {
        if (wanted(element.second.record))
            rows[element.second.record.address].push_back(&element);
    }
    return rows;
}

void BluezCache::place_new_devices(const Rows &rows)
{
    std::erase_if(positions_, [&](const auto &position) { return !rows.contains(position.first); });
    std::vector<std::tuple<bool, std::string, std::string>> added;
    for (const auto &[address, row] : rows) {
        if (positions_.contains(address))
            continue;
        const bool connected =
            std::ranges::any_of(row, [](const auto *element) { return element->second.record.connected; });
        added.emplace_back(!connected, sort_key(name_of(row.front()->second.record)), address);
    }
    std::ranges::sort(added);
    for (const auto &[not_connected, key, address] : added) {
        positions_[address] = ++last_position_;
        ids_.try_emplace(address, static_cast<int64_t>(ids_.size()) + 1);
    }
}

std::vector<Device> BluezCache::list(size_t most)
{
    const Rows all = rows();
    place_new_devices(all);
    std::vector<std::pair<uint64_t, Device>> placed;
    for (const auto &[address, row] : all) {
        const Entry *speaker = nullptr;
        bool denied = true;
        for (const auto *element : row) {
            const Entry &entry = element->second;
            if (entry.hidden)
                continue;
            if (!speaker || (speaker->presence != Presence::present && entry.presence == Presence::present))
                speaker = &entry;
            denied &= entry.record.blocked;
        }
        if (!speaker)
            continue;
        const BluezKind kind = kind_of(speaker->record.traits);
        placed.emplace_back(positions_[address], Device{.id = ids_[address],
                                                        .name = name_of(speaker->record),
                                                        .bt_mac = address,
                                                        .wifi_mac = {},
                                                        .p2p_mac = {},
                                                        .type = kind.type,
                                                        .icon = kind.icon,
                                                        .status = denied ? 1 : 0});
    }
    std::ranges::sort(placed, {}, &std::pair<uint64_t, Device>::first);
    placed.resize(std::min(placed.size(), most));
    std::vector<Device> devices;
    for (auto &[position, device] : placed)
        devices.push_back(std::move(device));
    return devices;
}

void BluezCache::report_nothing_yet()
{
    reported_ = list();
    changed_ = false;
}

std::optional<BluezCache::Time> BluezCache::end_of_leaving() const
{
    if (!first_leaving_)
        return std::nullopt;
    return std::min(*first_leaving_ + kLongestLeaving, last_leaving_ + kQuietAfterRemoval);
}

bool BluezCache::advance(Time now)
{
    const auto end = end_of_leaving();
    const bool end_leaving = end && now >= *end;
    if (end_leaving)
        first_leaving_.reset();
    const auto over = [&](const auto &element) {
        const Entry &entry = element.second;
        return (entry.presence == Presence::leaving && end_leaving) ||
               (entry.presence == Presence::held && now >= entry.until);
    };
    if (std::erase_if(entries_, over) > 0)
        changed_ = true;
    if (!changed_ || (last_report_ && now < *last_report_ + kBetweenReports))
        return false;
    changed_ = false;
    std::vector<Device> devices = list();
    if (!std::exchange(returned_, false) && devices == reported_)
        return false;
    reported_ = std::move(devices);
    last_report_ = now;
    return true;
}

std::optional<BluezCache::Time> BluezCache::look_again() const
{
    std::optional<Time> next = end_of_leaving();
    const auto sooner = [&next](Time time) { next = next ? std::min(*next, time) : time; };
    for (const auto &[path, entry] : entries_) {
        if (entry.presence == Presence::held)
            sooner(entry.until);
    }
    if (changed_)
        sooner(last_report_ ? *last_report_ + kBetweenReports : Time{});
    return next;
}

std::string BluezCache::name_at(const std::string &path) const
{
    const auto entry = entries_.find(path);
    return entry == entries_.end() ? "" : name_of(entry->second.record);
}

std::vector<BluezAdapter> BluezCache::adapters() const
{
    std::vector<BluezAdapter> there;
    for (const auto &[path, adapter] : adapters_) {
        if (adapter.present)
            there.push_back(adapter.facts);
    }
    return there;
}

} // namespace vesk_port
