#include "config/NumericText.h"

#include <locale>
#include <sstream>
#include <string>

#include "base/Text.h"

namespace pellorin {
namespace {

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// Separators may take several bytes. An empty one is never found.
bool Skip(std::string_view& rest, std::string_view expected) {
  if (expected.empty() || !rest.starts_with(expected)) return false;
  rest.remove_prefix(expected.size());
  return true;
}

void SkipSign(std::string_view& rest) {
  if (!Skip(rest, "+")) Skip(rest, "-");
}

bool SkipDigits(std::string_view& rest) {
  const auto before = rest.size();
  while (!rest.empty() && IsDigit(rest.front())) rest.remove_prefix(1);
  return rest.size() != before;
}

// A separator may follow any digit: the text is checked while it is typed, and "1," and "1,00" are
// on the way to "1,000".
bool SkipGroupedDigits(std::string_view& rest, std::string_view separator) {
  bool any = false;
  while (SkipDigits(rest)) {
    any = true;
    if (!Skip(rest, separator)) break;
  }
  return any;
}

bool SkipExponent(std::string_view& rest) {
  if (!Skip(rest, "e") && !Skip(rest, "E")) return true;
  SkipSign(rest);
  return SkipDigits(rest);
}

// As the C locale writes it.
std::string Plain(std::string_view number, const LocaleConventions& locale) {
  std::string plain;
  while (!number.empty()) {
    if (Skip(number, locale.thousandsSeparator)) continue;
    if (Skip(number, locale.decimalSeparator)) {
      plain += '.';
      continue;
    }
    plain += number.front();
    number.remove_prefix(1);
  }
  return plain;
}

}  // namespace

bool IsNumber(std::string_view text, const LocaleConventions& locale) {
  std::string_view rest = WithoutOuterBlanks(text);
  SkipSign(rest);
  bool anyDigit = SkipGroupedDigits(rest, locale.thousandsSeparator);
  if (Skip(rest, locale.decimalSeparator)) anyDigit = SkipDigits(rest) || anyDigit;
  return anyDigit && SkipExponent(rest) && rest.empty();
}

std::optional<double> ReadNumber(std::string_view text, const LocaleConventions& locale) {
  if (!IsNumber(text, locale)) return std::nullopt;
  std::istringstream stream(Plain(WithoutOuterBlanks(text), locale));
  stream.imbue(std::locale::classic());
  double number = 0;
  stream >> number;
  return number;
}

}  // namespace pellorin
