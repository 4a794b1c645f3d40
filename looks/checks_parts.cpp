/* What rows and buttons hold: pictures, check boxes and the texts of buttons. */

#include <algorithm>
#include <cmath>

#include "checks_common.h"
#include "pixels.h"

namespace vesk::looks {

namespace {

/* Of the design, in pixels of the wide panel. */
constexpr int kIconMargin = 8; /* above and under a picture */
constexpr int kLeastIcon = 36;
constexpr int kTextMargin = 8;    /* the letters of a button to its line */
constexpr int kLineReach = 12;    /* how deep in a button its line may lie */
constexpr int kOffMiddle = 3;     /* of a button's text */
constexpr int kOffMiddleIcon = 6; /* beside an icon, whose drawing may not fill its box */
constexpr int kCheckOffLine = 2;

constexpr double kTick = 0.04; /* the least part of a box's inside that is its tick */
constexpr double kEmpty = 0.01;
constexpr double kOtherState = 0.1; /* the least part of two boxes that differs */
constexpr double kLetter = 1.2;     /* contrast from which a pixel belongs to a letter or a line */

void check_size(const Shown &scene, const Drawn &picture, std::vector<Finding> &findings)
{
    const auto &around = picture.within.area;
    const int most = around.h - 2 * scene.scaled(kIconMargin);
    if (picture.area.h > most || picture.area.h < scene.scaled(kLeastIcon))
        findings.push_back({"A picture is " + std::to_string(picture.area.h) + " high, where " +
                                std::to_string(scene.scaled(kLeastIcon)) + " to " + std::to_string(most) +
                                " have a place: " + picture.file + ".",
                            picture.area});
    for (const auto *text : texts_of(scene, picture.within)) {
        if (const Rect both = common(picture.area, common(text->area, text->shown)); both.w > 2 && both.h > 2)
            findings.push_back({"A picture lies over a text: " + quoted(*text) + ".", both});
    }
}

Rect inside(const Rect &box)
{
    return box.grown(-box.h * 27 / 100);
}

/* How much of a box's inside stands out from it. */
double tick_in(const Shown &scene, const Check &check)
{
    const Rect inner = inside(check.area);
    const Color fill = common_color(scene.picture, inner);
    return static_cast<double>(standing_out(scene.picture, inner, fill, kStandsOut)) / (inner.w * inner.h);
}

/* How much of two boxes differs. */
double apart(const Shown &scene, const Check &one, const Check &other)
{
    int differing = 0;
    for (int y = 0; y < one.area.h; ++y) {
        for (int x = 0; x < one.area.w; ++x)
            differing += contrast(scene.picture.at(one.area.x + x, one.area.y + y),
                                  scene.picture.at(other.area.x + x, other.area.y + y)) >= kStandsOut;
    }
    return static_cast<double>(differing) / (one.area.w * one.area.h);
}

void check_place(const Shown &scene, const Check &check, std::vector<Finding> &findings)
{
    const auto &row = check.within.area;
    const int off = std::abs((check.area.y + check.area.bottom()) - (row.y + row.bottom())) / 2;
    bool in_line = off <= scene.scaled(kCheckOffLine) && row.holds(check.area);
    for (const auto &other : scene.sight.checks)
        in_line = in_line && std::abs(other.area.x - check.area.x) <= 1;
    for (const auto *picture : pictures_of(scene, check.within)) {
        const bool apart = scene.setting.right_to_left() ? check.area.x >= picture->area.right()
                                                         : check.area.right() <= picture->area.x;
        in_line = in_line && apart;
    }
    if (!in_line)
        findings.push_back(
            {"A check box is out of line: " + described(check.area) + " in a row of " + described(row) + ".",
             check.area});
}

/* What a button's line leaves: its place without the outermost pixels that have another colour than its fill. */
Rect within_line(const Shown &scene, const Rect &button, Color fill)
{
    const auto depth_at = [&](int x, int y, int dx, int dy) {
        int line = 0;
        for (int depth = 0; depth < scene.scaled(kLineReach); ++depth) {
            const Rect place{x + depth * dx, y + depth * dy, 1, 1};
            if (scene.picture.area().holds(place) && contrast(fill, scene.picture.at(place.x, place.y)) >= kLetter)
                line = depth + 1;
        }
        return line;
    };
    const int middle_x = button.x + button.w / 2;
    const int middle_y = button.y + button.h / 2;
    const int left = depth_at(button.x, middle_y, 1, 0);
    const int right = depth_at(button.right() - 1, middle_y, -1, 0);
    const int top = depth_at(middle_x, button.y, 0, 1);
    const int bottom = depth_at(middle_x, button.bottom() - 1, 0, -1);
    return {button.x + left, button.y + top, button.w - left - right, button.h - top - bottom};
}

void check_text(const Shown &scene, const Drawing &button, const Text &text, std::vector<Finding> &findings)
{
    const auto icons = pictures_of(scene, button);
    const Color fill = common_color(scene.picture, text.area);
    const Rect free = within_line(scene, button.area, fill);
    const Rect ink = bounds_of(scene.picture, common(text.area, free), fill, kLetter);
    if (ink.empty())
        return; /* the contrast tells it */
    const int least =
        std::min({ink.x - free.x, free.right() - ink.right(), ink.y - free.y, free.bottom() - ink.bottom()});
    if (least < scene.scaled(kTextMargin))
        findings.push_back(
            {"A button's text comes within " + std::to_string(least) + " of its line: " + quoted(text) + ".", ink});

    const auto middle = [](int from, int to) { return (from + to) / 2; };
    const int seen = middle(text.area.x, text.area.right());
    std::vector<int> wanted{middle(button.area.x, button.area.right())};
    if (!icons.empty()) {
        /* Beside an icon a text stands in the middle of what is left, or both together stand in the middle. */
        const Rect icon = icons.front()->area;
        const bool left = icon.x < seen;
        const int margin = left ? icon.x - button.area.x : button.area.right() - icon.right();
        wanted = {left ? middle(icon.right(), button.area.right() - margin) : middle(button.area.x + margin, icon.x),
                  wanted.front() + (left ? middle(text.area.x, text.area.right()) - middle(icon.x, text.area.right())
                                         : middle(text.area.x, text.area.right()) - middle(text.area.x, icon.right()))};
    }
    const int allowed = scene.scaled(icons.empty() ? kOffMiddle : kOffMiddleIcon);
    if (std::ranges::none_of(wanted, [&](int place) { return std::abs(place - seen) <= allowed; }))
        findings.push_back({"A button's text is " + std::to_string(std::abs(wanted.front() - seen)) +
                                " off the middle: " + quoted(text) + ".",
                            text.area});
}

} // namespace

void check_pictures(const Shown &scene, std::vector<Finding> &findings)
{
    for (const auto &picture : scene.sight.pictures) {
        if (!picture.loaded)
            findings.push_back({"A picture is missing: " + picture.file + ".", picture.area});
        else if (!picture.covered &&
                 contrast_in(scene.picture, common(picture.area, scene.picture.area())) < kStandsOut)
            findings.push_back({"A picture cannot be seen: " + picture.file + ".", picture.area});
        check_size(scene, picture, findings);
    }
    const auto rows = device_rows(scene);
    if (!rows.empty() && scene.sight.pictures.empty())
        findings.push_back({"No row has a picture.", rows.front().area});
}

void check_boxes(const Shown &scene, std::vector<Finding> &findings)
{
    for (const auto &check : scene.sight.checks) {
        if (check.covered)
            continue;
        check_place(scene, check, findings);
        const double tick = tick_in(scene, check);
        if (check.on && tick < kTick)
            findings.push_back({"A checked box shows no tick.", check.area});
        if (!check.on && tick > kEmpty)
            findings.push_back({"An unchecked box shows something.", check.area});
        for (const auto &other : scene.sight.checks) {
            if (check.on && !other.on && !other.covered && other.area.w == check.area.w &&
                apart(scene, check, other) < kOtherState) {
                findings.push_back({"A checked box looks like an unchecked one.", check.area});
                break;
            }
        }
    }
}

void check_buttons(const Shown &scene, std::vector<Finding> &findings)
{
    for (const auto &button : scene.sight.buttons) {
        for (const auto *text : texts_of(scene, button)) {
            if (!text->covered)
                check_text(scene, button, *text, findings);
        }
    }
}

} // namespace vesk::looks
