// A library of the system that is loaded when it is first used, for what most runs of the program never need.
// It stays loaded until the program ends. Its users derive a class with one member for each function:
//
//   struct Maths : SharedLibrary {
//     Maths() : SharedLibrary("libm.so.6") {}
//     decltype(&::cos) cos = Find<decltype(::cos)>("cos");
//   };
#pragma once

#include <string>

namespace pellorin {

class SharedLibrary {
 protected:
  // NumberedError with the system's reason when the library cannot be loaded.
  explicit SharedLibrary(const std::string& name);

  // NumberedError when the library has no such function. The type is what the library's header declares.
  template <typename Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(AddressOf(name));
  }

 private:
  void* AddressOf(const char* name) const;

  void* handle_;
};

}  // namespace pellorin
