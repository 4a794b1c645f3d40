#include "bluez_mock.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "port_fixture.h"

using vesk_port::GlibError;

namespace {

constexpr const char *kMock = "org.bluez.Mock";
constexpr const char *kObjectMock = "org.freedesktop.DBus.Mock";
constexpr const char *kDevice = "org.bluez.Device1";

std::string adapter_name(int number)
{
    return "hci" + std::to_string(number);
}

GPid spawn(std::vector<std::string> words, GSpawnFlags flags, int *out)
{
    std::vector<char *> argv;
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    GPid pid = 0;
    GlibError error;
    if (!g_spawn_async_with_pipes(nullptr, argv.data(), nullptr,
                                  static_cast<GSpawnFlags>(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_SEARCH_PATH | flags),
                                  nullptr, nullptr, &pid, nullptr, out, nullptr, error.place()))
        throw std::runtime_error(error->message);
    return pid;
}

void end(GPid &pid)
{
    if (!pid)
        return;
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    pid = 0;
}

} // namespace

BluezMock::BluezMock(std::filesystem::path folder, const std::string &policy)
    : folder_(std::move(folder)), address_("unix:path=" + (folder_ / "bus").string())
{
    write_file(folder_ / "bus.conf",
               "<busconfig><type>session</type><listen>" + address_ +
                   "</listen><auth>EXTERNAL</auth><policy context='default'><allow send_destination='*'/><allow "
                   "receive_sender='*'/><allow own='*'/>" +
                   policy + "</policy></busconfig>");
    setenv("DBUS_SYSTEM_BUS_ADDRESS", address_.c_str(), 1);
}

BluezMock::~BluezMock()
{
    end(daemon_);
    stop_bus();
    unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

void BluezMock::start_bus()
{
    std::filesystem::remove(folder_ / "bus");
    int out = -1;
    bus_ = spawn(
        {"dbus-daemon", "--nofork", "--nopidfile", "--print-address", "--config-file", (folder_ / "bus.conf").string()},
        G_SPAWN_STDERR_TO_DEV_NULL, &out);
    std::array<char, 256> line{};
    const ssize_t length = read(out, line.data(), line.size()); /* it tells the address once it listens */
    close(out);
    if (length <= 0)
        throw std::runtime_error("dbus-daemon does not start");
    connect();
}

void BluezMock::connect()
{
    GlibError error;
    control_ = g_dbus_connection_new_for_address_sync(
        address_.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, error.place());
    if (!control_)
        throw std::runtime_error(error->message);
}

void BluezMock::stop_bus()
{
    g_clear_object(&control_);
    end(bus_);
}

void BluezMock::start_daemon()
{
    bool there = false;
    const auto appeared = [](GDBusConnection *, const gchar *, const gchar *, gpointer flag) {
        *static_cast<bool *>(flag) = true;
    };
    const unsigned watch = g_bus_watch_name_on_connection(control_, "org.bluez", G_BUS_NAME_WATCHER_FLAGS_NONE,
                                                          appeared, nullptr, &there, nullptr);
    daemon_ = spawn(
        {"/usr/bin/python3", "-m", "dbusmock", "--template", "bluez5", "--logfile", (folder_ / "mock.log").string()},
        G_SPAWN_STDERR_TO_DEV_NULL, nullptr);
    const bool started = run_until([&] { return there; });
    g_bus_unwatch_name(watch);
    if (!started)
        throw std::runtime_error("the mock does not start; python3-dbusmock is needed");
    /* It owns the name before it has its template: the call waits for it. */
    call("/", "org.freedesktop.DBus.ObjectManager", "GetManagedObjects", nullptr);
}

void BluezMock::kill_daemon()
{
    end(daemon_);
}

void BluezMock::freeze()
{
    kill(daemon_, SIGSTOP);
    waitpid(daemon_, nullptr, WUNTRACED);
}

void BluezMock::thaw()
{
    kill(daemon_, SIGCONT);
}

vesk_port::GlibOwner<GVariant, g_variant_unref> BluezMock::call(const std::string &path, const char *interface,
                                                                const char *method, GVariant *arguments)
{
    GlibError error;
    GVariant *reply = g_dbus_connection_call_sync(control_, "org.bluez", path.c_str(), interface, method, arguments,
                                                  nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, error.place());
    if (!reply)
        throw std::runtime_error(std::string(method) + ": " + error->message);
    return vesk_port::GlibOwner<GVariant, g_variant_unref>(reply);
}

std::string BluezMock::address(int last)
{
    char text[4];
    g_snprintf(text, sizeof text, "%02X", static_cast<unsigned>(last) & 0xff);
    return std::string("AA:BB:CC:DD:EE:") + text;
}

std::string BluezMock::path(int last, int adapter)
{
    std::string end = "dev_" + address(last);
    for (char &c : end)
        c = c == ':' ? '_' : c;
    return "/org/bluez/" + adapter_name(adapter) + "/" + end;
}

void BluezMock::add_adapter(int number)
{
    call("/", kMock, "AddAdapter", g_variant_new("(ss)", adapter_name(number).c_str(), "computer"));
}

void BluezMock::unplug(int number)
{
    call("/", kMock, "RemoveAdapterWithDevices", g_variant_new("(s)", adapter_name(number).c_str()));
}

void BluezMock::add_stranger(int last, const std::string &name, int adapter)
{
    call("/", kMock, "AddDevice",
         g_variant_new("(sss)", adapter_name(adapter).c_str(), address(last).c_str(), name.c_str()));
}

void BluezMock::pair(int last, int adapter)
{
    call("/", kMock, "PairDevice",
         g_variant_new("(ssi)", adapter_name(adapter).c_str(), address(last).c_str(), 0x5a020c));
}

void BluezMock::add_paired(int last, const std::string &name, int adapter)
{
    add_stranger(last, name, adapter);
    pair(last, adapter);
}

void BluezMock::remove(int last, int adapter)
{
    call("/org/bluez/" + adapter_name(adapter), "org.bluez.Adapter1", "RemoveDevice",
         g_variant_new("(o)", path(last, adapter).c_str()));
}

void BluezMock::set(int last, const char *property, GVariant *value, int adapter)
{
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&properties, "{sv}", property, value);
    call(path(last, adapter), kObjectMock, "UpdateProperties", g_variant_new("(sa{sv})", kDevice, &properties));
}

bool BluezMock::is_blocked(int last, int adapter)
{
    const auto reply =
        call(path(last, adapter), "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", kDevice, "Blocked"));
    GVariant *value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    const vesk_port::GlibOwner<GVariant, g_variant_unref> owner(value);
    return g_variant_get_boolean(value);
}

bool BluezMock::is_there(int last, int adapter)
{
    const auto reply = call("/", "org.freedesktop.DBus.ObjectManager", "GetManagedObjects", nullptr);
    const vesk_port::GlibOwner<GVariant, g_variant_unref> objects(g_variant_get_child_value(reply.get(), 0));
    const vesk_port::GlibOwner<GVariant, g_variant_unref> object(
        g_variant_lookup_value(objects.get(), path(last, adapter).c_str(), nullptr));
    return object != nullptr;
}

void BluezMock::on_removal(const std::string &statement, int adapter)
{
    call("/org/bluez/" + adapter_name(adapter), kObjectMock, "AddMethod",
         g_variant_new("(sssss)", "org.bluez.Adapter1", "RemoveDevice", "o", "", statement.c_str()));
}

vesk_port::GlibOwner<GVariant, g_variant_unref> BluezMock::bus_names()
{
    const vesk_port::GlibOwner<GVariant, g_variant_unref> reply(
        g_dbus_connection_call_sync(control_, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ListNames", nullptr,
                                    nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr));
    return vesk_port::GlibOwner<GVariant, g_variant_unref>(g_variant_get_child_value(reply.get(), 0));
}

std::string BluezMock::ask_agent(const std::string &name)
{
    if (!name.starts_with(':') || name == g_dbus_connection_get_unique_name(control_))
        return "";
    GlibError error;
    const vesk_port::GlibOwner<GVariant, g_variant_unref> reply(g_dbus_connection_call_sync(
        control_, name.c_str(), "/org/vesk/agent", "org.bluez.Agent1", "RequestConfirmation",
        g_variant_new("(ou)", path(1).c_str(), 1234), nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, error.place()));
    return error ? error->message : "agreed";
}

std::string BluezMock::log() const
{
    return contents_of(folder_ / "mock.log");
}
