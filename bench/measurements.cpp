#include "measurements.h"

#include <array>
#include <chrono>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <thread>
#include <tuple>
#include <utility>

#include "clock.h"
#include "desktop/device_store.h"
#include "desktop/paths.h"
#include "household.h"
#include "subject_process.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr std::array<int, 2> kHouseholds{12, 50};
constexpr int kLongList = 50; /* what a panel lists at most */
constexpr std::array<int, 2> kImports{500, 5'000};
constexpr int kLargeStore = 50'000;
constexpr int kBuilds = 4; /* of the screen, in each process that has started */

constexpr double kRatio = 1.10;
constexpr double kSettledMs = 200;
constexpr double kChangeMs = 12 + 1000.0 / 60; /* and one tick of the toolkit's animator */

constexpr double kImportedMs = 300;

constexpr Aim kRatioAim{Aim::Of::ratio, kRatio};
constexpr Aim kNothingAim{Aim::Of::maximum, 0};

void register_devices(int count)
{
    vesk_port::DeviceStore(vesk_port::devices_file()).replace(household(count));
}

/* Both subjects beside each other, at rest. Which one comes first changes from round to round. */
class Pair {
public:
    Pair(int devices, int round) : module_first_(round % 2 == 0)
    {
        (module_first_ ? module_ : bare_).start(module_first_ ? Kind::module : Kind::bare, devices);
        (module_first_ ? bare_ : module_).start(module_first_ ? Kind::bare : Kind::module, devices);
    }

    struct Side {
        std::unique_ptr<SubjectProcess> process;
        double settled_ms = 0; /* from the first frame with rows to the last of the opening */

        void start(Kind kind, int devices)
        {
            process = std::make_unique<SubjectProcess>(kind, devices);
            settled_ms = process->ask("settle").at("ms");
        }
    };

    SubjectProcess &module() { return *module_.process; }
    SubjectProcess &bare() { return *bare_.process; }

    /* A number of each side becomes a sample. */
    template <class Number> void sample(Line &line, Number number)
    {
        line.module.push_back(static_cast<double>(number(module_)));
        line.bare.push_back(static_cast<double>(number(bare_)));
    }

    /* The same command `count` times to each, in turns; "ms" of each answer becomes a sample. */
    void sample_command(Line &line, const std::string &command, int count)
    {
        for (int i = 0; i < count; ++i) {
            const bool module_now = module_first_ == (i % 2 == 0);
            for (const bool to_module : {module_now, !module_now})
                (to_module ? line.module : line.bare).push_back((to_module ? module() : bare()).ask(command).at("ms"));
        }
    }

private:
    bool module_first_;
    Side module_;
    Side bare_;
};

std::string contents(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/* What is compared has to be the same: both show the same picture, to the last pixel. */
void check_pictures(Pair &pair, const fs::path &folder)
{
    const fs::path module_picture = folder / "module.png";
    const fs::path bare_picture = folder / "bare.png";
    pair.module().ask("picture " + module_picture.string());
    pair.bare().ask("picture " + bare_picture.string());
    const std::string picture = contents(module_picture);
    if (picture.empty() || picture != contents(bare_picture))
        throw std::runtime_error("The module and the bare program show different screens, so there is nothing to "
                                 "compare: " +
                                 module_picture.string() + " and " + bare_picture.string() + ".");
}

std::vector<Line> measure_start(const Effort &effort, const fs::path &folder)
{
    std::vector<Line> lines;
    for (const int devices : kHouseholds) {
        register_devices(devices);
        Line start{.name = "start", .what = "process start to first frame with rows", .devices = devices, .unit = "ms"};
        Line build{.name = "start", .what = "create callback to that frame", .devices = devices, .unit = "ms"};
        Line settled{.name = "start", .what = "first frame to settled panel", .devices = devices, .unit = "ms"};
        Line own{.name = "start", .what = "private memory", .devices = devices, .unit = "KiB"};
        Line peak{.name = "start", .what = "peak memory", .devices = devices, .unit = "KiB"};
        for (Line *line : {&start, &build, &own, &peak})
            line->aim = kRatioAim;
        settled.aim = Aim{Aim::Of::median, kSettledMs};
        for (int round = 0; round < effort.starts; ++round) {
            Pair pair(devices, round);
            pair.sample(start, [](const Pair::Side &side) { return side.process->start_ms(); });
            pair.sample(settled, [](const Pair::Side &side) { return side.settled_ms; });
            pair.sample(own, [](const Pair::Side &side) { return side.process->memory().own; });
            pair.sample(peak, [](const Pair::Side &side) { return side.process->memory().peak; });
            pair.sample_command(build, "build", kBuilds);
            if (round == 0)
                check_pictures(pair, folder);
        }
        lines.insert(lines.end(), {start, build, settled, own, peak});
    }
    return lines;
}

/* All processes are idle at the same time, and are looked at from outside. */
std::vector<Line> measure_idle(const Effort &effort, const fs::path &)
{
    constexpr int kDevices = 12;
    register_devices(kDevices);
    const std::string within = std::to_string(effort.idle_seconds) + " idle seconds: ";
    Line cpu{.name = "idle", .what = within + "CPU time", .devices = kDevices, .unit = "ms", .aim = kNothingAim};
    Line wakeups{.name = "idle", .what = within + "wakeups", .devices = kDevices, .unit = "", .aim = kNothingAim};
    Line turns{.name = "idle", .what = within + "main-loop turns", .devices = kDevices, .unit = "", .aim = kNothingAim};

    std::vector<std::unique_ptr<Pair>> pairs;
    for (int round = 0; round < effort.starts; ++round)
        pairs.push_back(std::make_unique<Pair>(kDevices, round));
    for (auto &pair : pairs) {
        pair->module().ask("idle");
        pair->bare().ask("idle");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(200)); /* until all have gone to sleep */
    std::vector<std::pair<Activity, Activity>> before;
    for (auto &pair : pairs)
        before.emplace_back(pair->module().activity(), pair->bare().activity());
    std::this_thread::sleep_for(std::chrono::seconds(effort.idle_seconds));
    for (size_t i = 0; i < pairs.size(); ++i) {
        const Activity module_after = pairs[i]->module().activity();
        const Activity bare_after = pairs[i]->bare().activity();
        cpu.module.push_back(module_after.cpu_ms - before[i].first.cpu_ms);
        cpu.bare.push_back(bare_after.cpu_ms - before[i].second.cpu_ms);
        wakeups.module.push_back(static_cast<double>(module_after.switches - before[i].first.switches));
        wakeups.bare.push_back(static_cast<double>(bare_after.switches - before[i].second.switches));
    }
    for (auto &pair : pairs)
        pair->sample(turns, [](const Pair::Side &side) { return side.process->ask("turns").at("turns").get<int>(); });
    return {cpu, wakeups, turns};
}

std::vector<Line> measure_refresh(const Effort &effort, const fs::path &)
{
    std::vector<Line> lines;
    for (const int devices : kHouseholds) {
        register_devices(devices);
        Line line{.name = "refresh",
                  .what = "status callback to repainted list",
                  .devices = devices,
                  .unit = "ms",
                  .aim = kRatioAim};
        for (int round = 0; round < effort.pairs; ++round)
            Pair(devices, round).sample_command(line, "refresh", effort.repetitions);
        lines.push_back(line);
    }
    return lines;
}

/* Changes one of `registered` devices while a panel shows the first of them. */
Line changes(const Effort &effort, const char *name, int registered, int shown, double limit)
{
    register_devices(registered);
    const vesk_port::Device changing = household(registered)[kChangingRow];
    vesk_port::DeviceStore store(vesk_port::devices_file());
    int status = changing.status;
    Line line{.name = name,
              .what = "change in another process to repainted row",
              .devices = registered,
              .unit = "ms",
              .aim = Aim{Aim::Of::median, limit}};
    for (int round = 0; round < effort.pairs; ++round) {
        SubjectProcess subject(Kind::module, shown);
        for (int i = 0; i < effort.repetitions; ++i) {
            subject.ask("change");
            status = 1 - status;
            const int64_t begun = now();
            store.set_status(changing.bt_mac, vesk_port::MacKind::bluetooth, status);
            line.module.push_back(ms(subject.answer().at("frame").get<int64_t>() - begun));
        }
    }
    return line;
}

std::vector<Line> measure_change(const Effort &effort, const fs::path &)
{
    std::vector<Line> lines;
    for (const int devices : kHouseholds)
        lines.push_back(changes(effort, "change", devices, devices, kChangeMs));
    return lines;
}

std::vector<Line> measure_bulk(const Effort &effort, const fs::path &)
{
    std::vector<Line> lines;
    for (const int devices : kImports) {
        Line list{.name = "bulk",
                  .what = "import in another process to the right list",
                  .devices = devices,
                  .unit = "ms",
                  .aim = Aim{Aim::Of::median, kImportedMs}};
        Line import{.name = "bulk", .what = "the import by itself", .devices = devices, .unit = "ms"};
        for (int i = 0; i < effort.repetitions; ++i) {
            register_devices(kHouseholds.front());
            SubjectProcess subject(Kind::module, kHouseholds.front());
            subject.ask("import");
            const int64_t begun = now();
            register_devices(devices);
            import.module.push_back(ms(now() - begun));
            list.module.push_back(ms(subject.answer().at("frame").get<int64_t>() - begun));
        }
        lines.insert(lines.end(), {list, import});
    }
    lines.push_back(changes(effort, "bulk", kLargeStore, kLongList, kImportedMs));
    return lines;
}

std::vector<Line> measure_keys(const Effort &effort, const fs::path &)
{
    register_devices(kLongList);
    Line key{.name = "keys", .what = "key to frame", .devices = kLongList, .unit = "ms", .aim = kRatioAim};
    Line lost{.name = "keys",
              .what = "keys lost at 30 a second, first row to last",
              .devices = kLongList,
              .unit = "",
              .aim = kNothingAim};
    Line slowest{.name = "keys", .what = "the slowest of them to its frame", .devices = kLongList, .unit = "ms"};
    for (int round = 0; round < effort.pairs; ++round) {
        Pair pair(kLongList, round);
        pair.sample_command(key, "key", effort.repetitions);
        for (int i = 0; i < effort.scrolls; ++i) {
            for (const auto &[process, to_lost, to_slowest] :
                 {std::tuple{&pair.module(), &lost.module, &slowest.module},
                  std::tuple{&pair.bare(), &lost.bare, &slowest.bare}}) {
                const auto answer = process->ask("scroll");
                to_lost->push_back(answer.at("lost"));
                to_slowest->push_back(answer.at("slowest_ms"));
            }
        }
    }
    return {key, lost, slowest};
}

} // namespace

const std::vector<Measurement> &measurements()
{
    static const std::vector<Measurement> all{
        {"start", "from the start to the settled panel, and the memory", measure_start},
        {"idle", "what an open list costs while nothing happens", measure_idle},
        {"refresh", "from a status callback to the repainted list", measure_refresh},
        {"change", "from a change in another process to the repainted row", measure_change},
        {"bulk", "from an import in another process to the right list, and a change in a large store", measure_bulk},
        {"keys", "from a key to its frame, and a key held down", measure_keys},
    };
    return all;
}

} // namespace bench
