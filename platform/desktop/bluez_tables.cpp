#include "bluez_tables.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <glib.h>
#include <optional>
#include <string_view>

namespace vesk_port {

namespace {

constexpr uint8_t kExact = 0x3f; /* all six bits of a minor class or of a subcategory */
constexpr uint8_t kAny = 0;

/* In each of the tables the first row that fits counts. */
struct ClassRow {
    uint8_t major;
    uint8_t mask; /* the bits of the minor class that are compared */
    uint8_t minor;
    BluezKind kind;
    uint16_t service = 0; /* a service that the device must have besides; 0: none */
};

constexpr uint8_t kPeripheral = 5;
constexpr uint16_t kAudioSink = 0x110b;

constexpr ClassRow kClasses[] = {
    {1, kExact, 3, {4, 2}},
    {1, kExact, 4, {2, 0}},
    {1, kExact, 5, {2, 0}},
    {1, kExact, 6, {3, 0}},
    {1, kExact, 7, {2, 0}},
    {1, kAny, 0, {4, 0}},
    {2, kExact, 4, {25, 0}},
    {2, kAny, 0, {1, 0}},
    {3, kAny, 0, {25, 0}},
    {4, kExact, 1, {21, 0}, kAudioSink},
    {4, kExact, 1, {21, 2}},
    {4, kExact, 2, {21, 0}, kAudioSink},
    {4, kExact, 2, {21, 2}},
    {4, kExact, 4, {0, 0}},
    {4, kExact, 5, {22, 0}},
    {4, kExact, 6, {21, 0}},
    {4, kExact, 7, {22, 0}},
    {4, kExact, 8, {25, 1}},
    {4, kExact, 9, {7, 0}},
    {4, kExact, 10, {7, 0}},
    {4, kExact, 11, {7, 4}},
    {4, kExact, 12, {26, 0}},
    {4, kExact, 13, {27, 0}},
    {4, kExact, 14, {23, 0}},
    {4, kExact, 15, {6, 0}},
    {4, kExact, 16, {26, 0}},
    {4, kExact, 18, {5, 2}},
    {4, kAny, 0, {7, 0}},
    /* Peripherals: two bits for keyboard and pointer, four for the form. */
    {kPeripheral, 0x10, 0x10, {5, 3}},
    {kPeripheral, 0x20, 0x20, {5, 1}},
    {kPeripheral, 0x0f, 1, {5, 2}}, /* joystick */
    {kPeripheral, 0x0f, 2, {5, 2}}, /* gamepad */
    {kPeripheral, 0x0f, 5, {5, 1}}, /* digitizer */
    {kPeripheral, 0x0f, 7, {5, 1}}, /* pen */
    {kPeripheral, kAny, 0, {0, 0}},
    /* Imaging: a bit each for printer, scanner, camera and display. */
    {6, 0x20, 0x20, {20, 0}},
    {6, 0x10, 0x10, {20, 0}},
    {6, 0x08, 0x08, {26, 0}},
    {6, kAny, 0, {23, 0}},
    {7, kAny, 0, {3, 0}},
    {8, kExact, 4, {5, 2}},
    {8, kExact, 5, {5, 2}},
};

struct AppearanceRow {
    uint16_t category;
    uint8_t mask;
    uint8_t subcategory;
    BluezKind kind;
};

constexpr uint16_t kHumanInput = 0x0f;

constexpr AppearanceRow kAppearances[] = {
    {0x01, kAny, 0, {1, 0}},
    {0x02, kExact, 0x03, {4, 2}},
    {0x02, kExact, 0x0b, {4, 2}},
    {0x02, kExact, 0x0c, {4, 2}},
    {0x02, kExact, 0x04, {2, 0}},
    {0x02, kExact, 0x05, {2, 0}},
    {0x02, kExact, 0x07, {2, 0}},
    {0x02, kExact, 0x06, {3, 0}},
    {0x02, kExact, 0x0d, {25, 0}},
    {0x02, kAny, 0, {4, 0}},
    {0x03, kAny, 0, {3, 0}},
    {0x05, kAny, 0, {23, 0}},
    {0x07, kAny, 0, {3, 0}},
    {0x08, kAny, 0, {25, 0}},
    {0x09, kAny, 0, {25, 0}},
    {0x0a, kAny, 0, {7, 0}},
    {0x0d, kAny, 0, {33, 0}},
    {kHumanInput, kExact, 0x01, {5, 3}},
    {kHumanInput, kExact, 0x02, {5, 1}},
    {kHumanInput, kExact, 0x03, {5, 2}},
    {kHumanInput, kExact, 0x04, {5, 2}},
    {kHumanInput, kExact, 0x05, {5, 1}},
    {kHumanInput, kExact, 0x07, {5, 1}},
    {kHumanInput, kExact, 0x09, {5, 1}},
    {0x11, kAny, 0, {33, 0}},
    {0x12, kAny, 0, {33, 0}},
    {0x13, kAny, 0, {25, 0}},
    {0x14, kAny, 0, {25, 0}},
    {0x15, kAny, 0, {25, 0}},
    {0x16, kAny, 0, {19, 0}},
    {0x17, kAny, 0, {15, 0}},
    {0x18, kAny, 0, {14, 0}},
    {0x19, kAny, 0, {13, 0}},
    {0x1a, kAny, 0, {15, 0}},
    {0x1b, kAny, 0, {19, 0}},
    {0x1c, kAny, 0, {19, 0}},
    {0x1d, kAny, 0, {19, 0}},
    {0x1e, kAny, 0, {19, 0}},
    {0x1f, kAny, 0, {19, 0}},
    {0x20, kAny, 0, {19, 0}},
    {0x21, kExact, 0x02, {7, 1}},
    {0x21, kExact, 0x03, {22, 1}},
    {0x21, kExact, 0x04, {22, 1}},
    {0x21, kAny, 0, {22, 0}},
    {0x22, kExact, 0x01, {0, 0}},
    {0x22, kAny, 0, {7, 0}},
    {0x23, kAny, 0, {25, 1}},
    {0x24, kExact, 0x01, {9, 0}},
    {0x24, kExact, 0x02, {9, 0}},
    {0x24, kExact, 0x03, {16, 0}},
    {0x24, kExact, 0x04, {30, 0}},
    {0x24, kExact, 0x05, {16, 0}},
    {0x24, kExact, 0x06, {10, 0}},
    {0x24, kExact, 0x07, {11, 0}},
    {0x24, kExact, 0x0c, {18, 0}},
    {0x24, kExact, 0x0d, {18, 0}},
    {0x24, kAny, 0, {19, 0}},
    {0x25, kExact, 0x01, {21, 1}},
    {0x25, kExact, 0x02, {21, 2}},
    {0x25, kExact, 0x04, {21, 1}},
    {0x25, kAny, 0, {21, 0}},
    {0x27, kExact, 0x07, {7, 4}},
    {0x27, kExact, 0x08, {7, 4}},
    {0x27, kExact, 0x09, {7, 4}},
    {0x27, kAny, 0, {7, 0}},
    {0x28, kExact, 0x01, {6, 0}},
    {0x28, kAny, 0, {23, 0}},
    {0x29, kAny, 0, {21, 1}},
    {0x2a, kAny, 0, {5, 2}},
    {0x2b, kAny, 0, {8, 0}},
    {0x31, kAny, 0, {33, 0}},
};

struct IconRow {
    std::string_view icon;
    BluezKind kind;
};

constexpr IconRow kIcons[] = {
    {"phone", {1, 0}},           {"computer", {4, 0}},
    {"audio-headset", {21, 2}},  {"audio-headphones", {21, 0}},
    {"audio-card", {7, 0}},      {"multimedia-player", {7, 0}},
    {"audio-speakers", {22, 0}}, {"input-keyboard", {5, 3}},
    {"input-mouse", {5, 1}},     {"input-tablet", {5, 1}},
    {"input-gaming", {5, 2}},    {"camera-photo", {26, 0}},
    {"camera-video", {27, 0}},   {"printer", {20, 0}},
    {"scanner", {20, 0}},        {"video-display", {23, 0}},
    {"modem", {25, 0}},          {"network-wireless", {25, 0}},
};

struct ServiceRow {
    uint16_t service;
    BluezKind kind;
};

constexpr ServiceRow kServices[] = {
    {0x1812, {5, 3}},  {0x1124, {5, 3}},  {0x111f, {1, 0}},  {0x1112, {1, 0}},  {kAudioSink, {22, 0}},
    {0x184e, {21, 1}}, {0x111e, {21, 2}}, {0x1108, {21, 2}}, {0x180d, {33, 0}},
};

constexpr uint16_t kHumanInputServices[] = {0x1812, 0x1124};

/* Numbers that the Bluetooth SIG assigns are short forms of a UUID. */
bool has_service(const BluezTraits &traits, uint16_t service)
{
    std::array<char, 37> uuid{};
    std::snprintf(uuid.data(), uuid.size(), "0000%04x-0000-1000-8000-00805f9b34fb", service);
    return std::ranges::any_of(
        traits.uuids, [&](const std::string &own) { return g_ascii_strcasecmp(own.c_str(), uuid.data()) == 0; });
}

/* The kind of the first row for which `fits` holds. */
template <class Row, size_t size, class Fits> std::optional<BluezKind> find_kind(const Row (&rows)[size], Fits fits)
{
    const Row *row = std::ranges::find_if(rows, fits);
    return row == rows + size ? std::nullopt : std::optional(row->kind);
}

uint32_t major_class(const BluezTraits &traits)
{
    return traits.device_class >> 8 & 0x1f;
}

uint32_t appearance_category(const BluezTraits &traits)
{
    return traits.appearance >> 6U;
}

} // namespace

BluezKind kind_of(const BluezTraits &traits)
{
    const uint32_t minor = traits.device_class >> 2 & kExact;
    if (const auto kind = find_kind(kClasses, [&](const ClassRow &row) {
            return row.major == major_class(traits) && (minor & row.mask) == row.minor &&
                   (row.service == 0 || has_service(traits, row.service));
        }))
        return *kind;
    const uint32_t subcategory = traits.appearance & kExact;
    if (const auto kind = find_kind(kAppearances, [&](const AppearanceRow &row) {
            return row.category == appearance_category(traits) && (subcategory & row.mask) == row.subcategory;
        }))
        return *kind;
    if (const auto kind = find_kind(kIcons, [&](const IconRow &row) { return row.icon == traits.icon; }))
        return *kind;
    return find_kind(kServices, [&](const ServiceRow &row) { return has_service(traits, row.service); })
        .value_or(BluezKind{});
}

bool is_input(const BluezTraits &traits)
{
    return major_class(traits) == kPeripheral || appearance_category(traits) == kHumanInput ||
           traits.icon.starts_with("input-") || kind_of(traits).type == 5 ||
           std::ranges::any_of(kHumanInputServices, [&](uint16_t service) { return has_service(traits, service); });
}

} // namespace vesk_port
