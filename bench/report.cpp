#include "report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <sys/utsname.h>
#include <thread>

#include <nlohmann/json.hpp>

namespace bench {

namespace {

double maximum(const std::vector<double> &samples)
{
    return *std::ranges::max_element(samples);
}

std::string number(double value, int decimals)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

int decimals(const Line &line)
{
    return line.unit == "ms" ? 1 : 0;
}

/* The figure of a line: its median, or, where the aim is one for every run, the worst of all. */
double figure(const Line &line, const std::vector<double> &samples)
{
    return line.aim && line.aim->of == Aim::Of::maximum ? maximum(samples) : median(samples);
}

std::string aim_text(const Line &line)
{
    if (!line.aim)
        return "";
    if (line.aim->of == Aim::Of::ratio)
        return "ratio " + number(line.aim->limit, 2);
    return number(line.aim->limit, decimals(line)) + " " + line.unit;
}

std::string processor()
{
    std::ifstream lines("/proc/cpuinfo");
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("model name"))
            return line.substr(line.find(':') + 2);
    }
    return "unknown";
}

nlohmann::json described(const std::vector<double> &samples)
{
    return {{"median", median(samples)},
            {"minimum", *std::ranges::min_element(samples)},
            {"maximum", maximum(samples)},
            {"samples", samples}};
}

nlohmann::json described(const Line &line)
{
    nlohmann::json result{{"name", line.name},
                          {"what", line.what},
                          {"devices", line.devices},
                          {"unit", line.unit},
                          {"module", described(line.module)}};
    if (!line.bare.empty())
        result["bare"] = described(line.bare);
    if (const auto value = ratio(line))
        result["ratio"] = *value;
    if (line.aim) {
        static constexpr const char *kOf[] = {"ratio", "median", "maximum"};
        result["aim"] = {{"of", kOf[static_cast<int>(line.aim->of)]}, {"limit", line.aim->limit}};
        result["met"] = *aim_met(line);
    }
    return result;
}

} // namespace

double median(std::vector<double> samples)
{
    std::ranges::sort(samples);
    const size_t middle = samples.size() / 2;
    return samples.size() % 2 == 1 ? samples[middle] : (samples[middle - 1] + samples[middle]) / 2;
}

std::optional<double> ratio(const Line &line)
{
    if (line.bare.empty() || median(line.bare) <= 0)
        return {};
    return median(line.module) / median(line.bare);
}

std::optional<bool> aim_met(const Line &line)
{
    if (!line.aim)
        return {};
    if (line.aim->of == Aim::Of::ratio)
        return ratio(line).value_or(0) <= line.aim->limit;
    return figure(line, line.module) <= line.aim->limit;
}

void print(const std::vector<Line> &lines)
{
    std::printf("%-46s %7s %5s %9s %9s %6s  %-11s %s\n", "", "devices", "unit", "module", "bare", "ratio", "aim", "");
    for (const Line &line : lines) {
        const int places = decimals(line);
        const auto compared = ratio(line);
        const auto met = aim_met(line);
        std::printf("%-46s %7d %5s %9s %9s %6s  %-11s %s\n", line.what.c_str(), line.devices, line.unit.c_str(),
                    number(figure(line, line.module), places).c_str(),
                    line.bare.empty() ? "" : number(figure(line, line.bare), places).c_str(),
                    compared ? number(*compared, 2).c_str() : "", aim_text(line).c_str(),
                    !met   ? ""
                    : *met ? "met"
                           : "MISSED");
    }
}

void make_writable(const std::filesystem::path &file)
{
    std::error_code error;
    if (file.has_parent_path())
        std::filesystem::create_directories(file.parent_path(), error);
    if (!std::ofstream(file, std::ios::app))
        throw std::runtime_error("The file " + file.string() + " cannot be written; name another one with --json.");
}

void write_json(const std::vector<Line> &lines, const std::filesystem::path &file)
{
    utsname system{};
    uname(&system);
    nlohmann::json report{{"machine",
                           {{"processor", processor()},
                            {"processors", std::thread::hardware_concurrency()},
                            {"kernel", std::string(system.sysname) + " " + system.release}}},
                          {"lines", nlohmann::json::array()}};
    for (const Line &line : lines)
        report["lines"].push_back(described(line));
    std::ofstream out(file);
    out << report.dump(1) << '\n';
    out.close();
    if (!out)
        throw std::runtime_error("The file " + file.string() + " cannot be written whole; make room on its disk.");
}

} // namespace bench
