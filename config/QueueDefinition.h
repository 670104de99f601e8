// The XML document of one queue. Parsed strictly, without network, external entities or unbounded expansion;
// written back with its encoding, comments, order and whatever else it holds. Failures are NumberedErrors
// that carry the reason and no path: the caller knows the file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pellorin {

class QueueDefinition {
 public:
  // NumberedError when the bytes are no well-formed XML (the description gives line and reason), or when the
  // entities in attributes stand for more than kLargestFile bytes.
  explicit QueueDefinition(std::string_view bytes);
  ~QueueDefinition();
  QueueDefinition(QueueDefinition&&) noexcept;
  QueueDefinition& operator=(QueueDefinition&&) noexcept;
  QueueDefinition Copy() const;

  // Local name and text of every attribute in the document, in document order.
  std::vector<std::pair<std::string, std::string>> Attributes() const;

  // Whether there is an element "queue" to carry the settings.
  bool HasQueueElement() const;
  bool HasAttribute(const std::string& name) const;  // on the first element "queue"
  // Sets an attribute of the first element "queue". NumberedError when there is none, or when the text holds
  // a character that XML cannot express.
  void SetAttribute(const std::string& name, const std::string& value);

  std::string Serialize() const;

 private:
  struct Document;
  explicit QueueDefinition(std::unique_ptr<Document> document);
  std::unique_ptr<Document> document_;
};

}  // namespace pellorin
