#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace pellorin::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : path_((fs::temp_directory_path() / "pellorin-test-XXXXXX").string()) {
  if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot create " + path_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code failure;
  fs::remove_all(path_, failure);
  if (failure) ADD_FAILURE() << "cannot remove " << path_ << ": " << failure.message();
}

void TemporaryFolder::Write(const std::string& name, const std::string& bytes) const {
  const fs::path path = *this / name;
  fs::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::string TemporaryFolder::Read(const std::string& name) const {
  std::ifstream file(*this / name, std::ios::binary);
  if (!file) ADD_FAILURE() << "cannot read " << *this / name;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool TemporaryFolder::Has(const std::string& name) const {
  return fs::symlink_status(*this / name).type() != fs::file_type::not_found;
}

}  // namespace pellorin::test
