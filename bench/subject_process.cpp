#include "subject_process.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include "clock.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr int kPatienceMs = 60'000;

/* The number behind `field` in a file of lines such as "VmHWM:  1234 kB". */
int64_t number_in(const fs::path &file, const std::string &field)
{
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(field + ":"))
            return std::stoll(line.substr(field.size() + 1));
    }
    throw std::runtime_error(file.string() + " tells no " + field);
}

struct Pipe {
    int ends[2] = {-1, -1};

    Pipe()
    {
        if (pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error(std::string("no pipe can be made: ") + std::strerror(errno));
    }
};

} // namespace

SubjectProcess::SubjectProcess(Kind kind, int devices)
    : name_(std::string(kind == Kind::module ? "module" : "bare") + " with " + std::to_string(devices) + " devices")
{
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / "vesk-bench-subject";
    std::string path = program;
    std::string kind_word = kind == Kind::module ? "module" : "bare";
    std::string count = std::to_string(devices);
    char *arguments[] = {path.data(), kind_word.data(), count.data(), nullptr};

    const Pipe commands;
    const Pipe answers;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, commands.ends[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, answers.ends[1], STDOUT_FILENO);
    const int64_t started = now();
    const int error = posix_spawn(&pid_, path.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(commands.ends[0]);
    close(answers.ends[1]);
    commands_ = commands.ends[1];
    answers_ = answers.ends[0];
    if (error) {
        pid_ = -1;
        end();
        throw std::runtime_error("The program " + path + " cannot be started: " + std::strerror(error));
    }
    try {
        start_ms_ = ms(answer().at("first_frame").get<int64_t>() - started);
    } catch (...) {
        end();
        throw;
    }
}

SubjectProcess::~SubjectProcess()
{
    end();
}

void SubjectProcess::end()
{
    close(commands_); /* the subject ends when its commands do */
    if (pid_ > 0) {
        for (int waited_ms = 0; waitpid(pid_, nullptr, WNOHANG) == 0; waited_ms += 10) {
            if (waited_ms > kPatienceMs)
                kill(pid_, SIGKILL);
            poll(nullptr, 0, 10);
        }
    }
    close(answers_);
}

nlohmann::json SubjectProcess::ask(const std::string &command)
{
    const std::string line = command + "\n";
    if (write(commands_, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        throw std::runtime_error("The subject " + name_ + " takes no commands any more.");
    return answer();
}

nlohmann::json SubjectProcess::answer()
{
    while (received_.find('\n') == received_.npos) {
        pollfd readable{answers_, POLLIN, 0};
        if (poll(&readable, 1, kPatienceMs) == 0)
            throw std::runtime_error("The subject " + name_ + " does not answer.");
        char text[256];
        const ssize_t length = read(answers_, text, sizeof text);
        if (length <= 0)
            throw std::runtime_error("The subject " + name_ + " has ended; it says above why.");
        received_.append(text, static_cast<size_t>(length));
    }
    const auto end = received_.find('\n');
    const std::string line = received_.substr(0, end);
    received_.erase(0, end + 1);
    return nlohmann::json::parse(line);
}

Activity SubjectProcess::activity() const
{
    Activity activity;
    clockid_t cpu_clock{};
    timespec cpu{};
    if (clock_getcpuclockid(pid_, &cpu_clock) != 0 || clock_gettime(cpu_clock, &cpu) != 0)
        throw std::runtime_error("The CPU time of the subject " + name_ + " cannot be read.");
    activity.cpu_ms = static_cast<double>(cpu.tv_sec) * 1e3 + static_cast<double>(cpu.tv_nsec) / 1e6;
    for (const auto &thread : fs::directory_iterator("/proc/" + std::to_string(pid_) + "/task"))
        activity.switches += number_in(thread.path() / "status", "voluntary_ctxt_switches");
    return activity;
}

Memory SubjectProcess::memory() const
{
    const fs::path folder = "/proc/" + std::to_string(pid_);
    return {number_in(folder / "smaps_rollup", "Private_Clean") + number_in(folder / "smaps_rollup", "Private_Dirty"),
            number_in(folder / "status", "VmHWM")};
}

} // namespace bench
