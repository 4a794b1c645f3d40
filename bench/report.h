#pragma once
/* What was measured: lines of samples with the aim of each, as a table for people and as JSON for programs. */

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace bench {

/* The aims, each on the line's own unit or on the ratio to the bare program. */
struct Aim {
    enum class Of { ratio, median, maximum } of;
    double limit;
};

struct Line {
    std::string name; /* the measurement's, as --only takes it */
    std::string what;
    int devices = 0;
    std::string unit;
    std::vector<double> module = {};
    std::vector<double> bare = {}; /* empty where there is nothing to compare with */
    std::optional<Aim> aim = {};
};

double median(std::vector<double> samples);

/* Module by bare, of the medians; nothing without a bare program, or where that one needs nothing. */
std::optional<double> ratio(const Line &line);

/* Whether the aim is met; nothing when the line has none. */
std::optional<bool> aim_met(const Line &line);

void print(const std::vector<Line> &lines);

/* Makes the file and its folder when they are missing; a measurement of minutes should not end at a wrong path. Throws
   std::runtime_error that names the file when it cannot be written. */
void make_writable(const std::filesystem::path &file);

/* Writes the lines, with all samples and what the machine is, to `file`. Throws std::runtime_error that names the file
   when that fails. */
void write_json(const std::vector<Line> &lines, const std::filesystem::path &file);

} // namespace bench
