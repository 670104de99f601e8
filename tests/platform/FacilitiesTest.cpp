#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <set>

#include "base/NumberedError.h"
#include "platform/Guid.h"
#include "platform/HostName.h"
#include "platform/SharedLibrary.h"
#include "platform/posix/FolderRegistry.h"
#include "platform/posix/ServiceFolder.h"
#include "tests/support/FailingFiles.h"
#include "tests/support/TemporaryFolder.h"

namespace pellorin::test {
namespace {

TEST(AsciiHostName, ConvertsOtherLettersAndNothingElse) {
  const std::pair<std::string, std::string> rows[] = {
      {"MÜLLER.straße.Example.", "xn--mller-kva.xn--strae-oqa.example."},
      {"SQL_01", "SQL_01"},
      {"fe80::1%eth0", "fe80::1%eth0"},
      {"\xFF.example", "\xFF.example"},  // cannot be converted
      {std::string(70, 'x') + "ü", std::string(70, 'x') + "ü"}};
  for (const auto& [typed, ascii] : rows) EXPECT_EQ(AsciiHostName(typed), ascii) << typed;
}

TEST(SharedLibrary, NamesWhatItLacks) {
  struct Library : SharedLibrary {
    Library(const std::string& name, const char* function)
        : SharedLibrary(name), address(Find<int()>(function)) {}
    int (*address)();
  };
  EXPECT_NE(Library("libm.so.6", "cos").address, nullptr);
  for (const auto& [name, function, lacking] : {std::tuple("libnone.so.9", "cos", "libnone.so.9"),
                                                {"libm.so.6", "no_such_function", "no_such_function"}})
    try {
      const Library library(name, function);
      ADD_FAILURE() << lacking << " was found";
    } catch (const NumberedError& error) {
      EXPECT_NE(error.Description().find(lacking), std::string::npos) << error.Description();
    }
}

TEST(Registry, WritesAndReadsValuesWithoutRegardToLetterCase) {
  const TemporaryFolder folder;
  FolderRegistry registry(SystemFiles(), folder / "new/root");
  const std::string bytes("MSSQLSERVER\0SALES\0\0", 19);
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server", "Instances"), std::nullopt);
  registry.WriteValue("SOFTWARE/Server", "Instances", bytes);
  EXPECT_EQ(registry.ReadValue("software/SERVER", "INSTANCES"), bytes);
  registry.WriteValue("Software/server", "instances", "");
  EXPECT_EQ(folder.Read("new/root/SOFTWARE/Server/Instances"), "");
  EXPECT_EQ(registry.ReadValue("SOFTWARE", "Server"), std::nullopt) << "a key is not a value";
  EXPECT_EQ(registry.ReadValue("SOFTWARE/Server/Instances", "x"), std::nullopt) << "a value is not a key";
  EXPECT_THROW(registry.WriteValue("SOFTWARE/Server/Instances", "x", ""), FileError);
  FailingFiles files(SystemFiles());
  files.FailAt(5);  // behind looking up keys and value, and examining the file
  EXPECT_THROW(FolderRegistry(files, folder / "new/root").ReadValue("SOFTWARE/Server", "Instances"),
               FileError);
}

TEST(ServiceFolder, IsThatOfTheEnvironmentOrOfTheFirstLineOfTheFile) {
  const TemporaryFolder folder;
  const std::string file = folder / "service-folder";
  const auto registered = [&] { return ServiceFolderOf(SystemFiles(), file); };
  ::unsetenv("PELLORIN_SERVICE_FOLDER");
  EXPECT_EQ(registered(), "");
  folder.Write("service-folder", "/a b\r\n/c");
  EXPECT_EQ(registered(), "/a b");
  ::setenv("PELLORIN_SERVICE_FOLDER", "", 1);
  EXPECT_EQ(registered(), "/a b") << "an empty variable counts as absent";
  ::setenv("PELLORIN_SERVICE_FOLDER", "/srv/environment", 1);
  EXPECT_EQ(registered(), "/srv/environment");
  ::unsetenv("PELLORIN_SERVICE_FOLDER");
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_THROW(registered(), FileError) << "a folder in its place is a mistake";
}

TEST(Guid, IsRandomOfVersionFourInRegistryForm) {
  const std::regex form("\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}");
  std::set<std::string> all;
  for (int count = 0; count < 200; ++count) {
    const std::string guid = GenerateGUID();
    EXPECT_TRUE(std::regex_match(guid, form)) << guid;
    all.insert(guid);
  }
  EXPECT_EQ(all.size(), 200u);
}

}  // namespace
}  // namespace pellorin::test
