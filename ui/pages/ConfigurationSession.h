// What the pages share: the document that is being edited and, of each kind, the section that is shown. Every
// edit goes through SetValue, nearly always by a Persist operation. Before a document is replaced or a
// section leaves it, the session forgets the shown section, so that no pointer outlives its section.
#pragma once

#include <QObject>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "config/Ini.h"

namespace pellorin {

class ConfigurationSession : public QObject {
  Q_OBJECT

 public:
  Ini* Document() const { return document_.get(); }  // null after a load that failed
  void ReplaceDocument(std::unique_ptr<Ini> document);

  // What belongs to a kind of section: its name in the tags of controls, and its Persist operation.
  struct Kind {
    std::string_view tag;
    void (ConfigurationSession::*persist)(const std::string& key, const std::string& value);
  };
  static Kind KindOf(SectionType type);

  Section* CurrentMail() const { return Current(SectionType::Mail); }
  Section* CurrentSql() const { return Current(SectionType::Sql); }
  Section* CurrentQueue() const { return Current(SectionType::Queue); }
  Section* Admin() const { return Current(SectionType::Admin); }
  Section* Current(SectionType type) const { return current_[static_cast<std::size_t>(type)]; }
  void SetCurrent(SectionType type, Section* section) { current_[static_cast<std::size_t>(type)] = section; }

  // Writes one value into the current section of the kind. Does nothing when there is none. NumberedError
  // when the section holds the key in another letter case.
  void PersistMailSetting(const std::string& key, const std::string& value) {
    if (Section* section = CurrentMail()) SetValue(*section, key, value);
  }
  void PersistSqlSetting(const std::string& key, const std::string& value) {
    if (Section* section = CurrentSql()) SetValue(*section, key, value);
  }
  void PersistQueueSetting(const std::string& key, const std::string& value) {
    if (Section* section = CurrentQueue()) SetValue(*section, key, value);
  }
  void PersistAdminSetting(const std::string& key, const std::string& value) {
    if (Section* section = Admin()) SetValue(*section, key, value);
  }
  // Writes into any section: the queues page keeps "Queues" of every SQL section.
  void SetValue(Section& section, const std::string& key, const std::string& value);

  // Announces all edits made during its life as one, at its end, even if they fail. Handlers of
  // edited() must not throw.
  class Edits {
   public:
    explicit Edits(ConfigurationSession& session) : session_(session) { ++session_.editsInProgress_; }
    ~Edits() {
      if (--session_.editsInProgress_ == 0) emit session_.edited();
    }
    Edits(const Edits&) = delete;
    Edits& operator=(const Edits&) = delete;

   private:
    ConfigurationSession& session_;
  };

  // Removes the section from the document, as Ini::Delete does.
  void DeleteSection(Section& section);
  void Save();  // Ini::Save

 signals:
  void mailServersChanged();
  void sqlServersChanged();
  void documentReplaced();
  void edited();                                     // the document may have changes now, or none any more
  void validationFailed(pellorin::Section* faulty);  // the first section that cannot be saved

 private:
  std::unique_ptr<Ini> document_;
  std::array<Section*, 4> current_{};
  int editsInProgress_ = 0;
};

}  // namespace pellorin
