#include "service/mail/MailServerSettings.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/AnsiText.h"
#include "base/Text.h"
#include "config/NumericText.h"
#include "config/SectionType.h"
#include "config/SettingKeys.h"
#include "config/SettingList.h"
#include "config/ini/IniSection.h"
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

int PortOf(const SettingList& settings, const LocaleConventions& locale, const std::string& server) {
  constexpr double kLargestPort = 65535;
  const std::string text = settings.GetValue(MailKey::kRemoteServerPort);
  const double port = ReadNumber(text, locale).value_or(0);
  if (port < 1 || port > kLargestPort || port != std::floor(port))
    throw BadSetting(server, "the port \"" + text + "\" is not a whole number from 1 to 65535.");
  return static_cast<int>(port);
}

// A fraction of a second counts as a whole one: only 0 means no limit.
int TimeoutOf(const SettingList& settings, const LocaleConventions& locale, const std::string& server) {
  constexpr double kLongest = 2147483;
  const std::string text = settings.GetValue(MailKey::kConnectionTimeout);
  const double seconds = ReadNumber(text, locale).value_or(-1);
  if (seconds < 0) throw BadSetting(server, "the timeout \"" + text + "\" is not a number of seconds.");
  return static_cast<int>(std::ceil(std::min(seconds, kLongest)));
}

void ReadLogin(const SettingList& settings, SmtpServer& server, const std::string& name) {
  const std::string method = settings.GetValue(MailKey::kAuthenticationMethod);
  if (method.empty() || method == "0") return;
  if (method != "1" && method != "2") throw BadSetting(name, "no authentication is chosen.");
  server.login = method == "1" ? SmtpLogin::Basic : SmtpLogin::Ntlm;
  server.user = settings.GetValue(MailKey::kUsername);
  server.password = settings.GetValue(MailKey::kPassword);
  if (server.user.empty()) throw BadSetting(name, "there is no user name.");
}

SmtpServer ReadServer(const SettingList& settings, const LocaleConventions& locale, const std::string& name) {
  SmtpServer server;
  server.host = WithoutOuterBlanks(settings.GetValue(MailKey::kRemoteServerName));
  if (server.host.empty()) throw BadSetting(name, "there is no server name.");
  server.port = PortOf(settings, locale, name);
  server.isEncryptedFromStart = server.port == kPortOfImplicitTls;
  server.timeout = TimeoutOf(settings, locale, name);
  ReadLogin(settings, server, name);
  return server;
}

// The saved settings of the section. The file's name may be spelled in any letter case.
SettingList ReadSettings(FileOperations& files, const std::string& folder, const std::string& name) {
  constexpr const char* kFileName = "Pellorin.ini";
  const std::string path = JoinPath(folder, FindIgnoringCase(files, folder, kFileName));
  const ProfileFile file(ReadFileIfPresent(files, path).value_or(""));
  const std::string section = SectionName(SectionType::Mail, name);
  const std::optional<std::string> ansiSection = Utf8ToAnsi(section);
  if (!ansiSection || !file.HasSection(*ansiSection))
    throw MailFailure(kBadMailArgument, "There is no mail server " + name + " in Pellorin.ini.");
  SettingList settings;
  ReadIniSection(file, path, section, settings);
  return settings;
}

}  // namespace

MailServerSettings LoadMailServer(FileOperations& files, const std::string& programFolder,
                                  const LocaleConventions& locale, const std::string& name) {
  const SettingList settings = ReadSettings(files, programFolder, name);
  MailServerSettings server;
  server.senderEmail = settings.GetValue(MailKey::kSenderEmail);
  server.defaultDomain = settings.GetValue(MailKey::kDefaultDomain);
  const std::string method = settings.GetValue(MailKey::kSendMethod);
  server.usesPickupFolder = method == "1";
  if (server.usesPickupFolder)
    server.pickupFolder = settings.GetValue(MailKey::kLocalMailPickupFolder);
  else if (method == "2")
    server.server = ReadServer(settings, locale, name);
  else
    throw BadSetting(name, "neither a pickup folder nor a remote server is chosen.");
  return server;
}

}  // namespace pellorin
