#include "DecimalDigits.h"

#include <unicode/uchar.h>

namespace quib {

int decimalDigitValue(char32_t character)
{
    if (character < 0x80) {
        return character >= U'0' && character <= U'9' ? static_cast<int>(character - U'0') : -1;
    }
    return u_charDigitValue(static_cast<UChar32>(character));
}

} // namespace quib
