#include "notice_line.h"

#include <algorithm>
#include <cstdlib>

#include "desktop/settings.h"
#include "desktop/text.h"

namespace vesk {

namespace {

constexpr const char *kContrast = vesk_port::kHighContrastSetting.key;
constexpr short kLayer = EVAS_LAYER_MAX - 1;
constexpr int kMargin = 24; /* pixels of the panel */
constexpr int kHeight = 60;

std::string markup_of(const std::string &line)
{
    char *escaped = elm_entry_utf8_to_markup(vesk_port::short_message(line).c_str());
    const std::string text = std::string("<align=center wrap=mixed>") + (escaped ? escaped : "");
    free(escaped);
    return text;
}

/* One line on most panels; the end of a text says what to do, so none is cut off. */
int height_of_text(const Evas_Object *label)
{
    int height = 0;
    const auto *text = edje_object_part_object_get(elm_layout_edje_get(label), "elm.text");
    evas_object_textblock_size_formatted_get(text, nullptr, &height);
    return height;
}

/* The theme's own; without the theme the toolkit's text is light. */
void take_panel_colour(Evas_Object *back, const Evas_Object *label)
{
    int r = 0;
    int g = 0;
    int b = 0;
    int a = 255;
    edje_object_color_class_get(elm_layout_edje_get(label), "vesk/panel", &r, &g, &b, &a, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, nullptr);
    evas_object_color_set(back, r, g, b, 255);
}

} // namespace

NoticeLine::NoticeLine(Panel &panel, Notices &notices) : panel_(panel), notices_(notices)
{
    evas_object_event_callback_add(panel_.window(), EVAS_CALLBACK_RESIZE, window_resized, this);
    vconf_notify_key_changed(kContrast, contrast_changed, this);
    notices_.on_change([this] { show_soon(); });
    show();
}

NoticeLine::~NoticeLine()
{
    notices_.on_change(nullptr);
    vconf_ignore_key_changed(kContrast, contrast_changed);
    evas_object_event_callback_del_full(panel_.window(), EVAS_CALLBACK_RESIZE, window_resized, this);
    if (soon_)
        ecore_job_del(soon_);
    take_away();
}

void NoticeLine::window_resized(void *line, Evas *, Evas_Object *, void *)
{
    static_cast<NoticeLine *>(line)->lay_out();
}

void NoticeLine::contrast_changed(keynode_t *, void *line)
{
    static_cast<NoticeLine *>(line)->show_soon();
}

/* A module that ends takes all widgets with it. */
void NoticeLine::label_gone(void *line, Evas *, Evas_Object *, void *)
{
    auto *self = static_cast<NoticeLine *>(line);
    self->label_ = nullptr;
    self->show_soon();
}

void NoticeLine::show_soon()
{
    if (soon_)
        return;
    soon_ = ecore_job_add(
        [](void *line) {
            auto *self = static_cast<NoticeLine *>(line);
            self->soon_ = nullptr;
            self->show();
        },
        this);
}

void NoticeLine::show()
{
    take_away();
    const auto text = notices_.line();
    if (text.empty())
        return;
    back_ = evas_object_rectangle_add(panel_.canvas());
    label_ = elm_label_add(panel_.window());
    evas_object_event_callback_add(label_, EVAS_CALLBACK_DEL, label_gone, this);
    elm_object_text_set(label_, markup_of(text).c_str());
    elm_object_signal_emit(label_, "elm,state,horizontal,fixed", "elm"); /* as wide as the panel, not as the text */
    edje_object_message_signal_process(elm_layout_edje_get(label_));
    take_panel_colour(back_, label_);
    for (auto *object : {back_, label_}) {
        evas_object_layer_set(object, kLayer);
        evas_object_pass_events_set(object, EINA_TRUE);
        evas_object_show(object);
    }
    lay_out();
}

void NoticeLine::lay_out() const
{
    if (!label_)
        return;
    const int width = panel_.width() - 2 * kMargin;
    evas_object_move(label_, kMargin, 0);
    evas_object_resize(label_, width, kHeight);
    const int height = std::max(kHeight, height_of_text(label_) + kMargin);
    evas_object_resize(label_, width, height);
    evas_object_resize(back_, panel_.width(), height);
}

void NoticeLine::take_away()
{
    if (label_) {
        evas_object_event_callback_del_full(label_, EVAS_CALLBACK_DEL, label_gone, this);
        evas_object_del(label_);
    }
    evas_object_del(back_);
    label_ = nullptr;
    back_ = nullptr;
}

} // namespace vesk
