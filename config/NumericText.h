// Whether a text is a number as validation and the numeric boxes mean it: blanks around, one sign in front,
// digits with the locale's decimal separator and single thousands separators between or behind the digits
// before it, an exponent. Two signs, letters, "nan", "inf", hexadecimal, currency signs and the empty text
// are none.
#pragma once

#include <string_view>

#include "platform/SystemLocale.h"

namespace pellorin {

bool IsNumber(std::string_view text, const LocaleConventions& locale);

}  // namespace pellorin
