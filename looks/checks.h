#pragma once
/* What is wrong with a scene, as a machine can tell. */

#include <string>
#include <vector>

#include "picture.h"
#include "scene.h"
#include "sight.h"

namespace vesk::looks {

struct Finding {
    std::string what; /* one sentence */
    Rect place;       /* where on the panel */
};

/* A scene with what a check needs to know of it. */
struct Shown {
    const State &state;
    const Setting &setting;
    Sight sight;
    Picture picture;

    /* Pixels of the panel for a length of the design: everything but the panel itself is smaller when compact. */
    int scaled(int length) const;
};

Shown shown(Scene &scene);

/* Each check appends what it finds. */
void check_texts(const Shown &scene, std::vector<Finding> &findings);    /* whole, apart, on their ground */
void check_contrast(const Shown &scene, std::vector<Finding> &findings); /* 4.5:1, and 7:1 in high contrast */
void check_focus(const Shown &scene, std::vector<Finding> &findings);    /* exactly one thing looks focused */
void check_choices(const Shown &scene, std::vector<Finding> &findings);  /* what cannot be chosen looks so */
void check_dimming(const Shown &scene, std::vector<Finding> &findings);  /* a panel behind another is darker */
void check_places(const Shown &scene, std::vector<Finding> &findings);   /* margins, sides, the drop-down, the toast */
void check_pictures(const Shown &scene, std::vector<Finding> &findings); /* found, to be seen, of a size that fits */
void check_boxes(const Shown &scene, std::vector<Finding> &findings);    /* check boxes: in line, and what they say */
void check_buttons(const Shown &scene, std::vector<Finding> &findings);  /* texts of buttons: in the middle, apart */

/* All of them. */
std::vector<Finding> check(const Shown &scene);

/* Writes the scene's picture with the findings' places marked to `folder`, which is made; returns the file. */
std::filesystem::path save_marked(Evas *canvas, const Shown &scene, const std::vector<Finding> &findings,
                                  const std::filesystem::path &folder);

} // namespace vesk::looks
