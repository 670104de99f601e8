// The XML document of one queue. Parsed strictly, without network, external entities or unbounded expansion;
// written back with its encoding, comments, order and whatever else it holds. Failures are NumberedErrors
// that carry the reason and no path: the caller knows the file.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "files/FileLookup.h"

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

  // Local name and text of the document's attributes, in document order; without those that only repeat an
  // attribute of the first element "queue".
  std::vector<std::pair<std::string, std::string>> Attributes() const;

  // The text of the first attribute of that local name, on whatever element. Nothing without one.
  std::optional<std::string> Attribute(const std::string& name) const;

  // Whether there is an element "queue" to carry the settings.
  bool HasQueueElement() const;
  bool QueueHas(const std::string& name) const;  // the first of them, an attribute of that name, no prefix
  // Sets an attribute of the first element "queue", and every other attribute of that local name, so that all
  // stay equal. NumberedError when there is no such element, or when the text holds a character that XML
  // cannot express.
  void SetAttribute(const std::string& name, const std::string& value);

  const std::string& Encoding() const;  // that Serialize writes in, as the document names it
  std::string Serialize() const;

 private:
  struct Document;
  explicit QueueDefinition(std::unique_ptr<Document> document);
  std::unique_ptr<Document> document_;
};

}  // namespace pellorin
