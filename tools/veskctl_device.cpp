#include "veskctl_device.h"

#include <algorithm>
#include <cerrno>
#include <glib.h>
#include <optional>
#include <string_view>

#include "desktop/port_error.h"
#include "desktop/text.h"

namespace veskctl {

using vesk_port::Device;
using vesk_port::in_quotes;
using vesk_port::PortError;

namespace {

constexpr size_t kNameSize = 128; /* bytes in the service's record */
constexpr size_t kMacSize = 17;   /* six pairs of digits and what separates them */

/* Families by their number. */
constexpr std::array<std::string_view, 32> kTypes{
    "accessory", "phone",  "tablet", "wearable",   "computer", "input",      "tv",        "av",
    "signage",   "fridge", "washer", "dryer",      "floor-ac", "room-ac",    "system-ac", "purifier",
    "oven",      "range",  "vacuum", "smart-home", "printer",  "headphone",  "speaker",   "monitor",
    "board",     "iot",    "camera", "camcorder",  "cooktop",  "dishwasher", "microwave", "hood",
};

constexpr std::array<std::string_view, 2> kStatuses{"allow", "deny"};

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

bool is_mac(const std::string &text)
{
    if (text.size() != kMacSize)
        return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool separator = i % 3 == 2;
        if (separator ? text[i] != ':' && text[i] != '-' : !g_ascii_isxdigit(text[i]))
            return false;
    }
    return vesk_port::normal_mac(text) != "00:00:00:00:00:00";
}

} // namespace

int32_t type_of(const std::string &word)
{
    if (const auto named = position_in(kTypes, word))
        return *named;
    if (const auto number = vesk_port::parse_int(word))
        return *number;
    refuse("unknown type " + in_quotes(word) + "; use a whole number or one of " + type_names());
}

int32_t status_of(const std::string &word)
{
    if (const auto status = position_in(kStatuses, word))
        return *status;
    if (word == "0" || word == "1")
        return word == "1";
    refuse("unknown status " + in_quotes(word) + "; use allow or deny");
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

void check_name(const std::string &name)
{
    if (name.find('\0') != std::string::npos)
        refuse("the name " + in_quotes(name) + " contains a NUL character; leave it out");
    if (!g_utf8_validate(name.data(), static_cast<gssize>(name.size()), nullptr))
        refuse("the name " + in_quotes(name) + " is not UTF-8; write it in that encoding");
    if (name.size() > kNameSize)
        refuse("the name " + in_quotes(name) + " has " + std::to_string(name.size()) + " bytes; use at most " +
               std::to_string(kNameSize));
}

void check_device(const Device &device)
{
    check_name(device.name);
    bool reachable = false;
    for (const Address &address : kAddresses) {
        const std::string &mac = device.*address.mac;
        if (mac.empty())
            continue;
        if (!is_mac(mac))
            refuse("invalid address " + in_quotes(mac) + " (" + address.member +
                   "); use six pairs of hexadecimal digits that are not all zero, like 02:4b:11:a0:3c:01");
        reachable = true;
    }
    if (!reachable)
        refuse("the device " + in_quotes(device.name) + " has no address; give it a bt, wifi or p2p address");
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

} // namespace veskctl
