// A field for a date (with a calendar), a time of day, or both, which is kept as text. The text that was
// given stays as it is, to the letter, until the value changes; then it is the value as the locale writes it.
// What is typed is read as a whole, in all forms that ReadTypedDateTime knows. ValueText() has the locale's
// form at once, and so four digits of the year; the field shows that form once the user presses Return or
// leaves. A typed text that is not a date or time is kept as it is, so that validation can name it, but never
// guessed at. A given text of that kind is shown as empty. Up and Down step the part at the cursor; F4 and
// Alt+Down open the calendar.
#pragma once

#include <QAbstractSpinBox>
#include <QCalendarWidget>
#include <optional>
#include <string>

#include "config/DateTimeText.h"

namespace pellorin {

class DateTimePicker : public QAbstractSpinBox {
  Q_OBJECT
  Q_PROPERTY(bool calendarPopup READ calendarPopup WRITE setCalendarPopup)

 public:
  explicit DateTimePicker(QWidget* parent = nullptr);

  // With a calendar it picks a date, without one a time of day. Named as the other properties of .ui files.
  bool calendarPopup() const { return hasCalendar_; }
  void setCalendarPopup(bool wanted);

  void SetLocaleConventions(const LocaleConventions& conventions) { conventions_ = conventions; }
  void SetValueText(const std::string& text);  // emits nothing
  const std::string& ValueText() const { return text_; }

  void stepBy(int steps) override;
  QSize sizeHint() const override;  // of the longest usual text, so that fields do not change their width
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void edited();  // the user changed the text

 protected:
  StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  std::optional<DateTime> Read(const std::string& text) const;
  std::optional<DateTime> ReadTyped(const std::string& text) const;
  std::optional<DateTime> WithOwnPart(std::optional<DateTime> value) const;
  DateTime Present() const;
  void NoteTyped(const std::string& typed);
  void Take(const DateTime& value);
  void ShowValue();
  void ShowTyped();
  QCalendarWidget& Calendar();
  void OpenCalendar();
  void TakeDay(const QDate& day);

  LocaleConventions conventions_;
  bool hasCalendar_ = false;
  QCalendarWidget* calendar_ = nullptr;  // made when it is first opened: it costs more than a page
  std::string given_;                    // by the program
  std::string text_;
};

}  // namespace pellorin
