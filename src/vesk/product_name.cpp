#include "vesk/product_name.h"

#include <cstdlib>
#include <cstring>
#include <system_info.h>

#include "log.h"
#include "translate.h"

static const char *const kProductKeys[] = {
    "REP.DEVICE.ALDER", "REP.DEVICE.BIRCH", "REP.DEVICE.CEDAR", "REP.DEVICE.DAPHNE",
    "REP.DEVICE.ELDER", "REP.DEVICE.FIR",   "REP.DEVICE.GORSE", "REP.DEVICE.HAZEL",
};

static int fir_tv_version()
{
    int version = -1;
    const int error = system_info_get_custom_int("com.corvane/featureconf/the_fir_version", &version);
    if (error != 0) {
        LOG_E("system_info_get_custom_int() returned error[%d]", error);
        return -1;
    }
    LOG_I("fir_version: [%d]", version);
    return version;
}

static bool is_projector_tv()
{
    bool supported = false;
    const int error = system_info_get_custom_bool("com.corvane/featureconf/projector_feature_support", &supported);
    if (error != 0) {
        LOG_E("system_info_get_custom_bool() returned error[%d]", error);
        return false;
    }
    LOG_I("projector_support: [%d]", supported);
    return supported;
}

static bool is_daphne()
{
    bool supported = false;
    const int error = system_info_get_custom_bool("com.corvane/featureconf/product.daphne_feature_support", &supported);
    if (error != 0) {
        LOG_E("system_info_get_custom_bool() returned error[%d]", error);
        return false;
    }
    LOG_I("daphne_support: [%d]", supported);
    return supported;
}

/* The text of the identifier's own key; an identifier that is not known reads like the first key. */
static const char *text_of_identifier(const char *identifier)
{
    const char *key = kProductKeys[0];
    for (const char *known : kProductKeys) {
        if (strcmp(known, identifier) == 0)
            key = known;
    }
    return translated(key);
}

static const char *text_of_features()
{
    switch (fir_tv_version()) {
    case 1:
        return translated("COM_SID_FIR");
    case 2:
        return translated("TV_SID_CDR_CAOCT_NON_CEDAR");
    default:
        break;
    }
    if (is_projector_tv())
        return translated("PJT_SID_TV");
    if (is_daphne())
        return translated("COM_SID_DPHN_CAAUG_MNT");
    return translated("SID_TV");
}

char *get_product_name()
{
    char *identifier = nullptr;
    if (system_info_get_custom_string("com.corvane/featureconf/product.device_sid", &identifier) != 0 || !identifier) {
        LOG_E("system_info_get_custom_string() fails for 'com.corvane/featureconf/product.device_sid'");
        return strdup(translated("SID_TV"));
    }
    LOG_I("com.corvane/featureconf/product.device_sid = [%s]", identifier);
    const char *text = nullptr;
    if (strcmp(identifier, "NOT_READY") != 0) {
        text = text_of_identifier(identifier);
        LOG_I("Product: [%s]", text);
    } else {
        text = text_of_features();
    }
    free(identifier);
    LOG_I("Return product type = [%s]", text);
    return strdup(text);
}
