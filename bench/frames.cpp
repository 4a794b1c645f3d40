#include "frames.h"

#include <stdexcept>
#include <string>

#include "clock.h"

namespace bench {

namespace {

constexpr int kLimitMs = 10'000;

bool changed(const void *event)
{
    return event && static_cast<const Evas_Event_Render_Post *>(event)->updated_area;
}

} // namespace

Frames::Frames(const vesk::Panel &panel)
    : panel_(panel), window_canvas_(evas_object_evas_get(elm_win_inlined_image_object_get(panel.window())))
{
    evas_event_callback_add(panel_.canvas(), EVAS_CALLBACK_RENDER_POST, panel_drawn, this);
    evas_event_callback_add(window_canvas_, EVAS_CALLBACK_RENDER_POST, window_drawn, this);
}

Frames::~Frames()
{
    evas_event_callback_del_full(panel_.canvas(), EVAS_CALLBACK_RENDER_POST, panel_drawn, this);
    evas_event_callback_del_full(window_canvas_, EVAS_CALLBACK_RENDER_POST, window_drawn, this);
}

std::optional<int64_t> Frames::frame_with(const std::function<bool()> &shown, int limit_ms)
{
    shown_ = shown;
    panel_shows_ = false;
    found_.reset();
    panel_.run_until([this] { return found_.has_value(); }, limit_ms);
    shown_ = nullptr;
    return found_;
}

int64_t Frames::wait_for(const char *what, const std::function<bool()> &shown)
{
    const auto time = frame_with(shown, kLimitMs);
    if (!time)
        throw std::runtime_error(std::string("no frame showed ") + what);
    return *time;
}

void Frames::panel_drawn(void *self, Evas *, void *event)
{
    auto *frames = static_cast<Frames *>(self);
    if (changed(event) && frames->shown_ && !frames->panel_shows_)
        frames->panel_shows_ = frames->shown_();
}

void Frames::window_drawn(void *self, Evas *, void *event)
{
    auto *frames = static_cast<Frames *>(self);
    if (!changed(event))
        return;
    frames->last_ = now();
    if (frames->panel_shows_ && !frames->found_)
        frames->found_ = frames->last_;
}

} // namespace bench
