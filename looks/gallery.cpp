/* vesk-gallery: a picture of every state of the screen, looked at by a machine and shown on one page. */

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iterator>
#include <memory>
#include <numeric>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

#include <CLI/CLI.hpp>

#include "checks.h"
#include "chosen.h"
#include "desktop/output.h"
#include "desktop/paths.h"
#include "faults.h"
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
    bool faults = false;
    bool worker = false;
    std::vector<std::string> command; /* this one, for the processes that draw */
};

std::string name_of(const Setup &scene)
{
    return scene_name(*scene.state, scene.setting);
}

bool wanted(const std::string &name, const std::vector<std::string> &only)
{
    return only.empty() || std::ranges::any_of(only, [&](const auto &part) { return name.find(part) != name.npos; });
}

std::vector<Setup> scenes_of(const Options &options)
{
    auto scenes = usual_scenes(!options.languages.empty() ? options.languages
                               : options.quick            ? std::vector<std::string>{"en_GB", "ar_AE"}
                                                          : gallery_languages());
    if (!options.quick && options.languages.empty())
        std::ranges::move(further_scenes(vesk_port::share_folder()), std::back_inserter(scenes));
    std::set<std::string> names;
    std::erase_if(scenes, [&](const Setup &scene) {
        return (options.quick && scene.setting.high_contrast) || !wanted(name_of(scene), options.only) ||
               !names.insert(name_of(scene)).second;
    });
    return scenes;
}

std::string picture_of(const Setup &scene)
{
    return "pictures/" + name_of(scene) + ".png";
}

std::string thumbnail_of(const Setup &scene)
{
    return "thumbnails/" + name_of(scene) + ".webp";
}

std::vector<std::string> draw(const Setup &scene, const fs::path &out)
{
    Stage::look.scale = scene.setting.scale;
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

std::vector<Fault> faults_of(const Options &options)
{
    auto faults = read_faults();
    std::erase_if(faults, [&](const Fault &fault) { return !wanted(fault.name, options.only); });
    return faults;
}

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
    const auto take = [&](const JobResult &result) {
        entries[result.job].findings = result.findings;
        with_findings += !result.findings.empty();
        progress.step(with_findings);
    };
    /* The toolkit of a process has one scale. */
    for (const bool large : {false, true}) {
        std::vector<size_t> jobs;
        for (size_t i = 0; i < scenes.size(); ++i) {
            if (large == (scenes[i].setting.scale > 1))
                jobs.push_back(i);
        }
        do_jobs(jobs, {options.command, options.jobs, kSceneLimit}, take);
    }
    write_page(options.out, entries);

    for (size_t i = 0; i < entries.size(); ++i) {
        for (const auto &finding : entries[i].findings)
            std::printf("%s: %s\n", name_of(scenes[i]).c_str(), finding.c_str());
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

/* Shows each fault in a process of its own, since a toolkit has one theme, and the same scene without it. */
int look_for_faults(const Options &options)
{
    const auto faults = faults_of(options);
    if (faults.empty()) {
        std::fprintf(stderr, "vesk-gallery: no fault's name contains what --only says; see looks/faults.\n");
        return 1;
    }
    fs::create_directories(options.out / "faults");
    std::vector<size_t> jobs(2 * faults.size());
    std::iota(jobs.begin(), jobs.end(), size_t{0});
    size_t wrong = 0;
    do_jobs(jobs, {options.command, options.jobs, kSceneLimit, true}, [&](const JobResult &result) {
        const auto &fault = faults[result.job / 2];
        for (const auto &finding : result.findings)
            std::printf("%s: %s\n", fault.name.c_str(), finding.c_str());
        wrong += !result.findings.empty();
    });
    if (wrong == 0)
        std::printf("%zu faults, each found\n", faults.size());
    return wrong == 0 ? 0 : 1;
}

/* Even jobs show a fault, odd ones the same scene without it. */
std::vector<std::string> show_fault(const Fault &fault, bool spoilt, const fs::path &out)
{
    std::unique_ptr<SpoiltTheme> theme;
    if (spoilt) {
        theme = std::make_unique<SpoiltTheme>(fault);
        Stage::look.theme = theme->file();
    }
    Stage::look.scale = fault.scene.setting.scale;
    Scene show(*fault.scene.state, fault.scene.setting);
    const auto seen = shown(show);
    const auto findings = check(seen);
    const bool found = std::ranges::any_of(
        findings, [&](const Finding &finding) { return finding.what.find(fault.finds) != std::string::npos; });
    if (found == spoilt)
        return {};
    auto marked = seen.picture;
    for (const auto &finding : findings)
        marked.mark(finding.place);
    marked.save(show.panel().canvas(), out / "faults" / (fault.name + ".png"));
    if (!spoilt)
        return {"\"" + fault.finds + "\" is found without it"};
    std::vector<std::string> sentences{"\"" + fault.finds + "\" is not found"};
    for (const auto &finding : findings)
        sentences.push_back("found is: " + finding.what);
    return sentences;
}

void work(const Options &options)
{
    if (options.faults) {
        const auto faults = faults_of(options);
        serve_jobs([&](size_t job) { return show_fault(faults.at(job / 2), job % 2 == 0, options.out); });
    } else {
        const auto scenes = scenes_of(options);
        serve_jobs([&](size_t job) { return draw(scenes.at(job), options.out); });
    }
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
    if (options.worker) {
        work(options);
        return 0;
    }
    if (options.faults)
        return look_for_faults(options);
    if (!options.references.empty())
        renew(reference_scenes(), options.references, kReferenceShrink, ".png");
    if (!options.documents.empty())
        renew(documented_scenes(), options.documents, kDocumentShrink, ".webp");
    if (!options.references.empty() || !options.documents.empty())
        return 0;
    return make_gallery(options);
}

int run_program(int argc, char **argv)
{
    Options options;
    bool list = false;
    CLI::App app{
        "Draws every state of the screen for every product, orientation, language and contrast, looks for what "
        "is wrong with it, and makes a page of the pictures. Ends with 1 when something is wrong."};
    app.add_option("--out", options.out, "folder of the page and its pictures")->capture_default_str();
    app.add_option("--only", options.only,
                   "only pictures whose name contains one of these, such as edit or board.tall.ar");
    app.add_option("--language", options.languages, "these languages instead of the usual five, such as fi_FI");
    app.add_option("--jobs", options.jobs, "processes that draw")->capture_default_str()->check(CLI::Range(1, 64));
    app.add_flag("--quick", options.quick, "English and Arabic without high contrast");
    app.add_flag("--list", list, "name the pictures and draw none");
    app.add_option("--renew-references", options.references,
                   "draw the reference pictures of the tests anew into this folder, and nothing else");
    app.add_option("--docs", options.documents,
                   "draw the documentation's pictures anew into this folder, and nothing else");
    app.add_flag("--faults", options.faults, "spoil the theme in every way of looks/faults, and see that it is found");
    app.add_flag("--worker", options.worker)->group(""); /* draws what it is told to on standard input */
    CLI11_PARSE(app, argc, argv);
    options.command.assign(argv, argv + argc);
    options.command.front() = fs::read_symlink("/proc/self/exe");
    options.command.emplace_back("--worker");

    if (!list)
        return run(options);
    for (const auto &scene : scenes_of(options))
        std::printf("%s\n", name_of(scene).c_str());
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    vesk_port::check_output_at_exit("vesk-gallery");
    try {
        return run_program(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "vesk-gallery: %s\n", error.what());
        return 1;
    }
}
