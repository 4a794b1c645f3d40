#pragma once
/* One device in the words of the command line and in JSON. */

#include <array>
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

#include "desktop/device.h"

namespace veskctl {

struct Address {
    const char *member; /* in JSON */
    std::string vesk_port::Device::*mac;
};

inline constexpr std::array kAddresses{
    Address{"bt", &vesk_port::Device::bt_mac},
    Address{"wifi", &vesk_port::Device::wifi_mac},
    Address{"p2p", &vesk_port::Device::p2p_mac},
};

/* A family's number or name, such as 1 or "phone". Both throw PortError for a word that is neither. */
int32_t type_of(const std::string &word);
int32_t status_of(const std::string &word);

std::string type_word(int32_t type);
std::string status_word(int32_t status);

/* All names of families, separated by commas. */
std::string type_names();

/* Throws PortError unless a device can have the name. */
void check_name(const std::string &name);

/* Throws PortError unless the device can be registered: a name that fits, addresses of the right form, and one address
 * at least, since the service knows a device by its addresses. */
void check_device(const vesk_port::Device &device);

nlohmann::json json_of(const vesk_port::Device &device);

} // namespace veskctl
