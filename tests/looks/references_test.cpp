/* Some scenes look as they did when their pictures were kept. A change of look is meant to fail here: look at it, and
 * renew the pictures with vesk-gallery --renew-references tests/looks/references. */

#include <algorithm>
#include <gtest/gtest.h>

#include "chosen.h"
#include "scene.h"

using namespace vesk::looks;

namespace vesk::looks {

static void PrintTo(const Chosen &chosen, std::ostream *out)
{
    *out << chosen.file;
}

} // namespace vesk::looks

namespace {

struct ReferenceTest : testing::TestWithParam<Chosen> {};

TEST_P(ReferenceTest, LooksAsItDid)
{
    const Chosen &wanted = GetParam();
    Scene scene(*find_state(wanted.state), wanted.setting);
    auto *canvas = scene.panel().canvas();
    const auto kept = std::filesystem::path(LOOKS_REFERENCES) / (std::string(wanted.file) + ".png");
    const Picture reference = Picture::load(canvas, kept);
    Picture now = Picture::of(scene.panel()).shrunk(kReferenceShrink);
    const Difference apart = difference(now, reference);
    if (looks_like(apart))
        return;
    const auto drawn = std::filesystem::path(LOOKS_FINDINGS) / (std::string(wanted.file) + ".png");
    std::filesystem::create_directories(drawn.parent_path());
    now.mark(apart.place);
    now.save(canvas, drawn);
    FAIL() << wanted.file << " looks different: " << apart.mean << " on average, " << apart.largest
           << " where it differs most.\nKept: " << kept << "\nNow, with that place marked: " << drawn;
}

INSTANTIATE_TEST_SUITE_P(All, ReferenceTest, testing::ValuesIn(reference_scenes()), [](const auto &param) {
    std::string name = param.param.file;
    std::ranges::replace(name, '-', '_');
    return name;
});

} // namespace
