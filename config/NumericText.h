// Numbers as validation and the numeric boxes mean them: blanks around, one sign in front, digits with the
// locale's decimal separator and single thousands separators between or after the digits before it, an
// exponent. Two signs, letters, "nan", "inf", hexadecimal, currency signs and the empty text are not numbers.
#pragma once

#include <optional>
#include <string_view>

#include "platform/SystemLocale.h"

namespace pellorin {

bool IsNumber(std::string_view text, const LocaleConventions& locale);
// Nothing when the text is not a number. One beyond a double's range is the largest double, or 0.
std::optional<double> ReadNumber(std::string_view text, const LocaleConventions& locale);

}  // namespace pellorin
