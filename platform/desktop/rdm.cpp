#include "rdm.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <glib.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "device_service.h"
#include "fence.h"
#include "glib_owner.h"
#include "log.h"
#include "port_call.h"
#include "rdm_service.h"

namespace vesk_port {

namespace {

/* Listeners hear of a change at once, and of what follows in this distance, in microseconds: a list that is built anew
 * for each of many changes keeps the keys waiting. */
constexpr gint64 kReportGap = 150'000;

/* A decision that the service has not carried out. */
struct Refusal {
    std::string mac;
    MacKind kind;
};

struct Listener {
    int handle;
    rdm_callback callback;
    void *user_data;
    std::vector<Device> known;     /* the list as the listener has heard of it, or read it itself */
    std::vector<Refusal> refusals; /* to be answered with the device as it is */
    bool behind = false; /* has not read the list since the last report, so the rest of the comparison is to come */
};

/* The process's one connection to the service; everything belongs to the main loop's thread. */
struct Service {
    int users = 0;
    std::unique_ptr<DeviceService> devices;
    std::vector<Device> last; /* the list as it was read last by a comparison or at the opening */
    std::string failure;      /* the sentence of the last comparison, when that could not read the list */
    std::vector<Listener> listeners;
    int last_handle = 0;
    int called = 0;        /* the listener whose callback is running, or 0 */
    GlibSource comparison; /* will look for changes */
    gint64 last_report = -kReportGap;
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

Listener *find_listener(int handle)
{
    std::vector<Listener> &all = service().listeners;
    const auto found = std::ranges::find(all, handle, &Listener::handle);
    return found == all.end() ? nullptr : &*found;
}

std::vector<int> handles()
{
    std::vector<int> all;
    std::ranges::transform(service().listeners, std::back_inserter(all), &Listener::handle);
    return all;
}

std::vector<Device> read_list(Service &self)
{
    try {
        auto list = self.devices->list();
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

/* The device as it is, or as it last was; a record of the address alone where nobody knows it any more. */
RdmDeviceInfo answer_to(const Refusal &refusal, const std::vector<Device> &now, const std::vector<Device> &before)
{
    for (const std::vector<Device> *list : {&now, &before}) {
        for (const Device &device : *list) {
            if (has_address(device, refusal.mac, refusal.kind))
                return record_of(device);
        }
    }
    RdmDeviceInfo info{};
    switch (refusal.kind) {
    case MacKind::bluetooth:
        fill(info.bt_mac, refusal.mac);
        break;
    case MacKind::wifi:
        fill(info.wifi_mac, refusal.mac);
        break;
    case MacKind::p2p:
        fill(info.p2p_mac, refusal.mac);
        break;
    }
    return info;
}

/* The next thing that the listener has to hear of, which it knows from then on: an answer to a refused decision, then
 * a device that is new or different, then one that is gone, as it last was. */
std::optional<RdmDeviceInfo> next_report(Listener &listener, const std::vector<Device> &now)
{
    if (!listener.refusals.empty()) {
        const RdmDeviceInfo answer = answer_to(listener.refusals.front(), now, listener.known);
        listener.refusals.erase(listener.refusals.begin());
        return answer;
    }
    for (const Device &device : now) {
        const auto known = std::ranges::find(listener.known, device.id, &Device::id);
        if (known == listener.known.end())
            listener.known.push_back(device);
        else if (*known != device)
            *known = device;
        else
            continue;
        return record_of(device);
    }
    for (auto known = listener.known.begin(); known != listener.known.end(); ++known) {
        if (std::ranges::find(now, known->id, &Device::id) != now.end())
            continue;
        const RdmDeviceInfo gone = record_of(*known);
        listener.known.erase(known);
        return gone;
    }
    return std::nullopt;
}

/* The listener may end itself, others or the service meanwhile. */
void call(Listener &listener, RdmDeviceInfo info)
{
    const rdm_callback callback = listener.callback;
    void *const user_data = listener.user_data;
    listener.behind = true;
    const int outer = std::exchange(service().called, listener.handle);
    callback(user_data, &info);
    service().called = outer;
}

void compare_lists();

void compare_in(gint64 microseconds)
{
    Service &self = service();
    if (self.comparison)
        return;
    const auto compare = [](gpointer) -> gboolean {
        service().comparison.let_end();
        fenced("reporting the changed devices", compare_lists);
        return G_SOURCE_REMOVE;
    };
    const auto milliseconds = static_cast<unsigned>((microseconds + 999) / 1000);
    self.comparison = GlibSource(g_timeout_add(milliseconds, compare, nullptr));
}

/* Reports from the main loop what has changed, never inside the call that made the change. */
void compare_soon()
{
    const gint64 next = service().last_report + kReportGap;
    compare_in(std::max<gint64>(0, next - g_get_monotonic_time()));
}

/* One report to each listener: there is a frame between two of them, and who reads the list has no need of more. */
void compare_lists()
{
    Service &self = service();
    try {
        self.last = read_list(self);
        self.failure.clear();
    } catch (const PortError &error) {
        if (self.failure != error.what())
            report_failure("reading the changed devices", error.code(), error.what());
        self.failure = error.what();
        return;
    }
    const std::vector<Device> now = self.last;
    for (const int handle : handles()) {
        Listener *listener = find_listener(handle);
        if (!listener)
            continue;
        listener->behind = false;
        if (const std::optional<RdmDeviceInfo> report = next_report(*listener, now)) {
            self.last_report = g_get_monotonic_time();
            call(*listener, *report);
        }
    }
    if (std::ranges::any_of(self.listeners, &Listener::behind))
        compare_in(0);
}

/* A screen that was built for the decision is built anew from the truth. */
void answer_refusal(const char *mac, int kind)
{
    if (!mac || service().users == 0)
        return;
    for (Listener &listener : service().listeners)
        listener.refusals.push_back({mac, static_cast<MacKind>(kind)});
    compare_soon();
}

/* What this process removes itself is not reported back to it: the remover reads the list again. What follows into the
 * list is no news then either. */
void forget_removed(std::vector<Device> &known, const std::vector<Device> &now)
{
    std::vector<Device> next;
    for (const Device &device : now) {
        const auto before = std::ranges::find(known, device.id, &Device::id);
        next.push_back(before == known.end() ? device : *before);
    }
    known = std::move(next);
}

void after_removal(Service &self)
{
    const std::vector<Device> now = self.devices->list();
    forget_removed(self.last, now);
    for (Listener &listener : self.listeners)
        forget_removed(listener.known, now);
}

void close_service(Service &self)
{
    self.comparison.end();
    self.devices.reset();
    self.last.clear();
    self.failure.clear();
    /* Whoever has not deregistered may be about to be unloaded. */
    self.listeners.clear();
}

} // namespace

void emit(const RdmDeviceInfo &info)
{
    for (const int handle : handles()) {
        if (Listener *listener = find_listener(handle))
            call(*listener, info);
    }
}

} // namespace vesk_port

using namespace vesk_port;

int rdm_init(void)
{
    return port_call(__func__, [] {
        Service &self = service();
        if (self.users == 0) {
            auto devices = make_device_service();
            self.last = devices->list();
            devices->on_changed(compare_soon);
            self.devices = std::move(devices);
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
        if (Listener *reader = find_listener(service().called)) {
            reader->known = devices;
            reader->refusals.clear();
            reader->behind = false;
        }
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
    const int result = port_call(__func__, [&] {
        if (status != 0 && status != 1)
            throw PortError(-EINVAL, std::to_string(status) + " is no status; there are 0 allowed and 1 denied.");
        open_service().devices->set_status(given_mac(mac), static_cast<MacKind>(mac_kind), status);
        compare_soon();
    });
    if (result != 0)
        fenced(__func__, [&] { answer_refusal(mac, mac_kind); });
    return result;
}

int rdm_remove_device(const char *mac, int mac_kind)
{
    return port_call(__func__, [&] {
        Service &self = open_service();
        self.devices->remove(given_mac(mac), static_cast<MacKind>(mac_kind));
        fenced("reading the list after a removal", [&] { after_removal(self); });
    });
}

int rdm_remove_all(void)
{
    return port_call(__func__, [] {
        Service &self = open_service();
        self.devices->remove_all();
        fenced("reading the list after a removal", [&] { after_removal(self); });
    });
}

int rdm_callback_register(rdm_callback callback, void *user_data, int *handle)
{
    return port_call(__func__, [&] {
        if (!callback || !handle)
            throw PortError(-EINVAL, "the callback or the place for its handle is missing.");
        Service &self = open_service();
        self.listeners.push_back({++self.last_handle, callback, user_data, self.last, {}});
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
