#pragma once
/* Scenes in processes beside this one: the toolkit draws on one core only, and a scene that ends its process or loops
   is a finding like any other. */

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace vesk::looks {

struct JobResult {
    size_t job = 0;
    std::vector<std::string> findings;
};

struct Crew {
    std::vector<std::string> command; /* starts a process that calls serve_jobs */
    int processes = 2;
    std::chrono::seconds limit{60};      /* for one job */
    bool a_process_for_each_job = false; /* otherwise one does many */
};

/* Has the jobs done by the crew; `done` is called here after each. A job that ends its process or takes longer than the
   limit has that as its finding, and the others go on. The processes end with this one, also when it is killed. Throws
   std::runtime_error when no process can be started. */
void do_jobs(const std::vector<size_t> &jobs, const Crew &crew, const std::function<void(const JobResult &)> &done);

/* The other side: reads the numbers of jobs from standard input until it ends, and writes what `work` finds to standard
   output, a line for each job. To be called before anything else is written there. */
void serve_jobs(const std::function<std::vector<std::string>(size_t)> &work);

} // namespace vesk::looks
