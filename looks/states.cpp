#include "states.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>

#include "television/language.h"

namespace vesk::looks {

namespace {

using vesk_port::Device;

/* As a television knows them. */
constexpr std::array<std::string_view, 5> kRightToLeft{"ar_AE", "ckb_IQ", "fa_IR", "he_IL", "ur_PK"};
constexpr double kLargeScale = 1.25;

constexpr std::string_view language_of(std::string_view locale)
{
    return locale.substr(0, locale.find('_'));
}

constexpr int kPhone = 1;
constexpr int kTablet = 2;
constexpr int kRefrigerator = 9;
constexpr int kOven = 16;
constexpr int kHeadphones = 21;
constexpr int kWatch = 3;
constexpr int kFull = 50;         /* rows of the module's table */
constexpr int kLongestName = 128; /* bytes of a device's name in that table */

/* A device with the addresses named by `links`: b Bluetooth, w Wi-Fi, p peer to peer. */
Device device(const std::string &name, int type, bool allowed, const std::string &links = "bwp")
{
    static unsigned int made = 0;
    ++made;
    const auto mac = [&](char link) {
        char text[18] = "";
        if (links.find(link) != links.npos)
            std::snprintf(text, sizeof text, "02:%02X:00:00:%02X:%02X", static_cast<unsigned int>(link),
                          made >> 8 & 0xffU, made & 0xffU);
        return std::string(text);
    };
    Device result;
    result.name = name;
    result.type = type;
    result.status = allowed ? 0 : 1;
    result.bt_mac = mac('b');
    result.wifi_mac = mac('w');
    result.p2p_mac = mac('p');
    return result;
}

std::vector<Device> none()
{
    return {};
}

std::vector<Device> one()
{
    return {device("Marta's phone", kPhone, true)};
}

std::vector<Device> six()
{
    return {device("Marta's phone", kPhone, true),       device("Kitchen tablet", kTablet, true),
            device("Refrigerator", kRefrigerator, true), device("Headphones", kHeadphones, true, "b"),
            device("Guest phone", kPhone, false),        device("Oven", kOven, false)};
}

std::vector<Device> fifty()
{
    static constexpr std::array types{kPhone, kTablet, kRefrigerator, kOven, kHeadphones, kWatch};
    std::vector<Device> devices;
    for (int i = 0; i < kFull; ++i)
        devices.push_back(
            device("Device " + std::to_string(i + 1), types[static_cast<size_t>(i) % types.size()], i % 3 != 2));
    return devices;
}

std::vector<Device> denied_first()
{
    return {device("Guest phone", kPhone, false), device("Oven", kOven, false)};
}

/* Rows with services: one, two and none, by the addresses that the devices have. */
std::vector<Device> one_service()
{
    return {device("Refrigerator", kRefrigerator, true, "w")};
}

std::vector<Device> two_services()
{
    return {device("Marta's phone", kPhone, true, "bw")};
}

std::vector<Device> tablet()
{
    return {device("Kitchen tablet", kTablet, true, "bw")};
}

std::vector<Device> no_service()
{
    return {device("Headphones", kHeadphones, true, "b")};
}

std::string longest_name()
{
    std::string name = "The television in the living room beside the large window";
    while (name.size() < kLongestName)
        name += " and on";
    return name.substr(0, kLongestName);
}

std::vector<Device> names()
{
    return {device("A", kPhone, true),
            device(longest_name(), kPhone, true),
            device("هاتف مارتا", kPhone, true),
            device("הטלפון של מרתה", kTablet, true),
            device("마르타의 휴대폰", kPhone, false),
            device("<b>Küche</b> & Co", kOven, false)};
}

} // namespace

const std::vector<State> &states()
{
    static const std::vector<State> table{
        {"empty", "No device", none, {}},
        {"one-row", "One device", one, {}},
        {"six-rows", "Six devices", six, {}},
        {"fifty-rows", "Fifty devices", fifty, {}},
        {"fifty-rows-end", "Fifty devices, scrolled to the end", fifty, {"Last"}},
        {"row-focused", "The third row focused", six, {"Down", "Down"}},
        {"row-selected", "A row focused and selected", six, {"Down", "Return", "Return"}},
        {"button-focused", "A button focused", six, {"Buttons"}},
        {"button-two-focused", "The second button focused", six, {"Buttons", "Down"}},
        {"dropdown-allowed", "Drop-down of an allowed device", six, {"Down", "Return"}},
        {"dropdown-details", "Drop-down with its last choice focused", six, {"Return", "Down", "Down"}},
        {"dropdown-denied", "Drop-down of a denied device", denied_first, {"Return"}},
        {"dropdown-last-row", "Drop-down of the last row that fits", six, {"Last", "Return"}},
        {"edit-none", "Edit mode, nothing checked", six, {"Buttons", "Return"}},
        {"edit-some", "Edit mode, two rows checked", six, {"Buttons", "Return", "Return", "Down", "Return"}},
        {"edit-delete", "Edit mode, the delete button focused", six, {"Buttons", "Return", "Return", "Buttons"}},
        {"edit-all", "Edit mode, all checked", six, {"Buttons", "Return", "Buttons", "Return"}},
        {"confirmation", "Confirmation, No focused", six, {"Buttons", "Return", "Return", "Buttons", "Return"}},
        {"confirmation-yes",
         "Confirmation, Yes focused",
         six,
         {"Buttons", "Return", "Return", "Buttons", "Return", "Before"}},
        {"toast",
         "Toast of one line",
         six,
         {"Buttons", "Return", "Return", "Buttons", "Return", "Before", "Return"},
         0},
        {"toast-lines",
         "Toast of several lines",
         six,
         {"Buttons", "Return", "Return", "Buttons", "Return", "Before", "Return"},
         0,
         "COM_SID_MIX_DEVICES_DELETED",
         "A sentence that is longer than any language's at present says here that %1 devices were deleted from the "
         "list "
         "of those which this television knows."},
        {"detail-one", "Details, one service", one_service, {"Return", "Down", "Down", "Return"}},
        {"detail-two", "Details, two services", two_services, {"Return", "Down", "Down", "Return"}},
        {"detail-tablet", "Details of a tablet", tablet, {"Return", "Down", "Down", "Return"}},
        {"detail-none", "Details, no service", no_service, {"Return", "Down", "Down", "Return"}},
        {"names", "Short, long, Arabic, Hebrew and Korean names", names, {}},
        {"names-long-focused", "The longest name focused", names, {"Down"}},
        {"names-edit", "Names beside check boxes", names, {"Buttons", "Return"}},
    };
    return table;
}

const State *find_state(const std::string &name)
{
    const auto found = std::ranges::find_if(states(), [&](const State &state) { return name == state.name; });
    return found != states().end() ? &*found : nullptr;
}

bool Setting::right_to_left() const
{
    return places_from_right_to_left(language);
}

const std::vector<std::string> &gallery_languages()
{
    static const std::vector<std::string> languages{"en_GB", "de_DE", "ko_KR", "ar_AE", "he_IL"};
    return languages;
}

std::vector<std::string> all_languages(const std::filesystem::path &share)
{
    std::set<std::string, std::greater<>> names; /* "zh_TW" before "zh_HK" and "zh" */
    for (const auto &folder : std::filesystem::directory_iterator(share / "locale"))
        names.insert(folder.path().filename());
    std::vector<std::string> languages;
    std::set<std::string> catalogues;
    for (const auto &name : names) {
        std::ifstream file(share / "locale" / name / "LC_MESSAGES" / "ug-VeskUG-efl.mo", std::ios::binary);
        if (!catalogues.insert({std::istreambuf_iterator<char>(file), {}}).second)
            continue; /* a further folder for another one's texts */
        const auto regional = std::ranges::find(kRightToLeft, name, language_of);
        languages.emplace_back(regional != kRightToLeft.end() ? *regional : name);
    }
    std::ranges::sort(languages);
    return languages;
}

std::vector<std::string> all_products(const std::filesystem::path &share)
{
    std::vector<std::string> products;
    for (const auto &file : std::filesystem::directory_iterator(share / "profiles"))
        products.push_back(file.path().stem());
    std::ranges::sort(products);
    return products;
}

std::vector<Setup> usual_scenes(const std::vector<std::string> &languages)
{
    std::vector<Setup> scenes;
    for (const char *product : {"television", "board"}) {
        for (const bool portrait : {false, true}) {
            for (const auto &language : languages) {
                for (const bool high_contrast : {false, true}) {
                    for (const auto &state : states())
                        scenes.push_back({&state, {product, portrait, language, high_contrast}});
                }
            }
        }
    }
    return scenes;
}

std::vector<Setup> further_scenes(const std::filesystem::path &share)
{
    std::vector<Setup> scenes;
    const auto add = [&](const char *state, const Setting &setting) { scenes.push_back({find_state(state), setting}); };
    for (const auto &product : all_products(share)) {
        add("six-rows", {product});
        add("detail-two", {product});
    }
    for (const auto &language : all_languages(share)) {
        for (const bool portrait : {false, true}) {
            add("edit-none", {"board", portrait, language});
            add("edit-all", {"board", portrait, language});
            add("dropdown-allowed", {"television", portrait, language});
            add("detail-two", {"television", portrait, language});
        }
        add("detail-tablet", {"television", false, language});
    }
    for (const char *product : {"television", "board"}) {
        for (const bool portrait : {false, true}) {
            for (const auto &state : states())
                scenes.push_back({&state, {product, portrait, "en_GB", false, kLargeScale}});
        }
    }
    return scenes;
}

std::string scene_name(const State &state, const Setting &setting)
{
    return std::string(state.name) + "." + setting.product + (setting.portrait ? ".tall." : ".wide.") +
           setting.language + (setting.high_contrast ? ".contrast" : "") + (setting.scale > 1 ? ".large" : "");
}

} // namespace vesk::looks
