#include "ug/platform_facts.h"

#include <cstdlib>
#include <cstring>
#include <system_info.h>

#include "log.h"

/* Code of the platform's text that tells the sales region. */
constexpr int kRegionCode = 90;

void get_system_info_int(const char *key, int *out)
{
    if (system_info_get_platform_int(key, out) != 0)
        *out = 0;
}

bool is_sound_mirroring_supported()
{
    bool supported = false;
    const int error = system_info_get_custom_bool("com.corvane/featureconf/sound_mirroring_supported", &supported);
    if (error != 0) {
        LOG_E("sound_mirroring_supported error[%d]", error);
        return false;
    }
    if (supported)
        LOG_I("SOUND_MIRRORING is supported");
    else
        LOG_W("SOUND_MIRRORING is NOT supported");
    return supported;
}

bool is_quince_supported()
{
    bool supported = false;
    if (system_info_get_custom_bool("com.corvane/featureconf/quince_support", &supported) != 0) {
        LOG_E("system_info_get_value_bool() fail");
        supported = false;
    }
    LOG_I("is_quince status:[%d]", supported);
    return supported;
}

bool isJuniperLarchProduct()
{
    bool supported = false;
    if (system_info_get_custom_bool("com.corvane/featureconf/product.juniper_support", &supported) != 0) {
        LOG_E("failed system_info_get_value_bool for larhc support");
        return false;
    }
    return supported;
}

bool is_sold_in_china()
{
    char *region = nullptr;
    const bool known = system_info_get_value_string(kRegionCode, &region) == 0 && region;
    const bool chinese = known && strstr(region, "CHI_");
    free(region);
    return chinese;
}
