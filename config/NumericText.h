// Numbers as validation and the numeric boxes read them: digits with the locale's decimal separator, single
// thousands separators between or after the integer digits, one sign in front, an exponent, blanks around.
// " 25 ", "+1,000" and "1e2" are numbers. Two signs, letters, "nan", "inf", hexadecimal, currency signs and
// the empty text are not.
#pragma once

#include <optional>
#include <string_view>

#include "platform/SystemLocale.h"

namespace pellorin {

bool IsNumber(std::string_view text, const LocaleConventions& locale);
// Nothing when the text is not a number. One beyond a double's range becomes the largest double, or 0.
std::optional<double> ReadNumber(std::string_view text, const LocaleConventions& locale);

}  // namespace pellorin
