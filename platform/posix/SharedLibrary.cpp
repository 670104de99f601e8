#include "platform/SharedLibrary.h"

#include <dlfcn.h>

#include "base/NumberedError.h"

namespace pellorin {
namespace {

NumberedError Failure() {
  const char* reason = dlerror();
  return {0, ErrorSource("SharedLibrary"),
          std::string("A library of the system cannot be used: ") + (reason == nullptr ? "" : reason)};
}

}  // namespace

SharedLibrary::SharedLibrary(const std::string& name)
    : handle_(dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw Failure();
}

void* SharedLibrary::AddressOf(const char* name) const {
  void* const address = dlsym(handle_, name);
  if (address == nullptr) throw Failure();
  return address;
}

}  // namespace pellorin
