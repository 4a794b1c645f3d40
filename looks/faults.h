#pragma once
/* Ways to spoil the theme, each of which the checks have to find. A fault is a file looks/faults/NAME.sed: a script for
   the theme's sources, with a scene in which it shows and what is found there in its first lines:

       # scene: six-rows.television.wide.en_GB
       # finds: A title stands on the wrong side */

#include <filesystem>
#include <string>
#include <vector>

#include "states.h"

namespace vesk::looks {

struct Fault {
    std::string name;
    std::filesystem::path script;
    Setup scene;
    std::string finds; /* part of a finding's sentence */
};

/* All faults by name. Throws std::runtime_error that names the file and says what it lacks. */
std::vector<Fault> read_faults();

/* The theme with one fault, built in a folder of its own, which goes with this. */
class SpoiltTheme {
public:
    /* Throws std::runtime_error when the script changes nothing any more, or the theme cannot be built with it. */
    explicit SpoiltTheme(const Fault &fault);
    ~SpoiltTheme();
    SpoiltTheme(const SpoiltTheme &) = delete;
    SpoiltTheme &operator=(const SpoiltTheme &) = delete;

    std::filesystem::path file() const { return folder_ / "vesk.edj"; }

private:
    std::filesystem::path folder_;
};

} // namespace vesk::looks
