// A folder of its own for one test, removed with everything in it at the end.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

namespace pellorin::test {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot create " + path_);
  }
  ~TemporaryFolder() {
    std::error_code failure;
    std::filesystem::remove_all(path_, failure);
    if (failure) ADD_FAILURE() << "cannot remove " << path_ << ": " << failure.message();
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }
  void Write(const std::string& name, const std::string& bytes) const {  // creates folders on the way
    const std::filesystem::path path = *this / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!(file << bytes << std::flush)) throw std::runtime_error("cannot write " + path.string());
  }
  std::string Read(const std::string& name) const {  // fails the test when it cannot
    std::ifstream file(*this / name, std::ios::binary);
    if (!file) ADD_FAILURE() << "cannot read " << *this / name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }
  bool Has(const std::string& name) const {
    return std::filesystem::symlink_status(*this / name).type() != std::filesystem::file_type::not_found;
  }

 private:
  std::string path_ = (std::filesystem::temp_directory_path() / "pellorin-test-XXXXXX").string();
};

}  // namespace pellorin::test
