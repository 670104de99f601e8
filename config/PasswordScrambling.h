// The stored form of passwords: a keyed XOR with the runtime's pseudo-random byte stream, packed into the
// printable codes 59 (";") to 122 ("z"). It only hides a password from casual reading. The service reads the
// same form, so every bit counts. Texts are UTF-8; the arithmetic works on their codes in code page 1252.
//
//   EncryptString("abc", kPasswordKey)    // "ulf\\"
//   DecryptString("ulf\\", kPasswordKey)  // "abc"
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

inline constexpr std::string_view kPasswordKey = "{3A9C0B57-E2D4-4F81-9C6A-1B7E5D2F8A40}";

// n characters become n + ceil(n / 3). NumberedError 500111 for a text outside the code page.
std::string EncryptString(std::string_view text, std::string_view key);

// Any stored text gives some clear text, even one typed by hand. NumberedError 500112 for a text
// outside the code page.
std::string DecryptString(std::string_view stored, std::string_view key);

// The setting's value as Pellorin.ini stores it: scrambled for exactly "Password", "SqlPassword" and
// "SchedulerPassword", else unchanged.
std::string StoredText(std::string_view settingName, const std::string& value);

// Turns a stored value into the setting's clear value.
void MakeClear(std::string_view settingName, std::string& value);

}  // namespace pellorin
