#include "screen_test.h"

#include <cstdlib>
#include <regex>
#include <stdexcept>
#include <ui_gadget.h>

#include "desktop/log.h"
#include "desktop/port_failures.h"
#include "dlog.h"
#include "spy.h"
#include "television/language.h"
#include "television/reader/reader.h"
#include "vesk/device_table.h"

static std::vector<std::string> spoken_texts;

static const vesk::Toolkit &toolkit()
{
    static const vesk::Toolkit started([] {
        vesk::ToolkitOptions options;
        options.animations = false;
        return options;
    }());
    return started;
}

static LogLine parsed(int priority, const std::string &text)
{
    static const std::regex prefix("^[^ ]+: ([^(]+)\\([0-9]+\\) > ([^]*)$");
    std::smatch parts;
    if (!std::regex_match(text, parts, prefix))
        return {priority, "", text};
    return {priority, parts[1], parts[2]};
}

ScreenTest::ScreenTest()
{
    std::string name = (std::filesystem::temp_directory_path() / "vesk-screen-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    setenv("VESK_DEVICES", (folder_ / "devices.db").c_str(), 1);
    setenv("VESK_SETTINGS", (folder_ / "settings.ini").c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    setenv("VESK_LOG_LEVEL", "off", 1);
    use_product("television");
    vesk_port::set_log_sink([this](int priority, const std::string &tag, const std::string &text) {
        if (tag != "VESK_LOG")
            return;
        const LogLine &line = log_.emplace_back(parsed(priority, text));
        spy::note_line(std::string(1, "IWE"[priority - DLOG_INFO]) + " " + line.function + ": " + line.message);
    });
    reset_module_state();
    spy::reset();
    spoken_texts.clear();
    vesk::set_speech_listener([](const std::string &text) { spoken_texts.push_back(text); });
}

ScreenTest::~ScreenTest()
{
    close();
    panel_.reset();
    vesk_port::clear_failures();
    vesk_port::forget_setting_watches();
    vesk_port::set_log_sink(nullptr);
    std::filesystem::remove_all(folder_);
}

void ScreenTest::use_product(const std::string &profile)
{
    setenv("VESK_PRODUCT", profile.c_str(), 1);
}

void ScreenTest::set(const std::string &setting, const std::string &word)
{
    const std::string key = vesk_port::setting_key(setting);
    vesk_port::write_setting(key, vesk_port::setting_value(key, word));
}

void ScreenTest::register_devices(const std::vector<vesk_port::Device> &devices)
{
    service().replace(devices);
}

std::vector<vesk_port::Device> ScreenTest::registered() const
{
    return service().list();
}

int ScreenTest::status_of(const std::string &name) const
{
    for (const vesk_port::Device &device : registered()) {
        if (device.name == name)
            return device.status;
    }
    return -1;
}

vesk_port::DeviceStore ScreenTest::service() const
{
    return vesk_port::DeviceStore(folder_ / "devices.db");
}

void ScreenTest::change_elsewhere(const std::string &name, bool allow)
{
    vesk_port::DeviceStore store = service();
    for (const vesk_port::Device &device : store.list()) {
        if (device.name == name)
            store.set_status(device.id, allow ? 0 : 1);
    }
}

void ScreenTest::require(bool condition, const std::string &problem)
{
    if (!condition)
        throw std::runtime_error(problem);
}

/* Texts and their direction follow the setting, as they do in a host that starts. */
static void speak_language()
{
    static std::string spoken;
    const std::string language = vesk_port::read_setting(vesk_port::kLanguageSetting.key).value();
    if (language != spoken)
        vesk::use_language(language);
    spoken = language;
}

void ScreenTest::open()
{
    if (!panel_)
        panel_ = std::make_unique<vesk::Panel>(toolkit());
    speak_language();
    gadget_ = std::make_unique<vesk::Gadget>(*panel_, vesk::Gadget::Module{UG_MODULE_INIT, UG_MODULE_EXIT});
    gadget_->start();
    panel_->settle();
}

void ScreenTest::close()
{
    gadget_.reset();
}

void ScreenTest::turn(const std::string &orientation)
{
    const bool turns = panel().portrait() != (orientation == "portrait");
    const int heard = logged("ROTATION callback");
    set("orientation", orientation);
    require(panel().run_until([&] { return !turns || logged("ROTATION callback") > heard; }, 2000),
            "the module has not heard of the turn");
    panel().settle();
}

void ScreenTest::walk_to(int row)
{
    for (int moves = 0; focused_row() != row && moves < kTableCapacity; ++moves)
        press(focused_row() < row ? "Down" : "Up");
    require(focused_row() == row, "the focus does not reach row " + std::to_string(row));
}

void ScreenTest::open_dropdown(int row)
{
    walk_to(row);
    press("Return");
}

void ScreenTest::press(std::initializer_list<std::string> keys)
{
    for (const std::string &key : keys)
        panel_->press(key);
    panel_->settle();
}

void ScreenTest::tap(Evas_Object *object)
{
    const Eina_Rectangle place = area(object);
    panel_->tap(place.x + place.w / 2, place.y + place.h / 2);
    panel_->settle();
}

Elm_Object_Item *ScreenTest::row(Evas_Object *list, int index)
{
    return elm_genlist_nth_item_get(list, static_cast<unsigned int>(index));
}

std::vector<std::string> ScreenTest::texts(Evas_Object *list, const char *part)
{
    std::vector<std::string> result;
    for (Elm_Object_Item *item = elm_genlist_first_item_get(list); item; item = elm_genlist_item_next_get(item)) {
        const char *text = elm_object_item_part_text_get(item, part);
        result.emplace_back(text ? text : "");
    }
    return result;
}

Eina_Rectangle ScreenTest::area(Evas_Object *object)
{
    Eina_Rectangle place{};
    evas_object_geometry_get(object, &place.x, &place.y, &place.w, &place.h);
    return place;
}

Eina_Rectangle ScreenTest::row_area(Elm_Object_Item *item)
{
    const Eina_Rectangle place = area(elm_object_item_track(item));
    elm_object_item_untrack(item);
    return place;
}

int ScreenTest::logged(const std::string &message) const
{
    int count = 0;
    for (const LogLine &line : log_)
        count += line.message == message;
    return count;
}

std::vector<std::string> ScreenTest::messages() const
{
    std::vector<std::string> result;
    for (const LogLine &line : log_)
        result.push_back(line.message);
    return result;
}

std::vector<std::string> ScreenTest::lines_of(const std::string &function) const
{
    std::vector<std::string> result;
    for (const LogLine &line : log_) {
        if (line.function == function)
            result.push_back(line.message);
    }
    return result;
}

const std::vector<std::string> &ScreenTest::spoken()
{
    return spoken_texts;
}

void ScreenTest::forget()
{
    log_.clear();
    spoken_texts.clear();
    spy::forget();
}

vesk_port::Device device(const std::string &name, int type, bool allowed, const std::string &links)
{
    static int made;
    ++made;
    const auto mac = [&](char kind) {
        if (links.find(kind) == std::string::npos)
            return std::string();
        char text[18];
        snprintf(text, sizeof text, "02:%02X:00:00:%02X:%02X", static_cast<unsigned>(kind), (made >> 8) & 0xff,
                 made & 0xff);
        return std::string(text);
    };
    vesk_port::Device result;
    result.name = name;
    result.bt_mac = mac('b');
    result.wifi_mac = mac('w');
    result.p2p_mac = mac('p');
    result.type = type;
    result.status = allowed ? 0 : 1;
    return result;
}

vesk_port::Device phone(const std::string &name, bool allowed)
{
    return device(name, 1, allowed, "bwp");
}

std::vector<vesk_port::Device> phones(int count)
{
    std::vector<vesk_port::Device> result;
    for (int i = 1; i <= count; ++i)
        result.push_back(phone("Phone " + std::to_string(i)));
    return result;
}
