#include <cerrno>
#include <chrono>
#include <cstdio>
#include <glib.h>
#include <iostream>
#include <iterator>
#include <memory>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "desktop/device_store.h"
#include "desktop/paths.h"
#include "desktop/port_error.h"
#include "veskctl.h"
#include "veskctl_device.h"
#include "veskctl_table.h"

namespace veskctl {

using nlohmann::json;
using vesk_port::Device;
using vesk_port::DeviceStore;
using vesk_port::PortError;

namespace {

/* Nobody waits at a panel here, so another program gets more time to end its change. */
DeviceStore open_store()
{
    return DeviceStore(vesk_port::devices_file(), std::chrono::seconds(2));
}

std::string counted(size_t count)
{
    return std::to_string(count) + (count == 1 ? " device" : " devices");
}

std::string quoted(const Device &device)
{
    return "\"" + printable(device.name) + "\"";
}

std::string any_address(const Device &device)
{
    for (const std::string *mac : {&device.bt_mac, &device.wifi_mac, &device.p2p_mac}) {
        if (!mac->empty())
            return *mac;
    }
    return "none";
}

/* The device that one of its addresses or its name, when no other has it, stands for. */
Device find_device(DeviceStore &store, const std::string &what)
{
    const std::string mac = vesk_port::normal_mac(what);
    std::vector<Device> named;
    for (const Device &device : store.list()) {
        for (const std::string &own : {device.bt_mac, device.wifi_mac, device.p2p_mac}) {
            if (!own.empty() && vesk_port::normal_mac(own) == mac)
                return device;
        }
        if (device.name == what)
            named.push_back(device);
    }
    if (named.size() == 1)
        return named.front();
    if (named.empty())
        throw PortError(-ENODEV, "no registered device has the address or name \"" + printable(what) +
                                     "\". See them with: veskctl devices list");
    std::string macs;
    for (const Device &device : named)
        macs.append(macs.empty() ? "" : ", ").append(any_address(device));
    throw PortError(-EINVAL, std::to_string(named.size()) + " devices are named \"" + printable(what) +
                                 "\"; give the address of one: " + macs);
}

std::string json_text(const std::vector<Device> &devices)
{
    json list = json::array();
    for (const Device &device : devices)
        list.push_back(json_of(device));
    return list.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

void list_devices(bool as_json)
{
    const std::vector<Device> devices = open_store().list();
    if (as_json) {
        std::fputs(json_text(devices).c_str(), stdout);
        return;
    }
    const auto cell = [](const std::string &mac) { return mac.empty() ? std::string("-") : printable(mac); };
    std::vector<std::vector<std::string>> rows;
    rows.reserve(devices.size());
    for (const Device &device : devices)
        rows.push_back({type_word(device.type), std::to_string(device.icon), status_word(device.status),
                        cell(device.bt_mac), cell(device.wifi_mac), cell(device.p2p_mac), printable(device.name)});
    print_table({"TYPE", "ICON", "STATUS", "BLUETOOTH", "WI-FI", "PEER-TO-PEER", "NAME"}, rows);
}

void add_device(const Device &device)
{
    check_device(device);
    open_store().add({device});
    std::printf("Registered %s.\n", quoted(device).c_str());
}

void set_device(const std::string &what, const std::string &status)
{
    DeviceStore store = open_store();
    const Device device = find_device(store, what);
    store.set_status(device.id, status_of(status));
    std::printf("%s: %s\n", quoted(device).c_str(), status.c_str());
}

void remove_device(const std::string &what)
{
    DeviceStore store = open_store();
    const Device device = find_device(store, what);
    store.remove(device.id);
    std::printf("Removed %s.\n", quoted(device).c_str());
}

std::string contents_of(const std::string &file)
{
    if (file == "-")
        return {std::istreambuf_iterator<char>(std::cin), {}};
    gchar *text = nullptr;
    gsize length = 0;
    GError *error = nullptr;
    if (!g_file_get_contents(file.c_str(), &text, &length, &error)) {
        const std::string reason = error->message;
        g_error_free(error);
        throw PortError(-EIO, reason + ". Name a file that veskctl devices export has written, or - for the standard "
                                       "input.");
    }
    std::string contents(text, length);
    g_free(text);
    return contents;
}

std::vector<Device> parse_devices(const std::string &file)
{
    const std::string source = file == "-" ? "the standard input" : file;
    json list;
    try {
        list = json::parse(contents_of(file));
    } catch (const json::parse_error &error) {
        const std::string what = error.what();
        throw PortError(-EINVAL, source + " is no JSON: " + what.substr(what.find("] ") + 2));
    }
    if (!list.is_array())
        throw PortError(-EINVAL, source + " has to hold a list of devices, [{\"name\": ...}, ...], as veskctl devices "
                                          "export writes it.");
    std::vector<Device> devices;
    for (const json &element : list) {
        try {
            devices.push_back(device_of(element));
        } catch (const PortError &error) {
            throw PortError(error.code(),
                            source + ", device " + std::to_string(devices.size() + 1) + ": " + error.what());
        }
    }
    return devices;
}

/* The file is read and checked as a whole before the table is touched. */
void import_devices(const std::string &file, bool replace)
{
    const std::vector<Device> devices = parse_devices(file);
    DeviceStore store = open_store();
    if (replace)
        store.replace(devices);
    else
        store.add(devices);
    std::printf("Imported %s.\n", counted(devices.size()).c_str());
}

void export_devices(const std::string &file)
{
    const std::vector<Device> devices = open_store().list();
    const std::string text = json_text(devices);
    if (file == "-") {
        std::fputs(text.c_str(), stdout);
        return;
    }
    GError *error = nullptr;
    if (!g_file_set_contents(file.c_str(), text.data(), static_cast<gssize>(text.size()), &error)) {
        const std::string reason = error->message;
        g_error_free(error);
        throw PortError(-EIO, reason + ". Name a file that can be written, or - for the standard output.");
    }
    std::printf("Exported %s to %s.\n", counted(devices.size()).c_str(), file.c_str());
}

void clear_devices()
{
    DeviceStore store = open_store();
    const size_t count = store.list().size();
    store.remove_all();
    std::printf("Removed %s.\n", counted(count).c_str());
}

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
    command->add_option("--name", given->device.name, "Name, up to 128 bytes of UTF-8")->required();
    command->add_option("--bt", given->device.bt_mac, "Bluetooth address");
    command->add_option("--wifi", given->device.wifi_mac, "Wi-Fi address");
    command->add_option("--p2p", given->device.p2p_mac, "Wi-Fi peer-to-peer address");
    command->add_option("--type", given->type, "Family: a number or one of " + type_names())->capture_default_str();
    command->add_option("--icon", given->device.icon, "Variant within the family")->capture_default_str();
    command->add_option("--status", given->status, "allow or deny")->capture_default_str();
    command->callback([given] {
        given->device.type = type_of(given->type);
        given->device.status = status_of(given->status);
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
    command->callback([given] { set_device(given->device, given->status); });
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

    CLI::App *remove = devices->add_subcommand("remove", "Removes a device's registration");
    const auto removed = std::make_shared<std::string>();
    remove->add_option("device", *removed, kDeviceHelp)->required();
    remove->callback([removed] { remove_device(*removed); });

    devices->add_subcommand("clear", "Removes every registration")->callback(clear_devices);
    add_import_command(*devices);

    CLI::App *save = devices->add_subcommand("export", "Writes the devices as JSON");
    const auto file = std::make_shared<std::string>("-");
    save->add_option("file", *file, "Where to, or - for the standard output")->capture_default_str();
    save->callback([file] { export_devices(*file); });
}

} // namespace veskctl
