#pragma once
/* Every state of the screen that must look right, as a table: which devices there are and which keys lead there. */

#include <filesystem>
#include <string>
#include <vector>

#include "desktop/device_store.h"

namespace vesk::looks {

/* One state. Besides the remote's keys, `keys` has names of ways that depend on the writing direction and the form of
   the panel:
   "Buttons"  from a list to the button beside it (or under it),
   "Before"   from a button to the one before it in the line,
   "Last"     from the first row of a list to its last. */
struct State {
    const char *name;  /* names files and results: lower case, words joined by '-' */
    const char *title; /* one line for people */
    std::vector<vesk_port::Device> (*devices)();
    std::vector<std::string> keys;
    /* How many rows or buttons look focused: 1, and 0 while nobody may have the focus. */
    int focused = 1;
    /* A text that replaces the catalogue's, to see a length that no language has at present; null otherwise. */
    const char *text_id = nullptr;
    const char *text = nullptr;
};

const std::vector<State> &states();

/* The state of that name, or null. */
const State *find_state(const std::string &name);

/* Where a state is shown. */
struct Setting {
    std::string product = "television"; /* name of a profile */
    bool portrait = false;
    std::string language = "en_GB";
    bool high_contrast = false;
    double scale = 1; /* the user's magnification */

    bool board() const { return product == "board"; }
    bool compact() const { return portrait && board(); }
    bool right_to_left() const;
};

/* The languages of the gallery: the common one, a long one, another script, and two from right to left. */
const std::vector<std::string> &gallery_languages();

/* Every catalogue in a share folder, as a locale that it serves: "de", and "ar_AE", since a television tells the
   direction of writing by the whole name. */
std::vector<std::string> all_languages(const std::filesystem::path &share);

/* The profiles in a share folder. */
std::vector<std::string> all_products(const std::filesystem::path &share);

/* A state and where it is shown. */
struct Setup {
    const State *state;
    Setting setting;
};

/* Every state in these languages, in every form and contrast of the television and the board. */
std::vector<Setup> usual_scenes(const std::vector<std::string> &languages);

/* What the gallery shows besides: the states where room is short in every language of a share folder, each of its
   products, and a larger scale. */
std::vector<Setup> further_scenes(const std::filesystem::path &share);

/* "edit-some.board.tall.ar.contrast": names the files of a state in a setting. */
std::string scene_name(const State &state, const Setting &setting);

} // namespace vesk::looks
