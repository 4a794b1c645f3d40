#pragma once
/* Where spoken texts go: to the speech synthesiser espeak-ng, or into a transcript. */

#include <cstdio>
#include <deque>
#include <filesystem>
#include <glib.h>
#include <string>

namespace vesk {

class Speech {
public:
    /* Writes to `transcript` when it is named; otherwise speaks in the language of the locale, or, where espeak-ng is
       not installed, writes to the terminal. Throws std::runtime_error that names a file that cannot be written. */
    Speech(const std::filesystem::path &transcript, const std::string &locale);
    ~Speech();
    Speech(const Speech &) = delete;
    Speech &operator=(const Speech &) = delete;

    /* Says `text` after what waits, or, interrupting, instead of it. In a transcript: one line with the seconds since
       the start. */
    void say(const std::string &text, bool interrupt);

private:
    void write_line(const std::string &text);
    void speak_next();
    void stop_speaking();

    FILE *lines_ = nullptr;
    std::string voice_;
    std::deque<std::string> waiting_;
    GPid speaker_ = 0;
    guint speaker_watch_ = 0;
    gint64 start_ = 0;
};

} // namespace vesk
