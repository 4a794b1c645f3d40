#include "television/settings_overlay.h"

#include <map>

#include "vconf.h"

namespace vesk {

namespace {

struct Overlay {
    std::string value;
    bool in_force;
};

std::map<std::string, Overlay> overlays;

} // namespace

void overlay_setting(const std::string &key, const std::string &value)
{
    const auto [overlay, added] = overlays.insert_or_assign(key, Overlay{value, true});
    if (!added)
        return;
    /* The store calls in the order of registration, so that those who come later read the stored value. */
    const auto uncover = [](keynode_t *, void *covered) { static_cast<Overlay *>(covered)->in_force = false; };
    vconf_notify_key_changed(key.c_str(), uncover, &overlay->second);
}

std::optional<std::string> overlaid_setting(const std::string &key)
{
    const auto overlay = overlays.find(key);
    if (overlay == overlays.end() || !overlay->second.in_force)
        return {};
    return overlay->second.value;
}

} // namespace vesk
