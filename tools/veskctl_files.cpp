#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

#include <CLI/CLI.hpp>

#include "desktop/port_error.h"
#include "desktop/text.h"
#include "veskctl.h"
#include "veskctl_device.h"
#include "veskctl_file.h"
#include "veskctl_import.h"
#include "veskctl_registry.h"
#include "veskctl_service.h"
#include "veskctl_table.h"

namespace veskctl {

using vesk_port::Device;
using vesk_port::in_quotes;

namespace {

constexpr int kMostMade = 1'000'000;

struct Family {
    const char *name;
    const char *type;
};

constexpr std::array kFamilies{
    Family{"Phone", "phone"},     Family{"Tablet", "tablet"},   Family{"Headphones", "headphone"},
    Family{"Laptop", "computer"}, Family{"Speaker", "speaker"}, Family{"Washer", "washer"},
    Family{"Gamepad", "input"},   Family{"Fridge", "fridge"},
};

std::string json_list(const std::vector<Device> &devices)
{
    std::string list = "[";
    for (const Device &device : devices) {
        list += list.size() == 1 ? "\n  " : ",\n  ";
        for (const char c : json_text(json_of(device))) {
            list += c;
            if (c == '\n')
                list += "  ";
        }
    }
    return list + (devices.empty() ? "]\n" : "\n]\n");
}

/* The file is read and checked as a whole before the table is touched. */
void import_devices(const std::string &file, bool replace)
{
    need_device_file("devices import");
    const std::string source = file == "-" ? "the standard input" : vesk_port::escaped(file);
    const std::vector<Device> devices = read_devices(source, contents_of(file));
    vesk_port::DeviceStore store = open_store();
    if (replace)
        store.replace(devices);
    else
        store.add(devices);
    std::printf("Imported %s.\n", counted(devices.size()).c_str());
}

void export_devices(const std::string &file)
{
    need_device_file("devices export");
    const std::vector<Device> devices = open_store().list();
    if (file == "-") {
        print_devices(devices);
        return;
    }
    write_contents(file, json_list(devices));
    std::printf("Exported %s to %s.\n", counted(devices.size()).c_str(), in_quotes(file).c_str());
}

/* Addresses are locally administered, as those of the sample household, and differ from them in the second byte. */
Device made_device(int number)
{
    const Family &family = kFamilies[static_cast<size_t>(number - 1) % kFamilies.size()];
    const auto bits = static_cast<unsigned>(number);
    std::array<char, 18> mac{};
    std::snprintf(mac.data(), mac.size(), "02:00:00:%02x:%02x:%02x", bits >> 16 & 0xffU, bits >> 8 & 0xffU,
                  bits & 0xffU);
    Device device;
    device.name = std::string(family.name) + " " + std::to_string(number);
    device.type = type_of(family.type);
    device.status = number % 4 == 0 ? 1 : 0;
    (number % 3 == 0 ? device.wifi_mac : device.bt_mac) = mac.data();
    return device;
}

void make_devices(const std::string &count)
{
    const auto number = vesk_port::parse_int(count);
    if (!number || *number < 0 || *number > kMostMade)
        throw CLI::ValidationError("unknown number of devices " + in_quotes(count) + "; use 0 to " +
                                   std::to_string(kMostMade));
    std::vector<Device> devices;
    for (int i = 1; i <= *number; ++i)
        devices.push_back(made_device(i));
    print_devices(devices);
}

void add_import_command(CLI::App &devices)
{
    CLI::App *command = devices.add_subcommand("import", "Registers the devices of a JSON file: all of them or none");
    struct Arguments {
        std::string file;
        bool replace = false;
    };
    const auto given = std::make_shared<Arguments>();
    command->add_option("file", given->file, "A file that export has written, or - for the standard input")->required();
    command->add_flag("--replace", given->replace, "In place of all that are registered");
    command->callback([given] { import_devices(given->file, given->replace); });
}

} // namespace

void print_devices(const std::vector<Device> &devices)
{
    const std::string list = json_list(devices);
    std::fwrite(list.data(), 1, list.size(), stdout);
}

void add_file_commands(CLI::App &devices)
{
    add_import_command(devices);

    CLI::App *save = devices.add_subcommand("export", "Writes the devices as JSON");
    const auto file = std::make_shared<std::string>("-");
    save->add_option("file", *file, "Where to, or - for the standard output")->capture_default_str();
    save->callback([file] { export_devices(*file); });

    CLI::App *make = devices.add_subcommand("make", "Prints made-up devices as JSON, for import; registers none");
    const auto count = std::make_shared<std::string>();
    make->add_option("count", *count, "How many, up to " + std::to_string(kMostMade))->required();
    make->callback([count] { make_devices(*count); });
}

} // namespace veskctl
