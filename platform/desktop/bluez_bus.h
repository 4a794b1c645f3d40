#pragma once
/* The way to bluetoothd: a connection of its own to the system bus, which comes back when the bus does, the messages of
 * whoever is org.bluez now, and calls to it. */

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "glib_owner.h"
#include "port_error.h"

typedef struct _GCancellable GCancellable;
typedef struct _GDBusConnection GDBusConnection;

namespace vesk_port {

class BluezBus {
public:
    /* What comes from the bus: messages, with the path of the object that tells. All are called from the main loop or
     * inside the constructor. */
    struct Listener {
        virtual ~Listener() = default;
        virtual void managed_objects(GVariant *reply) = 0;
        virtual void interfaces_added(const std::string &path, GVariant *signal) = 0;
        virtual void interfaces_removed(const std::string &path, GVariant *signal) = 0;
        virtual void properties_changed(const std::string &path, GVariant *signal) = 0;
        virtual void daemon_lost() = 0;
    };

    /* Waits for the bus and for what bluetoothd knows, one second at most; whatever is missing then comes later. */
    explicit BluezBus(Listener &listener);

    /* Sends what is still to be sent. The calls that wait for an answer hear nothing more. */
    ~BluezBus();
    BluezBus(const BluezBus &) = delete;
    BluezBus &operator=(const BluezBus &) = delete;

    bool connected() const { return connection_ != nullptr; }
    bool daemon_runs() const { return !owner_.empty(); }

    /* Why nothing is known of devices; nothing when all is well. */
    const std::optional<PortError> &trouble() const { return trouble_; }

    /* A call to an object of bluetoothd. `arguments` may be floating; null for none. */
    struct Call {
        std::string path;
        const char *interface;
        const char *method;
        GVariant *arguments;
    };

    /* Waits for the answer, and returns it, as long as `patience`. Throws PortError. */
    GlibOwner<GVariant, g_variant_unref> call(const Call &call, std::chrono::milliseconds patience);

    /* `done` is called from the main loop with what failed, if anything. */
    void start(const Call &call, std::function<void(const std::optional<PortError> &)> done);

    /* The arguments that make `call` set a property; `value` may be floating. */
    static Call setting(const std::string &path, const char *interface, const char *property, GVariant *value);

    /* Null while the bus is away. */
    GDBusConnection *connection() const { return connection_; }
    const std::string &daemon() const { return owner_; }

private:
    void open(std::chrono::milliseconds patience);
    void adopt(GDBusConnection *connection);
    void lose_connection();
    void closed();
    void owner_changed(const std::string &now);
    void connect_later();
    void connect();
    void ask_for_owner();
    void follow(const std::string &owner);
    void unfollow();
    template <auto tell>
    static void hear(GDBusConnection *connection, const char *sender, const char *path, const char *interface,
                     const char *signal, GVariant *arguments, void *self);
    void fetch();
    void take_objects(GVariant *reply, const GError *error);
    void fail(const PortError &error);
    void need_daemon() const;

    Listener &listener_;
    GCancellable *cancellable_;
    GDBusConnection *connection_ = nullptr;
    std::string owner_; /* unique name of bluetoothd; empty: it does not run */
    std::vector<unsigned> subscriptions_;
    unsigned owner_subscription_ = 0;
    unsigned long closed_handler_ = 0;
    GlibSource retry_; /* while the bus is away */
    std::chrono::milliseconds retry_after_;
    std::optional<PortError> trouble_;
    bool sent_ = false;
};

} // namespace vesk_port
