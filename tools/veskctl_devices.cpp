#include <cstdio>
#include <memory>

#include <CLI/CLI.hpp>

#include "desktop/sample_household.h"
#include "desktop/text.h"
#include "veskctl.h"
#include "veskctl_device.h"
#include "veskctl_registry.h"
#include "veskctl_service.h"
#include "veskctl_table.h"

namespace veskctl {

using vesk_port::Device;
using vesk_port::DeviceStore;
using vesk_port::in_quotes;

namespace {

void list_devices(bool as_json)
{
    const std::vector<Device> devices = open_registry()->list();
    if (as_json) {
        print_devices(devices);
        return;
    }
    const auto cell = [](const std::string &mac) { return mac.empty() ? std::string("-") : vesk_port::escaped(mac); };
    std::vector<std::vector<std::string>> rows;
    rows.reserve(devices.size());
    for (const Device &device : devices)
        rows.push_back({type_word(device.type), std::to_string(device.icon), status_word(device.status),
                        cell(device.bt_mac), cell(device.wifi_mac), cell(device.p2p_mac),
                        vesk_port::escaped(device.name)});
    print_table({"TYPE", "ICON", "STATUS", "BLUETOOTH", "WI-FI", "PEER-TO-PEER", "NAME"}, rows);
}

void add_device(const Device &device)
{
    need_device_file("devices add");
    open_store().add({device});
    std::printf("Registered %s.\n", in_quotes(device.name).c_str());
}

void set_device(const std::string &what, int32_t status)
{
    const auto registry = open_registry();
    const Device device = find_device(*registry, what);
    registry->set_status(device, status);
    std::printf("%s: %s\n", in_quotes(device.name).c_str(), status_word(status).c_str());
}

void rename_device(const std::string &what, const std::string &name)
{
    const auto registry = open_registry();
    const Device device = find_device(*registry, what);
    registry->rename(device, name);
    std::printf("%s is now named %s.\n", in_quotes(device.name).c_str(), in_quotes(name).c_str());
}

void remove_device(const std::string &what)
{
    const auto registry = open_registry();
    const Device device = find_device(*registry, what);
    registry->remove(device);
    std::printf("Removed %s.\n", in_quotes(device.name).c_str());
}

void clear_devices()
{
    need_device_file("devices clear");
    DeviceStore store = open_store();
    const size_t count = store.list().size();
    store.remove_all();
    std::printf("Removed %s.\n", counted(count).c_str());
}

void reset_devices()
{
    need_device_file("devices reset");
    const std::vector<Device> household = vesk_port::sample_household();
    open_store().replace(household);
    std::printf("Registered the %s of the sample household in place of all others.\n",
                counted(household.size()).c_str());
}

constexpr const char *kNameHelp = "Name, up to 128 bytes of UTF-8";
constexpr const char *kDeviceHelp = "One of the device's addresses, or its name when no other device has it";

/* What the options of `devices add` fill in; numbers may be given as words. */
struct NewDevice {
    Device device;
    std::string type = "accessory";
    std::string status = "allow";
};

void add_add_command(CLI::App &devices)
{
    CLI::App *command = devices.add_subcommand("add", "Registers a device; it needs one address at least");
    const auto given = std::make_shared<NewDevice>();
    command->add_option("--name", given->device.name, kNameHelp)->required();
    command->add_option("--bluetooth,--bt", given->device.bt_mac, "Bluetooth address");
    command->add_option("--wi-fi,--wifi", given->device.wifi_mac, "Wi-Fi address");
    command->add_option("--peer-to-peer,--p2p", given->device.p2p_mac, "Wi-Fi peer-to-peer address");
    command->add_option("--type", given->type, "Family: a number or one of " + type_names())->capture_default_str();
    command->add_option("--icon", given->device.icon, "Variant within the family")->capture_default_str();
    command->add_option("--status", given->status, "allow or deny")->capture_default_str();
    command->callback([given] {
        as_usage([&] {
            given->device.type = type_of(given->type);
            given->device.status = status_of(given->status);
            check_device(given->device);
        });
        add_device(given->device);
    });
}

void add_set_command(CLI::App &devices)
{
    CLI::App *command = devices.add_subcommand("set", "Allows or denies a device");
    struct Arguments {
        std::string device;
        std::string status;
    };
    const auto given = std::make_shared<Arguments>();
    command->add_option("device", given->device, kDeviceHelp)->required();
    command->add_option("status", given->status, "allow or deny")->required();
    command->callback([given] {
        const int32_t status = as_usage([&] { return status_of(given->status); });
        set_device(given->device, status);
    });
}

void add_rename_command(CLI::App &devices)
{
    CLI::App *command = devices.add_subcommand("rename", "Gives a device another name");
    struct Arguments {
        std::string device;
        std::string name;
    };
    const auto given = std::make_shared<Arguments>();
    command->add_option("device", given->device, kDeviceHelp)->required();
    command->add_option("name", given->name, kNameHelp)->required();
    command->callback([given] {
        as_usage([&] { check_name(given->name); });
        rename_device(given->device, given->name);
    });
}

} // namespace

std::string counted(size_t count)
{
    return std::to_string(count) + (count == 1 ? " device" : " devices");
}

void add_device_commands(CLI::App &program)
{
    CLI::App *devices = program.add_subcommand("devices", "The registered devices");
    devices->require_subcommand(1);

    CLI::App *list = devices->add_subcommand("list", "Shows the devices in the order of registration");
    const auto as_json = std::make_shared<bool>(false);
    list->add_flag("--json", *as_json, "As JSON, for programs");
    list->callback([as_json] { list_devices(*as_json); });

    add_add_command(*devices);
    add_set_command(*devices);
    add_rename_command(*devices);

    CLI::App *remove = devices->add_subcommand("remove", "Removes a device's registration");
    const auto removed = std::make_shared<std::string>();
    remove->add_option("device", *removed, kDeviceHelp)->required();
    remove->callback([removed] { remove_device(*removed); });

    devices->add_subcommand("clear", "Removes every registration")->callback(clear_devices);
    devices->add_subcommand("reset", "Goes back to the sample household, in place of all that are registered")
        ->callback(reset_devices);
    add_file_commands(*devices);
}

} // namespace veskctl
