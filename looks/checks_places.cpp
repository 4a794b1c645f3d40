/* Where things lie: the list, the drop-down, margins, sides, the toast, the scroll bar and the marks. */

#include <algorithm>
#include <cmath>

#include "checks_common.h"
#include "pixels.h"

namespace vesk::looks {

namespace {

/* Of the design, in pixels of the wide panel. */
constexpr int kListLeft = 720;
constexpr int kListWidth = 820;
constexpr int kRowPitch = 80;
constexpr int kMargin = 60;       /* list and buttons to the panel's edges */
constexpr int kBottomMargin = 40; /* the confirmation's buttons to the panel's edges */
constexpr int kGroundMargin = 20; /* a button to its ground's edges */
constexpr int kDropdownWidth = 300;
constexpr int kDropdownHeight = 279;
constexpr int kDropdownToRowEnd = 80;
constexpr int kDropdownAboveRowBottom = 78;
constexpr int kTitleOff = 16; /* a title in the middle may be so much nearer to the end */
constexpr int kRowEdge = 10;  /* where the line around a focused row may be */
constexpr int kMarkPixels = 40;
constexpr int kTickPixels = 60;
constexpr double kToastOffMiddle = 0.1; /* of the panel's width */

bool near(int a, int b)
{
    return std::abs(a - b) <= 1;
}

void check_list(const Shown &scene, std::vector<Finding> &findings)
{
    const auto rows = device_rows(scene);
    const int width = scene.scaled(kListWidth);
    const int left = scene.setting.portrait ? (1080 - width) / 2 : kListLeft;
    const int pitch = scene.scaled(kRowPitch);
    for (size_t i = 0; i < rows.size(); ++i) {
        const auto &row = rows[i].area;
        const bool in_place = scene.setting.scale > 1 || near(row.x, left); /* a larger panel finds its own middle */
        if (!in_place || !near(row.w, width) || !near(row.h, pitch))
            findings.push_back({"A row is " + described(row) + " instead of " + std::to_string(width) + " x " +
                                    std::to_string(pitch) + " at " + std::to_string(left) + ".",
                                row});
        if (i > 0 && !near(row.y - rows[i - 1].area.y, pitch))
            findings.push_back({"Two rows are " + std::to_string(row.y - rows[i - 1].area.y) + " apart instead of " +
                                    std::to_string(pitch) + ".",
                                row});
    }
}

/* What stands out in the strip between a row's edge and the first or last thing that it holds. */
int marks_in(const Shown &scene, const Drawing &row, bool at_start)
{
    const bool left = at_start != scene.setting.right_to_left();
    int from = row.area.x;
    int to = row.area.right();
    const auto leave_out = [&](const Rect &place) {
        if (left)
            to = std::min(to, place.x);
        else
            from = std::max(from, place.right());
    };
    for (const auto *picture : pictures_of(scene, row))
        leave_out(picture->area);
    for (const auto *text : texts_of(scene, row))
        leave_out(text->shown);
    const Rect strip{from, row.area.y + row.area.h / 4, to - from, row.area.h / 2};
    if (strip.empty())
        return 0;
    return standing_out(scene.picture, strip, common_color(scene.picture, strip), kStandsOut);
}

/* The row that the drop-down belongs to. */
void check_mark(const Shown &scene, const Drawing &row, std::vector<Finding> &findings)
{
    const int least = scene.scaled(scene.scaled(kMarkPixels));
    if (hidden(scene, row.area, row.ground))
        return;
    if (marks_in(scene, row, true) < least)
        findings.push_back({"The row of the drop-down has no mark at its start.", row.area});
    if (marks_in(scene, row, false) >= least)
        findings.push_back({"The row of the drop-down has its mark on the wrong side.", row.area});
}

/* The access that the device has now. */
void check_current_choice(const Shown &scene, std::vector<Finding> &findings)
{
    const auto *dropdown = ground_named(scene, kDropdown);
    for (const auto &row : scene.sight.rows) {
        if (ground_of(scene, row.ground) != dropdown || !row.selected)
            continue;
        const int end = scene.scaled(kRowEdge);
        Drawing inner = row;
        inner.area = {row.area.x + end, row.area.y, row.area.w - 2 * end, row.area.h};
        if (marks_in(scene, inner, false) < scene.scaled(scene.scaled(kTickPixels)))
            findings.push_back({"The current choice has no tick at its end.", row.area});
    }
}

void check_dropdown(const Shown &scene, std::vector<Finding> &findings)
{
    const auto *dropdown = ground_named(scene, kDropdown);
    if (!dropdown)
        return;
    const auto rows = device_rows(scene);
    const auto chosen = std::ranges::find_if(rows, &Drawing::selected);
    if (chosen == rows.end()) {
        findings.push_back({"The drop-down is open, and no row is selected.", dropdown->area});
        return;
    }
    check_mark(scene, *chosen, findings);
    check_current_choice(scene, findings);
    const auto &row = chosen->area;
    const auto &area = dropdown->area;
    if (!near(area.w, scene.scaled(kDropdownWidth)) || !near(area.h, scene.scaled(kDropdownHeight)))
        findings.push_back({"The drop-down is " + described(area) + ".", area});
    /* A board's is placed by constants that round several times, and from right to left by those of the wide panel. */
    if ((scene.setting.compact() && scene.setting.right_to_left()) || scene.setting.scale > 1)
        return;
    const int near_enough = scene.setting.compact() ? 6 : 2;
    const int end = scene.scaled(kDropdownToRowEnd);
    const int apart = scene.setting.right_to_left() ? area.x - row.x : row.right() - area.right();
    if (std::abs(apart - end) > near_enough)
        findings.push_back({"The drop-down ends " + std::to_string(apart) + " before the row does, instead of " +
                                std::to_string(end) + ".",
                            area});
    const int above = row.bottom() - area.y;
    if (std::abs(above - scene.scaled(kDropdownAboveRowBottom)) > near_enough)
        findings.push_back({"The drop-down begins " + std::to_string(above) + " above the row's bottom, instead of " +
                                std::to_string(scene.scaled(kDropdownAboveRowBottom)) + ".",
                            area});
}

void check_margins(const Shown &scene, std::vector<Finding> &findings)
{
    const Rect panel = scene.picture.area();
    const auto check_one = [&](const Drawing &drawing, const char *what, int ground_margin) {
        const auto *ground = ground_of(scene, drawing.ground);
        if (!ground) {
            findings.push_back({std::string(what) + " lies on no panel.", drawing.shown});
            return;
        }
        const auto &group = ground->drawing.group;
        const int margin = group == kConfirmation ? kBottomMargin : group == kMainPanel ? kMargin : 0;
        if (!panel.holds(drawing.shown, static_cast<int>(scene.scaled(margin) / scene.setting.scale)))
            findings.push_back(
                {std::string(what) + " comes too near to the panel's edge: " + described(drawing.shown) + ".",
                 drawing.shown});
        if (!ground->area.holds(drawing.shown, scene.scaled(ground_margin)))
            findings.push_back({std::string(what) + " comes too near to the edge of its ground: " +
                                    described(drawing.shown) + " on " + described(ground->area) + ".",
                                drawing.shown});
    };
    for (const auto &row : scene.sight.rows)
        check_one(row, "A row", 0);
    for (const auto &button : scene.sight.buttons)
        check_one(button, "A button", kGroundMargin);
    for (const auto &ground : scene.sight.grounds) {
        if (!panel.holds(ground.area))
            findings.push_back({"A panel lies outside: " + described(ground.area) + ".", ground.area});
    }
}

/* Buttons at the list's end, and a row's parts in the direction of the writing. */
void check_side(const Shown &scene, std::vector<Finding> &findings)
{
    const bool mirrored = scene.setting.right_to_left();
    const auto rows = device_rows(scene);
    const auto *main = ground_named(scene, kMainPanel);
    const bool beside = !scene.setting.portrait;
    const auto check_order = [&](const Rect &first, const Rect &second, const char *what) {
        if (mirrored ? second.right() > first.x : second.x < first.right())
            findings.push_back({std::string(what) + " stands on the wrong side.", second});
    };
    for (const auto &button : scene.sight.buttons) {
        if (rows.empty() || ground_of(scene, button.ground) != main)
            continue;
        if (beside)
            check_order(rows.front().area, button.area, "A button");
        else if (button.area.y < rows.back().shown.bottom())
            findings.push_back({"A button stands beside the list instead of under it.", button.area});
    }
    for (const auto &row : rows) {
        const auto texts = texts_of(scene, row);
        const auto name = std::ranges::find_if(texts, &Text::name);
        if (name == texts.end())
            continue;
        for (const auto *picture : pictures_of(scene, row))
            check_order(picture->area, (*name)->shown, "A name");
        for (const auto *text : texts) {
            if (text != *name)
                check_order((*name)->shown, text->shown, "An access");
        }
    }
    for (const auto &text : scene.sight.texts) {
        const auto *ground = ground_of(scene, text.ground);
        if (!text.title || !ground)
            continue;
        const int left = text.area.x - ground->area.x;
        const int right = ground->area.right() - text.area.right();
        if ((mirrored ? right - left : left - right) > scene.scaled(kTitleOff))
            findings.push_back({"A title stands on the wrong side: " + quoted(text) + ".", text.area});
    }
}

/* In the middle of the panel's width, and on a wide panel off the names. */
void check_toast(const Shown &scene, std::vector<Finding> &findings)
{
    const Rect panel = scene.picture.area();
    for (const auto &ground : scene.sight.grounds) {
        if (!ground.drawing.group.starts_with(kToast))
            continue;
        const int off = std::abs(ground.area.x + ground.area.right() - panel.w) / 2;
        if (off > kToastOffMiddle * panel.w)
            findings.push_back({"The toast is " + std::to_string(off) + " off the middle.", ground.area});
        for (const auto &text : scene.sight.texts) {
            const auto *below = ground_of(scene, text.ground);
            if (below && below->depth < ground.depth && !common(text.shown, ground.area).empty() &&
                !scene.setting.portrait) {
                findings.push_back({"The toast lies over a text: " + quoted(text) + ".", ground.area});
                break;
            }
        }
    }
}

void check_scroll_bars(const Shown &scene, std::vector<Finding> &findings)
{
    for (const auto &list : scene.sight.lists) {
        if (!list.longer || waits(scene, list.ground))
            continue;
        const Rect middle{list.bar.x, list.bar.y + list.bar.h / 4, list.bar.w, list.bar.h / 2};
        const Rect beside{list.bar.right() + 2, middle.y, 2, middle.h};
        if (list.bar.empty() ||
            contrast(common_color(scene.picture, middle), common_color(scene.picture, beside)) < kStandsOut)
            findings.push_back({"A list is longer than its place, and its scroll bar cannot be seen.", list.area});
    }
}

} // namespace

void check_places(const Shown &scene, std::vector<Finding> &findings)
{
    check_list(scene, findings);
    check_dropdown(scene, findings);
    check_margins(scene, findings);
    check_side(scene, findings);
    check_toast(scene, findings);
    check_scroll_bars(scene, findings);
}

} // namespace vesk::looks
