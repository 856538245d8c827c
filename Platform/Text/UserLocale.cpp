#include "UserLocale.h"

#include <cstring>

#include <unicode/uloc.h>

namespace quib {

const char *userLocale()
{
    const char *locale = uloc_getDefault();
    return std::strstr(locale, "POSIX") != nullptr || std::strlen(locale) < 2 ? "en_US" : locale;
}

} // namespace quib
