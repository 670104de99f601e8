// The failure that this program raises on purpose: a number, the operation that failed (source), a sentence
// for the administrator (description), and the full path of the file concerned if there is one.
#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace pellorin {

// Where an error was raised: ErrorSource("Ini, Load") is "PellorinConfig.exe, Ini, Load".
inline std::string ErrorSource(std::string_view operation) {
  return "PellorinConfig.exe, " + std::string(operation);
}

class NumberedError : public std::exception {
 public:
  NumberedError(int number, std::string source, std::string description, std::string path = {})
      : number_(number),
        source_(std::move(source)),
        description_(std::move(description)),
        path_(std::move(path)) {}

  int Number() const { return number_; }
  const std::string& Source() const { return source_; }
  const std::string& Description() const { return description_; }
  const std::string& Path() const { return path_; }
  // The description, then the path on a line of its own unless the description already names it.
  std::string DescriptionAndPath() const {
    const bool namesPath = description_.find(path_) != std::string::npos;
    return namesPath ? description_ : description_ + "\r\n" + path_;
  }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  int number_;
  std::string source_;
  std::string description_;
  std::string path_;
};

}  // namespace pellorin
