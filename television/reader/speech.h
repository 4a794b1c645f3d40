#pragma once
/* Where spoken texts go: to the speech synthesiser espeak-ng, into a transcript, or to both. */

#include <cstdio>
#include <deque>
#include <filesystem>
#include <functional>
#include <glib.h>
#include <string>

namespace vesk {

struct SpeechOptions {
    std::filesystem::path transcript; /* empty: none */
    std::string locale;               /* the texts' own */
    bool aloud = true;
};

class Speech {
public:
    using Complain = std::function<void(const std::string &sentence)>;

    /* What can't be spoken aloud, for want of espeak-ng or of a voice, is written to the terminal where there is no
       transcript; `complain` is told why, once. Throws std::runtime_error that names a file that cannot be written. */
    Speech(const SpeechOptions &options, Complain complain);
    ~Speech();
    Speech(const Speech &) = delete;
    Speech &operator=(const Speech &) = delete;

    /* Says `text` after what waits, or, interrupting, instead of it. In a transcript: one line with the seconds since
       the start. */
    void say(const std::string &text, bool interrupt);

private:
    void write_line(const std::string &text);
    void speak_next();
    void speaker_ended(int status);
    void stop_speaking();
    void give_up_speaking(const std::string &why);

    FILE *lines_ = nullptr; /* the transcript or the terminal */
    std::string voice_;
    Complain complain_;
    bool aloud_;
    std::deque<std::string> waiting_; /* the first is being spoken while there is a speaker */
    GPid speaker_ = 0;
    guint speaker_watch_ = 0;
    gint64 start_ = 0;
};

} // namespace vesk
