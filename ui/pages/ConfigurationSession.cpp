#include "ui/pages/ConfigurationSession.h"

#include <utility>

namespace pellorin {

ConfigurationSession::Kind ConfigurationSession::KindOf(SectionType type) {
  switch (type) {
    case SectionType::Mail:
      return {"Mail", &ConfigurationSession::PersistMailSetting};
    case SectionType::Sql:
      return {"Sql", &ConfigurationSession::PersistSqlSetting};
    case SectionType::Queue:
      return {"Queue", &ConfigurationSession::PersistQueueSetting};
    case SectionType::Admin:
      break;
  }
  return {"Admin", &ConfigurationSession::PersistAdminSetting};
}

void ConfigurationSession::ReplaceDocument(std::unique_ptr<Ini> document) {
  current_.fill(nullptr);
  document_ = std::move(document);
  emit documentReplaced();
  emit edited();
}

void ConfigurationSession::SetValue(Section& section, const std::string& key, const std::string& value) {
  const Edits edits(*this);
  try {
    section.SetValue(key, value);
  } catch (const CollectionError& error) {
    const bool isQueue = section.SectionType == SectionType::Queue;
    throw NumberedError(error.Number(), error.Source(),
                        "The setting \"" + key +
                            "\" cannot be changed: " + (isQueue ? "queue " : "section ") + section.Name +
                            " holds it in another letter case. Please correct its spelling in the file.",
                        section.FilePath());
  }
}

void ConfigurationSession::DeleteSection(Section& section) {
  for (Section*& current : current_)
    if (current == &section) current = nullptr;
  document_->Delete(section);
  emit edited();
}

void ConfigurationSession::Save() {
  const Edits edits(*this);  // even a failed save may have written some sections
  document_->Save();
}

}  // namespace pellorin
