#include "sight.h"

#include <Edje.h>
#include <Elementary.h>
#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

namespace vesk::looks {

namespace {

using CanvasObject = std::unique_ptr<Evas_Object, decltype(&evas_object_del)>;

Rect area_of(const Evas_Object *object)
{
    Rect area;
    evas_object_geometry_get(object, &area.x, &area.y, &area.w, &area.h);
    return area;
}

bool is_of_type(const Evas_Object *object, const char *type)
{
    const char *actual = evas_object_type_get(object);
    return actual && std::strcmp(actual, type) == 0;
}

bool is_transparent(const Evas_Object *object)
{
    int alpha = 0;
    evas_object_color_get(object, nullptr, nullptr, nullptr, &alpha);
    return alpha == 0;
}

/* What of `area` is left by the clippers of an object; empty when one of them hides it. */
Rect clipped(const Evas_Object *object, Rect area)
{
    for (auto *clip = evas_object_clip_get(object); clip; clip = evas_object_clip_get(clip)) {
        if (!evas_object_visible_get(clip) || is_transparent(clip))
            return {};
        area = common(area, area_of(clip));
    }
    return area;
}

std::string plain(const char *markup)
{
    char *text = evas_textblock_text_markup_to_utf8(nullptr, markup ? markup : "");
    std::string result = text ? text : "";
    free(text);
    return result;
}

/* The width that a text would have without an ellipsis. */
int natural_width(const Evas_Object *text)
{
    const CanvasObject probe(evas_object_text_add(evas_object_evas_get(text)), evas_object_del);
    const char *font = nullptr;
    int size = 0;
    evas_object_text_font_get(text, &font, &size);
    evas_object_scale_set(probe.get(), evas_object_scale_get(text));
    evas_object_text_font_set(probe.get(), font, size);
    evas_object_text_style_set(probe.get(), evas_object_text_style_get(text));
    evas_object_text_text_set(probe.get(), evas_object_text_text_get(text));
    return area_of(probe.get()).w;
}

/* The height that a block of text would have at its width without an ellipsis, and the width of its longest line. */
Rect natural_block(Evas_Object *block)
{
    const CanvasObject probe(evas_object_textblock_add(evas_object_evas_get(block)), evas_object_del);
    std::string wording = evas_textblock_style_get(evas_object_textblock_style_get(block));
    constexpr std::string_view ends = "ellipsis=1.0";
    if (const auto found = wording.find(ends); found != wording.npos)
        wording.replace(found, ends.size(), "ellipsis=-1.0");
    auto *style = evas_textblock_style_new();
    evas_textblock_style_set(style, wording.c_str());
    evas_object_scale_set(probe.get(), evas_object_scale_get(block));
    evas_object_textblock_style_set(probe.get(), style);
    evas_object_textblock_text_markup_set(probe.get(), evas_object_textblock_text_markup_get(block));
    evas_object_resize(probe.get(), area_of(block).w, 4 * area_of(block).h + 1000);
    Rect natural;
    evas_object_textblock_size_formatted_get(probe.get(), &natural.w, &natural.h);
    evas_textblock_style_free(style);
    return natural;
}

/* The lines of a block of text, where they are drawn. */
Rect letters_of_block(const Evas_Object *block)
{
    const Rect area = area_of(block);
    int left = area.w;
    int right = 0;
    int top = area.h;
    int bottom = 0;
    Rect line;
    for (int i = 0; evas_object_textblock_line_number_geometry_get(block, i, &line.x, &line.y, &line.w, &line.h); ++i) {
        left = std::min(left, line.x);
        right = std::max(right, line.right());
        top = std::min(top, line.y);
        bottom = std::max(bottom, line.bottom());
    }
    return {area.x + left, area.y + top, right - left, bottom - top};
}

bool is_ground(const std::string &group)
{
    return group.starts_with("elm/popup/base/") || group.starts_with("elm/layout/C_PopupToast_White/");
}

/* Walks the canvas in the order of painting. */
class Walk {
public:
    explicit Walk(const Panel &panel) : panel_{0, 0, panel.width(), panel.height()}
    {
        for (auto *object = evas_object_bottom_get(panel.canvas()); object; object = evas_object_above_get(object))
            visit(object);
        cover();
    }

    Sight take() { return std::move(sight_); }

private:
    void visit(Evas_Object *object)
    {
        if (!evas_object_visible_get(object))
            return;
        ++depth_;
        const auto outer_ground = ground_;
        const auto outer_list = list_;
        auto *const outer_widget = widget_;
        if (is_of_type(object, "elm_button") || is_of_type(object, "elm_check"))
            widget_ = object;
        else if (is_of_type(object, "elm_genlist"))
            enter_list(object);
        const bool drawing = is_of_type(object, "edje");
        if (drawing)
            enter(object);
        else if (is_of_type(object, "text"))
            add_text(object);
        else if (is_of_type(object, "textblock"))
            add_block(object);
        else if (is_of_type(object, "elm_icon") || is_of_type(object, "elm_image"))
            add_picture(object);

        Eina_List *members = evas_object_smart_members_get(object);
        for (const Eina_List *link = members; link; link = eina_list_next(link))
            visit(static_cast<Evas_Object *>(eina_list_data_get(link)));
        eina_list_free(members);

        if (drawing)
            drawings_.pop_back();
        ground_ = outer_ground;
        list_ = outer_list;
        widget_ = outer_widget;
    }

    void enter_list(Evas_Object *object)
    {
        widget_ = object;
        list_ = static_cast<int>(sight_.lists.size());
        List list{area_of(object), {}, false, ground_};
        Rect all;
        elm_scroller_child_size_get(object, &all.w, &all.h);
        list.longer = all.h > list.area.h * 11 / 10; /* rows round up where they are scaled */
        sight_.lists.push_back(list);
    }

    /* What the toolkit knows of a row, which it knows by its place. */
    void ask_row(Drawing &row) const
    {
        row.list = list_;
        auto *item =
            elm_genlist_at_xy_item_get(widget_, row.shown.x + row.shown.w / 2, row.shown.y + row.shown.h / 2, nullptr);
        if (!item)
            return;
        row.focused = elm_object_focus_get(widget_) && elm_object_item_focus_get(item);
        row.off = elm_object_item_disabled_get(item);
        row.selected = elm_genlist_item_selected_get(item);
    }

    /* The module dims a button by taking the way to it away. */
    void ask_button(Drawing &button) const
    {
        button.focused = elm_object_focus_get(widget_);
        button.off = elm_object_disabled_get(widget_) || !elm_object_focus_allow_get(widget_);
    }

    void enter(Evas_Object *object)
    {
        Drawing drawing;
        const char *group = nullptr;
        edje_object_file_get(object, nullptr, &group);
        drawing.object = object;
        drawing.group = group ? group : "";
        drawing.area = area_of(object);
        drawing.shown = common(clipped(object, drawing.area), panel_);
        drawing.ground = ground_;
        if (drawing.is_row() && list_ >= 0)
            ask_row(drawing);
        else if (drawing.is_button() && widget_)
            ask_button(drawing);
        else if (drawing.group.starts_with("elm/genlist/base/") && list_ >= 0)
            sight_.lists[static_cast<size_t>(list_)].bar = drawing.part("elm.dragable.vbar");
        else if (drawing.group.starts_with("elm/check/base/") && !drawings_.empty() && widget_)
            sight_.checks.push_back(
                {drawings_.back(), drawing.area, elm_check_state_get(widget_) != EINA_FALSE, false});
        drawings_.push_back(drawing);
        if (is_ground(drawing.group)) {
            ground_ = static_cast<int>(sight_.grounds.size());
            sight_.grounds.push_back({drawing, drawing.part("panel"), depth_});
        }
        if (drawing.is_row() && !drawing.shown.empty())
            sight_.rows.push_back(drawing);
        if (drawing.is_button() && !drawing.shown.empty())
            sight_.buttons.push_back(drawing);
    }

    void add(const Evas_Object *object, const std::string &words, const Rect &letters, bool cut)
    {
        const Rect shown = clipped(object, letters);
        if (words.empty() || letters.empty() || shown.empty() || is_transparent(object) || drawings_.empty())
            return;
        const auto &within = drawings_.back();
        const bool name = within.group == "elm/genlist/item/C_TextItem_WhiteSingleline05/default" &&
                          edje_object_part_object_get(within.object, "elm.text") == object;
        const bool title = edje_object_part_object_get(within.object, "elm.text.title") == object;
        sight_.texts.push_back({words, within, letters, shown, cut, name, ground_, false, title});
        depths_.push_back(depth_);
    }

    void add_text(const Evas_Object *object)
    {
        const char *words = evas_object_text_text_get(object);
        const Rect area = area_of(object);
        if (words && *words)
            add(object, words, area, natural_width(object) > area.w + 1);
    }

    void add_block(Evas_Object *object)
    {
        const auto words = plain(evas_object_textblock_text_markup_get(object));
        if (words.empty())
            return;
        const Rect area = area_of(object);
        const Rect natural = natural_block(object);
        add(object, words, letters_of_block(object), natural.w > area.w + 1 || natural.h > area.h + 1);
    }

    void add_picture(const Evas_Object *object)
    {
        const char *file = nullptr;
        elm_image_file_get(object, &file, nullptr);
        const Rect area = area_of(object);
        const Rect shown = clipped(object, area);
        if (shown != area || area.empty() || drawings_.empty())
            return; /* half scrolled away */
        int width = 0;
        int height = 0;
        elm_image_object_size_get(object, &width, &height);
        sight_.pictures.push_back({file ? file : "", drawings_.back(), area, false, width > 0 && height > 0});
        picture_depths_.push_back(depth_);
    }

    bool hidden_by_later_ground(const Rect &area, int depth, int own_ground) const
    {
        for (size_t i = 0; i < sight_.grounds.size(); ++i) {
            const auto &ground = sight_.grounds[i];
            if (static_cast<int>(i) != own_ground && ground.depth > depth && !common(ground.area, area).empty())
                return true;
        }
        return false;
    }

    int grounds_depth(int ground) const { return ground < 0 ? 0 : sight_.grounds[static_cast<size_t>(ground)].depth; }

    void cover()
    {
        for (size_t i = 0; i < sight_.texts.size(); ++i)
            sight_.texts[i].covered = hidden_by_later_ground(sight_.texts[i].area, depths_[i], sight_.texts[i].ground);
        for (size_t i = 0; i < sight_.pictures.size(); ++i)
            sight_.pictures[i].covered = hidden_by_later_ground(sight_.pictures[i].area, picture_depths_[i], -1);
        for (auto &check : sight_.checks)
            check.covered = hidden_by_later_ground(check.area, grounds_depth(check.within.ground), check.within.ground);
    }

    Rect panel_;
    Sight sight_;
    std::vector<Drawing> drawings_; /* those around the object in hand, the innermost last */
    std::vector<int> depths_;       /* of the texts */
    std::vector<int> picture_depths_;
    Evas_Object *widget_ = nullptr; /* the list, button or check box around the object in hand */
    int ground_ = -1;
    int list_ = -1;
    int depth_ = 0;
};

} // namespace

std::string Drawing::state(const char *part) const
{
    double value = 0;
    const char *name = edje_object_part_exists(object, part) ? edje_object_part_state_get(object, part, &value) : "";
    return name ? name : "";
}

Rect Drawing::part(const char *part) const
{
    Rect place;
    edje_object_part_geometry_get(object, part, &place.x, &place.y, &place.w, &place.h);
    return {area.x + place.x, area.y + place.y, place.w, place.h};
}

Sight look_at(const Panel &panel)
{
    return Walk(panel).take();
}

} // namespace vesk::looks
