#pragma once
/* veskctl as its users run it: separate processes, their output and their exit codes. */

#include <algorithm>

#include <nlohmann/json.hpp>

#include "port_fixture.h"

class Veskctl : public PortTest {
protected:
    /* All devices, as the program lists them. */
    static nlohmann::json devices()
    {
        const ProcessResult result = veskctl({"devices", "list", "--json"});
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return nlohmann::json::parse(result.out);
    }

    /* A file with that many phones, at most 90. */
    std::string file_of(int count)
    {
        nlohmann::json list = nlohmann::json::array();
        for (int i = 0; i < count; ++i) {
            const std::string mac = "02:00:00:00:00:" + std::to_string(10 + i);
            list.push_back({{"name", "Phone " + std::to_string(i)}, {"wifi", mac}, {"type", "phone"}});
        }
        write_file(folder_ / "devices.json", list.dump());
        return folder_ / "devices.json";
    }

    /* The command fails with one short line, which names the input. */
    static void expect_refused(const std::vector<std::string> &arguments, const std::string &named,
                               const std::string &input = "")
    {
        expect_one_line(veskctl(arguments, input), 1, named);
    }

    /* The same, since the command line itself makes no sense. */
    static void expect_misused(const std::vector<std::string> &arguments, const std::string &named)
    {
        expect_one_line(veskctl(arguments), 2, named);
    }

private:
    static void expect_one_line(const ProcessResult &result, int exit_code, const std::string &named)
    {
        EXPECT_EQ(result.exit_code, exit_code) << result.err;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, testing::AllOf(testing::StartsWith("veskctl: "), testing::HasSubstr(named)));
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
        EXPECT_LT(result.err.size(), 1100U);
    }
};
