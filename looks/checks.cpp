#include "checks.h"

#include <algorithm>

#include "checks_common.h"
#include "pixels.h"
#include "television/theme_variants.h"

namespace vesk::looks {

namespace {

constexpr double kReadable = 4.5;
constexpr double kReadableInHighContrast = 7.0;
constexpr int kTouch = 2; /* boxes of letters may meet by so much without the letters doing so */

/* A name may be longer than what is seen of it. */
Rect place_of(const Text &text)
{
    return text.name ? text.shown : text.area;
}

} // namespace

int Shown::scaled(int length) const
{
    return static_cast<int>(length * setting.scale * (setting.compact() ? kCompactScale : 1));
}

Shown shown(Scene &scene)
{
    scene.panel().settle();
    return {scene.state(), scene.setting(), look_at(scene.panel()), Picture::of(scene.panel())};
}

void check_texts(const Shown &scene, std::vector<Finding> &findings)
{
    const auto &texts = scene.sight.texts;
    if (texts.empty())
        findings.push_back({"There is no text at all.", scene.picture.area()});
    for (size_t i = 0; i < texts.size(); ++i) {
        const auto &text = texts[i];
        if (text.cut && !text.name)
            findings.push_back({"A text is cut: " + quoted(text) + ".", text.area});
        /* Lines are higher than their letters, in some scripts by much. */
        const int spare = std::max(kTouch, text.area.h / 12);
        if (!text.name && !text.shown.holds(text.area, -spare))
            findings.push_back({"A text is partly hidden: " + quoted(text) + ".", text.area});
        if (text.ground < 0)
            findings.push_back({"A text lies on no panel: " + quoted(text) + ".", text.area});
        else if (!scene.sight.grounds[static_cast<size_t>(text.ground)].area.holds(text.shown, -kTouch))
            findings.push_back({"A text reaches beyond its panel: " + quoted(text) + ".", text.area});
        for (size_t j = i + 1; j < texts.size() && !text.covered; ++j) {
            const auto &other = texts[j];
            if (other.covered || other.ground != text.ground)
                continue;
            const Rect both = common(place_of(text), place_of(other));
            if (both.w > kTouch && both.h > kTouch)
                findings.push_back({"Two texts overlap: " + quoted(text) + " and " + quoted(other) + ".", both});
        }
    }
}

void check_contrast(const Shown &scene, std::vector<Finding> &findings)
{
    const double wanted = scene.setting.high_contrast ? kReadableInHighContrast : kReadable;
    for (const auto &text : scene.sight.texts) {
        if (text.covered || (text.within.off && waits(scene, text.ground)))
            continue; /* what cannot be chosen need not be read while something else is asked */
        const Rect place = common(text.shown, scene.picture.area());
        const double seen = contrast_in(scene.picture, place);
        if (seen < wanted)
            findings.push_back(
                {"A text has a contrast of " + ratio(seen) + " instead of " + ratio(wanted) + ": " + quoted(text) + ".",
                 place});
    }
}

std::vector<Finding> check(const Shown &scene)
{
    std::vector<Finding> findings;
    check_texts(scene, findings);
    check_contrast(scene, findings);
    check_focus(scene, findings);
    check_choices(scene, findings);
    check_dimming(scene, findings);
    check_places(scene, findings);
    check_pictures(scene, findings);
    check_boxes(scene, findings);
    check_buttons(scene, findings);
    return findings;
}

std::filesystem::path save_marked(Evas *canvas, const Shown &scene, const std::vector<Finding> &findings,
                                  const std::filesystem::path &folder)
{
    std::filesystem::create_directories(folder);
    Picture picture = scene.picture;
    for (const auto &finding : findings)
        picture.mark(finding.place);
    auto file = folder / (scene_name(scene.state, scene.setting) + ".png");
    picture.save(canvas, file);
    return file;
}

} // namespace vesk::looks
