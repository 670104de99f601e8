#include "ui/ConfigurationSession.h"

#include <utility>

namespace pellorin {

void ConfigurationSession::ReplaceDocument(std::unique_ptr<Ini> document) {
  current_.fill(nullptr);
  document_ = std::move(document);
  emit documentReplaced();
  emit edited();
}

void ConfigurationSession::Persist(Section* section, const std::string& key, const std::string& value) {
  if (section == nullptr) return;
  try {
    section->SetValue(key, value);
  } catch (const CollectionError& error) {
    throw NumberedError(error.Number(), error.Source(),
                        "The setting \"" + key + "\" cannot be changed: section " + section->Name +
                            " holds it in another letter case. Please correct its spelling in the file.",
                        document_->Path());
  }
  emit edited();
}

void ConfigurationSession::DeleteSection(Section& section) {
  for (Section*& current : current_)
    if (current == &section) current = nullptr;
  document_->Delete(section);
  emit edited();
}

void ConfigurationSession::Save() {
  // Also after a failure some sections may have been written.
  struct EditedAtEnd {
    ConfigurationSession& session;
    ~EditedAtEnd() { emit session.edited(); }
  } const atEnd{*this};
  document_->Save();
}

}  // namespace pellorin
