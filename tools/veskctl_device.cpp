#include "veskctl_device.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <glib.h>
#include <optional>
#include <string_view>

#include "desktop/port_error.h"
#include "desktop/text.h"
#include "veskctl_table.h"

namespace veskctl {

using vesk_port::Device;
using vesk_port::PortError;

namespace {

constexpr size_t kNameSize = 128; /* bytes in the service's record */

/* Families by their number. */
constexpr std::array<std::string_view, 32> kTypes{
    "accessory", "phone",  "tablet", "wearable",   "computer", "input",      "tv",        "av",
    "signage",   "fridge", "washer", "dryer",      "floor-ac", "room-ac",    "system-ac", "purifier",
    "oven",      "range",  "vacuum", "smart-home", "printer",  "headphone",  "speaker",   "monitor",
    "board",     "iot",    "camera", "camcorder",  "cooktop",  "dishwasher", "microwave", "hood",
};

constexpr std::array<std::string_view, 2> kStatuses{"allow", "deny"};

struct Address {
    const char *member; /* in JSON, and the option on the command line */
    std::string Device::*mac;
};

constexpr std::array kAddresses{
    Address{"bt", &Device::bt_mac},
    Address{"wifi", &Device::wifi_mac},
    Address{"p2p", &Device::p2p_mac},
};

template <size_t count>
std::optional<int32_t> position_in(const std::array<std::string_view, count> &words, const std::string &word)
{
    const auto found = std::ranges::find(words, word);
    if (found == words.end())
        return std::nullopt;
    return static_cast<int32_t>(found - words.begin());
}

template <size_t count> std::string word_at(const std::array<std::string_view, count> &words, int32_t position)
{
    if (position >= 0 && static_cast<size_t>(position) < count)
        return std::string(words[static_cast<size_t>(position)]);
    return std::to_string(position);
}

[[noreturn]] void refuse(const std::string &sentence)
{
    throw PortError(-EINVAL, sentence);
}

std::string text_member(const std::string &member, const nlohmann::json &value)
{
    if (!value.is_string())
        refuse("\"" + member + "\" is " + value.dump() + " and has to be a text.");
    return value.get<std::string>();
}

/* A number, or a word that `number_of` knows. */
int32_t number_member(const std::string &member, const nlohmann::json &value, int32_t (*number_of)(const std::string &))
{
    if (value.is_string() && number_of)
        return number_of(value.get<std::string>());
    const std::optional<int> number = value.is_number_integer() ? vesk_port::parse_int(value.dump()) : std::nullopt;
    if (!number)
        refuse("\"" + member + "\" is " + value.dump() + " and has to be a whole number of 32 bits.");
    return *number;
}

} // namespace

int32_t type_of(const std::string &word)
{
    if (const auto named = position_in(kTypes, word))
        return *named;
    if (const auto number = vesk_port::parse_int(word))
        return *number;
    refuse("\"" + word + "\" is no type; use a number or one of " + type_names() + ".");
}

int32_t status_of(const std::string &word)
{
    const auto status = position_in(kStatuses, word);
    const auto number = vesk_port::parse_int(word);
    if (status)
        return *status;
    if (number && (*number == 0 || *number == 1))
        return *number;
    refuse("\"" + word + "\" is no status; use allow or deny.");
}

std::string type_word(int32_t type)
{
    return word_at(kTypes, type);
}

std::string status_word(int32_t status)
{
    return word_at(kStatuses, status);
}

std::string type_names()
{
    std::string names;
    for (const std::string_view type : kTypes)
        names.append(names.empty() ? "" : ", ").append(type);
    return names;
}

void check_device(const Device &device)
{
    if (!g_utf8_validate(device.name.data(), static_cast<gssize>(device.name.size()), nullptr))
        refuse("the name \"" + printable(device.name) + "\" is no UTF-8 text.");
    if (device.name.size() > kNameSize)
        refuse("the name \"" + printable(device.name) + "\" has " + std::to_string(device.name.size()) +
               " bytes; at most " + std::to_string(kNameSize) + " fit.");
    constexpr const char *form = "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}\\z";
    bool reachable = false;
    for (const Address &address : kAddresses) {
        const std::string &mac = device.*address.mac;
        if (mac.empty())
            continue;
        if (!g_regex_match_simple(form, mac.c_str(), GRegexCompileFlags{}, GRegexMatchFlags{}) ||
            vesk_port::normal_mac(mac) == "00:00:00:00:00:00")
            refuse("\"" + printable(mac) + "\" (" + address.member +
                   ") is no address; write six pairs of hexadecimal digits that are not all zero, like "
                   "02:4b:11:a0:3c:01.");
        reachable = true;
    }
    if (!reachable)
        refuse("\"" + printable(device.name) + "\" has no address; give it a bt, wifi or p2p address.");
    if (device.status != 0 && device.status != 1)
        refuse(std::to_string(device.status) + " is no status; use allow or deny.");
}

nlohmann::json json_of(const Device &device)
{
    nlohmann::json json;
    json["name"] = device.name;
    for (const Address &address : kAddresses)
        json[address.member] = device.*address.mac;
    json["type"] = device.type;
    json["icon"] = device.icon;
    json["status"] = status_word(device.status);
    return json;
}

Device device_of(const nlohmann::json &json)
{
    if (!json.is_object())
        refuse("it is " + json.dump() + " and has to be an object with name, bt, wifi, p2p, type, icon and status.");
    Device device;
    for (const auto &[member, value] : json.items()) {
        const auto address = std::ranges::find(kAddresses, member, &Address::member);
        if (address != kAddresses.end())
            device.*address->mac = text_member(member, value);
        else if (member == "name")
            device.name = text_member(member, value);
        else if (member == "type")
            device.type = number_member(member, value, type_of);
        else if (member == "icon")
            device.icon = number_member(member, value, nullptr);
        else if (member == "status")
            device.status = number_member(member, value, status_of);
        else
            refuse("\"" + member + "\" is unknown; there are name, bt, wifi, p2p, type, icon and status.");
    }
    check_device(device);
    return device;
}

} // namespace veskctl
