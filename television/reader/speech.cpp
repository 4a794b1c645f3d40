#include "television/reader/speech.h"

#include <csignal>
#include <stdexcept>
#include <sys/wait.h>

#include "desktop/fence.h"

namespace vesk {

namespace {

constexpr char kSynthesiser[] = "espeak-ng";

bool has_synthesiser()
{
    gchar *program = g_find_program_in_path(kSynthesiser);
    g_free(program);
    return program != nullptr;
}

/* The synthesiser's name of a locale's language: the language alone, but for Chinese. */
std::string voice_of(const std::string &locale)
{
    const auto language = locale.substr(0, locale.find_first_of("_.@"));
    return language == "zh" ? "cmn" : language;
}

} // namespace

Speech::Speech(const std::filesystem::path &transcript, const std::string &locale)
    : voice_(voice_of(locale)), start_(g_get_monotonic_time())
{
    if (!transcript.empty()) {
        lines_ = std::fopen(transcript.c_str(), "w");
        if (!lines_)
            throw std::runtime_error("The transcript " + transcript.string() + " cannot be written.");
    } else if (!has_synthesiser()) {
        lines_ = stdout;
    }
}

Speech::~Speech()
{
    stop_speaking();
    if (lines_ && lines_ != stdout)
        std::fclose(lines_);
}

void Speech::say(const std::string &text, bool interrupt)
{
    if (lines_) {
        write_line(text);
        return;
    }
    if (interrupt) {
        waiting_.clear();
        stop_speaking();
    }
    waiting_.push_back(text);
    speak_next();
}

void Speech::write_line(const std::string &text)
{
    const double seconds = static_cast<double>(g_get_monotonic_time() - start_) / G_USEC_PER_SEC;
    std::string line = text;
    for (char &c : line) {
        if (c == '\n' || c == '\r')
            c = ' '; /* a device's name must not make a line of its own */
    }
    std::fprintf(lines_, "[+%.3f] %s\n", seconds, line.c_str());
    std::fflush(lines_);
}

void Speech::speak_next()
{
    if (speaker_ || waiting_.empty())
        return;
    const std::string text = waiting_.front();
    waiting_.pop_front();
    const char *arguments[] = {kSynthesiser, "-v", voice_.c_str(), "--", text.c_str(), nullptr};
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD |
                                                G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    if (!g_spawn_async(nullptr, const_cast<char **>(arguments), nullptr, flags, nullptr, nullptr, &speaker_, nullptr)) {
        lines_ = stdout; /* it has gone in the meantime */
        write_line(text);
        return;
    }
    speaker_watch_ = g_child_watch_add(
        speaker_,
        [](GPid, gint, gpointer speech) {
            auto *self = static_cast<Speech *>(speech);
            self->speaker_ = 0;
            self->speaker_watch_ = 0;
            vesk_port::fenced("the synthesiser's end", [self] { self->speak_next(); });
        },
        this);
}

void Speech::stop_speaking()
{
    if (!speaker_)
        return;
    g_source_remove(speaker_watch_);
    kill(speaker_, SIGTERM);
    waitpid(speaker_, nullptr, 0);
    speaker_ = 0;
    speaker_watch_ = 0;
}

} // namespace vesk
