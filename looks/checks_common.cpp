#include "checks_common.h"

#include <algorithm>
#include <cstdio>

namespace vesk::looks {

std::string quoted(const Text &text)
{
    return "\"" + text.words + "\"";
}

std::string ratio(double value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%.2f:1", value);
    return text;
}

std::string described(const Rect &area)
{
    return std::to_string(area.w) + " x " + std::to_string(area.h) + " at " + std::to_string(area.x) + ", " +
           std::to_string(area.y);
}

std::vector<Drawing> device_rows(const Shown &scene)
{
    std::vector<Drawing> rows;
    std::ranges::copy_if(scene.sight.rows, std::back_inserter(rows),
                         [](const Drawing &row) { return row.group == kDeviceRow; });
    std::ranges::sort(rows, {}, [](const Drawing &row) { return row.area.y; });
    return rows;
}

const Ground *ground_named(const Shown &scene, const char *group)
{
    const auto found =
        std::ranges::find_if(scene.sight.grounds, [&](const Ground &ground) { return ground.drawing.group == group; });
    return found != scene.sight.grounds.end() ? &*found : nullptr;
}

const Ground *ground_of(const Shown &scene, int ground)
{
    return ground >= 0 ? &scene.sight.grounds[static_cast<size_t>(ground)] : nullptr;
}

bool waits(const Shown &scene, int ground)
{
    const auto *own = ground_of(scene, ground);
    return own && own != &scene.sight.grounds.back();
}

bool hidden(const Shown &scene, const Rect &place, int ground)
{
    const auto *own = ground_of(scene, ground);
    return own && std::ranges::any_of(scene.sight.grounds, [&](const Ground &other) {
               const Rect both = common(other.area, place);
               return other.depth > own->depth && 2 * both.w * both.h > place.w * place.h;
           });
}

std::vector<const Text *> texts_of(const Shown &scene, const Drawing &drawing)
{
    std::vector<const Text *> texts;
    for (const auto &text : scene.sight.texts) {
        if (text.within.object == drawing.object)
            texts.push_back(&text);
    }
    return texts;
}

std::vector<const Drawn *> pictures_of(const Shown &scene, const Drawing &drawing)
{
    std::vector<const Drawn *> pictures;
    for (const auto &picture : scene.sight.pictures) {
        if (picture.within.object == drawing.object)
            pictures.push_back(&picture);
    }
    return pictures;
}

} // namespace vesk::looks
