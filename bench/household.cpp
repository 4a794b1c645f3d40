#include "household.h"

#include <array>
#include <cstdio>

namespace bench {

namespace {

struct Family {
    const char *name;
    int type;
    const char *picture;
};

constexpr std::array<Family, 6> kFamilies{{
    {"Phone", 1, "phone"},
    {"Tablet", 2, "tablet"},
    {"Television", 6, "tv"},
    {"Refrigerator", 9, "refrigerator"},
    {"Oven", 16, "oven"},
    {"Headphones", 21, "headphone"},
}};

} // namespace

std::vector<vesk_port::Device> household(int count)
{
    std::vector<vesk_port::Device> devices;
    for (int i = 0; i < count; ++i) {
        const Family &family = kFamilies[static_cast<size_t>(i) % kFamilies.size()];
        char mac[18];
        const auto number = static_cast<unsigned>(i);
        std::snprintf(mac, sizeof mac, "02:00:00:%02X:%02X:%02X", number >> 16 & 0xffU, number >> 8 & 0xffU,
                      number & 0xffU);
        vesk_port::Device device;
        device.name = std::string(family.name) + " " + std::to_string(i + 1);
        device.bt_mac = mac;
        device.type = family.type;
        device.status = i < kChangingRow ? 0 : 1;
        devices.push_back(device);
    }
    return devices;
}

std::string picture_of(const vesk_port::Device &device)
{
    for (const Family &family : kFamilies) {
        if (family.type == device.type)
            return std::string("r_icon_convergence_") + family.picture + ".webp";
    }
    return {};
}

} // namespace bench
