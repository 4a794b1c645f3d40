#include "rdm.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <glib.h>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "device_store.h"
#include "file_watch.h"
#include "log.h"
#include "paths.h"
#include "port_call.h"
#include "rdm_service.h"

namespace vesk_port {

namespace {

struct Listener {
    int handle;
    rdm_callback callback;
    void *user_data;
};

/* The process's one connection to the service; everything belongs to the main loop's thread. */
struct Service {
    int users = 0;
    std::unique_ptr<DeviceStore> store;
    std::unique_ptr<FileWatch> watch;
    std::vector<Device> snapshot; /* the table as the listeners know it */
    std::vector<Listener> listeners;
    int last_handle = 0;
    unsigned comparison = 0; /* the source that will look for changes, or 0 */
    bool unreadable = false; /* the list, when it was read last */
};

Service &service()
{
    static Service the_service;
    return the_service;
}

Service &open_service()
{
    if (service().users == 0)
        throw PortError(-ENOTCONN, "the service is not open; rdm_init comes first and has to succeed.");
    return service();
}

std::vector<Device> read_list(Service &self)
{
    try {
        auto list = self.store->list();
        if (std::exchange(self.unreadable, false))
            log_line(DLOG_INFO, kPortTag, kReadableAgain);
        return list;
    } catch (const PortError &) {
        self.unreadable = true;
        throw;
    }
}

/* Fills a field of the record; a text as long as the field has no terminator. */
template <size_t size> void fill(char (&field)[size], const std::string &text)
{
    std::memcpy(field, text.data(), std::min(size, text.size()));
}

RdmDeviceInfo record_of(const Device &device)
{
    RdmDeviceInfo info{};
    fill(info.name, device.name);
    fill(info.bt_mac, device.bt_mac);
    fill(info.wifi_mac, device.wifi_mac);
    fill(info.p2p_mac, device.p2p_mac);
    info.type = device.type;
    info.icon = device.icon;
    info.status = device.status;
    return info;
}

/* What the listeners have to hear of: each device that is new or different, then each that is gone, as it last was. */
std::vector<RdmDeviceInfo> changes_between(const std::vector<Device> &before, const std::vector<Device> &now)
{
    std::vector<RdmDeviceInfo> changes;
    for (const Device &device : now) {
        if (std::ranges::find(before, device) == before.end())
            changes.push_back(record_of(device));
    }
    for (const Device &device : before) {
        if (std::ranges::find(now, device.id, &Device::id) == now.end())
            changes.push_back(record_of(device));
    }
    return changes;
}

void report_changes()
{
    Service &self = service();
    std::vector<Device> now;
    try {
        now = read_list(self);
    } catch (const PortError &error) {
        report_failure("reading the changed devices", error.code(), error.what());
        return;
    }
    const std::vector<RdmDeviceInfo> changes = changes_between(self.snapshot, now);
    self.snapshot = std::move(now);
    for (const RdmDeviceInfo &info : changes)
        emit(info);
}

/* Reports from the main loop what this process has changed itself; the file's watch may be missing, and a callback
 * never comes inside the call that made the change. */
void report_changes_soon()
{
    Service &self = service();
    if (self.comparison)
        return;
    const auto compare = [](gpointer) -> gboolean {
        service().comparison = 0;
        report_changes();
        return G_SOURCE_REMOVE;
    };
    self.comparison = g_idle_add_full(G_PRIORITY_DEFAULT, compare, nullptr, nullptr);
}

void watch_file(Service &self)
{
    try {
        self.watch = std::make_unique<FileWatch>(devices_file(), report_changes);
    } catch (const PortError &error) {
        log_line(DLOG_WARN, kPortTag, std::string("changes made by other programs will not be seen: ") + error.what());
    }
}

void close_service(Service &self)
{
    if (self.comparison)
        g_source_remove(self.comparison);
    self.comparison = 0;
    self.watch.reset();
    self.store.reset();
    self.snapshot.clear();
    /* Whoever has not deregistered may be about to be unloaded. */
    self.listeners.clear();
}

} // namespace

/* Listeners may come and go while they are called, and the service may be closed. */
void emit(const RdmDeviceInfo &info)
{
    const std::vector<Listener> all = service().listeners;
    for (const Listener &listener : all) {
        const std::vector<Listener> &now = service().listeners;
        if (std::ranges::find(now, listener.handle, &Listener::handle) == now.end())
            continue;
        RdmDeviceInfo copy = info;
        listener.callback(listener.user_data, &copy);
    }
}

} // namespace vesk_port

using namespace vesk_port;

int rdm_init(void)
{
    return port_call(__func__, [] {
        Service &self = service();
        if (self.users == 0) {
            auto store = std::make_unique<DeviceStore>(devices_file());
            self.snapshot = store->list();
            self.store = std::move(store);
            watch_file(self);
        }
        ++self.users;
    });
}

int rdm_deinit(void)
{
    return port_call(__func__, [] {
        Service &self = open_service();
        if (--self.users == 0)
            close_service(self);
    });
}

int rdm_get_list(RdmDeviceInfo **list, size_t *count)
{
    return port_call(__func__, [&] {
        if (!list || !count)
            throw PortError(-EINVAL, "the place for the list or for its length is missing.");
        const std::vector<Device> devices = read_list(open_service());
        RdmDeviceInfo *records = nullptr;
        if (!devices.empty()) {
            records = static_cast<RdmDeviceInfo *>(std::calloc(devices.size(), sizeof *records));
            if (!records)
                throw std::bad_alloc();
            std::ranges::transform(devices, records, record_of);
        }
        *list = records;
        *count = devices.size();
    });
}

void rdm_free_list(RdmDeviceInfo *list)
{
    std::free(list);
}

namespace {

std::string_view given_mac(const char *mac)
{
    if (!mac)
        throw PortError(-EINVAL, "the address is missing.");
    return mac;
}

} // namespace

int rdm_set_status(const char *mac, int mac_kind, int status)
{
    return port_call(__func__, [&] {
        if (status != 0 && status != 1)
            throw PortError(-EINVAL, std::to_string(status) + " is no status; there are 0 allowed and 1 denied.");
        open_service().store->set_status(given_mac(mac), static_cast<MacKind>(mac_kind), status);
        report_changes_soon();
    });
}

/* What this process removes itself is not reported back to it: the remover reads the list again. */
int rdm_remove_device(const char *mac, int mac_kind)
{
    return port_call(__func__, [&] {
        Service &self = open_service();
        const int64_t id = self.store->remove(given_mac(mac), static_cast<MacKind>(mac_kind));
        std::erase_if(self.snapshot, [id](const Device &device) { return device.id == id; });
    });
}

int rdm_remove_all(void)
{
    return port_call(__func__, [] {
        Service &self = open_service();
        self.store->remove_all();
        self.snapshot.clear();
    });
}

int rdm_callback_register(rdm_callback callback, void *user_data, int *handle)
{
    return port_call(__func__, [&] {
        if (!callback || !handle)
            throw PortError(-EINVAL, "the callback or the place for its handle is missing.");
        Service &self = open_service();
        self.listeners.push_back({++self.last_handle, callback, user_data});
        *handle = self.last_handle;
    });
}

int rdm_callback_deregister(int handle)
{
    return port_call(__func__, [&] {
        if (std::erase_if(service().listeners, [&](const Listener &l) { return l.handle == handle; }) == 0)
            throw PortError(-ENOENT, "no callback has the handle " + std::to_string(handle) + ".");
    });
}
