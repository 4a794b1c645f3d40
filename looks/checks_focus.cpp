/* What has the focus, what cannot be chosen and what has to wait: each looks so, in pixels. */

#include <algorithm>

#include "checks_common.h"
#include "pixels.h"

namespace vesk::looks {

namespace {

constexpr double kWholeFrame = 0.6; /* of each side; letters and pictures may interrupt it */
constexpr int kFrameReach = 14;     /* how deep in a row or button its frame may lie */
constexpr double kOtherFill = 1.5;  /* the contrast of a single focused button to its panel */
constexpr double kPaler = 0.8;      /* the contrast of what cannot be chosen, against that of what can */
constexpr double kDarker = 0.92;    /* the brightness of a panel that waits, against that of the one before it */

int reach_in(const Shown &scene, const Drawing &drawing)
{
    return std::min(scene.scaled(kFrameReach), drawing.area.h / 4);
}

/* A row is framed when something stands out from the list's ground all around it. */
bool row_looks_focused(const Shown &scene, const Drawing &row)
{
    if (row.shown != row.area || row.list < 0 || hidden(scene, row.area, row.ground))
        return false;
    const Color ground = common_color(scene.picture, scene.sight.lists[static_cast<size_t>(row.list)].area);
    return frame_around(row.area, reach_in(scene, row), [&](int x, int y) {
               return contrast(ground, scene.picture.at(x, y)) >= kStandsOut;
           }) >= kWholeFrame;
}

/* Buttons of one size, one beside the other: pixel against pixel. */
double button_frame(const Shown &scene, const Drawing &button, const Drawing &neighbour)
{
    const int dx = neighbour.area.x - button.area.x;
    const int dy = neighbour.area.y - button.area.y;
    return frame_around(button.area, reach_in(scene, button), [&](int x, int y) {
        return contrast(scene.picture.at(x, y), scene.picture.at(x + dx, y + dy)) >= kStandsOut;
    });
}

/* A neighbour to compare a focused button with: one that can be pressed, if there is such a one. */
const Drawing *neighbour_of(const Shown &scene, const Drawing &button)
{
    const Drawing *found = nullptr;
    for (const auto &other : scene.sight.buttons) {
        if (other.object != button.object && other.ground == button.ground && !other.focused &&
            other.area.w == button.area.w && other.area.h == button.area.h && (!found || found->off))
            found = &other;
    }
    return found;
}

/* The ground of a button's letters. */
Color fill_of(const Shown &scene, const Drawing &drawing)
{
    return common_color(scene.picture, drawing.area.grown(-drawing.area.h / 6));
}

bool focused_button_shows_it(const Shown &scene, const Drawing &button)
{
    if (const auto *neighbour = neighbour_of(scene, button))
        return button_frame(scene, button, *neighbour) >= kWholeFrame;
    const auto *ground = ground_of(scene, button.ground);
    return ground && contrast(fill_of(scene, button), common_color(scene.picture, ground->area)) > kOtherFill;
}

/* Whether a button without the focus has the colour of what has it. */
bool looks_like(const Shown &scene, const Drawing &button, const Drawing &focused)
{
    return !button.focused && !hidden(scene, button.area, button.ground) &&
           fill_of(scene, button) == fill_of(scene, focused);
}

/* Whether a text that cannot be chosen is paler than the plainest of those beside it. */
void check_off(const Shown &scene, const Drawing &drawing, const char *what, std::vector<Finding> &findings)
{
    if (!drawing.off || waits(scene, drawing.ground) || hidden(scene, drawing.area, drawing.ground))
        return;
    double plain = 0;
    for (const auto &text : scene.sight.texts) {
        if (text.ground == drawing.ground && !text.covered && !text.within.off && !text.within.focused)
            plain = std::max(plain, contrast_in(scene.picture, text.shown));
    }
    for (const auto *text : texts_of(scene, drawing)) {
        const double seen = contrast_in(scene.picture, text->shown);
        if (plain > 0 && seen > kPaler * plain)
            findings.push_back({std::string(what) + " that cannot be chosen looks as if it could: " + quoted(*text) +
                                    " has " + ratio(seen) + ", others have " + ratio(plain) + ".",
                                text->area});
    }
}

} // namespace

void check_focus(const Shown &scene, std::vector<Finding> &findings)
{
    std::vector<Rect> places;
    const Drawing *seen = nullptr; /* has the focus, and shows it */
    const auto look_at_owner = [&](const Drawing &drawing, bool shows_it, const char *what) {
        if (shows_it)
            seen = &drawing;
        else if (scene.state.focused > 0)
            findings.push_back({std::string("The focus cannot be seen on a ") + what + ".", drawing.shown});
    };
    for (const auto &row : scene.sight.rows) {
        const bool framed = row_looks_focused(scene, row);
        if (framed)
            places.push_back(row.shown);
        if (row.focused)
            look_at_owner(row, framed, "row");
    }
    for (const auto &button : scene.sight.buttons) {
        if (!button.focused || hidden(scene, button.area, button.ground))
            continue;
        const bool shows_it = focused_button_shows_it(scene, button);
        if (shows_it)
            places.push_back(button.shown);
        look_at_owner(button, shows_it, "button");
    }
    for (const auto &button : scene.sight.buttons) {
        if (seen && looks_like(scene, button, *seen))
            places.push_back(button.shown);
    }
    if (static_cast<int>(places.size()) == scene.state.focused)
        return;
    const auto count =
        std::to_string(places.size()) + " things look focused instead of " + std::to_string(scene.state.focused) + ".";
    if (places.empty())
        findings.push_back({count, scene.picture.area()});
    for (const auto &place : places)
        findings.push_back({count, place});
}

void check_choices(const Shown &scene, std::vector<Finding> &findings)
{
    for (const auto &row : scene.sight.rows)
        check_off(scene, row, "A row", findings);
    for (const auto &button : scene.sight.buttons)
        check_off(scene, button, "A button", findings);
}

void check_dimming(const Shown &scene, std::vector<Finding> &findings)
{
    const auto &grounds = scene.sight.grounds;
    for (size_t i = 0; i + 1 < grounds.size(); ++i) {
        const auto &before = grounds[i + 1];
        if (grounds[i].area.empty())
            continue;
        const double waiting = brightness_of(scene.picture, grounds[i].area, before.area);
        const double asking = brightness_of(scene.picture, before.area, {});
        if (waiting > kDarker * asking)
            findings.push_back({"A panel that waits is as bright as the one before it.", grounds[i].area});
    }
}

} // namespace vesk::looks
