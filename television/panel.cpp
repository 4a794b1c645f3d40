#include "television/panel.h"

#include <algorithm>
#include <stdexcept>

#include "desktop/fence.h"
#include "desktop/gadget_host.h"
#include "desktop/paths.h"
#include "desktop/settings.h"
#include "system_info.h"
#include "television/bare_display.h"
#include "television/efl/interpose.h"
#include "television/efl/mending.h"
#include "television/efl/redraw.h"
#include "television/efl/rows.h"
#include "television/pictures.h"
#include "television/reader/reader.h"
#include "television/theme_variants.h"
#include "television/window_size.h"
#include "vconf.h"

namespace vesk {

namespace {

constexpr const char *kOrientation = vesk_port::kOrientationSetting.key;
constexpr int kDragSteps = 12;
constexpr int kDragStepMs = 16;
constexpr double kFirstWindowShare = 2.0 / 3.0; /* of the panel's size */

bool portrait_setting()
{
    int orientation = 0;
    return vconf_get_int(kOrientation, &orientation) == 0 && orientation != 0;
}

void turn_by_setting(keynode_t *, void *panel)
{
    vesk_port::fenced("turning the panel", [panel] { static_cast<Panel *>(panel)->turn(portrait_setting()); });
}

bool is_board()
{
    bool board = false;
    return system_info_get_custom_bool("com.corvane/featureconf/quince_support", &board) == 0 && board;
}

/* A key or a touch has come: what is being said has become old. */
void hear()
{
    if (auto *reader = Reader::current())
        reader->key_came();
}

const char *key_text(const std::string &key)
{
    return key == "Return" ? "\r" : nullptr;
}

/* The event's time, which the toolkit compares to tell a double click from two clicks. */
unsigned int now_ms()
{
    return static_cast<unsigned int>(static_cast<unsigned long long>(ecore_time_get() * 1000.0));
}

} // namespace

Panel::Panel(const Toolkit &toolkit) : toolkit_(toolkit), portrait_(portrait_setting())
{
    stand_before_toolkit();
    make_windows();
    show_programme();
    take_form();
    fit();
    evas_object_show(window_);
    evas_object_show(top_);
    mending_ = std::make_unique<efl::Mending>(window_);
    vesk_port::set_gadget_window(window_);
    vconf_notify_key_changed(kOrientation, turn_by_setting, this);
}

Panel::~Panel()
{
    vconf_ignore_key_changed(kOrientation, turn_by_setting);
    vesk_port::set_gadget_window(nullptr);
    take_keys(false);
    mending_.reset();
    evas_object_del(window_);
    evas_object_del(top_);
    settle();
}

void Panel::make_windows()
{
    top_ = elm_win_add(nullptr, "vesk", ELM_WIN_BASIC);
    if (!top_)
        throw std::runtime_error("No window can be opened on this display; try --no-display.");
    elm_win_title_set(top_, "VESK");
    auto *backdrop = evas_object_rectangle_add(evas_object_evas_get(top_));
    evas_object_color_set(backdrop, 0, 0, 0, 255);
    evas_object_size_hint_weight_set(backdrop, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    elm_win_resize_object_add(top_, backdrop);
    evas_object_show(backdrop);

    window_ = elm_win_add(top_, "panel", ELM_WIN_INLINED_IMAGE);
    picture_ = elm_win_inlined_image_object_get(window_);
    if (!picture_)
        throw std::runtime_error("The panel cannot be drawn on this display; try --no-display.");
    evas_object_show(picture_);
    efl::draw_changes_only(canvas());
    if (!toolkit_.options().display)
        efl::draw_changes_only(evas_object_evas_get(top_));
    elm_win_focus_highlight_enabled_set(window_, EINA_TRUE); /* without it a row that loses the focus keeps its look */

    const auto refit = [](void *panel, Evas *, Evas_Object *, void *) { static_cast<Panel *>(panel)->fit(); };
    evas_object_event_callback_add(top_, EVAS_CALLBACK_RESIZE, refit, this);
    const auto close = [](void *panel, Evas_Object *, void *) {
        vesk_port::fenced("closing the window", [panel] {
            if (const auto &handler = static_cast<Panel *>(panel)->close_handler_)
                handler();
        });
    };
    evas_object_smart_callback_add(top_, "delete,request", close, this);
    const auto hidden = [](void *panel, Evas_Object *, void *) { static_cast<Panel *>(panel)->tell_visible(false); };
    const auto shown = [](void *panel, Evas_Object *, void *) { static_cast<Panel *>(panel)->tell_visible(true); };
    evas_object_smart_callback_add(top_, "iconified", hidden, this);
    evas_object_smart_callback_add(top_, "normal", shown, this);

    evas_object_resize(window_, width(), height());
    fills_screen_ = stand_alone(top_);
    resize_window(static_cast<int>(width() * kFirstWindowShare), static_cast<int>(height() * kFirstWindowShare));
}

void Panel::tell_visible(bool visible) const
{
    vesk_port::fenced("showing or hiding the window", [&] {
        if (visible_handler_)
            visible_handler_(visible);
    });
}

void Panel::show_programme()
{
    programme_ = evas_object_image_add(canvas());
    const auto picture = vesk_port::share_folder() / "pictures" / "programme.png";
    evas_object_image_file_set(programme_, picture.c_str(), nullptr);
    picture_asked(picture, evas_object_image_load_error_get(programme_) == EVAS_LOAD_ERROR_NONE);
    evas_object_pass_events_set(programme_, EINA_TRUE);
    evas_object_layer_set(programme_, EVAS_LAYER_MIN + 1);
    evas_object_show(programme_);
}

void Panel::take_form()
{
    const bool compact = portrait_ && is_board();
    const Form form = !portrait_ ? Form::wide : compact ? Form::compact : Form::tall;
    const double scale = fitting_scale(form, toolkit_.options().scale);
    show_form(form, scale);
    if (toolkit_.options().scale != 1.0)
        elm_config_scale_set(kBaseScale * scale);
    elm_object_scale_set(window_, compact ? kCompactScale : 1.0);
}

/* As much of the picture as the panel's proportions take, from its middle. */
void Panel::crop_programme()
{
    if (!programme_)
        return;
    int picture_width = 0;
    int picture_height = 0;
    evas_object_image_size_get(programme_, &picture_width, &picture_height);
    evas_object_resize(programme_, width(), height());
    if (picture_width == 0 || picture_height == 0)
        return;
    const double scale =
        std::max(width() / static_cast<double>(picture_width), height() / static_cast<double>(picture_height));
    const int shown_width = static_cast<int>(picture_width * scale + 0.5);
    const int shown_height = static_cast<int>(picture_height * scale + 0.5);
    evas_object_image_fill_set(programme_, (width() - shown_width) / 2, (height() - shown_height) / 2, shown_width,
                               shown_height);
}

/* The whole panel in the middle of the window, in its own proportions. */
void Panel::fit()
{
    int left = 0;
    int top = 0;
    int window_width = 0;
    int window_height = 0;
    evas_object_geometry_get(top_, nullptr, nullptr, &window_width, &window_height);
    const double scale =
        std::min(window_width / static_cast<double>(width()), window_height / static_cast<double>(height()));
    const int shown_width = static_cast<int>(width() * scale + 0.5);
    const int shown_height = static_cast<int>(height() * scale + 0.5);
    left = (window_width - shown_width) / 2;
    top = (window_height - shown_height) / 2;
    evas_object_move(picture_, left, top);
    evas_object_resize(picture_, shown_width, shown_height);
    crop_programme();
}

Evas *Panel::canvas() const
{
    return evas_object_evas_get(window_);
}

void Panel::turn(bool portrait)
{
    if (portrait == portrait_)
        return;
    portrait_ = portrait;
    take_form();
    evas_object_resize(window_, width(), height());
    for (auto *popup : mending_->widgets.shown_popups())
        efl::lay_out_again(popup);
    int window_width = 0;
    int window_height = 0;
    evas_object_geometry_get(top_, nullptr, nullptr, &window_width, &window_height);
    resize_window(window_height, window_width);
    fit();
}

/* A panel that turns becomes higher than many displays: its lower end could not be seen. */
void Panel::resize_window(int width, int height)
{
    if (fills_screen_)
        return;
    Size screen;
    elm_win_screen_size_get(top_, nullptr, nullptr, &screen.width, &screen.height);
    const auto size = size_on_screen({width, height}, screen);
    evas_object_resize(top_, size.width, size.height);
}

void Panel::take_keys(bool take)
{
    /* The toolkit listens for the change to focus only, and the picture may have been born with it. */
    evas_object_focus_set(picture_, EINA_FALSE);
    if (take)
        evas_object_focus_set(picture_, EINA_TRUE);
}

void Panel::key_down(const std::string &key)
{
    hear();
    efl::place_rows(canvas());
    /* On hold, the event passes through the gadget's own handlers, and the toolkit does nothing with it. */
    const bool held = mending_->arrows.holds(key);
    evas_event_default_flags_set(canvas(), held ? EVAS_EVENT_FLAG_ON_HOLD : EVAS_EVENT_FLAG_NONE);
    evas_event_feed_key_down(canvas(), key.c_str(), key.c_str(), key_text(key), nullptr, now_ms(), nullptr);
    evas_event_default_flags_set(canvas(), EVAS_EVENT_FLAG_NONE);
    if (held)
        mending_->arrows.move(key);
}

void Panel::key_up(const std::string &key)
{
    evas_event_feed_key_up(canvas(), key.c_str(), key.c_str(), key_text(key), nullptr, now_ms(), nullptr);
}

void Panel::press(const std::string &key)
{
    key_down(key);
    key_up(key);
    settle();
}

void Panel::touch(int x, int y)
{
    hear();
    evas_event_feed_mouse_in(canvas(), now_ms(), nullptr);
    evas_event_feed_mouse_move(canvas(), x, y, now_ms(), nullptr);
    evas_event_feed_mouse_down(canvas(), 1, EVAS_BUTTON_NONE, now_ms(), nullptr);
}

void Panel::tap(int x, int y)
{
    touch(x, y);
    evas_event_feed_mouse_up(canvas(), 1, EVAS_BUTTON_NONE, now_ms(), nullptr);
    settle();
}

void Panel::drag(int from_x, int from_y, int to_x, int to_y)
{
    touch(from_x, from_y);
    for (int step = 1; step <= kDragSteps; ++step) {
        evas_event_feed_mouse_move(canvas(), from_x + (to_x - from_x) * step / kDragSteps,
                                   from_y + (to_y - from_y) * step / kDragSteps, now_ms(), nullptr);
        toolkit_.run_until([] { return false; }, kDragStepMs);
    }
    evas_event_feed_mouse_up(canvas(), 1, EVAS_BUTTON_NONE, now_ms(), nullptr);
    settle();
}

void Panel::save(const std::filesystem::path &file)
{
    settle();
    if (!evas_object_image_save(picture_, file.c_str(), nullptr, nullptr))
        throw std::runtime_error("The picture " + file.string() + " cannot be written.");
}

Evas_Object *Panel::focused() const
{
    return elm_object_focused_object_get(window_);
}

int Panel::focused_row() const
{
    auto *list = focused();
    if (!list || !efl::is_list(list))
        return -1;
    auto *row = elm_object_focused_item_get(list);
    return row ? elm_genlist_item_index_get(row) - 1 : -1;
}

} // namespace vesk
