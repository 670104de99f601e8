// Picks a date from a calendar (calendarPopup set) or a time of day, and keeps it as text. The text that was
// given stays as it is, to the letter, until the user changes the value; from then on it is the value as the
// locale writes it. A text that is neither date nor time shows as empty and is kept as well. All that the
// text holds is shown: what would be written is always to be seen.
#pragma once

#include <QDateTimeEdit>
#include <optional>
#include <string>

#include "config/DateTimeText.h"
#include "platform/SystemLocale.h"

namespace pellorin {

class DateTimePicker : public QDateTimeEdit {
  Q_OBJECT
 public:
  explicit DateTimePicker(QWidget* parent = nullptr);

  void SetLocaleConventions(const LocaleConventions& conventions);  // once calendarPopup is set
  void SetValueText(const std::string& text);                       // emits nothing
  std::string ValueText() const { return text_; }

  bool event(QEvent* event) override;
  void stepBy(int steps) override;

 signals:
  void edited();  // the user changed the value; once per section typed

 protected:
  StepEnabled stepEnabled() const override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  void Show(const std::optional<DateTime>& value);
  QString FormatOf(const DateTime& value) const;
  void Begin();
  void NoteChange();
  void Commit();
  void TypeKey(QKeyEvent* event);
  bool IsSeparator(QChar letter) const;
  void ChooseHalfOfDay(QChar letter);
  void OpenCalendar();

  LocaleConventions conventions_;
  std::string text_;
  QDateTime moment_;  // that text_ stands for
  bool isBlank_ = true;
  bool isSectionFull_ = false;  // the last key filled one section and led to the next
};

}  // namespace pellorin
