#pragma once
/* One run of a gadget on the panel: the module's callbacks in their order, and its unloading. */

#include <filesystem>

#include "television/panel.h"
#include "ui_gadget.h"

namespace vesk {

class Gadget {
public:
    /* The two entry points that every module has. */
    struct Module {
        int (*init)(ug_module_ops *);
        void (*exit)(ug_module_ops *);
    };

    /* A run of a module that is linked into this program (UG_MODULE_INIT, UG_MODULE_EXIT). */
    Gadget(Panel &panel, Module linked);

    /* A run of a module in a shared object, which is loaded for it. Throws std::runtime_error with a sentence that
       names the file when it is missing or is no module. */
    Gadget(Panel &panel, const std::filesystem::path &file);

    /* Ends the run when it has not ended yet. */
    ~Gadget();
    Gadget(const Gadget &) = delete;
    Gadget &operator=(const Gadget &) = delete;

    /* Initialises the module, lets it create its screen and start, and gives it the keys. Throws std::runtime_error
       with a sentence when the module refuses; the run has ended then. */
    void start();

    /* Whether the screen exists: from start until the module's own wish to be destroyed has been carried out. */
    bool running() const { return state_ == State::running; }

    /* From now on a module that asks for its end while a toast is up is unloaded when the toast has had its time. Its
       screen goes as promptly as otherwise. */
    void wait_for_last_toast() { waits_for_toast_ = true; }

    /* Whether the module has been unloaded. */
    bool ended() const { return state_ == State::ended; }

    void pause();
    void resume();

    /* The screen is taken down, what the module left on the panel is deleted, and the module is ended and unloaded.
       This is what a host does that wants to end; a module that asks for it is served from the main loop. */
    void stop();

private:
    enum class State { loaded, initialised, running, leaving, ended };

    static int wish_to_stop(ui_gadget_h handle);
    static void toast_gone(void *gadget, Evas *, Evas_Object *, void *);
    ui_gadget_h handle() { return reinterpret_cast<ui_gadget_h>(this); }
    void leave_soon();
    void leave();
    void forget_toast();
    void take_down();
    void end_module();
    void unload();

    Panel &panel_;
    void *library_ = nullptr;
    Module module_{};
    ug_module_ops operations_{};
    State state_ = State::loaded;
    Ecore_Job *stopping_ = nullptr;
    bool waits_for_toast_ = false;
    Evas_Object *toast_ = nullptr; /* what is waited for */
};

} // namespace vesk
