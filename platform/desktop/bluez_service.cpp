#include "bluez_service.h"

#include <algorithm>
#include <cerrno>
#include <glib.h>
#include <limits>
#include <utility>

#include "bluez_errors.h"
#include "fence.h"
#include "port_call.h"

namespace vesk_port {

namespace {

using namespace std::chrono_literals;

constexpr auto kActionPatience = 250ms; /* the panel stands still meanwhile */

BluezCache::Time now()
{
    return BluezCache::Time(g_get_monotonic_time() / 1000);
}

void need_bluetooth(MacKind kind)
{
    if (kind != MacKind::bluetooth)
        throw PortError(-ENODEV, "devices of BlueZ have Bluetooth addresses only.");
}

} // namespace

BluezService::BluezService(BluezChoice choice)
    : cache_(std::move(choice)), bus_(std::make_unique<BluezBus>(static_cast<BluezBus::Listener &>(*this)))
{
    cache_.report_nothing_yet();
    look_again();
}

std::vector<Device> BluezService::list()
{
    return cache_.list();
}

std::vector<Device> BluezService::all()
{
    return cache_.list(std::numeric_limits<size_t>::max());
}

void BluezService::need_daemon() const
{
    if (!bus_->connected())
        throw no_bus_error();
    if (!bus_->daemon_runs())
        throw no_daemon_error();
}

/* A box may have no agent, and without one bluetoothd rejects the services of a device that is not trusted. */
void BluezService::set_status(std::string_view mac, MacKind kind, int32_t status)
{
    need_bluetooth(kind);
    need_daemon();
    const bool deny = status == 1;
    const auto targets = deny ? cache_.targets_to_lose(mac) : cache_.targets_to_change(mac);
    const auto end = now() + kActionPatience;
    const auto set = [&](const std::string &path, const char *property, bool value) {
        bus_->call(BluezBus::setting(path, kDeviceInterface, property, g_variant_new_boolean(value)), end - now());
    };
    for (const auto &target : targets) {
        set(target.path, "Blocked", deny);
        cache_.blocked(target.path, deny);
        look_again();
    }
    if (deny)
        return;
    for (const auto &target : targets)
        set(target.path, "Trusted", true);
}

void BluezService::start_removal(std::string_view mac)
{
    for (const auto &target : cache_.targets_to_lose(mac)) {
        const auto answered = [this, path = target.path](const std::optional<PortError> &error) {
            --removals_;
            if (!error || error->code() == -ENODEV) {
                cache_.removed(path);
                return;
            }
            refused_ = refused_ ? refused_ : error;
            report_failure("RemoveDevice", error->code(), error->what());
            cache_.hide(path, false);
            look_again();
        };
        bus_->start({target.adapter, kAdapterInterface, "RemoveDevice", g_variant_new("(o)", target.path.c_str())},
                    answered);
        ++removals_;
        cache_.hide(target.path, true);
    }
    look_again();
}

void BluezService::remove(std::string_view mac, MacKind kind)
{
    need_bluetooth(kind);
    need_daemon();
    start_removal(mac);
}

/* What cannot be removed stays, and the others go all the same. */
void BluezService::remove_all()
{
    need_daemon();
    std::optional<PortError> first;
    for (const Device &device : cache_.list()) {
        try {
            start_removal(device.bt_mac);
        } catch (const PortError &error) {
            first = first ? first : error;
        }
    }
    if (first)
        throw *first;
}

void BluezService::on_changed(std::function<void()> changed)
{
    changed_ = std::move(changed);
}

void BluezService::rename(std::string_view mac, const std::string &name)
{
    need_daemon();
    const auto end = now() + kActionPatience;
    for (const auto &target : cache_.targets_to_change(mac))
        bus_->call(BluezBus::setting(target.path, kDeviceInterface, "Alias", g_variant_new_string(name.c_str())),
                   end - now());
}

void BluezService::finish_removals()
{
    while (removals_ > 0)
        g_main_context_iteration(nullptr, TRUE);
    if (const auto error = std::exchange(refused_, std::nullopt))
        throw *error;
}

std::optional<PortError> BluezService::trouble() const
{
    if (bus_->trouble())
        return bus_->trouble();
    auto adapters = cache_.adapters();
    if (adapters.empty())
        return PortError(-ENODEV, "this machine has no Bluetooth adapter. Plug one in.");
    std::erase_if(adapters, [this](const BluezAdapter &adapter) { return !uses(adapter); });
    if (adapters.empty())
        return PortError(-ENODEV, "there is no adapter \"" + cache_.choice().adapter +
                                      "\", which VESK_BLUEZ_ADAPTER names. See those that are there with: veskctl "
                                      "--service bluez service status");
    if (std::ranges::none_of(adapters, &BluezAdapter::powered))
        return PortError(-ENETDOWN, "Bluetooth is switched off. Switch it on with: bluetoothctl power on");
    return std::nullopt;
}

void BluezService::managed_objects(GVariant *reply)
{
    cache_.managed_objects(reply, now());
    look_again();
}

void BluezService::interfaces_added(const std::string &, GVariant *signal)
{
    cache_.interfaces_added(signal, now());
    look_again();
}

void BluezService::interfaces_removed(const std::string &, GVariant *signal)
{
    cache_.interfaces_removed(signal, now());
    look_again();
}

void BluezService::properties_changed(const std::string &path, GVariant *signal)
{
    cache_.properties_changed(path, signal);
    look_again();
}

void BluezService::daemon_lost()
{
    cache_.daemon_lost(now());
    look_again();
}

/* Sets the one timer to the next moment at which something is due. The listener is called from there alone. */
void BluezService::look_again()
{
    const auto next = cache_.look_again();
    timer_.end();
    if (!next)
        return;
    const auto due = [](gpointer data) -> gboolean {
        fenced("a change of Bluetooth devices", [data] {
            auto *self = static_cast<BluezService *>(data);
            self->timer_.let_end();
            const bool report = self->cache_.advance(now());
            self->look_again();
            const auto changed = self->changed_;
            if (report && changed)
                changed(); /* `self` may be gone from here on */
        });
        return G_SOURCE_REMOVE;
    };
    const auto wait = std::max(*next - now(), BluezCache::Time::zero());
    timer_ = GlibSource(g_timeout_add(static_cast<unsigned>(wait.count()), due, this));
}

} // namespace vesk_port
