#include "service/mail/MailServerSettings.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "base/AnsiText.h"
#include "base/Text.h"
#include "config/Ini.h"
#include "config/NumericText.h"
#include "config/SettingKeys.h"
#include "config/ini/ProfileFile.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"
#include "service/mail/MailFailure.h"

namespace pellorin {
namespace {

constexpr int kPortOfImplicitTls = 465;

MailFailure BadSetting(const std::string& server, const std::string& problem) {
  return {kBadMailArgument, "The settings of the mail server " + server + " cannot be used: " + problem};
}

// Any number that validation accepts: "25", " 25 ", "+1,000", "1e2".
std::optional<double> NumberOf(std::string_view text, const LocaleConventions& locale) {
  if (!IsNumber(text, locale)) return std::nullopt;
  const std::string_view decimal = locale.decimalSeparator;
  std::string plain;
  for (std::string_view rest = WithoutOuterBlanks(text); !rest.empty();) {
    if (!locale.thousandsSeparator.empty() && rest.starts_with(locale.thousandsSeparator)) {
      rest.remove_prefix(locale.thousandsSeparator.size());
    } else if (!decimal.empty() && rest.starts_with(decimal)) {
      plain += '.';
      rest.remove_prefix(decimal.size());
    } else {
      plain += rest.front();
      rest.remove_prefix(1);
    }
  }
  if (plain.starts_with('+')) plain.erase(0, 1);
  double number = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  return error == std::errc() && end == plain.data() + plain.size() ? std::optional(number) : std::nullopt;
}

int PortOf(const Section& section, const LocaleConventions& locale, const std::string& server) {
  constexpr double kLargestPort = 65535;
  const std::string text = section.GetValue(MailKey::kRemoteServerPort);
  const double port = NumberOf(text, locale).value_or(0);
  if (port < 1 || port > kLargestPort || port != std::floor(port))
    throw BadSetting(server, "the port \"" + text + "\" is no whole number from 1 to 65535.");
  return static_cast<int>(port);
}

// A part of a second counts as one: 0 alone means no limit.
int TimeoutOf(const Section& section, const LocaleConventions& locale, const std::string& server) {
  constexpr double kLongest = 2147483;
  const std::string text = section.GetValue(MailKey::kConnectionTimeout);
  const double seconds = NumberOf(text, locale).value_or(-1);
  if (seconds < 0) throw BadSetting(server, "the timeout \"" + text + "\" is no number of seconds.");
  return static_cast<int>(std::ceil(std::min(seconds, kLongest)));
}

void ReadLogin(const Section& section, SmtpServer& server, const std::string& name) {
  const std::string method = section.GetValue(MailKey::kAuthenticationMethod);
  if (method.empty() || method == "0") return;
  if (method != "1" && method != "2") throw BadSetting(name, "no authentication is chosen.");
  server.login = method == "1" ? SmtpLogin::Basic : SmtpLogin::Ntlm;
  server.user = section.GetValue(MailKey::kUsername);
  server.password = section.GetValue(MailKey::kPassword);
  if (server.user.empty()) throw BadSetting(name, "there is no user name.");
}

SmtpServer ReadServer(const Section& section, const LocaleConventions& locale, const std::string& name) {
  SmtpServer server;
  server.host = WithoutOuterBlanks(section.GetValue(MailKey::kRemoteServerName));
  if (server.host.empty()) throw BadSetting(name, "there is no server name.");
  server.port = PortOf(section, locale, name);
  server.isEncryptedFromStart = server.port == kPortOfImplicitTls;
  server.timeout = TimeoutOf(section, locale, name);
  ReadLogin(section, server, name);
  return server;
}

// The file as it is on the disk, spelled in whatever letter case.
ProfileFile ReadIni(FileOperations& files, const std::string& folder) {
  constexpr const char* kName = "Pellorin.ini";
  const std::string path = JoinPath(folder, FindIgnoringCase(files, folder, kName));
  return ProfileFile(ReadFileIfPresent(files, path).value_or(""));
}

}  // namespace

MailServerSettings LoadMailServer(FileOperations& files, const std::string& programFolder,
                                  const LocaleConventions& locale, const std::string& name) {
  const std::string sectionName = "MAIL:" + name;
  const ProfileFile file = ReadIni(files, programFolder);
  const std::optional<std::string> ansiName = Utf8ToAnsi(sectionName);
  if (!ansiName || !file.HasSection(*ansiName))
    throw MailFailure(kBadMailArgument, "There is no mail server " + name + " in Pellorin.ini.");
  Ini document(files, programFolder, locale);  // only the home of the section: nothing else is loaded
  Section& section = document.Add(sectionName, SectionType::Mail);
  section.LoadFrom(file);

  MailServerSettings settings;
  settings.senderEmail = section.GetValue(MailKey::kSenderEmail);
  settings.defaultDomain = section.GetValue(MailKey::kDefaultDomain);
  const std::string method = section.GetValue(MailKey::kSendMethod);
  settings.usesPickupFolder = method == "1";
  if (settings.usesPickupFolder)
    settings.pickupFolder = section.GetValue(MailKey::kLocalMailPickupFolder);
  else if (method == "2")
    settings.server = ReadServer(section, locale, name);
  else
    throw BadSetting(name, "neither a pickup folder nor a remote server is chosen.");
  return settings;
}

}  // namespace pellorin
