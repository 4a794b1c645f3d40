#include "veskctl.h"

#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

#include "desktop/command_line.h"
#include "desktop/output.h"
#include "desktop/text.h"
#include "veskctl_service.h"

namespace {

constexpr int kExitFailed = 1;

constexpr const char *kFooter = "\nExamples:\n"
                                "  veskctl devices list\n"
                                "  veskctl devices set 02:4b:11:a0:3c:01 deny\n"
                                "  veskctl devices add --name \"Hall phone\" --type phone --wifi 02:aa:00:00:00:01\n"
                                "  veskctl devices export > household.json\n"
                                "  veskctl devices make 50 > fifty.json\n"
                                "  veskctl devices import fifty.json --replace\n"
                                "  veskctl settings set orientation portrait\n"
                                "  veskctl product use board\n"
                                "  veskctl --service bluez devices list\n"
                                "\nThe exit code is 0 for success, 1 for a failure and 2 for wrong usage.\n"
                                "VESK_DEVICES, VESK_SETTINGS and VESK_PRODUCT name other files than the user's own.";

int run(int argc, char **argv)
{
    CLI::App program("Registers devices, and changes settings and product of the television that vesk-host plays.",
                     "veskctl");
    program.set_version_flag("--version", "veskctl " VESK_VERSION);
    program.failure_message(vesk_port::usage_message);
    program.require_subcommand(1);
    veskctl::add_service_option(program);
    veskctl::add_device_commands(program);
    veskctl::add_setting_commands(program);
    veskctl::add_product_commands(program);
    veskctl::add_service_commands(program);
    veskctl::add_pair_command(program);
    program.footer(kFooter); /* last, since commands inherit it */
    try {
        program.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError &error) {
        return program.exit(error) == 0 ? 0 : vesk_port::kMisused;
    }
}

} // namespace

int main(int argc, char **argv)
{
    vesk_port::check_output_at_exit("veskctl");
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "veskctl: %s\n", vesk_port::short_message(error.what()).c_str());
        return kExitFailed;
    }
}
