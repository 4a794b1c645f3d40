#include "veskctl.h"

#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitMisused = 2;

constexpr const char *kFooter = "\nExamples:\n"
                                "  veskctl devices list\n"
                                "  veskctl devices set 02:4b:11:a0:3c:01 deny\n"
                                "  veskctl devices add --name \"Hall phone\" --type phone --wifi 02:aa:00:00:00:01\n"
                                "  veskctl devices export - > household.json\n"
                                "  veskctl settings set orientation portrait\n"
                                "  veskctl product use board\n"
                                "\nVESK_DEVICES, VESK_SETTINGS and VESK_PRODUCT name other files than the user's own.";

int run(int argc, char **argv)
{
    CLI::App program("Registers devices, and changes settings and product of the television that vesk-host plays.",
                     "veskctl");
    program.set_version_flag("--version", "veskctl " VESK_VERSION);
    program.require_subcommand(1);
    veskctl::add_device_commands(program);
    veskctl::add_setting_commands(program);
    veskctl::add_product_commands(program);
    program.footer(kFooter); /* last, since commands inherit it */
    try {
        program.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError &error) {
        return program.exit(error) == 0 ? 0 : kExitMisused;
    }
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "veskctl: %s\n", error.what());
        return kExitFailed;
    }
}
