/* vesk-host: a television on the desktop that runs the device manager. */

#include <Ecore_Input.h>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

#include "desktop/bluez_choice.h"
#include "desktop/device_service.h"
#include "desktop/log.h"
#include "desktop/output.h"
#include "desktop/settings.h"
#include "desktop/text.h"
#include "dlog.h"
#include "options.h"
#include "remote_script.h"
#include "start_checks.h"
#include "television/gadget.h"
#include "television/language.h"
#include "television/reader/reader.h"
#include "television/reader/speech.h"
#include "vconf.h"

namespace {

using namespace vesk;

void tell(const std::string &message)
{
    std::fprintf(stderr, "vesk-host: %s\n", vesk_port::short_message(message).c_str());
}

/* Without an option the terminal tells what a user can do something about: the port's own sentences. */
void tell_on_terminal(int priority, const std::string &tag, const std::string &text)
{
    if (tag == vesk_port::kPortTag && priority >= DLOG_WARN)
        tell(text);
}

void set_up_log(const Options &options)
{
    if (!options.log.empty())
        vesk_port::set_log_file(options.log);
    if (options.log_level) {
        vesk_port::set_log_level(*options.log_level);
    } else if (!options.log.empty()) {
        vesk_port::set_log_level(DLOG_INFO);
    } else if (!getenv("VESK_LOG") && !getenv("VESK_LOG_LEVEL")) {
        vesk_port::set_log_level(vesk_port::log_level_of("off"));
        vesk_port::set_log_sink(tell_on_terminal);
    }
}

void set_up_television(const Options &options)
{
    if (!options.product.empty())
        setenv("VESK_PRODUCT", options.product.c_str(), 1);
    if (!options.devices.empty())
        setenv("VESK_DEVICES", options.devices.c_str(), 1);
    if (!options.service.empty())
        setenv("VESK_SERVICE", options.service.c_str(), 1);
    if (vesk_port::chosen_service() == vesk_port::ServiceKind::bluez)
        vesk_port::BluezChoice::from_environment(); /* what is wrong there is told before a screen is up */
    if (!options.orientation.empty())
        vesk_port::override_setting(vesk_port::kOrientationSetting.key, options.orientation);
    if (!options.language.empty())
        vesk_port::override_setting(vesk_port::kLanguageSetting.key, options.language);
    if (options.high_contrast)
        vesk_port::override_setting(vesk_port::kHighContrastSetting.key, "1");
}

/* The locale of the setting, or of the option in its place. */
std::string chosen_locale()
{
    char *locale = vconf_get_str(vesk_port::kLanguageSetting.key);
    std::string language = locale ? locale : vesk_port::kLanguageSetting.default_value;
    free(locale);
    return language;
}

void set_up_language(const std::string &language)
{
    if (!use_language(language))
        tell("there are no texts in the language " + vesk_port::in_quotes(language) + "; they are shown in English");
}

/* The keyboard's keys go to the panel as keys of the remote; nobody else gets them. */
void connect_keyboard(Panel &panel)
{
    const auto pass_on = [](Panel &to, void *event, auto act) {
        const auto key = remote_key(static_cast<Ecore_Event_Key *>(event)->keyname);
        if (!key.empty())
            (to.*act)(key);
        return ECORE_CALLBACK_DONE;
    };
    ecore_event_handler_prepend(
        ECORE_EVENT_KEY_DOWN,
        [](void *data, int, void *event) -> Eina_Bool {
            return decltype(pass_on)()(*static_cast<Panel *>(data), event, &Panel::key_down);
        },
        &panel);
    ecore_event_handler_prepend(
        ECORE_EVENT_KEY_UP,
        [](void *data, int, void *event) -> Eina_Bool {
            return decltype(pass_on)()(*static_cast<Panel *>(data), event, &Panel::key_up);
        },
        &panel);
}

void end_on_signals(bool &ended)
{
    const auto end = [](void *flag, int, void *) -> Eina_Bool {
        *static_cast<bool *>(flag) = true;
        return ECORE_CALLBACK_DONE;
    };
    ecore_event_handler_prepend(ECORE_EVENT_SIGNAL_EXIT, end, &ended);
    ecore_event_handler_prepend(ECORE_EVENT_SIGNAL_HUP, end, &ended);
}

/* An empty file that nobody else can have prepared, in a folder that everybody may write to. */
std::filesystem::path new_picture_file()
{
    constexpr std::string_view ending = ".png";
    const char *variable = std::getenv("TMPDIR");
    const std::string folder = variable && *variable ? variable : "/tmp";
    std::string file = folder + "/vesk-host-XXXXXX" + std::string(ending);
    const int fd = mkstemps(file.data(), static_cast<int>(ending.size()));
    if (fd < 0)
        throw std::runtime_error("no picture can be made in the folder " + vesk_port::in_quotes(folder) + ": " +
                                 std::strerror(errno) + "; name a file with --screenshot");
    close(fd);
    return file;
}

void take_picture(Panel &panel, const Options &options)
{
    const auto file = options.screenshot.empty() ? new_picture_file() : options.screenshot;
    panel.save(file);
    std::printf("%s\n", file.c_str());
}

void play(const Options &options)
{
    Toolkit toolkit({.display = options.display,
                     .animations = options.animations,
                     .scale = options.scale,
                     .log_messages = !options.log.empty(),
                     .theme = {}});
    const auto locale = chosen_locale();
    set_up_language(locale);
    std::optional<Speech> speech;
    std::optional<Reader> reader;
    if (options.screen_reader) {
        speech.emplace(options.transcript, locale);
        reader.emplace([&speech](const std::string &text, bool interrupt) { speech->say(text, interrupt); });
    }
    bool ended = false;
    end_on_signals(ended);
    Panel panel(toolkit);
    Gadget gadget(panel, options.module);
    panel.on_close([&ended] { ended = true; });
    panel.on_visible([&gadget](bool visible) { visible ? gadget.resume() : gadget.pause(); });
    gadget.start();

    const auto over = [&] { return ended || !gadget.running(); };
    play_remote(panel, options.keys, over);
    if (ended)
        return;
    if (!options.display || !options.screenshot.empty()) {
        take_picture(panel, options);
        return;
    }
    std::puts(kRemoteKeysLine);
    std::fflush(stdout);
    connect_keyboard(panel);
    toolkit.run_until(over);
}

} // namespace

int main(int argc, char **argv)
{
    vesk_port::check_output_at_exit("vesk-host");
    int exit_code = 0;
    const auto options = vesk::read_options(argc, argv, exit_code);
    if (!options)
        return exit_code;
    try {
        set_up_log(*options);
        set_up_television(*options);
        check_start();
        play(*options);
        return 0;
    } catch (const std::exception &error) {
        tell(error.what());
        return 1;
    }
}
