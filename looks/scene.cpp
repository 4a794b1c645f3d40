#include "scene.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>

#include "catalogue.h"
#include "desktop/device_store.h"
#include "desktop/paths.h"
#include "desktop/settings.h"
#include "television/language.h"
#include "television/share.h"

namespace vesk::looks {

namespace {

void set_word(const vesk_port::Setting &setting, const std::string &word)
{
    vesk_port::write_setting(setting.key, vesk_port::setting_value(setting.key, word));
}

/* Texts are looked up anew only when the locale has been another one in between. */
void speak(const std::string &language)
{
    setlocale(LC_ALL, "C");
    if (!use_language(language))
        throw std::runtime_error("There are no texts in the language " + language +
                                 "; name one of those in po/LINGUAS.");
}

ToolkitOptions without_motion()
{
    ToolkitOptions options;
    options.animations = false;
    options.scale = Stage::look.scale;
    options.theme = Stage::look.theme;
    return options;
}

} // namespace

Stage::Look Stage::look;

Stage::Stage() : share_(vesk_port::share_folder())
{
    std::string name = (std::filesystem::temp_directory_path() / "vesk-looks-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::runtime_error("No folder can be made in " + std::filesystem::temp_directory_path().string() +
                                 "; set TMPDIR to one that can be written.");
    folder_ = name;
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    setenv("VESK_LOG_LEVEL", "off", 1);
    unsetenv("VESK_FAIL");
    toolkit_ = std::make_unique<Toolkit>(without_motion());
}

Stage &Stage::here()
{
    static Stage made;
    return made;
}

Stage::~Stage()
{
    std::filesystem::remove_all(folder_);
}

std::filesystem::path Stage::next_folder()
{
    auto folder = folder_ / std::to_string(++scenes_);
    std::filesystem::create_directories(folder);
    return folder;
}

Scene::Scene(const State &state, const Setting &setting) : state_(state), setting_(setting)
{
    if (setting.scale != Stage::look.scale)
        throw std::runtime_error("The scene " + name() + " wants another scale than the toolkit has.");
    auto &stage = Stage::here();
    const auto folder = stage.next_folder();
    prepare_television(folder);
    if (state.text)
        replace_text(stage.share(), folder / "share", setting.language, state.text_id, state.text);
    setenv("VESK_SHARE", (state.text ? folder / "share" : stage.share()).c_str(), 1);
    speak(setting.language);
    panel_ = std::make_unique<Panel>(stage.toolkit());
    gadget_ = std::make_unique<Gadget>(*panel_, module_file());
    gadget_->start();
    panel_->settle();
    for (const auto &key : state.keys)
        press(key);
    panel_->settle();
    if (!gadget_->running())
        throw std::runtime_error("The module has ended on the way to the state " + name() + ".");
}

Scene::~Scene()
{
    gadget_.reset();
    panel_.reset();
    vesk_port::forget_setting_watches();
}

void Scene::prepare_television(const std::filesystem::path &folder) const
{
    setenv("VESK_DEVICES", (folder / "devices.db").c_str(), 1);
    setenv("VESK_SETTINGS", (folder / "settings.ini").c_str(), 1);
    setenv("VESK_PRODUCT", setting_.product.c_str(), 1);
    set_word(vesk_port::kOrientationSetting, setting_.portrait ? "portrait" : "landscape");
    set_word(vesk_port::kLanguageSetting, setting_.language);
    set_word(vesk_port::kHighContrastSetting, setting_.high_contrast ? "on" : "off");
    vesk_port::DeviceStore(folder / "devices.db").replace(state_.devices());
}

void Scene::press_towards_buttons()
{
    const auto *list = panel_->focused();
    panel_->press(setting_.right_to_left() ? "Left" : "Right");
    if (panel_->focused() == list)
        panel_->press(setting_.right_to_left() ? "Right" : "Left"); /* buttons under the list have no side */
}

void Scene::press(const std::string &key)
{
    if (key == "Buttons")
        press_towards_buttons();
    else if (key == "Before")
        panel_->press(setting_.right_to_left() ? "Right" : "Left");
    else if (key == "Last")
        panel_->press("Up");
    else
        panel_->press(key);
}

} // namespace vesk::looks
