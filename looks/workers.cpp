#include "workers.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>

#include <nlohmann/json.hpp>

#include "owned.h"

namespace vesk::looks {

namespace {

constexpr unsigned int kLastSeconds = 5; /* for a job in hand when the process that wanted it is gone */

/* The jobs that are still to do, and what has come of the others. */
struct Queue {
    const std::vector<size_t> &jobs;
    const Crew &crew;
    const std::function<void(const JobResult &)> &done;
    size_t given = 0;
    size_t workers = 0; /* those that have not ended */
    std::exception_ptr failure;
};

[[noreturn]] void throw_with(const char *what, const GError *error)
{
    throw std::runtime_error(std::string(what) + ": " + error->message);
}

/* One process after another, each with the job that it has in hand. */
class Worker {
public:
    explicit Worker(Queue &queue) : queue_(queue) { ++queue_.workers; }
    ~Worker() { end(); }
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    void next()
    {
        if (process_ && queue_.crew.a_process_for_each_job)
            end();
        if (queue_.given == queue_.jobs.size()) {
            end();
            --queue_.workers;
            return;
        }
        if (!process_)
            start();
        job_ = queue_.jobs[queue_.given++];
        /* A process that takes nothing has ended: the missing answer tells it. */
        const auto line = std::to_string(job_) + "\n";
        g_output_stream_write_all(g_subprocess_get_stdin_pipe(process_.get()), line.data(), line.size(), nullptr,
                                  nullptr, nullptr);
        timed_out_ = false;
        timer_ = g_timeout_add_seconds(static_cast<guint>(queue_.crew.limit.count()), stop, this);
        g_data_input_stream_read_line_async(results_.get(), G_PRIORITY_DEFAULT, nullptr, answered, this);
    }

private:
    void start()
    {
        std::vector<const char *> words;
        for (const auto &word : queue_.crew.command)
            words.push_back(word.c_str());
        words.push_back(nullptr);
        g_autoptr(GError) error = nullptr;
        const auto pipes =
            static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE);
        process_.reset(g_subprocess_newv(words.data(), pipes, &error));
        if (!process_)
            throw_with("No process can be started", error);
        results_.reset(g_data_input_stream_new(g_subprocess_get_stdout_pipe(process_.get())));
    }

    /* The process ends when its input does. */
    void end()
    {
        if (!process_)
            return;
        g_output_stream_close(g_subprocess_get_stdin_pipe(process_.get()), nullptr, nullptr);
        g_subprocess_wait(process_.get(), nullptr, nullptr);
        results_.reset();
        process_.reset();
    }

    static gboolean stop(gpointer data)
    {
        auto &self = *static_cast<Worker *>(data);
        self.timer_ = 0;
        self.timed_out_ = true;
        g_subprocess_force_exit(self.process_.get());
        return G_SOURCE_REMOVE;
    }

    static void answered(GObject *, GAsyncResult *result, gpointer data)
    {
        auto &self = *static_cast<Worker *>(data);
        try {
            self.take(result);
            self.next();
        } catch (...) {
            self.queue_.failure = std::current_exception();
            --self.queue_.workers;
        }
    }

    void take(GAsyncResult *result)
    {
        if (timer_)
            g_source_remove(std::exchange(timer_, 0));
        g_autofree char *line = g_data_input_stream_read_line_finish(results_.get(), result, nullptr, nullptr);
        if (line) {
            queue_.done({job_, nlohmann::json::parse(line)});
            return;
        }
        end();
        queue_.done(
            {job_, {timed_out_ ? "The screen did not come to rest." : "The program ended while it showed this."}});
    }

    Queue &queue_;
    Owned<GSubprocess> process_;
    Owned<GDataInputStream> results_;
    size_t job_ = 0;
    guint timer_ = 0;
    bool timed_out_ = false;
};

/* Lets this process end soon after the one that started it: at the end of its input, and when a job never comes to its
   end, by the alarm. */
void end_with_parent()
{
    struct sigaction last {};
    last.sa_handler = [](int) { alarm(kLastSeconds); };
    last.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGALRM, &last, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGALRM);
}

} // namespace

void do_jobs(const std::vector<size_t> &jobs, const Crew &crew, const std::function<void(const JobResult &)> &done)
{
    std::signal(SIGPIPE, SIG_IGN); /* a process may end while it is given a job */
    Queue queue{jobs, crew, done, 0, 0, {}};
    std::vector<std::unique_ptr<Worker>> workers;
    for (size_t i = 0; i < std::min(jobs.size(), static_cast<size_t>(std::max(crew.processes, 1))); ++i)
        workers.push_back(std::make_unique<Worker>(queue));
    for (const auto &worker : workers)
        worker->next();
    while (queue.workers > 0 && !queue.failure)
        g_main_context_iteration(nullptr, TRUE);
    if (queue.failure)
        std::rethrow_exception(queue.failure);
}

void serve_jobs(const std::function<std::vector<std::string>(size_t)> &work)
{
    end_with_parent();
    const int results = dup(STDOUT_FILENO);
    dup2(STDERR_FILENO, STDOUT_FILENO); /* what else is printed does not get between the results */
    for (std::string line; std::getline(std::cin, line);) {
        std::vector<std::string> findings;
        try {
            findings = work(std::stoul(line));
        } catch (const std::exception &error) {
            findings.emplace_back(error.what());
        }
        const auto answer = nlohmann::json(findings).dump() + "\n";
        if (write(results, answer.data(), answer.size()) != static_cast<ssize_t>(answer.size()))
            break;
    }
    close(results);
}

} // namespace vesk::looks
