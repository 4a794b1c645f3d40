#pragma once
/* The command line of vesk-host. */

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vesk {

struct Options {
    std::string product;     /* profile; empty: as chosen */
    std::string orientation; /* stored value of the setting; empty: the user's, like the next */
    std::string language;
    bool high_contrast = false;
    bool screen_reader = false;
    double scale = 1.0;
    std::filesystem::path devices; /* empty: the user's */
    std::string service;           /* sqlite or bluez; empty: as VESK_SERVICE says */
    std::optional<int> log_level;
    std::filesystem::path log;
    std::vector<std::string> keys; /* words of remote_script.h */
    std::filesystem::path screenshot;
    std::filesystem::path transcript;
    std::filesystem::path module;
    bool display = true;
    bool animations = true;
};

/* Reads the command line. Returns nothing when the program has to end with `exit_code`: help was asked for, or the
   error has been told. */
std::optional<Options> read_options(int argc, char **argv, int &exit_code);

} // namespace vesk
