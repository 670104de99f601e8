// The numbers of the errors that this program raises itself. Other numbers are those of the system, the SQL
// server, the mail server or libcurl.
#pragma once

namespace pellorin {

inline constexpr int kGuidNotCreated = 50002;         // the system gave no random bytes
inline constexpr int kIniNotLoaded = 50100;           // Pellorin.ini as a whole cannot be read
inline constexpr int kSectionNameNotRead = 50101;     // a section's name is not of the form TYPE:name
inline constexpr int kSectionNotLoaded = 50110;       // a section or a queue cannot be read
inline constexpr int kSectionNotSaved = 50111;        // a section or a queue cannot be written or deleted
inline constexpr int kEncryptDecryptFailed = 500110;  // EncryptDecrypt
inline constexpr int kEncryptStringFailed = 500111;   // EncryptString: a password cannot be scrambled
inline constexpr int kDecryptStringFailed = 500112;   // DecryptString: a password cannot be unscrambled

}  // namespace pellorin
