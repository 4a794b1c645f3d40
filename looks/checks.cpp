#include "checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

#include "television/theme_variants.h"

namespace vesk::looks {

namespace {

constexpr double kReadable = 4.5;
constexpr double kReadableInHighContrast = 7.0;
constexpr double kPictureContrast = 3.0;

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
constexpr int kTouch = 2; /* boxes of letters may meet by so much without the letters doing so */

constexpr char kDeviceRow[] = "elm/genlist/item/C_TextItem_WhiteSingleline05/default";
constexpr char kDropdown[] = "elm/popup/base/C_ListDropdown_White";
constexpr char kConfirmation[] = "elm/popup/base/P_PopupBasicBottom_02";
constexpr char kMainPanel[] = "elm/popup/base/C_PopupBasic_WhiteRight";

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

bool near(int a, int b)
{
    return std::abs(a - b) <= 1;
}

/* The contrast between the colour that is seen most in a place and the one that stands out from it most. */
double contrast_in(const Picture &picture, const Rect &place)
{
    std::map<int, int> counts; /* pixels of each colour */
    const auto key = [](Color color) { return color.red << 16 | color.green << 8 | color.blue; };
    const auto color_of = [](int value) { return Color{value >> 16, value >> 8 & 0xff, value & 0xff}; };
    for (int y = place.y; y < place.bottom(); ++y) {
        for (int x = place.x; x < place.right(); ++x)
            ++counts[key(picture.at(x, y))];
    }
    if (counts.empty())
        return 1;
    const auto most = std::ranges::max_element(counts, {}, [](const auto &entry) { return entry.second; });
    const Color ground = color_of(most->first);
    double best = 1;
    for (const auto &[color, count] : counts)
        best = std::max(best, contrast(ground, color_of(color)));
    return best;
}

const Ground *ground_named(const Shown &scene, const char *group)
{
    const auto found =
        std::ranges::find_if(scene.sight.grounds, [&](const Ground &ground) { return ground.drawing.group == group; });
    return found != scene.sight.grounds.end() ? &*found : nullptr;
}

bool is_dimmed(const Shown &scene, const Text &text)
{
    return text.ground >= 0 &&
           scene.sight.grounds[static_cast<size_t>(text.ground)].drawing.state("dim").starts_with("percent");
}

std::vector<Drawing> device_rows(const Shown &scene)
{
    std::vector<Drawing> rows;
    std::ranges::copy_if(scene.sight.rows, std::back_inserter(rows),
                         [](const Drawing &row) { return row.group == kDeviceRow; });
    std::ranges::sort(rows, {}, [](const Drawing &row) { return row.area.y; });
    return rows;
}

const Ground *ground_of(const Shown &scene, const Drawing &drawing)
{
    return drawing.ground >= 0 ? &scene.sight.grounds[static_cast<size_t>(drawing.ground)] : nullptr;
}

void check_list(const Shown &scene, std::vector<Finding> &findings)
{
    const auto rows = device_rows(scene);
    const int width = scene.scaled(kListWidth);
    const int left = scene.setting.portrait ? (1080 - width) / 2 : kListLeft;
    const int pitch = scene.scaled(kRowPitch);
    for (size_t i = 0; i < rows.size(); ++i) {
        const auto &row = rows[i].area;
        if (!near(row.x, left) || !near(row.w, width) || row.h != pitch)
            findings.push_back({"A row is " + described(row) + " instead of " + std::to_string(width) + " x " +
                                    std::to_string(pitch) + " at " + std::to_string(left) + ".",
                                row});
        if (i > 0 && row.y - rows[i - 1].area.y != pitch)
            findings.push_back({"Two rows are " + std::to_string(row.y - rows[i - 1].area.y) + " apart instead of " +
                                    std::to_string(pitch) + ".",
                                row});
    }
}

void check_dropdown(const Shown &scene, std::vector<Finding> &findings)
{
    const auto *dropdown = ground_named(scene, kDropdown);
    if (!dropdown)
        return;
    const auto rows = device_rows(scene);
    const auto chosen = std::ranges::find_if(rows, [](const Drawing &row) { return row.state("mark") == "chosen"; });
    if (chosen == rows.end()) {
        findings.push_back({"The drop-down is open, and no row is marked as its own.", dropdown->area});
        return;
    }
    const auto &row = chosen->area;
    const auto &area = dropdown->area;
    if (!near(area.w, scene.scaled(kDropdownWidth)) || !near(area.h, scene.scaled(kDropdownHeight)))
        findings.push_back({"The drop-down is " + described(area) + ".", area});
    /* A board's is placed by constants that round several times, and from right to left by those of the wide panel. */
    if (scene.setting.compact() && scene.setting.right_to_left())
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
        const auto *ground = ground_of(scene, drawing);
        if (!ground) {
            findings.push_back({std::string(what) + " lies on no panel.", drawing.shown});
            return;
        }
        const auto &group = ground->drawing.group;
        const int margin = group == kConfirmation ? kBottomMargin : group == kMainPanel ? kMargin : 0;
        if (!panel.holds(drawing.shown, scene.scaled(margin)))
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
    const bool beside = !scene.setting.portrait || scene.setting.board();
    const auto check_order = [&](const Rect &first, const Rect &second, const char *what) {
        if (mirrored ? second.right() > first.x : second.x < first.right())
            findings.push_back({std::string(what) + " stands on the wrong side.", second});
    };
    for (const auto &button : scene.sight.buttons) {
        const auto *ground = ground_of(scene, button);
        if (rows.empty() || ground != main)
            continue;
        if (beside)
            check_order(rows.front().area, button.area, "A button");
        else if (button.area.y < rows.back().shown.bottom())
            findings.push_back({"A button stands beside the list instead of under it.", button.area});
    }
    for (const auto &row : rows) {
        check_order(row.part("elm.swallow.icon"), row.part("elm.text"), "A name");
        check_order(row.part("elm.text"), row.part("elm.text.1"), "An access");
    }
}

} // namespace

int Shown::scaled(int length) const
{
    return setting.compact() ? static_cast<int>(length * kCompactScale) : length;
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
        if (!text.shown.holds(text.area, -kTouch))
            findings.push_back({"A text is partly hidden: " + quoted(text) + ".", text.area});
        if (text.ground < 0)
            findings.push_back({"A text lies on no panel: " + quoted(text) + ".", text.area});
        else if (!scene.sight.grounds[static_cast<size_t>(text.ground)].area.holds(text.area, -kTouch))
            findings.push_back({"A text reaches beyond its panel: " + quoted(text) + ".", text.area});
        for (size_t j = i + 1; j < texts.size() && !text.covered; ++j) {
            const auto &other = texts[j];
            if (other.covered || other.ground != text.ground)
                continue;
            const Rect both = common(text.area, other.area);
            if (both.w > kTouch && both.h > kTouch)
                findings.push_back({"Two texts overlap: " + quoted(text) + " and " + quoted(other) + ".", both});
        }
    }
}

void check_focus(const Shown &scene, std::vector<Finding> &findings)
{
    std::vector<Rect> focused;
    for (const auto *drawings : {&scene.sight.rows, &scene.sight.buttons}) {
        for (const auto &drawing : *drawings) {
            if (drawing.looks_focused())
                focused.push_back(drawing.shown);
        }
    }
    if (static_cast<int>(focused.size()) == scene.state.focused)
        return;
    const auto what =
        std::to_string(focused.size()) + " things look focused instead of " + std::to_string(scene.state.focused) + ".";
    if (focused.empty())
        findings.push_back({what, scene.picture.area()});
    for (const auto &place : focused)
        findings.push_back({what, place});
}

void check_contrast(const Shown &scene, std::vector<Finding> &findings)
{
    const double wanted = scene.setting.high_contrast ? kReadableInHighContrast : kReadable;
    for (const auto &text : scene.sight.texts) {
        if (text.covered || (text.within.looks_off() && is_dimmed(scene, text)))
            continue; /* what cannot be chosen need not be read while something else is asked */
        const Rect place = common(text.shown, scene.picture.area());
        const double seen = contrast_in(scene.picture, place);
        if (seen < wanted)
            findings.push_back(
                {"A text has a contrast of " + ratio(seen) + " instead of " + ratio(wanted) + ": " + quoted(text) + ".",
                 place});
    }
}

void check_places(const Shown &scene, std::vector<Finding> &findings)
{
    check_list(scene, findings);
    check_dropdown(scene, findings);
    check_margins(scene, findings);
    check_side(scene, findings);
}

void check_pictures(const Shown &scene, std::vector<Finding> &findings)
{
    for (const auto &picture : scene.sight.pictures) {
        if (!picture.loaded)
            findings.push_back({"A picture is missing: " + picture.file + ".", picture.area});
        else if (!picture.covered &&
                 contrast_in(scene.picture, common(picture.area, scene.picture.area())) < kPictureContrast)
            findings.push_back({"A picture cannot be seen: " + picture.file + ".", picture.area});
    }
    const auto rows = device_rows(scene);
    if (!rows.empty() && scene.sight.pictures.empty())
        findings.push_back({"No row has a picture.", rows.front().area});
}

std::vector<Finding> check(const Shown &scene)
{
    std::vector<Finding> findings;
    check_texts(scene, findings);
    check_focus(scene, findings);
    check_contrast(scene, findings);
    check_places(scene, findings);
    check_pictures(scene, findings);
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
