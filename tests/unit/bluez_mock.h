#pragma once
/* A mock of bluetoothd on a bus of the test's own. DBUS_SYSTEM_BUS_ADDRESS names that bus as long as this lives, for
 * this process and for those that it starts. */

#include <filesystem>
#include <gio/gio.h>
#include <string>

#include "desktop/glib_owner.h"

class BluezMock {
public:
    /* `policy` is added to the bus's policy, which allows everything. Neither the bus nor the daemon runs yet. */
    explicit BluezMock(std::filesystem::path folder, const std::string &policy = "");
    ~BluezMock();
    BluezMock(const BluezMock &) = delete;
    BluezMock &operator=(const BluezMock &) = delete;

    void start_bus();
    void stop_bus();

    /* Returns once it owns org.bluez. */
    void start_daemon();

    /* Both return once it is over. */
    void kill_daemon();
    void freeze();
    void thaw();

    /* Adapter `number` is hci0, hci1 and so on; a device's address ends with `last`. */
    void add_adapter(int number = 0);
    void unplug(int number = 0);
    void add_stranger(int last, const std::string &name, int adapter = 0);
    void pair(int last, int adapter = 0);
    void add_paired(int last, const std::string &name, int adapter = 0);
    void remove(int last, int adapter = 0);

    /* Changes a property of a device as bluetoothd does by itself; takes the floating value. */
    void set(int last, const char *property, GVariant *value, int adapter = 0);
    bool is_blocked(int last, int adapter = 0);
    bool is_there(int last, int adapter = 0);

    /* What RemoveDevice answers from now on, as a statement of Python. */
    void on_removal(const std::string &statement, int adapter = 0);

    static std::string address(int last);
    static std::string path(int last, int adapter = 0);

    /* A call to the mock; takes the floating arguments. */
    vesk_port::GlibOwner<GVariant, g_variant_unref> call(const std::string &path, const char *interface,
                                                         const char *method, GVariant *arguments);

    /* As somebody else on the bus: the names there (as), and what an agent of one of them answers to a request. */
    vesk_port::GlibOwner<GVariant, g_variant_unref> bus_names();
    std::string ask_agent(const std::string &name);

    /* The calls and signals so far, one a line. */
    std::string log() const;

private:
    void connect();

    std::filesystem::path folder_;
    std::string address_;
    GDBusConnection *control_ = nullptr;
    GPid bus_ = 0;
    GPid daemon_ = 0;
};
