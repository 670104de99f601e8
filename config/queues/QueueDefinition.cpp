#include "config/queues/QueueDefinition.h"

#include <libxml/chvalid.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>
#include <libxml/xpath.h>

#include <limits>

#include "base/ErrorNumbers.h"
#include "base/NumberedError.h"
#include "config/CannotSave.h"
#include "config/queues/XmlForm.h"
#include "files/FileLookup.h"

namespace pellorin {
namespace {

constexpr const char* kSource = "QueueDefinition";

template <typename T, void (*Free)(T*)>
struct Freer {
  void operator()(T* object) const { Free(object); }
};
using DocumentPointer = std::unique_ptr<xmlDoc, Freer<xmlDoc, xmlFreeDoc>>;
using PathContext = std::unique_ptr<xmlXPathContext, Freer<xmlXPathContext, xmlXPathFreeContext>>;
using PathResult = std::unique_ptr<xmlXPathObject, Freer<xmlXPathObject, xmlXPathFreeObject>>;
using ParserContext = std::unique_ptr<xmlParserCtxt, Freer<xmlParserCtxt, xmlFreeParserCtxt>>;

const xmlChar* XmlText(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::string TextOf(const xmlNode& attribute) {
  const xmlNode* text = attribute.children;
  if (text == nullptr) return {};
  if (text->type == XML_TEXT_NODE && text->next == nullptr)
    return reinterpret_cast<const char*>(text->content);
  xmlChar* joined = xmlNodeGetContent(&attribute);  // with references to entities
  std::string result = joined == nullptr ? "" : reinterpret_cast<const char*>(joined);
  xmlFree(joined);
  return result;
}

[[noreturn]] void Fail(const std::string& description) {
  throw NumberedError(kSectionNotSaved, ErrorSource(kSource), description);
}

std::string ReasonOf(const xmlError* error) {
  if (error == nullptr || error->message == nullptr) return "It is not an XML document.";
  std::string message = error->message;
  while (!message.empty() && (message.back() == '\n' || message.back() == '\r')) message.pop_back();
  return "It is not well-formed XML: line " + std::to_string(error->line) + ": " + message;
}

// The nodes that an XPath expression selects, in document order.
std::vector<xmlNode*> Select(xmlDoc* document, const xmlXPathCompExpr* expression) {
  // One context for all documents: making one costs more than parsing a queue.
  static const PathContext context(xmlXPathNewContext(nullptr));
  if (!context) throw std::bad_alloc();
  context->doc = document;
  context->node = nullptr;
  const PathResult result(xmlXPathCompiledEval(const_cast<xmlXPathCompExpr*>(expression), context.get()));
  context->doc = nullptr;
  if (!result) throw std::bad_alloc();
  const xmlNodeSet* nodes = result->nodesetval;
  if (nodes == nullptr || nodes->nodeNr == 0) return {};
  return {nodes->nodeTab, nodes->nodeTab + nodes->nodeNr};
}

const xmlXPathCompExpr* Compiled(const char* expression) {
  return xmlXPathCompile(reinterpret_cast<const xmlChar*>(expression));
}

std::vector<xmlNode*> AllAttributes(xmlDoc* document) {
  static const xmlXPathCompExpr* const kAttributes = Compiled("//@*");
  return Select(document, kAttributes);
}

// Subtracts the length of these nodes' text, entities expanded, from the budget. False if it is too small.
bool FitsInto(std::size_t& budget, const xmlNode* node) {
  for (; node != nullptr; node = node->next) {
    const bool isText = node->type == XML_TEXT_NODE;
    const std::size_t cost = 1 + (isText ? static_cast<std::size_t>(xmlStrlen(node->content)) : 0);
    if (cost > budget) return false;
    budget -= cost;
    if (node->type != XML_ENTITY_REF_NODE) continue;
    const xmlEntity* entity = xmlGetDocEntity(node->doc, node->name);
    if (entity != nullptr && !FitsInto(budget, entity->children)) return false;
  }
  return true;
}

// The parser limits how deep entities nest, not how often an attribute refers to them.
void RequireBoundedEntities(xmlDoc* document) {
  if (document->intSubset == nullptr) return;
  std::size_t budget = kLargestFile;
  for (const xmlNode* attribute : AllAttributes(document))
    if (!FitsInto(budget, attribute->children)) Fail("Its entities stand for more than 16 MB.");
}

bool IsNamed(const xmlNode& attribute, const std::string& name) {
  return xmlStrEqual(attribute.name, XmlText(name)) != 0;
}

xmlNode* FirstQueueElement(xmlDoc* document) {
  static const xmlXPathCompExpr* const kQueues = Compiled("//queue");
  const auto found = Select(document, kQueues);
  return found.empty() ? nullptr : found.front();
}

// Whether the element has another attribute of that local name and with the same text. The one without a
// prefix is compared if there is one.
bool RepeatsAttributeOf(xmlNode* element, const xmlNode& attribute) {
  if (element == nullptr) return false;
  const xmlAttr* other = xmlHasNsProp(element, attribute.name, nullptr);
  for (const xmlAttr* each = element->properties; other == nullptr && each != nullptr; each = each->next)
    if (xmlStrEqual(each->name, attribute.name) != 0) other = each;
  const auto* node = reinterpret_cast<const xmlNode*>(other);  // in libxml2 both structures begin alike
  return node != nullptr && node != &attribute && TextOf(*node) == TextOf(attribute);
}

// Whether XML 1.0 can express the text. A text from outside may not even be UTF-8.
bool IsXmlText(const std::string& text) {
  if (!xmlCheckUTF8(XmlText(text)) || text.find('\0') != std::string::npos) return false;
  for (int position = 0, size = static_cast<int>(text.size()); position < size;) {
    int length = size - position;
    const int code = xmlGetUTF8Char(XmlText(text) + position, &length);
    if (code < 0 || !xmlIsCharQ(code)) return false;
    position += length;
  }
  return true;
}

}  // namespace

struct QueueDefinition::Document {
  DocumentPointer tree;
  xmlNode* queue = nullptr;  // the first element of that name, if there is one
  XmlForm form;
};

QueueDefinition::QueueDefinition(std::string_view bytes) : document_(std::make_unique<Document>()) {
  const ParserContext parser(xmlNewParserCtxt());
  if (!parser) throw std::bad_alloc();
  if (bytes.empty()) Fail("It is empty.");
  if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) Fail("It is too large.");
  document_->tree.reset(xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                          nullptr,
                                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  if (!document_->tree) Fail(ReasonOf(xmlCtxtGetLastError(parser.get())));
  RequireBoundedEntities(document_->tree.get());
  document_->queue = FirstQueueElement(document_->tree.get());
  const xmlChar* declared = document_->tree->encoding;
  document_->form = FormOf(bytes, declared == nullptr ? "" : reinterpret_cast<const char*>(declared));
}

QueueDefinition::QueueDefinition(std::unique_ptr<Document> document) : document_(std::move(document)) {}

QueueDefinition::~QueueDefinition() = default;
QueueDefinition::QueueDefinition(QueueDefinition&&) noexcept = default;
QueueDefinition& QueueDefinition::operator=(QueueDefinition&&) noexcept = default;

QueueDefinition QueueDefinition::Copy() const {
  DocumentPointer tree(xmlCopyDoc(document_->tree.get(), 1));
  if (!tree) throw std::bad_alloc();
  xmlNode* queue = FirstQueueElement(tree.get());
  return QueueDefinition(std::make_unique<Document>(Document{std::move(tree), queue, document_->form}));
}

std::vector<std::pair<std::string, std::string>> QueueDefinition::Attributes() const {
  std::vector<std::pair<std::string, std::string>> attributes;
  for (xmlNode* node : AllAttributes(document_->tree.get())) {
    const bool isOfQueue = node->parent == document_->queue && node->ns == nullptr;
    if (isOfQueue || !RepeatsAttributeOf(document_->queue, *node))
      attributes.emplace_back(reinterpret_cast<const char*>(node->name), TextOf(*node));
  }
  return attributes;
}

bool QueueDefinition::HasQueueElement() const {
  return document_->queue != nullptr;
}

std::optional<std::string> QueueDefinition::Attribute(const std::string& name) const {
  for (const xmlNode* attribute : AllAttributes(document_->tree.get()))
    if (IsNamed(*attribute, name)) return TextOf(*attribute);
  return std::nullopt;
}

bool QueueDefinition::QueueHas(const std::string& name) const {
  return document_->queue != nullptr && xmlHasNsProp(document_->queue, XmlText(name), nullptr) != nullptr;
}

void QueueDefinition::SetAttribute(const std::string& name, const std::string& value) {
  xmlNode* queue = document_->queue;
  if (queue == nullptr) Fail(kNoQueueElement);
  if (!IsXmlText(value) || !IsXmlText(name) || xmlValidateNCName(XmlText(name), 0) != 0)
    Fail("The value of " + name + " holds a character that XML cannot express.");
  if (xmlSetNsProp(queue, nullptr, XmlText(name), XmlText(value)) == nullptr) throw std::bad_alloc();
  for (xmlNode* attribute : AllAttributes(document_->tree.get())) {
    if (!IsNamed(*attribute, name) || TextOf(*attribute) == value) continue;
    if (xmlSetNsProp(attribute->parent, attribute->ns, XmlText(name), XmlText(value)) == nullptr)
      throw std::bad_alloc();
  }
}

const std::string& QueueDefinition::Encoding() const {
  return document_->form.encoding;
}

std::string QueueDefinition::Serialize() const {
  const XmlForm& form = document_->form;
  const std::unique_ptr<xmlBuffer, Freer<xmlBuffer, xmlBufferFree>> buffer(xmlBufferCreate());
  xmlSaveCtxt* save =
      xmlSaveToBuffer(buffer.get(), form.encoding.c_str(), form.hasDeclaration ? 0 : XML_SAVE_NO_DECL);
  if (save == nullptr) Fail("It cannot be written in the encoding " + form.encoding + ".");
  const bool isWritten = xmlSaveDoc(save, document_->tree.get()) >= 0;
  if (xmlSaveClose(save) < 0 || !isWritten) Fail("It cannot be written as XML.");
  return InForm(form, std::string(reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
                                  static_cast<std::size_t>(xmlBufferLength(buffer.get()))));
}

}  // namespace pellorin
