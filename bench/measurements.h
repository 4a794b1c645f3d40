#pragma once
/* The measurements. In each the two subjects take turns, so that what else the machine does meets both. */

#include <filesystem>
#include <vector>

#include "report.h"

namespace bench {

/* How much is measured. */
struct Effort {
    int starts;      /* processes of each subject, where a process gives one sample */
    int pairs;       /* the same, where it gives several */
    int repetitions; /* samples from each process then */
    int scrolls;     /* runs from the first row to the last, of each process */
    int idle_seconds;
};

struct Measurement {
    const char *name;
    const char *help;
    /* Throws std::runtime_error when it cannot be carried out. `folder` is the driver's own. */
    std::vector<Line> (*measure)(const Effort &effort, const std::filesystem::path &folder);
};

const std::vector<Measurement> &measurements();

} // namespace bench
