#include "bluez_pairing.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <gio/gio.h>
#include <utility>

#include "bluez_errors.h"
#include "bluez_record.h"
#include "fence.h"

namespace vesk_port {

namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 1000ms;
constexpr const char *kAgentPath = "/org/vesk/agent";
constexpr const char *kAgentManagerPath = "/org/bluez";
constexpr const char *kAgentManager = "org.bluez.AgentManager1";
constexpr const char *kProperties = "org.freedesktop.DBus.Properties";
constexpr const char *kWhere = "pairing";

/* What bluetoothd calls. An agent that can show digits and ask yes or no is never asked for digits that are to be
 * typed. */
constexpr const char *kAgentInterface =
    "<node><interface name='org.bluez.Agent1'>"
    "<method name='Release'/>"
    "<method name='Cancel'/>"
    "<method name='RequestPinCode'><arg type='o' direction='in'/><arg type='s' direction='out'/></method>"
    "<method name='RequestPasskey'><arg type='o' direction='in'/><arg type='u' direction='out'/></method>"
    "<method name='DisplayPinCode'><arg type='o' direction='in'/><arg type='s' direction='in'/></method>"
    "<method name='DisplayPasskey'><arg type='o' direction='in'/><arg type='u' direction='in'/>"
    "<arg type='q' direction='in'/></method>"
    "<method name='RequestConfirmation'><arg type='o' direction='in'/><arg type='u' direction='in'/></method>"
    "<method name='RequestAuthorization'><arg type='o' direction='in'/></method>"
    "<method name='AuthorizeService'><arg type='o' direction='in'/><arg type='s' direction='in'/></method>"
    "</interface></node>";

std::string six_digits(uint32_t number)
{
    std::array<char, 12> text{};
    std::snprintf(text.data(), text.size(), "%06u", number);
    return text.data();
}

void refuse(GDBusMethodInvocation *invocation)
{
    g_dbus_method_invocation_return_dbus_error(invocation, "org.bluez.Error.Rejected", "The user does not want it");
}

void agree(GDBusMethodInvocation *invocation)
{
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

} // namespace

BluezPairing::BluezPairing(BluezBus &bus, std::string adapter, Screen screen)
    : bus_(bus), adapter_(std::move(adapter)), screen_(std::move(screen)), connection_(bus.connection())
{
    if (!connection_)
        throw no_bus_error();
    g_object_ref(connection_);
    static constexpr GDBusInterfaceVTable kCalls{
        .method_call =
            [](GDBusConnection *, const gchar *sender, const gchar *, const gchar *, const gchar *method,
               GVariant *arguments, GDBusMethodInvocation *invocation, gpointer data) {
                auto *self = static_cast<BluezPairing *>(data);
                if (self->bus_.daemon() == sender)
                    fenced(kWhere, [&] { self->called(method, arguments, invocation); });
                else
                    refuse(invocation);
            },
        .get_property = nullptr,
        .set_property = nullptr,
        .padding = {}};
    GDBusNodeInfo *node = g_dbus_node_info_new_for_xml(kAgentInterface, nullptr);
    object_ = g_dbus_connection_register_object(connection_, kAgentPath, node->interfaces[0], &kCalls, this, nullptr,
                                                nullptr);
    g_dbus_node_info_unref(node);
    const auto changed = [](GDBusConnection *, const gchar *, const gchar *path, const gchar *, const gchar *,
                            GVariant *signal, gpointer self) {
        fenced(kWhere, [&] { static_cast<BluezPairing *>(self)->device_changed(path, signal); });
    };
    subscription_ =
        g_dbus_connection_signal_subscribe(connection_, bus_.daemon().c_str(), kProperties, "PropertiesChanged",
                                           nullptr, kDeviceInterface, G_DBUS_SIGNAL_FLAGS_NONE, changed, this, nullptr);
    try {
        bus_.call(
            {kAgentManagerPath, kAgentManager, "RegisterAgent", g_variant_new("(os)", kAgentPath, "DisplayYesNo")},
            kPatience);
        bus_.call({kAgentManagerPath, kAgentManager, "RequestDefaultAgent", g_variant_new("(o)", kAgentPath)},
                  kPatience);
        open_adapter();
    } catch (const PortError &) {
        restore_adapter();
        throw;
    }
}

BluezPairing::~BluezPairing()
{
    answer(false);
    fenced(kWhere, [this] { restore_adapter(); });
}

void BluezPairing::open_adapter()
{
    for (const char *name : {"DiscoverableTimeout", "PairableTimeout", "Discoverable", "Pairable"}) {
        const auto reply =
            bus_.call({adapter_, kProperties, "Get", g_variant_new("(ss)", kAdapterInterface, name)}, kPatience);
        GVariant *value = nullptr;
        g_variant_get(reply.get(), "(v)", &value);
        before_.push_back({name, GlibOwner<GVariant, g_variant_unref>(value)});
    }
    const auto seconds = static_cast<uint32_t>(kDuration.count());
    set("DiscoverableTimeout", g_variant_new_uint32(seconds));
    set("PairableTimeout", g_variant_new_uint32(seconds));
    set("Pairable", g_variant_new_boolean(true));
    set("Discoverable", g_variant_new_boolean(true));
}

void BluezPairing::set(const char *property, GVariant *value)
{
    bus_.call(BluezBus::setting(adapter_, kAdapterInterface, property, value), kPatience);
}

/* Also where it was opened in part. bluetoothd keeps the properties in its settings, so they must not stay. */
void BluezPairing::restore_adapter()
{
    for (const Property &property : std::exchange(before_, {})) {
        fenced(kWhere, [&] { set(property.name, property.value.get()); });
    }
    fenced(kWhere, [&] {
        bus_.call({kAgentManagerPath, kAgentManager, "UnregisterAgent", g_variant_new("(o)", kAgentPath)}, kPatience);
    });
    g_dbus_connection_signal_unsubscribe(connection_, subscription_);
    g_dbus_connection_unregister_object(connection_, object_);
    g_object_unref(connection_);
}

void BluezPairing::called(const std::string &method, GVariant *arguments, GDBusMethodInvocation *invocation)
{
    const char *device = "";
    if (g_variant_n_children(arguments) > 0)
        g_variant_get_child(arguments, 0, "&o", &device);
    if (method == "RequestConfirmation") {
        uint32_t number = 0;
        g_variant_get_child(arguments, 1, "u", &number);
        ask(invocation, device, six_digits(number));
    } else if (method == "RequestAuthorization" || method == "AuthorizeService") {
        ask(invocation, device, "");
    } else if (method == "DisplayPasskey") {
        uint32_t number = 0;
        g_variant_get_child(arguments, 1, "u", &number);
        screen_.show(device, six_digits(number));
        welcomed_.emplace_back(device);
        agree(invocation);
    } else if (method == "DisplayPinCode") {
        const char *digits = "";
        g_variant_get_child(arguments, 1, "&s", &digits);
        screen_.show(device, digits);
        welcomed_.emplace_back(device);
        agree(invocation);
    } else if (method == "Release" || method == "Cancel") {
        if (open_question_)
            screen_.withdraw();
        answer(false);
        agree(invocation);
    } else {
        refuse(invocation);
    }
}

void BluezPairing::ask(GDBusMethodInvocation *invocation, const std::string &device, const std::string &digits)
{
    answer(false); /* to a question before */
    open_question_ = invocation;
    asked_ = device;
    screen_.ask(device, digits);
}

void BluezPairing::answer(bool yes)
{
    GDBusMethodInvocation *invocation = std::exchange(open_question_, nullptr);
    if (!invocation)
        return;
    if (!yes) {
        refuse(invocation);
        return;
    }
    welcomed_.push_back(asked_);
    agree(invocation);
}

/* Trusted, since without an agent bluetoothd rejects the services of a device that is not. */
void BluezPairing::device_changed(const std::string &path, GVariant *signal)
{
    const GlibOwner<GVariant, g_variant_unref> properties(g_variant_get_child_value(signal, 1));
    gboolean paired = FALSE;
    if (!g_variant_lookup(properties.get(), "Paired", "b", &paired) || !paired || std::erase(welcomed_, path) == 0)
        return;
    bus_.start(BluezBus::setting(path, kDeviceInterface, "Trusted", g_variant_new_boolean(true)),
               [](const std::optional<PortError> &error) {
                   if (error)
                       log_line(DLOG_WARN, kPortTag, std::string("a paired device is not trusted: ") + error->what());
               });
    screen_.paired(path);
}

} // namespace vesk_port
