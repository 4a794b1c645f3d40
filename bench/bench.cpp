/* vesk-bench: speed and memory of the device list beside a bare toolkit program with the same widgets. */

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "desktop/output.h"
#include "measurements.h"
#include "report.h"

namespace {

namespace fs = std::filesystem;
using namespace bench;

constexpr int kMisused = 2; /* the exit code */
constexpr Effort kFull{.starts = 15, .pairs = 3, .repetitions = 12, .scrolls = 4, .idle_seconds = 10};
constexpr Effort kQuick{.starts = 3, .pairs = 1, .repetitions = 3, .scrolls = 1, .idle_seconds = 2};

struct Options {
    bool quick = false;
    fs::path json = "build/bench.json";
    std::vector<std::string> only;
};

void describe(CLI::App &program, Options &options)
{
    std::vector<std::string> names;
    std::string footer = "\nMeasurements:\n";
    for (const Measurement &measurement : measurements()) {
        names.emplace_back(measurement.name);
        footer +=
            "  " + std::string(measurement.name) + std::string(10 - names.back().size(), ' ') + measurement.help + "\n";
    }
    program.footer(footer);
    program.add_flag("--quick", options.quick, "few rounds: a look within a minute, no figures to keep");
    program.add_option("--json", options.json, "the file for all samples")->capture_default_str()->type_name("FILE");
    program.add_option("--only", options.only, "one measurement; may be given several times")
        ->check(CLI::IsMember(names))
        ->type_name("NAME");
}

/* A television of our own: no device, setting or log of the user has a part in it. Removed in the end. */
class OwnFolder {
public:
    OwnFolder()
    {
        std::string name = (fs::temp_directory_path() / "vesk-bench-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("No folder can be made in " + fs::temp_directory_path().string() +
                                     "; name another one in TMPDIR.");
        folder_ = name;
        for (const char *variable : {"VESK_LOG", "VESK_FAIL", "VESK_SHARE"})
            unsetenv(variable);
        setenv("VESK_DEVICES", (folder_ / "devices.db").c_str(), 1);
        setenv("VESK_SETTINGS", (folder_ / "settings.ini").c_str(), 1);
        setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
        setenv("VESK_PRODUCT", "television", 1);
    }
    ~OwnFolder()
    {
        if (!keep_)
            fs::remove_all(folder_);
    }
    OwnFolder(const OwnFolder &) = delete;
    OwnFolder &operator=(const OwnFolder &) = delete;

    const fs::path &path() const { return folder_; }

    /* What is in it tells why a measurement was impossible. */
    void keep() { keep_ = true; }

private:
    fs::path folder_;
    bool keep_ = false;
};

void measure(const Options &options)
{
    make_writable(options.json);
    OwnFolder folder;
    std::vector<Line> lines;
    for (const Measurement &measurement : measurements()) {
        if (!options.only.empty() && std::ranges::find(options.only, measurement.name) == options.only.end())
            continue;
        std::fprintf(stderr, "measuring %s ...\n", measurement.name);
        try {
            const auto more = measurement.measure(options.quick ? kQuick : kFull, folder.path());
            lines.insert(lines.end(), more.begin(), more.end());
        } catch (...) {
            folder.keep();
            std::fprintf(stderr, "vesk-bench: the files it worked with are in %s\n", folder.path().c_str());
            throw;
        }
    }
    print(lines);
    write_json(lines, options.json);
    std::printf("all samples: %s\n", options.json.c_str());
}

int run_program(int argc, char **argv)
{
    Options options;
    CLI::App program("Measures the device list beside a bare toolkit program with the same widgets.", "vesk-bench");
    describe(program, options);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return program.exit(error) == 0 ? 0 : kMisused;
    }
    measure(options);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    vesk_port::check_output_at_exit("vesk-bench");
    std::signal(SIGPIPE, SIG_IGN); /* a subject that has ended is told by the failed write */
    try {
        return run_program(argc, argv);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "vesk-bench: %s\n", error.what());
        return 1;
    }
}
