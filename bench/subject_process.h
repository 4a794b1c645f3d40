#pragma once
/* A subject that runs: started, asked over its standard input, observed from outside, and ended. */

#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/types.h>

#include <nlohmann/json.hpp>

namespace bench {

enum class Kind { module, bare };

/* What an idle process has used up to now, over all its threads. */
struct Activity {
    double cpu_ms = 0;
    int64_t switches = 0; /* times that it has gone to sleep by itself, which is once more than it was woken */
};

/* Memory of a process in KiB. */
struct Memory {
    int64_t own = 0;  /* pages that no other process shares, written or not */
    int64_t peak = 0; /* the most that was resident at once */
};

/* All functions throw std::runtime_error that names the subject when it fails, ends or does not answer in time. */
class SubjectProcess {
public:
    /* Starts the subject and waits for its first frame with rows. */
    SubjectProcess(Kind kind, int devices);

    /* Ends it. */
    ~SubjectProcess();
    SubjectProcess(const SubjectProcess &) = delete;
    SubjectProcess &operator=(const SubjectProcess &) = delete;

    /* Milliseconds from the start of the process to the first frame with rows. */
    double start_ms() const { return start_ms_; }

    /* Sends a command and returns the answer. */
    nlohmann::json ask(const std::string &command);

    /* The next answer of a command that gives several. */
    nlohmann::json answer();

    Activity activity() const;
    Memory memory() const;

private:
    void end();

    std::string name_;
    pid_t pid_ = -1;
    int commands_ = -1; /* what we write into, and read from */
    int answers_ = -1;
    std::string received_;
    double start_ms_ = 0;
};

} // namespace bench
