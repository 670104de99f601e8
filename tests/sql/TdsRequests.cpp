// Requests taken apart.
#include "base/Utf16.h"
#include "tests/sql/TdsProtocol.h"

namespace pellorin::tds {
namespace {

constexpr std::uint8_t kNtextType = 0x63, kNvarcharType = 0xE7;
constexpr std::size_t kCollationSize = 5;

// Takes little-endian values off the front of a message. Every read beyond its end throws ProtocolError.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

  bool IsAtEnd() const { return rest_.empty(); }

  std::string_view Bytes(std::size_t size) {
    if (size > rest_.size()) throw ProtocolError("a message shorter than it says");
    const std::string_view bytes = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return bytes;
  }

  std::uint64_t Number(std::size_t size) {
    std::uint64_t value = 0;
    const std::string_view bytes = Bytes(size);
    while (size-- > 0) value = value << 8 | static_cast<std::uint8_t>(bytes[size]);
    return value;
  }

  std::string Text(std::size_t bytes) {
    std::u16string units;
    for (ByteReader text(Bytes(bytes)); !text.IsAtEnd();) units += static_cast<char16_t>(text.Number(2));
    return ToUtf8(units);
  }
  std::string RestAsText() { return Text(rest_.size()); }

  void SkipHeaders() {  // of a request: one, the transaction that it belongs to
    constexpr std::size_t kSize = 22;
    if (Number(4) != kSize) throw ProtocolError("a request without the header of its transaction");
    Bytes(kSize - 4);
  }

  CallValue Parameter() {
    CallValue parameter;
    parameter.name = Text(2 * Number(1));
    Number(1);  // by reference or not
    const std::uint64_t type = Number(1);
    if (type == kNtextType) {
      Bytes(4 + kCollationSize);
      parameter.value = Text(Number(4));
    } else if (type == kNvarcharType) {
      Bytes(2 + kCollationSize);
      parameter.value = Text(Number(2));
    } else {
      throw ProtocolError("a parameter of the unknown type " + std::to_string(type));
    }
    return parameter;
  }

 private:
  std::string_view rest_;
};

// The login begins with numbers; offset and length of its texts follow from the 36th byte on.
std::string LoginBytes(std::string_view body, std::size_t field) {
  ByteReader place(body);
  place.Bytes(36 + 4 * field);
  const std::uint64_t offset = place.Number(2), characters = place.Number(2);
  ByteReader text(body);
  text.Bytes(offset);
  return std::string(text.Bytes(2 * characters));
}

// Each byte crosses the wire with its halves swapped, then masked.
std::string Unscramble(std::string_view scrambled) {
  std::string bytes;
  for (const char character : scrambled) {
    const unsigned byte = static_cast<unsigned char>(character) ^ 0xA5u;
    bytes += static_cast<char>((byte << 4 | byte >> 4) & 0xFF);
  }
  return bytes;
}

}  // namespace

Login ParseLogin(std::string_view body) {
  return {ByteReader(LoginBytes(body, 1)).RestAsText(),
          ByteReader(Unscramble(LoginBytes(body, 2))).RestAsText()};
}

std::string ParseBatch(std::string_view body) {
  ByteReader reader(body);
  reader.SkipHeaders();
  return reader.RestAsText();
}

Call ParseCall(std::string_view body) {
  ByteReader reader(body);
  reader.SkipHeaders();
  constexpr std::uint64_t kByNumber = 0xFFFF;
  constexpr std::uint64_t kExecuteSql = 10;
  if (reader.Number(2) != kByNumber || reader.Number(2) != kExecuteSql)
    throw ProtocolError("a call of another procedure than sp_executesql");
  reader.Number(2);  // options
  Call call{*reader.Parameter().value, {}};
  if (!reader.IsAtEnd()) reader.Parameter();  // declares those that follow: @P1, @P2, …
  while (!reader.IsAtEnd()) {
    call.values.push_back(reader.Parameter());
    call.values.back().name = "@P" + std::to_string(call.values.size());
  }
  return call;
}

TransactionRequest ParseTransaction(std::string_view body) {
  ByteReader reader(body);
  reader.SkipHeaders();
  const std::uint64_t kind = reader.Number(2);
  if (kind == 5) return {};
  if (kind != 7 && kind != 8) throw ProtocolError("the unknown transaction request " + std::to_string(kind));
  TransactionRequest request{static_cast<TransactionRequest::Kind>(kind), false};
  reader.Text(2 * reader.Number(1));  // name
  request.beginsAgain = (reader.Number(1) & 1) != 0;
  return request;
}

}  // namespace pellorin::tds
