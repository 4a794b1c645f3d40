#pragma once
/* The television's panel: a picture of 1920 x 1080 (1080 x 1920 when it is turned) that gadgets show their screens in.
 *
 * With a display the panel is shown, scaled, in a resizable window; without one it is drawn off-screen, and everything
 * else works the same. Widgets see a window of exactly the panel's size. The panel turns when the setting of the
 * on-screen menu's orientation changes.
 *
 * A test needs four lines:
 *
 *     Toolkit toolkit({.animations = false});
 *     Panel panel(toolkit);
 *     Gadget gadget(panel, {UG_MODULE_INIT, UG_MODULE_EXIT});
 *     gadget.start();                panel.press("Down");   panel.save("list.png");
 *
 * Several panels, and several gadgets on one panel, may follow each other in a process. Everything belongs to the
 * main-loop thread. Coordinates and sizes are pixels of the panel. */

#include <Elementary.h>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "television/toolkit.h"

namespace vesk {

namespace efl {
class Mending;
}

class Panel {
public:
    /* Makes the panel, turned as the orientation setting says, and makes it the gadgets' window (ug_get_window).
       Throws std::runtime_error with a sentence when no window can be made. One panel at a time. */
    explicit Panel(const Toolkit &toolkit);
    ~Panel();
    Panel(const Panel &) = delete;
    Panel &operator=(const Panel &) = delete;

    const Toolkit &toolkit() const { return toolkit_; }

    /* What is mended of the toolkit on this panel; it knows the widgets. */
    efl::Mending &mending() const { return *mending_; }

    /* The window that gadgets build their screens on; the panel's own. */
    Evas_Object *window() const { return window_; }
    Evas *canvas() const;

    int width() const { return portrait_ ? 1080 : 1920; }
    int height() const { return portrait_ ? 1920 : 1080; }

    bool portrait() const { return portrait_; }
    /* Turns the panel; nothing else is told. A user's turn goes through the setting, which the panel follows. */
    void turn(bool portrait);

    /* Gives the panel the keyboard, or takes it. Gadget does so when its screen exists: a panel with the keyboard and
       nothing on it that can take the focus makes the toolkit loop for ever. */
    void take_keys(bool take);

    /* One key of the remote: "Up", "Down", "Left", "Right", "Return", "XF86Back", "XF86Close" or any other name. Keys
       act at once; what they start (animations, timers of the gadget) needs the main loop: see settle. */
    void key_down(const std::string &key);
    void key_up(const std::string &key);

    /* A key pressed and released, then the main loop until it has had its effect. */
    void press(const std::string &key);

    /* A finger at a place: pressed, released, and the main loop until it has had its effect. */
    void tap(int x, int y);

    /* A finger that is put on the panel at one place, moved in a straight line and lifted at another. */
    void drag(int from_x, int from_y, int to_x, int to_y);

    bool run_until(const std::function<bool()> &condition, int limit_ms) const
    {
        return toolkit_.run_until(condition, limit_ms);
    }
    bool settle(int limit_ms = 3000) const { return toolkit_.settle(limit_ms); }

    /* Writes what the panel shows as PNG. Throws std::runtime_error that names the file when that fails. */
    void save(const std::filesystem::path &file);

    /* The widget with the focus (a list, when one of its rows has it), or null. */
    Evas_Object *focused() const;

    /* The row with the focus of the focused list, from 0; -1 when no row has it. */
    int focused_row() const;

    /* Called when the user closes the panel's window. */
    void on_close(std::function<void()> handler) { close_handler_ = std::move(handler); }

    /* Called when the window is hidden (false) or shown again (true). */
    void on_visible(std::function<void(bool)> handler) { visible_handler_ = std::move(handler); }

private:
    void make_windows();
    void show_programme();
    void tell_visible(bool visible) const;
    void take_form();
    void crop_programme();
    void fit();
    void resize_window(int width, int height);
    void touch(int x, int y);

    const Toolkit &toolkit_;
    Evas_Object *top_ = nullptr;       /* the window on the display, or the off-screen one */
    Evas_Object *window_ = nullptr;    /* the panel, drawn into picture_ */
    Evas_Object *picture_ = nullptr;   /* what the panel shows, in top_ */
    Evas_Object *programme_ = nullptr; /* the drawn television programme behind the screens */
    bool portrait_ = false;
    std::unique_ptr<efl::Mending> mending_;
    bool fills_screen_ = false; /* top_, whatever the panel's proportions */
    std::function<void()> close_handler_;
    std::function<void(bool)> visible_handler_;
};

} // namespace vesk
