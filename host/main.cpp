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
#include "notice_line.h"
#include "notices.h"
#include "options.h"
#include "remote_script.h"
#include "shared_files.h"
#include "signals.h"
#include "start_checks.h"
#include "television/gadget.h"
#include "television/language.h"
#include "television/pictures.h"
#include "television/reader/reader.h"
#include "television/reader/speech.h"
#include "vconf.h"

namespace {

using namespace vesk;

void tell(const std::string &message)
{
    std::fprintf(stderr, "vesk-host: %s\n", vesk_port::short_message(message).c_str());
}

/* Where the log does not go to the terminal, that tells what a user can do something about: the port's own sentences.
 */
void tell_on_terminal(int priority, const std::string &tag, const std::string &text)
{
    if (tag == vesk_port::kPortTag && priority >= DLOG_WARN)
        tell(text);
}

bool is_set(const char *variable)
{
    const char *value = std::getenv(variable);
    return value && *value;
}

void set_up_log(const Options &options, StoreNotices &store)
{
    if (!options.log.empty())
        vesk_port::set_log_file(options.log);
    const bool to_file = !options.log.empty() || is_set("VESK_LOG");
    const bool unasked = !to_file && !options.log_level && !is_set("VESK_LOG_LEVEL");
    if (options.log_level)
        vesk_port::set_log_level(*options.log_level);
    else if (!options.log.empty())
        vesk_port::set_log_level(DLOG_INFO);
    else if (unasked)
        vesk_port::set_log_level(vesk_port::log_level_of("off"));
    const bool on_terminal = to_file || unasked;
    vesk_port::set_log_sink([&store, on_terminal](int priority, const std::string &tag, const std::string &text) {
        if (on_terminal)
            tell_on_terminal(priority, tag, text);
        if (tag == vesk_port::kPortTag)
            store.log_line(text);
    });
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

/* On the terminal and on the panel, once. */
void complain(Notices &notices, const std::string &about, const std::string &sentence)
{
    if (notices.put_up(about, sentence))
        tell(sentence);
}

void set_up_language(const std::string &language, Notices &notices)
{
    for (const auto &complaint : complaints_about_files(language))
        complain(notices, complaint, complaint);
    if (!use_language(language))
        complain(notices, "language",
                 "there are no texts in the language " + vesk_port::in_quotes(language) +
                     "; they are shown in English");
}

void watch_pictures(Notices &notices)
{
    set_picture_listener([&notices](const std::string &file, bool shown) {
        if (shown)
            notices.take_back(file);
        else
            complain(notices, file, complaint_about_picture(file));
    });
}

/* What the window's keys and touches go to. */
struct Remote {
    Panel &panel;
    Gadget &gadget;
    StoreNotices &store;
    bool &ended;
};

/* A panel that is left with a notice after its module's end is closed with any key or touch. */
bool input_came(Remote &remote)
{
    remote.ended = remote.ended || remote.gadget.ended();
    remote.store.input_came();
    return remote.gadget.running();
}

/* The keyboard's keys go to the panel as keys of the remote; nobody else gets them. While a module that has ended
   leaves its last toast up, none is heard. */
void connect_input(Remote &remote)
{
    ecore_event_handler_prepend(
        ECORE_EVENT_KEY_DOWN,
        [](void *data, int, void *event) -> Eina_Bool {
            auto &to = *static_cast<Remote *>(data);
            const auto key = remote_key(static_cast<Ecore_Event_Key *>(event)->keyname);
            if (!key.empty() && input_came(to))
                to.panel.key_down(key);
            return ECORE_CALLBACK_DONE;
        },
        &remote);
    ecore_event_handler_prepend(
        ECORE_EVENT_KEY_UP,
        [](void *data, int, void *event) -> Eina_Bool {
            auto &to = *static_cast<Remote *>(data);
            const auto key = remote_key(static_cast<Ecore_Event_Key *>(event)->keyname);
            if (!key.empty() && to.gadget.running())
                to.panel.key_up(key);
            return ECORE_CALLBACK_DONE;
        },
        &remote);
    ecore_event_handler_prepend(
        ECORE_EVENT_MOUSE_BUTTON_DOWN,
        [](void *data, int, void *) -> Eina_Bool {
            input_came(*static_cast<Remote *>(data));
            return ECORE_CALLBACK_PASS_ON;
        },
        &remote);
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

void play(const Options &options, Notices &notices, StoreNotices &store)
{
    Toolkit toolkit({.display = options.display,
                     .animations = options.animations,
                     .scale = options.scale,
                     .log_messages = !options.log.empty(),
                     .theme = {}});
    const auto locale = chosen_locale();
    set_up_language(locale, notices);
    std::optional<Speech> speech;
    std::optional<Reader> reader;
    if (options.screen_reader || !options.transcript.empty()) {
        speech.emplace(
            SpeechOptions{.transcript = options.transcript, .locale = locale, .aloud = options.screen_reader}, tell);
        reader.emplace([&speech](const std::string &text, bool interrupt) { speech->say(text, interrupt); });
    }
    bool ended = false;
    end_on_signals(ended);
    watch_pictures(notices);
    Panel panel(toolkit);
    NoticeLine line(panel, notices);
    Gadget gadget(panel, options.module);
    panel.on_close([&ended] { ended = true; });
    panel.on_visible([&gadget](bool visible) { visible ? gadget.resume() : gadget.pause(); });
    gadget.wait_for_last_toast();
    gadget.start();

    play_remote(panel, options.keys, [&] { return ended || !gadget.running(); });
    if (ended)
        return;
    if (!options.display || !options.screenshot.empty()) {
        take_picture(panel, options);
        return;
    }
    std::puts(kRemoteKeysLine);
    std::fflush(stdout);
    store.input_came(); /* what failed before a user could do anything closes no panel, and keeps none open */
    Remote remote{panel, gadget, store, ended};
    connect_input(remote);
    toolkit.run_until([&] { return ended || (gadget.ended() && !store.failed_since_input()); });
}

} // namespace

int main(int argc, char **argv)
{
    vesk_port::check_output_at_exit("vesk-host");
    int exit_code = 0;
    const auto options = vesk::read_options(argc, argv, exit_code);
    if (!options)
        return exit_code;
    static Notices notices; /* the log tells them to the process's end */
    static StoreNotices store(notices);
    try {
        set_up_log(*options, store);
        set_up_television(*options);
        check_start();
        play(*options, notices, store);
        return 0;
    } catch (const std::exception &error) {
        tell(error.what());
        return 1;
    }
}
