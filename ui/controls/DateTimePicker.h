// A field for a date (with a calendar), a time of day, or both, which is kept as text.
//
// A text given by the program stays exactly as it is until the user changes the value. What the user types is
// read as a whole, in every form that ReadTypedDateTime knows. ValueText() returns it in the locale's form at
// once; the field shows that form after Return or when the focus leaves. A typed text that is not a date or
// time is kept, so that validation can name it. A given one is shown as empty.
//
// Up and Down step the part at the cursor. F4 and Alt+Down open the calendar.
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

  // With a calendar it picks a date, without one a time of day. Named like the properties of .ui files.
  bool calendarPopup() const { return hasCalendar_; }
  void setCalendarPopup(bool wanted);

  void SetLocaleConventions(const LocaleConventions& conventions) { conventions_ = conventions; }
  void SetValueText(const std::string& text);  // emits nothing
  const std::string& ValueText() const { return text_; }

  void stepBy(int steps) override;
  QSize sizeHint() const override;  // of the longest usual text: the width never changes
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
