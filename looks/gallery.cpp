/* vesk-gallery: a picture of every state of the screen, looked at by a machine and shown on one page. */

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>

#include "checks.h"
#include "chosen.h"
#include "desktop/output.h"
#include "page.h"
#include "scene.h"
#include "workers.h"

namespace {

using namespace vesk;
using namespace vesk::looks;
namespace fs = std::filesystem;

constexpr std::chrono::seconds kSceneLimit{60};
constexpr int kThumbnailShrink = 4;

struct Options {
    fs::path out = "build/gallery";
    std::vector<std::string> only;
    std::vector<std::string> languages;
    int jobs = 2;
    bool quick = false;
    fs::path references; /* where to renew them; empty: not at all */
    fs::path documents;  /* likewise for the documentation's pictures */
};

struct SceneOf {
    const State *state;
    Setting setting;
    std::string name() const { return scene_name(*state, setting); }
};

bool wanted(const std::string &name, const std::vector<std::string> &only)
{
    return only.empty() || std::ranges::any_of(only, [&](const auto &part) { return name.find(part) != name.npos; });
}

std::vector<SceneOf> scenes_of(const Options &options)
{
    std::vector<std::string> languages = options.languages.empty() ? gallery_languages() : options.languages;
    if (options.quick && options.languages.empty())
        languages = {"en_GB", "ar_AE"};
    std::vector<SceneOf> scenes;
    for (const auto &product : {"television", "board"}) {
        for (const bool portrait : {false, true}) {
            for (const auto &language : languages) {
                for (const bool high_contrast : {false, true}) {
                    if (options.quick && high_contrast)
                        continue;
                    for (const auto &state : states()) {
                        SceneOf scene{&state, {product, portrait, language, high_contrast}};
                        if (wanted(scene.name(), options.only))
                            scenes.push_back(std::move(scene));
                    }
                }
            }
        }
    }
    return scenes;
}

std::string picture_of(const SceneOf &scene)
{
    return "pictures/" + scene.name() + ".png";
}

std::string thumbnail_of(const SceneOf &scene)
{
    return "thumbnails/" + scene.name() + ".webp";
}

std::vector<std::string> draw(const SceneOf &scene, const fs::path &out)
{
    Scene show(*scene.state, scene.setting);
    const auto seen = shown(show);
    auto *canvas = show.panel().canvas();
    seen.picture.save(canvas, out / picture_of(scene));
    seen.picture.shrunk(kThumbnailShrink).save(canvas, out / thumbnail_of(scene));
    const auto findings = check(seen);
    std::vector<std::string> sentences;
    for (const auto &finding : findings)
        sentences.push_back(finding.what);
    if (!findings.empty())
        save_marked(canvas, seen, findings, out / "findings");
    return sentences;
}

/* On a terminal one line that is written over; into a file a line for every tenth. */
class Progress {
public:
    explicit Progress(size_t count) : count_(count) {}

    void step(size_t with_findings)
    {
        ++done_;
        if (terminal_)
            std::printf("\r%zu of %zu pictures, %zu with findings", done_, count_, with_findings);
        else if (done_ == count_ || done_ * 10 / count_ != (done_ - 1) * 10 / count_)
            std::printf("%zu of %zu pictures, %zu with findings\n", done_, count_, with_findings);
        if (terminal_ && done_ == count_)
            std::printf("\n");
        std::fflush(stdout);
    }

private:
    size_t count_;
    size_t done_ = 0;
    bool terminal_ = isatty(STDOUT_FILENO) != 0;
};

int make_gallery(const Options &options)
{
    const auto begun = std::chrono::steady_clock::now();
    const auto scenes = scenes_of(options);
    if (scenes.empty()) {
        std::fprintf(stderr, "vesk-gallery: no picture's name contains what --only says; try --list.\n");
        return 1;
    }
    for (const char *folder : {"pictures", "thumbnails"})
        fs::create_directories(options.out / folder);
    fs::remove_all(options.out / "findings");

    std::vector<PageEntry> entries;
    for (const auto &scene : scenes)
        entries.push_back({scene.state, scene.setting, picture_of(scene), thumbnail_of(scene), {}});
    size_t with_findings = 0;
    Progress progress(scenes.size());
    do_jobs(
        scenes.size(), options.jobs, kSceneLimit, [&](size_t job) { return draw(scenes[job], options.out); },
        [&](const JobResult &result) {
            entries[result.job].findings = result.findings;
            with_findings += !result.findings.empty();
            progress.step(with_findings);
        });
    write_page(options.out, entries);

    for (size_t i = 0; i < entries.size(); ++i) {
        for (const auto &finding : entries[i].findings)
            std::printf("%s: %s\n", scenes[i].name().c_str(), finding.c_str());
    }
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - begun).count();
    std::printf("%zu pictures in %lld min %lld s: %s\n", scenes.size(), static_cast<long long>(seconds / 60),
                static_cast<long long>(seconds % 60), fs::absolute(options.out / "index.html").c_str());
    if (with_findings == 0)
        return 0;
    std::printf("%zu with findings, marked in %s\n", with_findings, fs::absolute(options.out / "findings").c_str());
    return 1;
}

/* Draws the pictures that are kept, each in the ending's format. */
void renew(const std::vector<Chosen> &scenes, const fs::path &folder, int shrink, const char *ending)
{
    fs::create_directories(folder);
    for (const auto &scene : scenes) {
        Scene show(*find_state(scene.state), scene.setting);
        const auto file = folder / (std::string(scene.file) + ending);
        shown(show).picture.shrunk(shrink).save(show.panel().canvas(), file);
        std::printf("%s\n", file.c_str());
    }
}

int run(const Options &options)
{
    if (!options.references.empty())
        renew(reference_scenes(), options.references, kReferenceShrink, ".png");
    if (!options.documents.empty())
        renew(documented_scenes(), options.documents, kDocumentShrink, ".webp");
    if (!options.references.empty() || !options.documents.empty())
        return 0;
    return make_gallery(options);
}

} // namespace

int main(int argc, char **argv)
{
    vesk_port::check_output_at_exit("vesk-gallery");
    Options options;
    bool list = false;
    CLI::App app{
        "Draws every state of the screen for every product, orientation, language and contrast, looks for what "
        "is wrong with it, and makes a page of the pictures. Ends with 1 when something is wrong."};
    app.add_option("--out", options.out, "folder of the page and its pictures")->capture_default_str();
    app.add_option("--only", options.only, "only pictures whose name contains this, such as edit or board.tall.ar")
        ->allow_extra_args(false);
    app.add_option("--language", options.languages, "these languages instead of the usual five, such as fi_FI")
        ->allow_extra_args(false);
    app.add_option("--jobs", options.jobs, "processes that draw")->capture_default_str()->check(CLI::Range(1, 64));
    app.add_flag("--quick", options.quick, "English and Arabic without high contrast");
    app.add_flag("--list", list, "name the pictures and draw none");
    app.add_option("--renew-references", options.references,
                   "draw the reference pictures of the tests anew into this folder, and nothing else");
    app.add_option("--docs", options.documents,
                   "draw the documentation's pictures anew into this folder, and nothing else");
    CLI11_PARSE(app, argc, argv);

    try {
        if (!list)
            return run(options);
        for (const auto &scene : scenes_of(options))
            std::printf("%s\n", scene.name().c_str());
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "vesk-gallery: %s\n", error.what());
        return 1;
    }
}
