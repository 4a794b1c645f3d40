#include "workers.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include <nlohmann/json.hpp>

namespace vesk::looks {

namespace {

using Clock = std::chrono::steady_clock;
using Work = std::function<std::vector<std::string>(size_t)>;

/* One process with the jobs that it has still to do, the one in hand first. */
struct Worker {
    std::deque<size_t> jobs;
    pid_t process = -1;
    int results = -1;    /* reads a line for each job done */
    std::string pending; /* what has come of the next line */
    Clock::time_point begun;
};

[[noreturn]] void work_off(const std::deque<size_t> &jobs, const Work &work, int results)
{
    int status = 0;
    for (const size_t job : jobs) {
        std::vector<std::string> findings;
        try {
            findings = work(job);
        } catch (const std::exception &error) {
            findings.emplace_back(error.what());
        }
        const auto line = nlohmann::json(findings).dump() + "\n";
        if (write(results, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
            status = 1;
            break;
        }
    }
    std::exit(status); /* the jobs may have left something to clear away */
}

void start(Worker &worker, const Work &work)
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    std::fflush(nullptr);
    worker.process = fork();
    if (worker.process < 0)
        throw std::system_error(errno, std::generic_category(), "fork");
    if (worker.process == 0) {
        close(ends[0]);
        work_off(worker.jobs, work, ends[1]);
    }
    close(ends[1]);
    worker.results = ends[0];
    worker.pending.clear();
    worker.begun = Clock::now();
}

void finish(Worker &worker)
{
    close(worker.results);
    waitpid(worker.process, nullptr, 0);
    worker.results = -1;
}

/* The next whole line, without its end. */
std::optional<std::string> next_line(Worker &worker)
{
    const auto end = worker.pending.find('\n');
    if (end == worker.pending.npos)
        return {};
    auto line = worker.pending.substr(0, end);
    worker.pending.erase(0, end + 1);
    return line;
}

/* Reads what has come; returns false when the process has closed its end. */
bool read_results(Worker &worker, const std::function<void(const JobResult &)> &done)
{
    char buffer[4096];
    const auto count = read(worker.results, buffer, sizeof buffer);
    if (count <= 0)
        return false;
    worker.pending.append(buffer, static_cast<size_t>(count));
    while (const auto line = next_line(worker)) {
        done({worker.jobs.front(), nlohmann::json::parse(*line)});
        worker.jobs.pop_front();
        worker.begun = Clock::now();
    }
    return true;
}

/* The job in hand has ended its process; the others go on in a new one. */
void give_up_job(Worker &worker, const char *why, const Work &work, const std::function<void(const JobResult &)> &done)
{
    finish(worker);
    if (worker.jobs.empty())
        return;
    done({worker.jobs.front(), {why}});
    worker.jobs.pop_front();
    if (!worker.jobs.empty())
        start(worker, work);
}

} // namespace

void do_jobs(size_t count, int processes, std::chrono::seconds limit, const Work &work,
             const std::function<void(const JobResult &)> &done)
{
    std::vector<Worker> workers(std::min(count, static_cast<size_t>(std::max(processes, 1))));
    for (size_t job = 0; job < count; ++job)
        workers[job % workers.size()].jobs.push_back(job);
    for (auto &worker : workers)
        start(worker, work);

    while (std::ranges::any_of(workers, [](const Worker &worker) { return worker.results >= 0; })) {
        std::vector<pollfd> watched;
        for (const auto &worker : workers)
            watched.push_back({worker.results, POLLIN, 0}); /* a negative one is passed over */
        poll(watched.data(), watched.size(), 1000);
        for (size_t i = 0; i < workers.size(); ++i) {
            auto &worker = workers[i];
            if (worker.results < 0)
                continue;
            if (watched[i].revents != 0) {
                if (!read_results(worker, done))
                    give_up_job(worker, "The program ended while it showed this.", work, done);
            } else if (Clock::now() - worker.begun > limit) {
                kill(worker.process, SIGKILL);
                give_up_job(worker, "The screen did not come to rest.", work, done);
            }
        }
    }
}

} // namespace vesk::looks
