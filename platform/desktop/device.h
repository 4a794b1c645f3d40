#pragma once
/* A registered device as the desktop port knows it, whichever service it comes from. */

#include <cstdint>
#include <string>
#include <string_view>

namespace vesk_port {

/* MAC texts stand as they were given: perhaps in lower case or with '-', or empty. */
struct Device {
    int64_t id = 0; /* given by the service; never used twice while the service is open */
    std::string name;
    std::string bt_mac;
    std::string wifi_mac;
    std::string p2p_mac;
    int32_t type = 0;
    int32_t icon = 0;
    int32_t status = 0; /* 0 allowed, 1 denied */

    bool operator==(const Device &) const = default;
};

/* Which of a device's addresses a MAC is: the numbers that rdm.h gives the kinds. */
enum class MacKind { bluetooth = 1, wifi = 2, p2p = 3 };

/* The address as addresses are compared: upper case, ':' between the groups. */
std::string normal_mac(std::string_view mac);

/* Whether an address of the device, of that kind, is `mac` in any form. An empty text is no address. */
bool has_address(const Device &device, std::string_view mac, MacKind kind);

} // namespace vesk_port
