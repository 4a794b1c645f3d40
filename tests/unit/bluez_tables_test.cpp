/* Which family a Bluetooth device gets, row by row, and that the module has a picture for each. */

#include <filesystem>
#include <set>

#include "desktop/bluez_tables.h"
#include "module_fixture.h"
#include "ug/device_icons.h"

using vesk_port::BluezKind;
using vesk_port::BluezTraits;
using vesk_port::is_input;
using vesk_port::kind_of;

namespace {

std::string loaded;

} // namespace

/* Stands before the toolkit's own, so that no canvas is needed. */
Eina_Bool elm_image_file_set(Evas_Object *, const char *file, const char *)
{
    loaded = file;
    return EINA_FALSE;
}

namespace vesk_port {

void PrintTo(const BluezKind &kind, std::ostream *stream)
{
    *stream << kind.type << ',' << kind.icon;
}

} // namespace vesk_port

namespace {

constexpr BluezKind kUnknown{0, 0};

std::string uuid(const std::string &number)
{
    return "0000" + number + "-0000-1000-8000-00805f9b34fb";
}

BluezTraits of_class(uint32_t major, uint32_t minor)
{
    return {.device_class = 0x200000 | major << 8 | minor << 2, .appearance = 0, .icon = {}, .uuids = {}};
}

BluezTraits of_appearance(uint32_t category, uint32_t subcategory)
{
    return {
        .device_class = 0, .appearance = static_cast<uint16_t>(category << 6 | subcategory), .icon = {}, .uuids = {}};
}

BluezTraits of_icon(const std::string &icon)
{
    return {.device_class = 0, .appearance = 0, .icon = icon, .uuids = {}};
}

BluezTraits of_services(std::vector<std::string> uuids)
{
    return {.device_class = 0, .appearance = 0, .icon = {}, .uuids = std::move(uuids)};
}

struct Numbered {
    uint32_t group; /* major class or category */
    uint32_t part;  /* minor class or subcategory */
    BluezKind kind;
};

} // namespace

TEST(BluezClass, GivesTheKind)
{
    const Numbered rows[] = {
        {1, 3, {4, 2}},     {1, 4, {2, 0}},     {1, 5, {2, 0}},     {1, 6, {3, 0}},     {1, 7, {2, 0}},
        {1, 0, {4, 0}},     {1, 1, {4, 0}},     {1, 2, {4, 0}},     {1, 8, {4, 0}},     {2, 4, {25, 0}},
        {2, 0, {1, 0}},     {2, 1, {1, 0}},     {2, 3, {1, 0}},     {2, 5, {1, 0}},     {3, 0, {25, 0}},
        {3, 56, {25, 0}},   {4, 1, {21, 2}},    {4, 2, {21, 2}},    {4, 4, {0, 0}},     {4, 5, {22, 0}},
        {4, 6, {21, 0}},    {4, 7, {22, 0}},    {4, 8, {25, 1}},    {4, 9, {7, 0}},     {4, 10, {7, 0}},
        {4, 11, {7, 4}},    {4, 12, {26, 0}},   {4, 13, {27, 0}},   {4, 14, {23, 0}},   {4, 15, {6, 0}},
        {4, 16, {26, 0}},   {4, 17, {7, 0}},    {4, 18, {5, 2}},    {4, 0, {7, 0}},     {4, 3, {7, 0}},
        {5, 0, {0, 0}},     {5, 3, {0, 0}},     {5, 1, {5, 2}},     {5, 2, {5, 2}},     {5, 5, {5, 1}},
        {5, 7, {5, 1}},     {5, 0x10, {5, 3}},  {5, 0x20, {5, 1}},  {5, 0x30, {5, 3}},  {5, 0x12, {5, 3}},
        {5, 0x25, {5, 1}},  {6, 0x20, {20, 0}}, {6, 0x10, {20, 0}}, {6, 0x18, {20, 0}}, {6, 0x08, {26, 0}},
        {6, 0x0c, {26, 0}}, {6, 0x04, {23, 0}}, {6, 0, {23, 0}},    {7, 1, {3, 0}},     {7, 5, {3, 0}},
        {8, 4, {5, 2}},     {8, 5, {5, 2}},     {8, 1, kUnknown},   {0, 1, kUnknown},   {9, 1, kUnknown},
        {31, 0, kUnknown},
    };
    for (const Numbered &row : rows)
        EXPECT_EQ(kind_of(of_class(row.group, row.part)), row.kind) << "class " << row.group << '.' << row.part;
}

TEST(BluezClass, TellsHeadphonesFromAHeadsetByTheirService)
{
    for (const uint32_t minor : {1U, 2U}) {
        BluezTraits traits = of_class(4, minor);
        traits.uuids = {uuid("1108"), uuid("110b")};
        EXPECT_EQ(kind_of(traits), (BluezKind{21, 0})) << minor;
    }
}

TEST(BluezAppearance, GivesTheKind)
{
    const Numbered rows[] = {
        {0x01, 0, {1, 0}},    {0x01, 9, {1, 0}},    {0x02, 0x3, {4, 2}},  {0x02, 0xb, {4, 2}},   {0x02, 0xc, {4, 2}},
        {0x02, 0x4, {2, 0}},  {0x02, 0x5, {2, 0}},  {0x02, 0x7, {2, 0}},  {0x02, 0x6, {3, 0}},   {0x02, 0xd, {25, 0}},
        {0x02, 0, {4, 0}},    {0x02, 0x1, {4, 0}},  {0x03, 0, {3, 0}},    {0x03, 1, {3, 0}},     {0x07, 0, {3, 0}},
        {0x05, 0, {23, 0}},   {0x08, 0, {25, 0}},   {0x09, 0, {25, 0}},   {0x0a, 0, {7, 0}},     {0x0d, 0, {33, 0}},
        {0x0d, 1, {33, 0}},   {0x11, 0, {33, 0}},   {0x12, 0, {33, 0}},   {0x31, 0, {33, 0}},    {0x31, 2, {33, 0}},
        {0x0f, 0x1, {5, 3}},  {0x0f, 0x2, {5, 1}},  {0x0f, 0x5, {5, 1}},  {0x0f, 0x7, {5, 1}},   {0x0f, 0x9, {5, 1}},
        {0x0f, 0x3, {5, 2}},  {0x0f, 0x4, {5, 2}},  {0x0f, 0, kUnknown},  {0x0f, 0x6, kUnknown}, {0x0f, 0x8, kUnknown},
        {0x13, 0, {25, 0}},   {0x14, 0, {25, 0}},   {0x15, 3, {25, 0}},   {0x16, 1, {19, 0}},    {0x17, 0, {15, 0}},
        {0x18, 0, {14, 0}},   {0x19, 1, {13, 0}},   {0x1a, 0, {15, 0}},   {0x1b, 0, {19, 0}},    {0x1c, 0, {19, 0}},
        {0x1d, 0, {19, 0}},   {0x1e, 0, {19, 0}},   {0x1f, 0, {19, 0}},   {0x20, 0, {19, 0}},    {0x21, 0x2, {7, 1}},
        {0x21, 0x3, {22, 1}}, {0x21, 0x4, {22, 1}}, {0x21, 0, {22, 0}},   {0x21, 0x1, {22, 0}},  {0x22, 0x1, {0, 0}},
        {0x22, 0, {7, 0}},    {0x22, 0x2, {7, 0}},  {0x23, 0, {25, 1}},   {0x24, 0x1, {9, 0}},   {0x24, 0x2, {9, 0}},
        {0x24, 0x3, {16, 0}}, {0x24, 0x5, {16, 0}}, {0x24, 0x4, {30, 0}}, {0x24, 0x6, {10, 0}},  {0x24, 0x7, {11, 0}},
        {0x24, 0xc, {18, 0}}, {0x24, 0xd, {18, 0}}, {0x24, 0, {19, 0}},   {0x24, 0x8, {19, 0}},  {0x25, 0x1, {21, 1}},
        {0x25, 0x4, {21, 1}}, {0x25, 0x2, {21, 2}}, {0x25, 0, {21, 0}},   {0x25, 0x3, {21, 0}},  {0x27, 0x7, {7, 4}},
        {0x27, 0x8, {7, 4}},  {0x27, 0x9, {7, 4}},  {0x27, 0, {7, 0}},    {0x28, 0x1, {6, 0}},   {0x28, 0, {23, 0}},
        {0x28, 0x2, {23, 0}}, {0x29, 0, {21, 1}},   {0x29, 0x1, {21, 1}}, {0x2a, 0, {5, 2}},     {0x2a, 0x1, {5, 2}},
        {0x2b, 0, {8, 0}},    {0x04, 0, kUnknown},  {0x30, 0, kUnknown},
    };
    for (const Numbered &row : rows)
        EXPECT_EQ(kind_of(of_appearance(row.group, row.part)), row.kind)
            << "appearance " << std::hex << row.group << '.' << row.part;
}

const std::pair<const char *, BluezKind> kIconRows[] = {
    {"phone", {1, 0}},
    {"computer", {4, 0}},
    {"audio-headset", {21, 2}},
    {"audio-headphones", {21, 0}},
    {"audio-card", {7, 0}},
    {"multimedia-player", {7, 0}},
    {"audio-speakers", {22, 0}},
    {"input-keyboard", {5, 3}},
    {"input-mouse", {5, 1}},
    {"input-tablet", {5, 1}},
    {"input-gaming", {5, 2}},
    {"camera-photo", {26, 0}},
    {"camera-video", {27, 0}},
    {"printer", {20, 0}},
    {"scanner", {20, 0}},
    {"video-display", {23, 0}},
    {"modem", {25, 0}},
    {"network-wireless", {25, 0}},
    {"", kUnknown},
    {"toaster", kUnknown},
};

TEST(BluezIcon, GivesTheKind)
{
    for (const auto &[icon, kind] : kIconRows)
        EXPECT_EQ(kind_of(of_icon(icon)), kind) << icon;
}

const std::pair<const char *, BluezKind> kServiceRows[] = {
    {"1812", {5, 3}},  {"1124", {5, 3}},  {"111f", {1, 0}},  {"1112", {1, 0}},  {"110b", {22, 0}},
    {"184e", {21, 1}}, {"111e", {21, 2}}, {"1108", {21, 2}}, {"180d", {33, 0}}, {"1800", kUnknown},
};

TEST(BluezServices, GiveTheKind)
{
    for (const auto &[service, kind] : kServiceRows)
        EXPECT_EQ(kind_of(of_services({uuid("1200"), uuid(service)})), kind) << service;
    EXPECT_EQ(kind_of(of_services({"0000111F-0000-1000-8000-00805F9B34FB"})), (BluezKind{1, 0}));
    EXPECT_EQ(kind_of(of_services({"1812", "00001812-dead-beef-0000-000000000000"})), kUnknown);
}

TEST(BluezKinds, TheFirstThatAnswersCounts)
{
    BluezTraits traits = of_class(1, 3);
    traits.appearance = 0x01 << 6;
    traits.icon = "printer";
    traits.uuids = {uuid("180d")};
    EXPECT_EQ(kind_of(traits), (BluezKind{4, 2}));
    traits.device_class = 0;
    EXPECT_EQ(kind_of(traits), (BluezKind{1, 0}));
    traits.appearance = 0;
    EXPECT_EQ(kind_of(traits), (BluezKind{20, 0}));
    traits.icon.clear();
    EXPECT_EQ(kind_of(traits), (BluezKind{33, 0}));
    traits.uuids.clear();
    EXPECT_EQ(kind_of(traits), kUnknown);
}

TEST(BluezKinds, WhatSteersAPanelIsAnInputDevice)
{
    EXPECT_TRUE(is_input(of_class(5, 3))); /* a remote control, which has no picture of its own */
    EXPECT_TRUE(is_input(of_class(8, 4)));
    EXPECT_TRUE(is_input(of_appearance(0x0f, 0)));
    EXPECT_TRUE(is_input(of_icon("input-keyboard")));
    EXPECT_TRUE(is_input(of_services({uuid("1812")})));
    EXPECT_FALSE(is_input(of_class(4, 1)));
    EXPECT_FALSE(is_input(of_icon("phone")));
    EXPECT_FALSE(is_input(BluezTraits{}));
}

using BluezPictures = ModuleTest;

/* All classes, all appearances, each icon and each service. */
TEST_F(BluezPictures, EveryKindHasOne)
{
    std::set<std::pair<int32_t, int32_t>> kinds;
    const auto note = [&](const BluezTraits &traits) {
        const BluezKind kind = kind_of(traits);
        kinds.emplace(kind.type, kind.icon);
    };
    for (uint32_t device_class = 0; device_class < 0x2000; device_class += 4) {
        BluezTraits traits = of_class(0, 0);
        traits.device_class = device_class;
        note(traits);
        traits.uuids = {uuid("110b")};
        note(traits);
    }
    for (uint32_t appearance = 0; appearance < 0x10000; ++appearance)
        note(of_appearance(0, appearance));
    for (const auto &[icon, kind] : kIconRows)
        note(of_icon(icon));
    for (const auto &[service, kind] : kServiceRows)
        note(of_services({uuid(service)}));
    EXPECT_GT(kinds.size(), 30U);
    for (const auto &[type, icon] : kinds) {
        _load_device_icon(reinterpret_cast<Evas_Object *>(&loaded), type, icon);
        const std::string prefix = "r_icon_convergence_";
        std::string name = std::filesystem::path(loaded).stem();
        ASSERT_TRUE(name.starts_with(prefix)) << loaded << " for " << type << ',' << icon;
        name.erase(0, prefix.size());
        EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(DRAWINGS) / (name + ".svg"))) << name;
        EXPECT_EQ(name == "accessorydefault", type == 0) << type << ',' << icon;
    }
}
