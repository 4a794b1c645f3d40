#include "television/gadget.h"

#include <dlfcn.h>
#include <stdexcept>
#include <string>

#include "desktop/fence.h"
#include "desktop/gadget_host.h"
#include "desktop/settings.h"
#include "television/efl/mending.h"
#include "television/toast.h"

namespace vesk {

namespace {

Gadget *current = nullptr; /* the one run that may ask to be destroyed */

std::runtime_error refused(const std::string &what)
{
    return std::runtime_error(what + " Its log lines tell why (--log-level info).");
}

} // namespace

Gadget::Gadget(Panel &panel, Module linked) : panel_(panel), module_(linked) {}

Gadget::Gadget(Panel &panel, const std::filesystem::path &file) : panel_(panel)
{
    if (!std::filesystem::exists(file))
        throw std::runtime_error("The module " + file.string() +
                                 " does not exist; build it, or name it with --module.");
    library_ = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library_)
        throw std::runtime_error("The module " + file.string() + " cannot be loaded: " + dlerror());
    module_.init = reinterpret_cast<int (*)(ug_module_ops *)>(dlsym(library_, "UG_MODULE_INIT"));
    module_.exit = reinterpret_cast<void (*)(ug_module_ops *)>(dlsym(library_, "UG_MODULE_EXIT"));
    if (!module_.init || !module_.exit) {
        dlclose(library_);
        throw std::runtime_error("The file " + file.string() +
                                 " is no module: it does not export UG_MODULE_INIT and UG_MODULE_EXIT.");
    }
}

Gadget::~Gadget()
{
    stop();
}

void Gadget::start()
{
    current = this;
    vesk_port::set_destroy_handler(wish_to_stop);
    elm_app_base_scale_set(1.0); /* as it is before a module has set its own */

    if (module_.init(&operations_) != 0) {
        state_ = State::ended;
        throw refused("The module does not start (UG_MODULE_INIT failed).");
    }
    state_ = State::initialised;
    if (!operations_.create || !operations_.create(handle(), UG_MODE_FULLVIEW, nullptr, operations_.priv)) {
        stop();
        throw refused("The module built no screen (its create callback returned nothing).");
    }
    state_ = State::running;
    if (operations_.start)
        operations_.start(handle(), nullptr, operations_.priv);
    panel_.take_keys(true);
}

void Gadget::pause()
{
    if (running() && operations_.pause)
        operations_.pause(handle(), nullptr, operations_.priv);
}

void Gadget::resume()
{
    if (running() && operations_.resume)
        operations_.resume(handle(), nullptr, operations_.priv);
}

int Gadget::wish_to_stop(ui_gadget_h handle)
{
    if (!current || handle != current->handle() || !current->running())
        return -1;
    current->leave_soon();
    return 0;
}

void Gadget::leave_soon()
{
    if (stopping_)
        return;
    stopping_ = ecore_job_add(
        [](void *gadget) {
            auto *self = static_cast<Gadget *>(gadget);
            self->stopping_ = nullptr;
            vesk_port::fenced("ending the module", [self] { self->leave(); });
        },
        this);
}

/* A module whose last toast is waited for stays loaded meanwhile, and hears nothing. */
void Gadget::leave()
{
    if (running())
        take_down();
    toast_ = waits_for_toast_ ? shown_toast(panel_.window()) : nullptr;
    if (!toast_) {
        stop();
        return;
    }
    evas_object_event_callback_add(toast_, EVAS_CALLBACK_HIDE, toast_gone, this);
    evas_object_event_callback_add(toast_, EVAS_CALLBACK_DEL, toast_gone, this);
}

void Gadget::toast_gone(void *gadget, Evas *, Evas_Object *, void *)
{
    auto *self = static_cast<Gadget *>(gadget);
    self->forget_toast();
    self->leave_soon();
}

void Gadget::forget_toast()
{
    if (!toast_)
        return;
    evas_object_event_callback_del_full(toast_, EVAS_CALLBACK_HIDE, toast_gone, this);
    evas_object_event_callback_del_full(toast_, EVAS_CALLBACK_DEL, toast_gone, this);
    toast_ = nullptr;
}

void Gadget::take_down()
{
    panel_.take_keys(false);
    if (operations_.destroy)
        operations_.destroy(handle(), nullptr, operations_.priv);
    state_ = State::leaving;
}

void Gadget::stop()
{
    if (stopping_)
        ecore_job_del(stopping_);
    stopping_ = nullptr;
    forget_toast();
    if (state_ == State::running)
        take_down();
    if (state_ == State::leaving || state_ == State::initialised)
        end_module();
    state_ = State::ended;
    if (library_)
        unload();
    if (current == this) {
        vesk_port::set_destroy_handler(nullptr);
        current = nullptr;
    }
}

void Gadget::unload()
{
    /* A module that the host ends by itself leaves its watches behind. */
    vesk_port::forget_setting_watches_of(reinterpret_cast<const void *>(module_.init));
    dlclose(library_);
    library_ = nullptr;
}

void Gadget::end_module()
{
    panel_.mending().widgets.clear_window(); /* a toast outlives its screen, and the toolkit would call back into the
                                                unloaded module */
    module_.exit(&operations_);
    operations_ = {};
    panel_.settle(); /* deletions and short timers that still hold the module's functions */
}

} // namespace vesk
