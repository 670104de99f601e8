#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "service/RegistryEventLog.h"
#include "service/mail/LocalMailComponent.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;

TEST(MailComponent, TellsTheInstallFolderByEnvironmentThenFileThenProgram) {
  const TemporaryFolder folder;
  const std::string file = folder / "service-folder";
  LocalMailComponent component(SystemFiles(), "/program", LocaleConventions(), file);
  ::unsetenv("PELLORIN_SERVICE_FOLDER");
  EXPECT_EQ(component.InstallFolder(), "/program");
  const std::pair<const char*, const char*> contents[] = {
      {"", "/program"},
      {"/srv/one", "/srv/one"},
      {"/a b\r\n/c", "/a b"},
  };
  for (const auto& [content, expected] : contents) {
    folder.Write("service-folder", content);
    EXPECT_EQ(component.InstallFolder(), expected);
  }
  ::setenv("PELLORIN_SERVICE_FOLDER", "", 1);
  EXPECT_EQ(component.InstallFolder(), "/a b");
  ::setenv("PELLORIN_SERVICE_FOLDER", "/srv/environment", 1);
  EXPECT_EQ(component.InstallFolder(), "/srv/environment");
  ::unsetenv("PELLORIN_SERVICE_FOLDER");
  fs::remove(file);
  EXPECT_EQ(component.InstallFolder(), "/program");
  fs::create_directory(file);  // a mistake to be told, not to be passed over
  try {
    ADD_FAILURE() << component.InstallFolder();
  } catch (const FileError& error) {
    EXPECT_EQ(error.Path(), file);
    EXPECT_EQ(error.Description(), "Cannot read the file: it is a folder");
  }
}

constexpr const char* kKey = "SYSTEM/CurrentControlSet/Services/EventLog/Application/Pellorin";

TEST(EventLog, RegistersWhatTheEventViewerReads) {
  const TemporaryFolder folder;
  const std::string root = folder / "registry";
  RegistryEventLog log(Registry(SystemFiles(), root));
  const auto registered = [&] { return Registry(SystemFiles(), root).ReadValue(kKey, "EventMessageFile"); };
  const auto registerIn = [&](const std::string& serviceFolder) {
    log.RegisterSource("Messages.dll", "", serviceFolder, "Pellorin", "Application");
  };
  registerIn("/srv/pellorin");
  EXPECT_EQ(registered(), "/srv/pellorin/Messages.dll");
  EXPECT_EQ(folder.Read("registry/" + std::string(kKey) + "/EventMessageFile"), "/srv/pellorin/Messages.dll");

  // A right entry is not written again: not even a read-only one is a failure.
  const std::string value = root + "/" + kKey + "/EventMessageFile";
  fs::permissions(value, fs::perms::owner_read);
  EXPECT_NO_THROW(registerIn("/srv/pellorin/"));
  EXPECT_THROW(registerIn("/srv/other"), NumberedError);
  EXPECT_EQ(registered(), "/srv/pellorin/Messages.dll");
  fs::permissions(value, fs::perms::owner_write, fs::perm_options::add);
  registerIn("/srv/other");
  EXPECT_EQ(registered(), "/srv/other/Messages.dll");
}

}  // namespace
}  // namespace pellorin
