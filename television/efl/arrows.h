#pragma once
/* The arrows of the remote, which the toolkit follows in part only. */

#include <Elementary.h>
#include <string>

namespace vesk::efl {

class Widgets;
class Focus;

class Arrows {
public:
    Arrows(const Widgets &widgets, Focus &focus) : widgets_(widgets), focus_(focus) {}

    /* Whether the toolkit must keep its hands off this key: arrows are moved by move(), and with nothing on the screen
       that may be focused every key is only heard, never obeyed. Called before the key is given to the canvas. */
    bool holds(const std::string &key);

    /* Moves the focus as the arrow `key` says; other keys do nothing. Called after the key was given to the canvas. */
    void move(const std::string &key);

private:
    const Widgets &widgets_;
    Focus &focus_;
};

} // namespace vesk::efl
