#pragma once
/* What a person's keys, or the words of --keys, do on the panel. */

#include <functional>
#include <string>
#include <vector>

#include "television/panel.h"

namespace vesk {

/* Which keys of the keyboard are the remote's, and what the pointer does. */
inline constexpr const char *kRemoteKeysLine =
    "Keys: arrows, Enter, Esc or Backspace is Back, F4 is Close. A click is a touch;\n"
    "on a television it only moves to a choice of a drop-down, and Enter takes it.";

/* One step of a script: a key of the remote, a finger, or a pause. */
struct RemoteStep {
    enum class Kind { key, tap, wait } kind;
    std::string key; /* as the gadget sees it */
    int x = 0;       /* pixels of the panel */
    int y = 0;
    int milliseconds = 0;
};

/* Reads a word: Up, Down, Left, Right, Return (or Enter), XF86Back (or Back), XF86Close (or Close), tap:X,Y or
   wait:MS. Throws std::runtime_error with a sentence that names the word and these. */
RemoteStep read_remote_word(const std::string &word);

/* Carries the words out, each once the panel has come to rest after the one before. Ends early when `over` holds. */
void play_remote(Panel &panel, const std::vector<std::string> &words, const std::function<bool()> &over);

/* The remote's key for a key of the keyboard: arrows, Enter, Escape or Backspace (Back), F4 (Close); empty for the
   others. */
std::string remote_key(const std::string &keyboard_key);

} // namespace vesk
