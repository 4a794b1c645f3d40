#pragma once
/* What the tests of the registered-device service share: the list, and what a callback hears. */

#include <cstring>
#include <string>
#include <vector>

#include "desktop/device_store.h"
#include "port_fixture.h"
#include "rdm.h"

inline std::string text_of(const char *field, size_t size)
{
    return {field, strnlen(field, size)};
}

inline std::vector<RdmDeviceInfo> devices()
{
    RdmDeviceInfo *list = nullptr;
    size_t count = 0;
    if (rdm_get_list(&list, &count) != 0)
        return {};
    std::vector<RdmDeviceInfo> copy(list, list + count);
    rdm_free_list(list);
    return copy;
}

inline std::string name_of(const RdmDeviceInfo &info)
{
    return text_of(info.name, sizeof info.name);
}

/* What one callback has heard. */
struct Heard {
    std::vector<RdmDeviceInfo> records;
    int handle = 0;

    Heard() { EXPECT_EQ(rdm_callback_register(hear, this, &handle), 0); }
    ~Heard() { rdm_callback_deregister(handle); }

    static int hear(void *self, RdmDeviceInfo *info)
    {
        static_cast<Heard *>(self)->records.push_back(*info);
        return 0;
    }
};

class PortDevices : public PortTest {
protected:
    PortDevices() { EXPECT_EQ(rdm_init(), 0); }
    ~PortDevices() override
    {
        while (rdm_deinit() == 0) {
        }
    }
};

inline vesk_port::Device phone(const std::string &name, const std::string &wifi_mac)
{
    vesk_port::Device device;
    device.name = name;
    device.wifi_mac = wifi_mac;
    device.type = 1;
    return device;
}
