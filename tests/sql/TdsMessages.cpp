#include "tests/sql/TdsMessages.h"

#include <array>

#include "base/Utf16.h"

namespace pellorin::tds {
namespace {

constexpr std::size_t kPacketSize = 4096;  // with its header
constexpr std::size_t kHeaderSize = 8;
constexpr std::uint8_t kEndOfMessage = 0x01, kReply = 0x04;
constexpr std::size_t kCollationSize = 5;

// Takes little-endian values off the front of a message. Every read beyond its end throws ProtocolError.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

  // A request begins with one header: the transaction that it belongs to.
  static ByteReader OfRequest(std::string_view body) {
    constexpr std::size_t kSize = 22;
    ByteReader reader(body);
    if (reader.Number(4) != kSize) throw ProtocolError("a request without the header of its transaction");
    reader.Bytes(kSize - 4);
    return reader;
  }

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

  // The value of a parameter, ntext or nvarchar.
  std::string Parameter() {
    constexpr std::uint8_t kNtextType = 0x63, kNvarcharType = 0xE7;
    Text(2 * Number(1));  // name
    Number(1);            // by reference or not
    const std::uint64_t type = Number(1);
    if (type != kNtextType && type != kNvarcharType)
      throw ProtocolError("a parameter of the unknown type " + std::to_string(type));
    const std::size_t numberSize = type == kNtextType ? 4 : 2;
    Bytes(numberSize + kCollationSize);
    return Text(Number(numberSize));
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

}  // namespace

std::optional<Message> ReadMessage(const LoopbackSocket& socket) {
  Message message;
  while (true) {
    std::array<char, kHeaderSize> header{};
    if (!socket.Read(header.data(), header.size())) return {};
    const auto byteAt = [&header](std::size_t index) { return static_cast<std::uint8_t>(header[index]); };
    const std::size_t size = byteAt(2) * 256u + byteAt(3);
    if (size < kHeaderSize) throw ProtocolError("a packet shorter than its header");
    message.type = static_cast<MessageType>(byteAt(0));
    const std::size_t start = message.body.size();
    message.body.resize(start + size - kHeaderSize);
    if (!socket.Read(message.body.data() + start, size - kHeaderSize)) return {};
    if ((byteAt(1) & kEndOfMessage) != 0) return message;
  }
}

void WriteReply(const LoopbackSocket& socket, std::string_view reply) {
  std::string packets;
  std::uint8_t number = 0;
  do {
    const std::string_view body = reply.substr(0, kPacketSize - kHeaderSize);
    reply.remove_prefix(body.size());
    const std::size_t size = body.size() + kHeaderSize;
    const std::uint8_t end = reply.empty() ? kEndOfMessage : 0;
    for (const std::size_t byte : {std::size_t{kReply}, std::size_t{end}, size >> 8, size & 0xFF,
                                   std::size_t{0}, std::size_t{0}, std::size_t{++number}, std::size_t{0}})
      packets += static_cast<char>(byte);
    packets += body;
  } while (!reply.empty());
  socket.Write(packets);
}

Login ParseLogin(std::string_view body) {
  std::string password = LoginBytes(body, 2);
  for (char& character : password) {  // crosses the wire with the halves of its bytes swapped, then masked
    const unsigned byte = static_cast<unsigned char>(character) ^ 0xA5u;
    character = static_cast<char>((byte << 4 | byte >> 4) & 0xFF);
  }
  return {ByteReader(LoginBytes(body, 1)).RestAsText(), ByteReader(password).RestAsText()};
}

std::string ParseBatch(std::string_view body) {
  return ByteReader::OfRequest(body).RestAsText();
}

Call ParseCall(std::string_view body) {
  constexpr std::uint64_t kByNumber = 0xFFFF, kExecuteSql = 10;
  ByteReader reader = ByteReader::OfRequest(body);
  if (reader.Number(2) != kByNumber || reader.Number(2) != kExecuteSql)
    throw ProtocolError("a call of another procedure than sp_executesql");
  reader.Number(2);  // options
  Call call{reader.Parameter(), {}};
  if (!reader.IsAtEnd()) reader.Parameter();  // declares those that follow
  while (!reader.IsAtEnd()) call.values.push_back(reader.Parameter());
  return call;
}

TransactionRequest ParseTransaction(std::string_view body) {
  ByteReader reader = ByteReader::OfRequest(body);
  TransactionRequest request{static_cast<TransactionRequest::Kind>(reader.Number(2)), false};
  if (request.kind == TransactionRequest::Kind::kBegin) return request;
  reader.Text(2 * reader.Number(1));  // name
  request.beginsAgain = (reader.Number(1) & 1) != 0;
  return request;
}

}  // namespace pellorin::tds
