#pragma once
/* Application utility library: texts with arguments. C++ only. */

#include <stddef.h>

class CStringUtil {
public:
    /* Replaces the markers %1 to %4 of `format` by the arguments; a null argument gives an empty text;
       always terminates, cutting at `size`. Returns the number of bytes written before the terminator. */
    static int CombinateStrings(char *buffer, size_t size, const char *format, const char *first, const char *second,
                                const char *third, const char *fourth);
};
