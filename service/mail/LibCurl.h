// The functions of libcurl, which is loaded for the first mail: with the libraries that it needs itself it
// would take a fifth of the time to the first frame, and 5 MB.
#pragma once

#include <curl/curl.h>

#include "platform/SharedLibrary.h"

namespace pellorin {

struct LibCurl : SharedLibrary {
  LibCurl() : SharedLibrary("libcurl.so.4") {}  // the version of the interface that the header declares

  // Members are named as in libcurl's manual.
#define PELLORIN_FUNCTION(name) decltype(&::name) name = Find<decltype(::name)>(#name)
  PELLORIN_FUNCTION(curl_easy_cleanup);
  PELLORIN_FUNCTION(curl_easy_getinfo);
  PELLORIN_FUNCTION(curl_easy_init);
  PELLORIN_FUNCTION(curl_easy_perform);
  PELLORIN_FUNCTION(curl_easy_setopt);
  PELLORIN_FUNCTION(curl_easy_strerror);
  PELLORIN_FUNCTION(curl_global_init);
  PELLORIN_FUNCTION(curl_slist_append);
  PELLORIN_FUNCTION(curl_slist_free_all);
  PELLORIN_FUNCTION(curl_url);
  PELLORIN_FUNCTION(curl_url_cleanup);
  PELLORIN_FUNCTION(curl_url_set);
  PELLORIN_FUNCTION(curl_url_strerror);
#undef PELLORIN_FUNCTION
};

// NumberedError when it cannot be loaded.
inline const LibCurl& Curl() {
  static const LibCurl library;
  return library;
}

}  // namespace pellorin
