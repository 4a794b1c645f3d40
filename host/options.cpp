#include "options.h"

#include <charconv>
#include <sstream>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "desktop/command_line.h"
#include "desktop/device_service.h"
#include "desktop/log.h"
#include "desktop/product.h"
#include "desktop/settings.h"
#include "desktop/text.h"
#include "remote_script.h"
#include "television/share.h"
#include "television/theme_variants.h"
#include "television/toolkit.h"

namespace vesk {

namespace {

constexpr size_t kHelpColumn = 24; /* help fits a terminal of 80 x 24 */

/* A check that takes what `read` reads without throwing. */
template <class Read> CLI::Validator readable(Read read)
{
    return CLI::Validator(
        [read](std::string &text) -> std::string {
            try {
                read(text);
                return {};
            } catch (const std::exception &error) {
                return error.what();
            }
        },
        "");
}

void check_scale(const std::string &text)
{
    double scale = 0.0;
    const auto *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, scale);
    if (result.ec != std::errc() || result.ptr != end || !(scale >= kLeastScale && scale <= kGreatestScale))
        throw std::runtime_error("unknown scale " + vesk_port::in_quotes(text) + "; use a number from 0.5 to 1.5");
}

std::vector<std::string> words_of(const std::string &text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

} // namespace

std::optional<Options> read_options(int argc, char **argv, int &exit_code)
{
    Options options;
    options.module = module_file();
    std::string keys;
    std::string log_level;
    bool no_display = false;
    bool no_animations = false;

    CLI::App program("Plays a television with its device manager.", "vesk-host");
    program.failure_message(vesk_port::usage_message);
    program.get_formatter()->column_width(kHelpColumn);
    program.get_formatter()->label("REQUIRED", "");
    program.get_help_ptr()->group(""); /* whoever reads the help has found it, and a line is needed */
    program.set_version_flag("--version", "vesk-host " VESK_VERSION);
    program.add_option("--product", options.product, "profile: a name of \"veskctl product list\", or a file")
        ->type_name("NAME")
        ->check(readable([](const std::string &name) { vesk_port::load_product(name); }));
    program.add_option("--orientation", options.orientation, "landscape or portrait, instead of the setting")
        ->type_name("WORD")
        ->check(readable(
            [](const std::string &word) { vesk_port::setting_value(vesk_port::kOrientationSetting.key, word); }));
    program.add_option("--language", options.language, "locale (ko_KR); a live change shows on the next screen")
        ->type_name("LOCALE");
    program.add_flag("--high-contrast", options.high_contrast, "black, white and one accent");
    program.add_flag("--screen-reader", options.screen_reader, "speaks what has the focus");
    program.add_option("--transcript", options.transcript, "what is said, into a file, with or without the reader")
        ->type_name("FILE");
    program.add_option("--scale", options.scale, "magnification of the screen, 0.5 to 1.5")
        ->check(readable(check_scale))
        ->type_name("N");
    program.add_option("--devices", options.devices, "device database, instead of the user's")->type_name("FILE");
    program.add_option("--service", options.service, "sqlite or bluez: where the devices come from")
        ->type_name("WORD")
        ->check(readable(vesk_port::service_kind_of));
    program.add_option("--log", options.log, "log file; without one, the terminal")->type_name("FILE");
    program.add_option("--log-level", log_level, "info, warning, error or off")
        ->type_name("WORD")
        ->check(readable(vesk_port::log_level_of));
    program.add_option("--keys", keys, "keys to press: \"Down Return wait:500 XF86Back\"")
        ->type_name("KEYS")
        ->check(readable([](const std::string &text) {
            for (const auto &word : words_of(text))
                read_remote_word(word);
        }));
    program.add_option("--screenshot", options.screenshot, "writes the panel as PNG and ends")->type_name("FILE");
    program.add_flag("--no-display", no_display, "draws off-screen, writes the picture and ends");
    program.add_flag("--no-animations", no_animations, "nothing moves");
    program.add_option("--module", options.module, "module to run, instead of the built one")->type_name("FILE");

    program.footer(kRemoteKeysLine);

    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        exit_code = program.exit(error) == 0 ? 0 : vesk_port::kMisused;
        return {};
    }
    options.keys = words_of(keys);
    if (!log_level.empty())
        options.log_level = vesk_port::log_level_of(log_level);
    if (!options.orientation.empty())
        options.orientation = vesk_port::setting_value(vesk_port::kOrientationSetting.key, options.orientation);
    options.display = !no_display && display_available();
    options.animations = !no_animations;
    return options;
}

} // namespace vesk
