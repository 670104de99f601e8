// A folder of its own for one test, removed with everything in it at the end.
#pragma once

#include <string>

namespace pellorin::test {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }
  void Write(const std::string& name, const std::string& bytes) const;  // creates folders on the way
  std::string Read(const std::string& name) const;                      // fails the test when it cannot
  bool Has(const std::string& name) const;

 private:
  std::string path_;
};

}  // namespace pellorin::test
