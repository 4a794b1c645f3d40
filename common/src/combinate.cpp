#include "combinate.h"

#include <cstdlib>
#include <cstring>
#include <string_util.h>

char *combinate_string(const char *format, const char *word)
{
    constexpr size_t kSize = 512;
    char *text = static_cast<char *>(calloc(1, kSize));
    if (text)
        CStringUtil::CombinateStrings(text, kSize, format, word, nullptr, nullptr, nullptr);
    return text;
}

bool StartsWith(const char *prefix, const char *text)
{
    return strncmp(prefix, text, strlen(prefix)) == 0;
}
