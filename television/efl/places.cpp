/* Popups are where they are meant to be, and on the panel. A module places a popup by numbers that are meant for the
   form that the panel has then: on a turned one it lies outside, with the focus in it, and a panel that turns fills
   itself with every popup. In a right-to-left language the numbers are also meant for a popup of the drop-down's size;
   one of the panel's size shows the drop-down in its middle, far from its row. And a module reads the language anew
   when the layouts of the open screen run as before. To see it: Arabic, a board or portrait, Return on a row; turn the
   panel with the drop-down open; change the language to ar_AE with the list open, Return. */

#include "television/efl/places.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "desktop/settings.h"
#include "television/efl/mending.h"
#include "television/efl/widgets.h"
#include "television/language.h"
#include "television/theme_variants.h"
#include "vconf.h"

namespace vesk::efl {

namespace {

constexpr int kMargin = 24;
constexpr int kTurns = 4;
constexpr char kGrown[] = "vesk.grown"; /* on a popup: it has been given the height of the magnification */
/* Of the numbers that a module places a popup by: the first is pixels at every scale, the others grow with it. */
constexpr int kRise = 93; /* the popup's top above the row's bottom, less kDrop */
constexpr int kDrop = 15;
constexpr int kRowEnd = 80; /* between the popup's end and the row's */

Eina_Rectangle area_of(const Evas_Object *object)
{
    Eina_Rectangle area{};
    evas_object_geometry_get(object, &area.x, &area.y, &area.w, &area.h);
    return area;
}

bool same(const Eina_Rectangle &a, const Eina_Rectangle &b)
{
    return a.x == b.x && a.y == b.y && a.w == b.w && a.h == b.h;
}

/* What is placed by a module has its content in its middle; until a popup is laid out its content lies somewhere. */
bool in_the_middle(const Eina_Rectangle &content, const Eina_Rectangle &frame)
{
    return std::abs(2 * (content.x - frame.x) + content.w - frame.w) <= 2;
}

/* Whether a module that reads the language now places its screens from right to left. */
bool language_is_mirrored()
{
    const std::unique_ptr<char, decltype(&std::free)> locale(vconf_get_str(vesk_port::kLanguageSetting.key), std::free);
    return locale && places_from_right_to_left(locale.get());
}

int rounded(double value)
{
    return static_cast<int>(std::lround(value));
}

/* The nearest place to `wanted` for something of that length on the panel. */
int kept_on(int panel, int length, int wanted)
{
    const int margin = std::max(0, std::min(kMargin, (panel - length) / 2));
    return std::clamp(wanted, margin, std::max(margin, panel - margin - length));
}

} // namespace

/* A layout whose theme group has come to need other sizes is not measured again by itself, and keeps the size that it
   had on the panel before. To see it: turn the panel while the list is open. Innermost first, as each asks what lies in
   it. */
void lay_out_again(Evas_Object *object)
{
    if (is_plain(object))
        return;
    const std::string type = evas_object_type_get(object);
    Eina_List *members = evas_object_smart_members_get(object);
    for (const Eina_List *link = members; link; link = eina_list_next(link))
        lay_out_again(static_cast<Evas_Object *>(eina_list_data_get(link)));
    eina_list_free(members);
    if (type == "elm_layout" || type == "elm_popup" || type == "elm_button")
        elm_layout_sizing_eval(object);
}

Places::Places(const Widgets &widgets)
    : widgets_(widgets), list_middle_(theme_number("vesk/list-middle")),
      content_inset_(theme_number("vesk/dropdown-inset"))
{
}

void Places::remember(Evas_Object *popup, const Placed &placed)
{
    const auto forget = [](void *, Evas *, Evas_Object *gone, void *) {
        auto *mending = Mending::current();
        if (mending && mending->places.last_.popup == gone)
            mending->places.last_ = {};
    };
    evas_object_event_callback_add(popup, EVAS_CALLBACK_DEL, forget, nullptr);
    last_ = placed;
}

/* The chosen row of a list in the popup below. */
Elm_Object_Item *Places::row_below(const Evas_Object *popup) const
{
    const auto shown = widgets_.shown_popups();
    const auto above = std::ranges::find(shown, popup);
    if (above == shown.begin() || above == shown.end())
        return nullptr;
    for (auto *list : widgets_.lists()) {
        if (within(list, *std::prev(above)) && evas_object_visible_get(list))
            return elm_genlist_selected_item_get(list);
    }
    return nullptr;
}

/* Where that row is; nothing when there is none, or when it has not been drawn yet. */
Eina_Rectangle Places::row_area(const Evas_Object *popup) const
{
    auto *row = row_below(popup);
    if (!row)
        return {};
    const auto area = area_of(elm_object_item_track(row));
    elm_object_item_untrack(row);
    return area;
}

/* What a popup from left to right has to move by, whose numbers are meant for a magnification of 1. Where it has the
   panel's size, it is placed by its middle. */
Places::Point Places::magnified(bool whole) const
{
    const auto panel = area_of(widgets_.window());
    const double more = shown_scale() - 1.0;
    return {rounded(whole ? panel.w / 2.0 * more : 0.0), rounded(((whole ? panel.h / 2.0 : 0.0) - kRise) * more)};
}

/* Where the content is meant to be: what the module's numbers come to in this form and magnification of the panel. */
Places::Point Places::meant(const Eina_Rectangle &frame, const Eina_Rectangle &content, const Eina_Rectangle &row)
{
    const double scale = shown_scale();
    const double drawn = scale * elm_object_scale_get(widgets_.window());
    const bool whole = frame.w == area_of(widgets_.window()).w;
    numbers_are_mirrored_ = numbers_are_mirrored_ || language_is_mirrored();
    if (!numbers_are_mirrored_) {
        const Point moved = magnified(whole);
        return {content.x + moved.x, content.y + moved.y};
    }
    const int mirrored = 2 * (list_middle() - list_middle_);
    if (!whole)
        return {content.x + mirrored + rounded(kRowEnd * (drawn - 1.0)),
                content.y + rounded(kRise - kDrop * scale - (kRise - kDrop) * drawn)};
    /* Pixels from the row's first end, and from its lower edge. */
    const int right = frame.x + mirrored - row.x;
    const double down = frame.y - row.y - row.h - kDrop * (scale - 1.0);
    return {row.x + rounded((right + content_inset_) * drawn), row.y + row.h + rounded(down * drawn)};
}

Places::Point Places::on_panel(Point content, const Eina_Rectangle &size) const
{
    const auto panel = area_of(widgets_.window());
    return {kept_on(panel.w, size.w, content.x), kept_on(panel.h, size.h, content.y)};
}

void Places::place(Evas_Object *popup, const Eina_Rectangle &frame, const Eina_Rectangle &content)
{
    const auto panel = area_of(widgets_.window());
    const double scale = elm_object_scale_get(widgets_.window());
    const auto row = row_area(popup);
    const Point place = on_panel(meant(frame, content, row), content);
    Placed placed{.popup = popup};
    if (frame.w < panel.w) {
        placed.width = frame.w;
        placed.height = frame.h;
    }
    placed.beside_row = row.w > 0;
    placed.right = (place.x - row.x) / scale;
    placed.down = (place.y - row.y) / scale;
    remember(popup, placed);
    const Point moved{frame.x + place.x - content.x, frame.y + place.y - content.y};
    if (moved != Point{frame.x, frame.y})
        evas_object_move(popup, moved.x, moved.y);
}

/* A module takes the height of a popup of its own size by the window's scale alone. Returns whether the popup has to be
   laid out anew. */
bool Places::grow(Evas_Object *popup, const Eina_Rectangle &frame) const
{
    if (shown_scale() == 1.0 || frame.w == area_of(widgets_.window()).w || evas_object_data_get(popup, kGrown))
        return false;
    evas_object_data_set(popup, kGrown, popup);
    evas_object_resize(popup, frame.w, rounded(frame.h * shown_scale()));
    evas_smart_objects_calculate(evas_object_evas_get(popup));
    ecore_job_add([](void *) {}, nullptr);
    return true;
}

/* Asking for a row's area makes the canvas draw, so that is done only until nothing has moved for a while. */
bool Places::rests(const Eina_Rectangle &frame, const Eina_Rectangle &content)
{
    const auto panel = area_of(widgets_.window());
    if (!same(panel, last_.panel) || !same(frame, last_.frame) || !same(content, last_.content))
        last_.turns = kTurns;
    last_.panel = panel;
    last_.frame = frame;
    last_.content = content;
    if (last_.turns == 0)
        return true;
    --last_.turns;
    ecore_job_add([](void *) {}, nullptr);
    return false;
}

void Places::follow(Evas_Object *popup, const Eina_Rectangle &frame, const Eina_Rectangle &content) const
{
    if (last_.width > 0 && frame.w != last_.width) {
        evas_object_resize(popup, last_.width, last_.height);
        evas_smart_objects_calculate(evas_object_evas_get(popup));
        return; /* its content is laid out with the next turn of the loop */
    }
    const double scale = elm_object_scale_get(widgets_.window());
    const auto row = row_area(popup);
    Point place{content.x, content.y};
    if (last_.beside_row && row.w > 0) {
        place.x = row.x + rounded(last_.right * scale);
        place.y = row.y + rounded(last_.down * scale);
    }
    place = on_panel(place, content);
    if (place != Point{content.x, content.y})
        evas_object_move(popup, frame.x + place.x - content.x, frame.y + place.y - content.y);
}

void Places::keep_on_panel()
{
    auto *popup = widgets_.scope();
    auto *shown = popup != widgets_.window() ? elm_object_content_get(popup) : nullptr;
    if (!shown)
        return;
    const auto frame = area_of(popup);
    const auto content = area_of(shown);
    if (content.w == 0 || content.w > area_of(widgets_.window()).w || !in_the_middle(content, frame))
        return;
    if (popup == last_.popup) {
        if (!rests(frame, content))
            follow(popup, frame, content);
    } else if ((frame.x != 0 || frame.y != 0) && !grow(popup, frame)) {
        place(popup, frame, content);
    }
}

} // namespace vesk::efl
