#include "veskctl_service.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "desktop/device_store.h"
#include "desktop/log.h"
#include "desktop/paths.h"
#include "desktop/port_error.h"
#include "desktop/text.h"
#include "veskctl_table.h"

namespace veskctl {

using nlohmann::json;
using vesk_port::BluezAdapter;
using vesk_port::BluezChoice;
using vesk_port::BluezService;
using vesk_port::Device;
using vesk_port::MacKind;
using vesk_port::PortError;
using vesk_port::ServiceKind;

namespace {

struct Reason {
    std::string_view command;
    const char *sentence;
};

constexpr std::array kReasons{
    Reason{"devices add", "a device comes to BlueZ by pairing. Use: veskctl --service bluez pair"},
    Reason{"devices import", "a device comes to BlueZ by pairing. Use: veskctl --service bluez pair"},
    Reason{"devices export", "the keys of a pairing stay with BlueZ, so nothing could be imported again. Use: veskctl "
                             "--service bluez devices list --json"},
    Reason{"devices reset", "the sample household is for the device file. Use: veskctl --service sqlite devices reset"},
    Reason{"devices clear", "it would take the keyboard and the pointer of this machine too. Use: veskctl --service "
                            "bluez devices remove DEVICE"},
};

class BluezRegistry : public DeviceRegistry {
public:
    std::vector<Device> list() override { return service_->all(); }

    void set_status(const Device &device, int32_t status) override
    {
        service_->set_status(device.bt_mac, MacKind::bluetooth, status);
    }

    void rename(const Device &device, const std::string &name) override { service_->rename(device.bt_mac, name); }

    void remove(const Device &device) override
    {
        service_->remove(device.bt_mac, MacKind::bluetooth);
        service_->finish_removals();
    }

private:
    std::unique_ptr<BluezService> service_ = open_bluez();
};

std::unique_ptr<BluezService> quiet_bluez()
{
    /* The port's own lines would say the same once more. */
    vesk_port::set_log_level(vesk_port::log_level_of("off"));
    return std::make_unique<BluezService>(BluezChoice::from_environment());
}

std::string name_of(const BluezAdapter &adapter)
{
    return adapter.path.substr(adapter.path.rfind('/') + 1);
}

json json_of(BluezService &service)
{
    json adapters = json::array();
    for (const BluezAdapter &adapter : service.adapters())
        adapters.push_back({{"name", name_of(adapter)},
                            {"alias", adapter.alias},
                            {"address", adapter.address},
                            {"powered", adapter.powered},
                            {"used", service.uses(adapter)}});
    const auto trouble = service.trouble();
    return {{"service", "bluez"},
            {"bus", service.bus().connected()},
            {"daemon", service.bus().daemon_runs()},
            {"adapters", adapters},
            {"devices", service.all().size()},
            {"problem", trouble ? json(trouble->what()) : json()}};
}

void print_bluez(BluezService &service)
{
    std::puts("service   bluez");
    std::printf("bus       %s\n", service.bus().connected() ? "there" : "missing");
    std::printf("daemon    %s\n", service.bus().daemon_runs() ? "runs" : "does not run");
    for (const BluezAdapter &adapter : service.adapters())
        std::printf("adapter   %s  %s  %s%s  %s\n", name_of(adapter).c_str(), adapter.address.c_str(),
                    adapter.powered ? "on" : "off", service.uses(adapter) ? "" : ", not used",
                    vesk_port::escaped(adapter.alias).c_str());
    std::printf("devices   %zu\n", service.all().size());
}

/* What is missing is told last, on the standard error stream, and makes the command fail. */
void show_bluez(bool as_json)
{
    const auto service = quiet_bluez();
    if (as_json)
        print_json(json_of(*service));
    else
        print_bluez(*service);
    std::fflush(stdout);
    if (const auto trouble = service->trouble())
        throw PortError(*trouble);
}

void show_device_file(bool as_json)
{
    const std::string file = vesk_port::devices_file();
    const size_t count = vesk_port::DeviceStore(file).list().size();
    if (as_json) {
        print_json({{"service", "sqlite"}, {"file", file}, {"devices", count}, {"problem", json()}});
        return;
    }
    std::puts("service   sqlite");
    std::printf("file      %s\n", vesk_port::escaped(file).c_str());
    std::printf("devices   %zu\n", count);
}

std::string check_service(const std::string &name)
{
    try {
        vesk_port::service_kind_of(name);
        return {};
    } catch (const PortError &error) {
        return error.what();
    }
}

} // namespace

void add_service_option(CLI::App &program)
{
    const auto choose = [](const std::string &name) { setenv("VESK_SERVICE", name.c_str(), 1); };
    program.add_option_function<std::string>("--service", choose, "sqlite or bluez, instead of VESK_SERVICE")
        ->type_name("WORD")
        ->check(CLI::Validator(check_service, ""));
}

void add_service_commands(CLI::App &program)
{
    CLI::App *service = program.add_subcommand("service", "Where the devices come from");
    service->require_subcommand(1);
    CLI::App *status = service->add_subcommand("status", "Shows the service, and what it lacks");
    const auto as_json = std::make_shared<bool>(false);
    status->add_flag("--json", *as_json, "As JSON, for programs");
    status->callback([as_json] {
        if (vesk_port::chosen_service() == ServiceKind::bluez)
            show_bluez(*as_json);
        else
            show_device_file(*as_json);
    });
}

std::unique_ptr<BluezService> open_bluez()
{
    auto service = quiet_bluez();
    if (const auto &trouble = service->bus().trouble())
        throw PortError(*trouble);
    return service;
}

std::unique_ptr<DeviceRegistry> open_bluez_registry()
{
    return std::make_unique<BluezRegistry>();
}

void need_device_file(const char *command)
{
    if (vesk_port::chosen_service() != ServiceKind::bluez)
        return;
    const auto *reason = std::ranges::find(kReasons, std::string_view(command), &Reason::command);
    throw PortError(-ENOTSUP, vesk_port::in_quotes(command) + " does not work with BlueZ: " + reason->sentence);
}

} // namespace veskctl
