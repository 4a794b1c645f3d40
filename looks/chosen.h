#pragma once
/* Scenes of which a picture is kept: as references that a change of look fails against, and in the documentation. */

#include <filesystem>
#include <vector>

#include "picture.h"
#include "states.h"

namespace vesk::looks {

struct Chosen {
    const char *file; /* name of the kept picture, without its ending */
    const char *state;
    Setting setting;
};

const std::vector<Chosen> &reference_scenes();
const std::vector<Chosen> &documented_scenes();

/* References are kept at a fourth of the size, those of the documentation at half of it. */
constexpr int kReferenceShrink = 4;
constexpr int kDocumentShrink = 2;

/* Whether a picture looks like its reference, both shrunk alike. What another version of the font library changes is
   below the limits; another colour, size or place of anything that can be seen from a sofa is above. */
bool looks_like(const Difference &difference);

} // namespace vesk::looks
