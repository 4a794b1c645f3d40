#include "faults.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gio/gio.h>
#include <iterator>
#include <stdexcept>

#include "desktop/paths.h"

namespace vesk::looks {

namespace {

namespace fs = std::filesystem;

Setup scene_named(const std::string &name)
{
    auto scenes = usual_scenes(gallery_languages());
    std::ranges::move(further_scenes(vesk_port::share_folder()), std::back_inserter(scenes));
    const auto found = std::ranges::find_if(
        scenes, [&](const Setup &scene) { return scene_name(*scene.state, scene.setting) == name; });
    return found != scenes.end() ? *found : Setup{};
}

Fault read_fault(const fs::path &script)
{
    Fault fault{script.stem(), script, {}, {}};
    std::ifstream lines(script);
    for (std::string line; std::getline(lines, line) && line.starts_with("#");) {
        if (constexpr std::string_view scene = "# scene: "; line.starts_with(scene))
            fault.scene = scene_named(line.substr(scene.size()));
        else if (constexpr std::string_view finds = "# finds: "; line.starts_with(finds))
            fault.finds = line.substr(finds.size());
    }
    if (!fault.scene.state || fault.finds.empty())
        throw std::runtime_error(script.string() +
                                 " names no scene of the gallery, or not what is found there; begin " +
                                 "it with \"# scene: \" and \"# finds: \".");
    return fault;
}

void run(const std::vector<std::string> &command)
{
    std::vector<const char *> words;
    for (const auto &word : command)
        words.push_back(word.c_str());
    words.push_back(nullptr);
    g_autoptr(GError) error = nullptr;
    g_autoptr(GSubprocess) process = g_subprocess_newv(
        words.data(), static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_MERGE),
        &error);
    g_autofree char *said = nullptr;
    if (!process || !g_subprocess_communicate_utf8(process, nullptr, nullptr, &said, nullptr, &error) ||
        !g_subprocess_wait_check(process, nullptr, &error))
        throw std::runtime_error(command.front() + ": " + error->message + (said ? "\n" + std::string(said) : ""));
}

std::string content_of(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

std::vector<Fault> read_faults()
{
    std::vector<Fault> faults;
    for (const auto &file : fs::directory_iterator(LOOKS_FAULTS)) {
        if (file.path().extension() == ".sed")
            faults.push_back(read_fault(file.path()));
    }
    std::ranges::sort(faults, {}, &Fault::name);
    return faults;
}

SpoiltTheme::SpoiltTheme(const Fault &fault)
{
    std::string name = (fs::temp_directory_path() / "vesk-fault-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::runtime_error("No folder can be made in " + fs::temp_directory_path().string() +
                                 "; set TMPDIR to one that can be written.");
    folder_ = name;
    try {
        fs::copy(LOOKS_THEME_SOURCES, folder_, fs::copy_options::recursive);
        std::vector<std::string> sed{"sed", "-i", "-E", "-f", fault.script};
        for (const auto &file : fs::directory_iterator(folder_ / "edc"))
            sed.push_back(file.path());
        run(sed);
        if (std::ranges::all_of(fs::directory_iterator(folder_ / "edc"), [](const auto &file) {
                return content_of(file.path()) ==
                       content_of(fs::path(LOOKS_THEME_SOURCES) / "edc" / file.path().filename());
            }))
            throw std::runtime_error(fault.script.string() + " changes nothing in the theme; bring it up to date.");
        run({LOOKS_EDJE_CC, "-id", LOOKS_THEME_IMAGES, folder_ / "vesk.edc", file()});
    } catch (...) {
        fs::remove_all(folder_);
        throw;
    }
}

SpoiltTheme::~SpoiltTheme()
{
    fs::remove_all(folder_);
}

} // namespace vesk::looks
