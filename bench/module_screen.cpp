/* The module in its host: the shared object that everybody gets, loaded and called as vesk-host does it. */

#include <cstring>
#include <dlfcn.h>
#include <stdexcept>

#include "clock.h"
#include "desktop/log.h"
#include "desktop/rdm_service.h"
#include "household.h"
#include "screen.h"
#include "television/gadget.h"
#include "television/language.h"
#include "television/share.h"

namespace bench {

namespace {

/* The module's own entry points, and what stands before its create callback to note the time. */
vesk::Gadget::Module module{};
void *(*create)(ui_gadget_h, ug_mode, app_control_h, void *) = nullptr;
int64_t create_called = 0;

void *note_and_create(ui_gadget_h gadget, ug_mode mode, app_control_h control, void *priv)
{
    create_called = now();
    return create(gadget, mode, control, priv);
}

int init_noting_create(ug_module_ops *operations)
{
    const int result = module.init(operations);
    create = operations->create;
    operations->create = note_and_create;
    return result;
}

void load_module()
{
    const auto file = vesk::module_file();
    void *library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL); /* stays loaded as long as the process lives */
    if (!library)
        throw std::runtime_error("the module " + file.string() + " cannot be loaded: " + dlerror());
    module.init = reinterpret_cast<int (*)(ug_module_ops *)>(dlsym(library, "UG_MODULE_INIT"));
    module.exit = reinterpret_cast<void (*)(ug_module_ops *)>(dlsym(library, "UG_MODULE_EXIT"));
    if (!module.init || !module.exit)
        throw std::runtime_error("the file " + file.string() + " is no module");
}

class ModuleScreen : public Screen {
public:
    explicit ModuleScreen(vesk::Panel &panel) : panel_(panel)
    {
        /* The log as the host has it when nobody asks for it: every line is looked at and none is written. */
        vesk_port::set_log_level(vesk_port::log_level_of("off"));
        vesk_port::set_log_sink([](int, const std::string &, const std::string &) {});
        vesk::use_language("en_GB");
        load_module();
    }

    void open() override
    {
        gadget_ = std::make_unique<vesk::Gadget>(panel_, vesk::Gadget::Module{init_noting_create, module.exit});
        gadget_->start();
    }
    void close() override { gadget_.reset(); }
    int64_t build_began() const override { return create_called; }

    void refresh() override
    {
        const vesk_port::Device device = household(kChangingRow + 1).back();
        RdmDeviceInfo info{};
        std::memcpy(info.name, device.name.data(), device.name.size());
        std::memcpy(info.bt_mac, device.bt_mac.data(), device.bt_mac.size());
        info.type = device.type;
        info.status = device.status;
        vesk_port::emit(info);
    }

    void press_down() override
    {
        panel_.key_down("Down");
        panel_.key_up("Down");
    }

private:
    vesk::Panel &panel_;
    std::unique_ptr<vesk::Gadget> gadget_;
};

} // namespace

std::unique_ptr<Screen> module_screen(vesk::Panel &panel)
{
    return std::make_unique<ModuleScreen>(panel);
}

} // namespace bench
