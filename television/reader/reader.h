#pragma once
/* The screen reader: speaks what has the focus, and what the module says by itself.
 *
 * The toolkit's own access mode stays off, since its access objects would take the arrows, and a focus move by key is
 * not read in it. Instead the module is told that the reader is on, it gets an object of this reader for each row, and
 * the callbacks that it sets are remembered and asked when the focus comes to rest. interpose.cpp passes the calls on.
 */

#include <Elementary.h>
#include <functional>
#include <map>
#include <string>

namespace vesk {

namespace efl {
class Widgets;
}

class Reader {
public:
    /* Says one text; `interrupt`: at once, instead of what is being said or waits. */
    using Voice = std::function<void(const std::string &text, bool interrupt)>;

    /* Reads with that voice what happens on the panel, as long as it lives. To be made before a module is started, and
       to end after it. One at a time. */
    explicit Reader(Voice voice);
    ~Reader();
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    /* The present one; null while the screen reader is off. For the panel and for the functions that stand before the
       toolkit's, which have no context. */
    static Reader *current();

    /* A key or a touch: what was being said has become old. */
    void key_came();

    /* The focus is where it has to be: the widget or row that has it is read soon, once for each move. */
    void focus_rests(const efl::Widgets &widgets);

    /* The module's calls. */
    void say(const char *text);
    void set_callback(Evas_Object *object, Elm_Access_Info_Cb callback, const void *data);
    Evas_Object *object_of_row(Elm_Object_Item *row);

private:
    struct Callback {
        Elm_Access_Info_Cb ask;
        void *data;
    };

    struct Subject {
        Evas_Object *widget = nullptr;
        Elm_Object_Item *row = nullptr;
        bool operator==(const Subject &) const = default;
    };

    static void forget_callback(void *, Evas *, Evas_Object *object, void *);
    static void forget_rows(void *, Evas *, Evas_Object *list, void *);
    void begin_rest();
    void read();
    std::string asked(Evas_Object *object) const;
    std::string text_of_row(Elm_Object_Item *row) const;
    std::string text_of_widget(Evas_Object *widget) const;

    Voice voice_;
    Ecore_Timer *rest_ = nullptr;
    Subject resting_; /* what is read when it still has the focus after a rest */
    Subject last_;    /* what was read last */
    std::map<const Evas_Object *, Callback> callbacks_;
    std::map<const Elm_Object_Item *, Evas_Object *> row_objects_;
    std::string last_said_; /* by the module, since the last key */
    bool fresh_ = true;     /* nothing has been said since the last key */
};

/* Hears every text that the module says at once, whether a reader is there or not; null ends that. For tests. */
void set_speech_listener(std::function<void(const std::string &text)> listener);

/* A text that the module says at once: to the listener and to the present reader. */
void say_at_once(const char *text);

} // namespace vesk
