#include "translate.h"

#include <clocale>
#include <libintl.h>

const char *translated(const char *id)
{
    return dcgettext(kTextDomain, id, LC_MESSAGES);
}
