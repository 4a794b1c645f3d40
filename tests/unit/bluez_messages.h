#pragma once
/* Messages of bluetoothd, made by hand, and a cache that takes them. */

#include <chrono>
#include <glib.h>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "desktop/bluez_cache.h"

/* Paths of adapter 0 or 1, and of a device that it knows; `last` is the last byte of its address. */
std::string adapter_path(int adapter = 0);
std::string device_path(int last, int adapter = 0);
std::string address_of(int last);

class BluezCacheTest : public testing::Test {
protected:
    using Time = vesk_port::BluezCache::Time;

    explicit BluezCacheTest(vesk_port::BluezChoice choice = {}) : cache(std::move(choice)) {}

    /* All there is: adapters by number. */
    void objects(std::vector<int> adapters);

    /* The objects appear. `properties` is a dictionary in GVariant's text format: "'Paired': <true>"; the device's
     * address comes by itself. */
    void plug(int adapter, const std::string &address = "");
    void add(int last, const std::string &properties, int adapter = 0);
    void add_raw(const std::string &path, const std::string &properties);

    /* A paired device with a name. */
    void pair(int last, const std::string &name, int adapter = 0);

    void change(int last, const std::string &properties, int adapter = 0);
    void remove(int last, int adapter = 0);
    void unplug(int adapter = 0);

    /* Time goes on; counts the reports, each at the moment at which the cache asked to be looked at. */
    int pass(Time duration);

    std::vector<std::string> names();
    vesk_port::Device device(int last);

    vesk_port::BluezCache cache;
    Time now{1000};
};
