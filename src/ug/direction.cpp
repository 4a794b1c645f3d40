#include "ug/direction.h"

#include <cstdlib>
#include <vconf.h>

#include "combinate.h"
#include "log.h"

bool gbReverse;

void IsReveseOSD()
{
    static const char *const kRightToLeft[] = {"ur_PK", "fa_IR", "ar_AE", "he_IL", "ckb_IQ"};

    char *language = vconf_get_str("db/menu_widget/language");
    if (!language) {
        LOG_I(" the languagelocale is NULL");
        return;
    }
    LOG_I(" the languagelocale is %s ", language);
    for (const char *locale : kRightToLeft) {
        if (StartsWith(locale, language)) {
            gbReverse = true;
            break;
        }
    }
    free(language);
}
