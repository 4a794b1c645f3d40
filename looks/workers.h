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

/* Does the jobs 0 to `count` - 1 in `processes` processes, each of which calls `work` with a job's number and gets what
   it found; `done` is called here after each job. A job that ends its process or takes longer than `limit` has that as
   its finding, and the others go on. To be called before the toolkit starts in this process. Throws std::system_error
   when no process can be made. */
void do_jobs(size_t count, int processes, std::chrono::seconds limit,
             const std::function<std::vector<std::string>(size_t)> &work,
             const std::function<void(const JobResult &)> &done);

} // namespace vesk::looks
