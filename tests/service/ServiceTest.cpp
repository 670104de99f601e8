#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/posix/FolderRegistry.h"
#include "service/RegistryEventLog.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin {
namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;

constexpr const char* kKey = "SYSTEM/CurrentControlSet/Services/EventLog/Application/Pellorin";

TEST(EventLog, RegistersWhatTheEventViewerReads) {
  const TemporaryFolder folder;
  const std::string root = folder / "registry";
  FolderRegistry registry(SystemFiles(), root);
  RegistryEventLog log(registry);
  const auto registered = [&] { return registry.ReadValue(kKey, "EventMessageFile"); };
  const auto registerIn = [&](const std::string& serviceFolder) {
    log.RegisterSource("Messages.dll", "", serviceFolder, "Pellorin", "Application");
  };
  registerIn("/srv/pellorin");
  EXPECT_EQ(registered(), "/srv/pellorin/Messages.dll");

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
