#pragma once
/* What BlueZ has told of devices, and the list that follows from it. It knows neither the bus nor a clock: messages are
 * handed to it with their time, so each order of events can be tried by itself. */

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bluez_choice.h"
#include "bluez_record.h"
#include "device_service.h"

namespace vesk_port {

class BluezCache {
public:
    using Time = std::chrono::milliseconds; /* since any moment, the same one throughout */

    explicit BluezCache(BluezChoice choice) : choice_(std::move(choice)) {}

    /* --- What the bus tells. The messages' types are those of D-Bus. --- */

    void managed_objects(GVariant *reply, Time now);                    /* (a{oa{sa{sv}}}): all there is */
    void interfaces_added(GVariant *signal, Time now);                  /* (oa{sa{sv}}) */
    void interfaces_removed(GVariant *signal, Time now);                /* (oas) */
    void properties_changed(const std::string &path, GVariant *signal); /* (sa{sv}as) */
    void daemon_lost(Time now);

    /* --- What the user does --- */

    /* A device as one adapter knows it. */
    struct Target {
        std::string path;
        std::string adapter;
    };

    /* What the device with the address consists of. Both throw PortError: -ENODEV when no registered device has the
     * address, -EHOSTDOWN while its adapter or the daemon is away; the second also -EPERM for the last input device
     * that is connected, without which nobody could steer the panel. */
    std::vector<Target> targets_to_change(std::string_view mac) const;
    std::vector<Target> targets_to_lose(std::string_view mac) const;

    /* Calls that have succeeded; their signal may come later or have come before. */
    void blocked(const std::string &path, bool blocked);
    void removed(const std::string &path);

    /* A removal is under way, and the device leaves the list at once; or it was refused, and the device is back. */
    void hide(const std::string &path, bool hidden);

    /* --- What follows --- */

    /* The first `most` devices. Those that were found together stand with the connected ones first and then
     * by name; later ones stand behind. */
    std::vector<Device> list(size_t most = kListedDevices);

    /* Takes the list as it is for reported. */
    void report_nothing_yet();

    /* Ends what has had its time by now. True when the list is to be reported: it is not what was reported last, and
     * that was long enough ago. */
    bool advance(Time now);

    /* When to call advance() next: perhaps a moment that has passed, or nothing while nothing is due. */
    std::optional<Time> look_again() const;

    const BluezChoice &choice() const { return choice_; }

    /* The name of a device at a path, a stranger too; empty when none is there. */
    std::string name_at(const std::string &path) const;

    /* The adapters that are there, those that the user leaves out included. */
    std::vector<BluezAdapter> adapters() const;

private:
    enum class Presence {
        present,
        leaving, /* BlueZ has removed it; whether alone or with its adapter will be seen */
        held     /* its adapter or the daemon is away and may come back */
    };

    struct Entry {
        BluezRecord record;
        Presence presence = Presence::present;
        bool hidden = false; /* a removal is under way */
        Time until{};        /* when a held one is given up */
    };

    struct Adapter {
        BluezAdapter facts;
        bool present = true;
    };

    using Entries = std::map<std::string, Entry>; /* by path */
    using Row = std::vector<const Entries::value_type *>;
    using Rows = std::map<std::string, Row>; /* by address */

    void add_adapter(const std::string &path, GVariant *properties, Time now);
    void add_device(const std::string &path, GVariant *properties);
    void remove_device(const std::string &path, Time now);
    void lose_adapter(Adapter &adapter, Time now);
    std::optional<Time> end_of_leaving() const;
    bool wanted(const BluezRecord &record) const;
    Rows rows() const;
    void place_new_devices(const Rows &rows);
    bool is_last_connected_input(const std::string &address) const;

    BluezChoice choice_;
    std::map<std::string, Adapter> adapters_; /* by path; those that are away stay known by their address */
    Entries entries_;
    std::optional<Time> first_leaving_; /* of those that leave now */
    Time last_leaving_{};
    std::map<std::string, int64_t> ids_;        /* by address */
    std::map<std::string, uint64_t> positions_; /* by address, of those that are registered */
    uint64_t last_position_ = 0;
    std::vector<Device> reported_;
    std::optional<Time> last_report_;
    bool changed_ = false;  /* the list may differ from what was reported */
    bool returned_ = false; /* a removal was refused since the last report */
};

} // namespace vesk_port
