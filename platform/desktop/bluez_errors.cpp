#include "bluez_errors.h"

#include <algorithm>
#include <cerrno>
#include <gio/gio.h>
#include <string_view>

#include "glib_owner.h"

namespace vesk_port {

namespace {

struct Failure {
    int code;
    const char *sentence;
};

constexpr Failure kNoDaemon = {-EHOSTDOWN, "bluetoothd does not run. Start it with: systemctl start bluetooth"};
constexpr Failure kNoBus = {-EHOSTDOWN, "the system bus cannot be reached. Start it, or name it in "
                                        "DBUS_SYSTEM_BUS_ADDRESS."};
constexpr Failure kRefused = {-EACCES, "the bus or bluetoothd does not allow this to the user. Allow it in the bus "
                                       "policy of org.bluez, in /etc/dbus-1/system.d."};
constexpr Failure kSilent = {-ETIMEDOUT, "bluetoothd does not answer. Look at it with: systemctl status bluetooth"};
constexpr Failure kGone = {-ENODEV, "bluetoothd does not know the device any more."};
constexpr Failure kOff = {-ENETDOWN, "Bluetooth is switched off. Switch it on with: bluetoothctl power on"};

struct NamedFailure {
    std::string_view name;
    Failure failure;
};

constexpr NamedFailure kFailures[] = {
    {"org.freedesktop.DBus.Error.AccessDenied", kRefused},
    {"org.bluez.Error.NotAuthorized", kRefused},
    {"org.bluez.Error.NotPermitted", kRefused},
    {"org.freedesktop.DBus.Error.NoReply", kSilent},
    {"org.freedesktop.DBus.Error.Timeout", kSilent},
    {"org.freedesktop.DBus.Error.TimedOut", kSilent},
    {"org.freedesktop.DBus.Error.ServiceUnknown", kNoDaemon},
    {"org.freedesktop.DBus.Error.NameHasNoOwner", kNoDaemon},
    {"org.freedesktop.DBus.Error.Disconnected", kNoBus},
    {"org.freedesktop.DBus.Error.UnknownObject", kGone},
    {"org.freedesktop.DBus.Error.UnknownMethod", kGone},
    {"org.bluez.Error.DoesNotExist", kGone},
    {"org.bluez.Error.NotReady", kOff},
};

PortError error_of(const Failure &failure)
{
    return {failure.code, failure.sentence};
}

} // namespace

PortError bluez_error(const GError *error)
{
    const GlibText name(g_dbus_error_get_remote_error(error));
    if (!name) {
        const bool silent = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT);
        return error_of(silent ? kSilent : kNoBus);
    }
    const NamedFailure *named = std::ranges::find(kFailures, name.get(), &NamedFailure::name);
    if (named != std::end(kFailures))
        return error_of(named->failure);
    const GlibOwner<GError, g_error_free> copy(g_error_copy(error));
    g_dbus_error_strip_remote_error(copy.get());
    return {-EIO, "bluetoothd refused: " + std::string(copy->message) + " (" + name.get() + ")."};
}

PortError no_bus_error()
{
    return error_of(kNoBus);
}

PortError no_daemon_error()
{
    return error_of(kNoDaemon);
}

} // namespace vesk_port
