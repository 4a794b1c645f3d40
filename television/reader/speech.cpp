#include "television/reader/speech.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <sys/wait.h>
#include <utility>

#include "desktop/fence.h"
#include "desktop/text.h"

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

Speech::Speech(const SpeechOptions &options, Complain complain)
    : voice_(voice_of(options.locale)), complain_(std::move(complain)), aloud_(options.aloud),
      start_(g_get_monotonic_time())
{
    if (!options.transcript.empty()) {
        lines_ = std::fopen(options.transcript.c_str(), "w");
        if (!lines_)
            throw std::runtime_error("The transcript " + options.transcript.string() + " cannot be written.");
    }
    if (aloud_ && !has_synthesiser())
        give_up_speaking("the speech synthesiser espeak-ng is not installed; install the Debian package espeak-ng");
}

Speech::~Speech()
{
    stop_speaking();
    if (lines_ && lines_ != stdout)
        std::fclose(lines_);
}

void Speech::say(const std::string &text, bool interrupt)
{
    if (lines_)
        write_line(text);
    if (!aloud_)
        return;
    if (interrupt) {
        waiting_.clear();
        stop_speaking();
    }
    waiting_.push_back(text);
    if (!speaker_)
        speak_next();
}

/* A device's name must not make a line of its own, or steer the terminal. */
void Speech::write_line(const std::string &text)
{
    const double seconds = static_cast<double>(g_get_monotonic_time() - start_) / G_USEC_PER_SEC;
    std::string line = text;
    for (char &c : line) {
        if (c == '\n' || c == '\r')
            c = ' ';
    }
    std::fprintf(lines_, "[+%.3f] %s\n", seconds, vesk_port::escaped(line).c_str());
    std::fflush(lines_);
}

void Speech::speak_next()
{
    if (waiting_.empty())
        return;
    const char *arguments[] = {kSynthesiser, "-v", voice_.c_str(), "--", waiting_.front().c_str(), nullptr};
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD |
                                                G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    if (!g_spawn_async(nullptr, const_cast<char **>(arguments), nullptr, flags, nullptr, nullptr, &speaker_, nullptr)) {
        give_up_speaking("the speech synthesiser espeak-ng cannot be started any more");
        return;
    }
    speaker_watch_ = g_child_watch_add(
        speaker_,
        [](GPid, gint status, gpointer speech) {
            vesk_port::fenced("the synthesiser's end", [=] { static_cast<Speech *>(speech)->speaker_ended(status); });
        },
        this);
}

/* Where no sound device is there the synthesiser ends with 0; without the voice, with 1. */
void Speech::speaker_ended(int status)
{
    speaker_ = 0;
    speaker_watch_ = 0;
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0) {
        give_up_speaking("the speech synthesiser espeak-ng does not speak the language " +
                         vesk_port::in_quotes(voice_) + "; see espeak-ng --voices");
        return;
    }
    waiting_.pop_front();
    speak_next();
}

/* A synthesiser that does not listen to a polite signal must not hold up the main loop, nor go on speaking. */
void Speech::stop_speaking()
{
    if (!speaker_)
        return;
    g_source_remove(speaker_watch_);
    kill(speaker_, SIGKILL);
    g_child_watch_add(
        speaker_, [](GPid, gint, gpointer) {}, nullptr);
    speaker_ = 0;
    speaker_watch_ = 0;
}

void Speech::give_up_speaking(const std::string &why)
{
    aloud_ = false;
    complain_(why + (lines_ ? "; the texts are in the transcript only" : "; the texts are written to the terminal"));
    if (lines_)
        return;
    lines_ = stdout;
    for (const auto &text : std::exchange(waiting_, {}))
        write_line(text);
}

} // namespace vesk
