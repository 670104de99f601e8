#include "platform/SystemLocale.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "platform/Environment.h"
#include "platform/posix/LocaleFormats.h"

namespace pellorin {
namespace {

// One of the system's locales. Its texts come out as UTF-8.
class LoadedLocale {
 public:
  explicit LoadedLocale(const std::string& name)
      : handle_(newlocale(LC_ALL_MASK, name.c_str(), static_cast<locale_t>(nullptr))) {}

  explicit operator bool() const { return handle_ != nullptr; }

  // Empty when the locale has no such text or it cannot be converted.
  std::string Text(nl_item item) const {
    const std::string text = nl_langinfo_l(item, handle_.get());
    const std::string codeset = nl_langinfo_l(CODESET, handle_.get());
    return codeset == "UTF-8" ? text : Converted(text, codeset);
  }

 private:
  struct Release {
    void operator()(locale_t locale) const { freelocale(locale); }
  };

  static std::string Converted(std::string text, const std::string& codeset) {
    const iconv_t converter = iconv_open("UTF-8", codeset.c_str());
    // iconv marks a failure with the number -1 in place of a pointer.
    if (converter == reinterpret_cast<iconv_t>(-1)) return {};
    std::string utf8(4 * text.size(), '\0');
    char* from = text.data();
    char* to = utf8.data();
    std::size_t fromLeft = text.size();
    std::size_t toLeft = utf8.size();
    const bool converted = iconv(converter, &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1);
    iconv_close(converter);
    utf8.resize(converted ? utf8.size() - toLeft : 0);
    return utf8;
  }

  std::unique_ptr<std::remove_pointer_t<locale_t>, Release> handle_;
};

bool IsCLocale(const std::string& localeName) {
  return localeName.empty() || localeName == "C" || localeName == "POSIX" || localeName.starts_with("C.");
}

void ReadNumberConventions(const std::string& localeName, LocaleConventions& conventions) {
  if (IsCLocale(localeName)) return;
  const LoadedLocale locale(localeName);
  if (!locale) return;
  if (auto text = locale.Text(RADIXCHAR); !text.empty()) conventions.decimalSeparator = std::move(text);
  conventions.thousandsSeparator = locale.Text(THOUSEP);
}

// Some locales put blanks before the names to align them. Users do not type those.
void ReadMonthNames(const LoadedLocale& locale, nl_item january, std::array<std::string, 12>& names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    std::string name(WithoutOuterBlanks(locale.Text(january + static_cast<nl_item>(i))));
    if (!name.empty()) names[i] = std::move(name);
  }
}

void ReadDateConventions(const std::string& localeName, LocaleConventions& conventions) {
  if (IsCLocale(localeName)) return;
  const LoadedLocale locale(localeName);
  if (!locale) return;
  conventions.am = locale.Text(AM_STR);
  conventions.pm = locale.Text(PM_STR);
  if (auto format = ParseDateFormat(locale.Text(D_FMT))) {
    conventions.dateOrder = format->order;
    conventions.dateSeparator = std::move(format->separator);
    conventions.leadingZeros = format->leadingZeros;
  }
  if (auto format = ParseTimeFormat(locale.Text(T_FMT), locale.Text(T_FMT_AMPM))) {
    conventions.timeSeparator = std::move(format->separator);
    conventions.twelveHourClock =
        format->twelveHourClock && !conventions.am.empty() && !conventions.pm.empty();
  }
  ReadMonthNames(locale, ABMON_1, conventions.shortMonthNames);
  ReadMonthNames(locale, MON_1, conventions.longMonthNames);
}

// LC_ALL wins over the category's own variable, and that over LANG.
std::string LocaleNameFor(const char* category) {
  return EnvironmentOr("LC_ALL", EnvironmentOr(category, EnvironmentOr("LANG", "")));
}

}  // namespace

LocaleConventions SystemLocaleConventions() {
  LocaleConventions conventions;
  ReadNumberConventions(LocaleNameFor("LC_NUMERIC"), conventions);
  ReadDateConventions(LocaleNameFor("LC_TIME"), conventions);
  return conventions;
}

std::vector<std::string> LocalesNotInstalled() {
  std::vector<std::string> missing;
  for (const char* category : {"LC_NUMERIC", "LC_TIME"}) {
    const std::string name = LocaleNameFor(category);
    const bool isKnown = IsCLocale(name) || LoadedLocale(name);
    if (!isKnown && std::find(missing.begin(), missing.end(), name) == missing.end()) missing.push_back(name);
  }
  return missing;
}

}  // namespace pellorin
