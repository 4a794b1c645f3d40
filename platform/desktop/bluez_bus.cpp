#include "bluez_bus.h"

#include <algorithm>
#include <condition_variable>
#include <gio/gio.h>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

#include "bluez_errors.h"
#include "bluez_record.h"
#include "fence.h"
#include "glib_owner.h"

namespace vesk_port {

namespace {

using namespace std::chrono_literals;

constexpr auto kOpening = 1000ms;
constexpr auto kFirstRetry = 250ms;
constexpr auto kLastRetry = 8000ms;
constexpr int kForever = G_MAXINT; /* milliseconds; GDBus takes it for no limit */

constexpr const char *kFence = "a message from bluetoothd";

constexpr const char *kBusName = "org.freedesktop.DBus";
constexpr const char *kBusPath = "/org/freedesktop/DBus";
constexpr const char *kObjectManager = "org.freedesktop.DBus.ObjectManager";
constexpr const char *kProperties = "org.freedesktop.DBus.Properties";

/* Cancels what is under way when the time is over, as connecting to a bus that hangs has no limit of its own. */
class TimeLimit {
public:
    TimeLimit(GCancellable *cancellable, std::chrono::milliseconds limit)
        : thread_([cancellable, limit](const std::stop_token &stop) {
              std::mutex mutex;
              std::unique_lock lock(mutex);
              std::condition_variable_any ended;
              ended.wait_for(lock, stop, limit, [] { return false; });
              if (!stop.stop_requested())
                  g_cancellable_cancel(cancellable);
          })
    {
    }

private:
    std::jthread thread_;
};

using Variant = GlibOwner<GVariant, g_variant_unref>;

/* Hands the answer to a call, or else the error, to `take`; to nobody when the bus object is gone meanwhile. */
template <class Take> void take_answer(GObject *connection, GAsyncResult *result, Take take)
{
    GlibError error;
    const Variant answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, error.place()));
    if (!g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
        fenced(kFence, [&] { take(answer.get(), error.get()); });
}

std::string name_in(GVariant *answer)
{
    const char *name = nullptr;
    g_variant_get(answer, "(&s)", &name);
    return name;
}

std::string system_bus()
{
    const GlibText address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
    return address ? address.get() : "";
}

constexpr auto kClient = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                           G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

GVariant *owner_question()
{
    return g_variant_new("(s)", kBluezName);
}

} // namespace

BluezBus::BluezBus(Listener &listener)
    : listener_(listener), cancellable_(g_cancellable_new()), retry_after_(kFirstRetry)
{
    open(kOpening);
}

BluezBus::~BluezBus()
{
    if (connection_ && sent_)
        g_dbus_connection_flush_sync(connection_, nullptr, nullptr);
    g_cancellable_cancel(cancellable_);
    retry_.end();
    if (connection_)
        lose_connection();
    g_object_unref(cancellable_);
}

void BluezBus::open(std::chrono::milliseconds patience)
{
    const gint64 end = g_get_monotonic_time() / 1000 + patience.count();
    const auto rest = [end] { return static_cast<int>(std::max<gint64>(end - g_get_monotonic_time() / 1000, 1)); };
    GDBusConnection *connection = nullptr;
    {
        GCancellable *limit = g_cancellable_new();
        const TimeLimit timer(limit, patience);
        connection = g_dbus_connection_new_for_address_sync(system_bus().c_str(), kClient, nullptr, limit, nullptr);
        g_object_unref(limit);
    }
    if (!connection) {
        fail(no_bus_error());
        connect_later();
        return;
    }
    adopt(connection);
    GlibError error;
    const Variant owner(g_dbus_connection_call_sync(connection_, kBusName, kBusPath, kBusName, "GetNameOwner",
                                                    owner_question(), G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE,
                                                    rest(), nullptr, error.place()));
    if (!owner) {
        fail(bluez_error(error.get()));
        if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
            ask_for_owner();
        return;
    }
    follow(name_in(owner.get()));
    const Variant objects(g_dbus_connection_call_sync(connection_, owner_.c_str(), "/", kObjectManager,
                                                      "GetManagedObjects", nullptr, G_VARIANT_TYPE("(a{oa{sa{sv}}})"),
                                                      G_DBUS_CALL_FLAGS_NO_AUTO_START, rest(), nullptr, error.place()));
    take_objects(objects.get(), error.get());
    if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
        fetch();
}

void BluezBus::adopt(GDBusConnection *connection)
{
    connection_ = connection;
    retry_after_ = kFirstRetry;
    const auto closed = [](GDBusConnection *, gboolean, GError *, gpointer self) {
        fenced(kFence, [&] { static_cast<BluezBus *>(self)->closed(); });
    };
    closed_handler_ = g_signal_connect(connection_, "closed", G_CALLBACK(+closed), this);
    const auto owner_changed = [](GDBusConnection *, const gchar *, const gchar *, const gchar *, const gchar *,
                                  GVariant *names, gpointer self) {
        const char *now = nullptr;
        g_variant_get(names, "(&s&s&s)", nullptr, nullptr, &now);
        fenced(kFence, [&] { static_cast<BluezBus *>(self)->owner_changed(now); });
    };
    owner_subscription_ =
        g_dbus_connection_signal_subscribe(connection_, kBusName, kBusName, "NameOwnerChanged", kBusPath, kBluezName,
                                           G_DBUS_SIGNAL_FLAGS_NONE, owner_changed, this, nullptr);
}

void BluezBus::closed()
{
    lose_connection();
    fail(no_bus_error());
    connect_later();
    listener_.daemon_lost();
}

void BluezBus::owner_changed(const std::string &now)
{
    if (owner_ == now)
        return;
    if (!owner_.empty()) {
        unfollow();
        fail(no_daemon_error());
        listener_.daemon_lost();
    }
    if (!now.empty()) {
        follow(now);
        fetch();
    }
}

void BluezBus::lose_connection()
{
    unfollow();
    g_dbus_connection_signal_unsubscribe(connection_, owner_subscription_);
    g_signal_handler_disconnect(connection_, closed_handler_);
    g_object_unref(std::exchange(connection_, nullptr));
}

void BluezBus::connect_later()
{
    const auto again = [](gpointer self) -> gboolean {
        auto *bus = static_cast<BluezBus *>(self);
        bus->retry_.let_end();
        bus->connect();
        return G_SOURCE_REMOVE;
    };
    retry_ = GlibSource(g_timeout_add(static_cast<unsigned>(retry_after_.count()), again, this));
    retry_after_ = std::min<std::chrono::milliseconds>(retry_after_ * 2, kLastRetry);
}

void BluezBus::connect()
{
    const auto connected = [](GObject *, GAsyncResult *result, gpointer self) {
        GlibError error;
        GDBusConnection *connection = g_dbus_connection_new_for_address_finish(result, error.place());
        if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return;
        auto *bus = static_cast<BluezBus *>(self);
        if (!connection) {
            bus->connect_later();
            return;
        }
        fenced(kFence, [&] {
            bus->adopt(connection);
            bus->ask_for_owner();
        });
    };
    g_dbus_connection_new_for_address(system_bus().c_str(), kClient, nullptr, cancellable_, connected, this);
}

void BluezBus::ask_for_owner()
{
    const auto answered = [](GObject *connection, GAsyncResult *result, gpointer self) {
        take_answer(connection, result, [self](GVariant *answer, const GError *error) {
            auto *bus = static_cast<BluezBus *>(self);
            if (answer)
                bus->owner_changed(name_in(answer));
            else
                bus->fail(bluez_error(error));
        });
    };
    g_dbus_connection_call(connection_, kBusName, kBusPath, kBusName, "GetNameOwner", owner_question(),
                           G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE, kForever, cancellable_, answered, this);
}

/* Subscribes to the messages of `owner`, before anything is asked of it. */
void BluezBus::follow(const std::string &owner)
{
    unfollow();
    owner_ = owner;
    const auto subscribe = [&](const char *interface, const char *signal, const char *path, const char *argument,
                               GDBusSignalCallback callback) {
        subscriptions_.push_back(g_dbus_connection_signal_subscribe(connection_, owner_.c_str(), interface, signal,
                                                                    path, argument, G_DBUS_SIGNAL_FLAGS_NONE, callback,
                                                                    this, nullptr));
    };
    subscribe(kObjectManager, "InterfacesAdded", "/", nullptr, hear<&Listener::interfaces_added>);
    subscribe(kObjectManager, "InterfacesRemoved", "/", nullptr, hear<&Listener::interfaces_removed>);
    for (const char *interface : {kAdapterInterface, kDeviceInterface})
        subscribe(kProperties, "PropertiesChanged", nullptr, interface, hear<&Listener::properties_changed>);
}

template <auto tell>
void BluezBus::hear(GDBusConnection *, const char *, const char *path, const char *, const char *, GVariant *signal,
                    void *self)
{
    fenced(kFence, [&] { (static_cast<BluezBus *>(self)->listener_.*tell)(path, signal); });
}

void BluezBus::unfollow()
{
    for (const unsigned subscription : subscriptions_)
        g_dbus_connection_signal_unsubscribe(connection_, subscription);
    subscriptions_.clear();
    owner_.clear();
}

void BluezBus::fetch()
{
    struct Question {
        BluezBus *bus;
        std::string owner;
    };
    const auto answered = [](GObject *connection, GAsyncResult *result, gpointer data) {
        const std::unique_ptr<Question> question(static_cast<Question *>(data));
        take_answer(connection, result, [&](GVariant *answer, const GError *error) {
            if (question->bus->owner_ == question->owner)
                question->bus->take_objects(answer, error);
        });
    };
    g_dbus_connection_call(connection_, owner_.c_str(), "/", kObjectManager, "GetManagedObjects", nullptr,
                           G_VARIANT_TYPE("(a{oa{sa{sv}}})"), G_DBUS_CALL_FLAGS_NO_AUTO_START, kForever, cancellable_,
                           answered, new Question{this, owner_});
}

void BluezBus::take_objects(GVariant *reply, const GError *error)
{
    if (!reply) {
        fail(bluez_error(error));
        return;
    }
    trouble_.reset();
    listener_.managed_objects(reply);
}

void BluezBus::fail(const PortError &error)
{
    if (trouble_ && std::string_view(trouble_->what()) == error.what())
        return;
    trouble_ = error;
    log_line(DLOG_WARN, kPortTag, std::string("no Bluetooth devices are known: ") + error.what());
}

void BluezBus::need_daemon() const
{
    if (!connection_)
        throw no_bus_error();
    if (owner_.empty())
        throw no_daemon_error();
}

Variant BluezBus::call(const Call &call, std::chrono::milliseconds patience)
{
    const Variant arguments(call.arguments ? g_variant_ref_sink(call.arguments) : nullptr);
    need_daemon();
    sent_ = true;
    GlibError error;
    Variant reply(g_dbus_connection_call_sync(
        connection_, owner_.c_str(), call.path.c_str(), call.interface, call.method, arguments.get(), nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(std::max(patience, 1ms).count()), nullptr, error.place()));
    if (!reply)
        throw bluez_error(error.get());
    return reply;
}

void BluezBus::start(const Call &call, std::function<void(const std::optional<PortError> &)> done)
{
    const Variant arguments(call.arguments ? g_variant_ref_sink(call.arguments) : nullptr);
    need_daemon();
    sent_ = true;
    using Done = std::function<void(const std::optional<PortError> &)>;
    const auto answered = [](GObject *connection, GAsyncResult *result, gpointer data) {
        const std::unique_ptr<Done> heard(static_cast<Done *>(data));
        take_answer(connection, result, [&](GVariant *answer, const GError *error) {
            (*heard)(answer ? std::nullopt : std::optional(bluez_error(error)));
        });
    };
    g_dbus_connection_call(connection_, owner_.c_str(), call.path.c_str(), call.interface, call.method, arguments.get(),
                           nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, cancellable_, answered,
                           new Done(std::move(done)));
}

BluezBus::Call BluezBus::setting(const std::string &path, const char *interface, const char *property, GVariant *value)
{
    return {path, kProperties, "Set", g_variant_new("(ssv)", interface, property, value)};
}

} // namespace vesk_port
