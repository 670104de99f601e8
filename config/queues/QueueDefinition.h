// The XML document of one queue. Parsed strictly: without network, external entities or unbounded expansion.
// Written back with its encoding, comments, order and everything else it holds. Failures are NumberedErrors
// with the reason and no path: the caller knows the file.
//
//   QueueDefinition night("<queue every='1'/>");
//   night.SetAttribute("every", "2");
//   night.Serialize();  // "<queue every=\"2\"/>\n"
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pellorin {

inline constexpr const char* kNoQueueElement = "It holds no element \"queue\".";

class QueueDefinition {
 public:
  // NumberedError when the bytes are not well-formed XML (the description gives line and reason), or when the
  // entities in attributes expand to more than 16 MB.
  explicit QueueDefinition(std::string_view bytes);
  ~QueueDefinition();
  QueueDefinition(QueueDefinition&&) noexcept;
  QueueDefinition& operator=(QueueDefinition&&) noexcept;
  QueueDefinition Copy() const;

  // Local name and text of the document's attributes, in document order. Leaves out an attribute that only
  // repeats one of the first element "queue".
  std::vector<std::pair<std::string, std::string>> Attributes() const;

  // The text of the first attribute of that local name, on any element.
  std::optional<std::string> Attribute(const std::string& name) const;

  // Whether there is an element "queue" to carry the settings.
  bool HasQueueElement() const;
  // Whether the first such element has an attribute of that name without a prefix.
  bool QueueHas(const std::string& name) const;
  // Sets an attribute of the first element "queue", and every other attribute of that local name, so that all
  // stay equal. NumberedError when there is no such element, or when XML cannot express the text.
  void SetAttribute(const std::string& name, const std::string& value);

  const std::string& Encoding() const;  // as the document names it; Serialize writes in it
  std::string Serialize() const;

 private:
  struct Document;
  explicit QueueDefinition(std::unique_ptr<Document> document);
  std::unique_ptr<Document> document_;
};

}  // namespace pellorin
