#include "ui/DateTimePicker.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <chrono>
#include <utility>

namespace pellorin {

namespace {

DateTime PartsOf(const QDateTime& moment, QDateTimeEdit::Sections shown) {
  const std::chrono::sys_seconds seconds{std::chrono::seconds{moment.toSecsSinceEpoch()}};
  const auto day = std::chrono::floor<std::chrono::days>(seconds);
  DateTime value;
  if (shown & QDateTimeEdit::DateSections_Mask) value.date = day;
  if (shown & QDateTimeEdit::TimeSections_Mask) value.timeOfDay = seconds - day;
  return value;
}

// Without a time zone, as a text has none: no hour of any day is missing or there twice.
QDateTime CurrentMinute() {
  const QDateTime now = QDateTime::currentDateTime();
  return {now.date(), QTime(now.time().hour(), now.time().minute()), Qt::UTC};
}

QString Quoted(const std::string& separator) {
  const QLatin1Char quote('\'');
  return quote + QString::fromStdString(separator).replace(quote, QLatin1String("''")) + quote;
}

bool IsCommand(const QKeyEvent& key) {
  return key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

bool Types(const QKeyEvent& key) {
  return !IsCommand(key) && !key.text().isEmpty() && key.text().front().isPrint();
}

bool IsDigit(QChar letter) {
  return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

bool AsksForCalendar(const QKeyEvent& key) {
  const auto modifiers = key.modifiers() & ~Qt::KeypadModifier;
  return (key.key() == Qt::Key_F4 && modifiers == Qt::NoModifier) ||
         (key.key() == Qt::Key_Down && modifiers == Qt::AltModifier);
}

}  // namespace

DateTimePicker::DateTimePicker(QWidget* parent) : QDateTimeEdit(parent) {
  setLocale(QLocale::c());  // the same AM and PM everywhere
  setTimeSpec(Qt::UTC);
  connect(this, &QDateTimeEdit::dateTimeChanged, this, &DateTimePicker::NoteChange);
  SetValueText({});
}

void DateTimePicker::SetLocaleConventions(const LocaleConventions& conventions) {
  conventions_ = conventions;
  SetValueText(text_);
}

void DateTimePicker::SetValueText(const std::string& text) {
  text_ = text;
  Show(ReadDateTime(text, conventions_));
}

// Its own part is always shown, so that it can be changed; the other one when the text holds it.
void DateTimePicker::Show(const std::optional<DateTime>& value) {
  const QSignalBlocker blocker(this);
  DateTime parts = value.value_or(DateTime());
  const std::chrono::sys_seconds moment = MomentOf(parts);
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  if (calendarPopup() && !parts.date) parts.date = day;
  if (!calendarPopup() && !parts.timeOfDay) parts.timeOfDay = moment - day;

  isBlank_ = !value;
  setSpecialValueText(isBlank_ ? QStringLiteral(" ") : QString());  // shown in place of the minimum
  setDisplayFormat(FormatOf(parts));
  setDateTimeRange(QDateTime(QDate(100, 1, 1), QTime(0, 0), Qt::UTC),
                   QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59, 999), Qt::UTC));
  setDateTime(isBlank_ ? minimumDateTime()
                       : QDateTime::fromSecsSinceEpoch(moment.time_since_epoch().count(), Qt::UTC));
  moment_ = dateTime();
}

QString DateTimePicker::FormatOf(const DateTime& value) const {
  QStringList format;
  if (value.date) {
    const bool padded = conventions_.leadingZeros;
    const QString day = padded ? QStringLiteral("dd") : QStringLiteral("d");
    const QString month = padded ? QStringLiteral("MM") : QStringLiteral("M");
    QStringList fields{day, month};
    if (conventions_.dateOrder != DateOrder::DayMonthYear) fields = {month, day};
    const bool yearFirst = conventions_.dateOrder == DateOrder::YearMonthDay;
    fields.insert(yearFirst ? 0 : 2, QStringLiteral("yyyy"));
    format += fields.join(Quoted(conventions_.dateSeparator));
  }
  if (value.timeOfDay) {
    const bool twelveHours = conventions_.twelveHourClock;
    QStringList fields{twelveHours ? QStringLiteral("h") : QStringLiteral("HH"), QStringLiteral("mm")};
    if (value.timeOfDay->count() % 60 != 0) fields += QStringLiteral("ss");
    format += fields.join(Quoted(conventions_.timeSeparator));
    if (twelveHours) format += QStringLiteral("AP");
  }
  return format.join(QLatin1Char(' '));
}

// A blank picker starts at the present, which the key or step at hand then changes.
void DateTimePicker::Begin() {
  Show(PartsOf(CurrentMinute(), calendarPopup() ? DateSections_Mask : TimeSections_Mask));
  setSelectedSection(sectionAt(0));
  Commit();
}

void DateTimePicker::NoteChange() {
  if (dateTime() != moment_) Commit();  // Enter announces the value though it is the same
}

void DateTimePicker::Commit() {
  if (isBlank_) setSpecialValueText({});
  isBlank_ = false;
  moment_ = dateTime();
  text_ = WriteDateTime(PartsOf(moment_, displayedSections()), conventions_);
  emit edited();
}

void DateTimePicker::stepBy(int steps) {
  if (isBlank_) Begin();
  if (!isBlank_) QDateTimeEdit::stepBy(steps);  // unless the change was refused
}

DateTimePicker::StepEnabled DateTimePicker::stepEnabled() const {
  return isBlank_ ? StepUpEnabled | StepDownEnabled : QDateTimeEdit::stepEnabled();
}

void DateTimePicker::keyPressEvent(QKeyEvent* event) {
  if (isBlank_ && event->matches(QKeySequence::Paste))
    lineEdit()->selectAll();  // the blank that stands there
  if (calendarPopup() && AsksForCalendar(*event))
    OpenCalendar();
  else if (Types(*event))
    TypeKey(event);
  else
    QDateTimeEdit::keyPressEvent(event);
}

void DateTimePicker::TypeKey(QKeyEvent* event) {
  const QChar letter = event->text().front();
  const bool isFull = std::exchange(isSectionFull_, false);
  if (IsDigit(letter) && isBlank_) Begin();
  if (isBlank_ || (isFull && IsSeparator(letter))) return;
  if (currentSection() == AmPmSection && letter.isLetter()) {
    ChooseHalfOfDay(letter.toUpper());
    return;
  }
  // QDateTimeEdit refuses to replace the whole text by a digit.
  if (IsDigit(letter) && lineEdit()->selectedText() == text()) setSelectedSection(sectionAt(0));
  const Section section = currentSection();
  QDateTimeEdit::keyPressEvent(event);
  isSectionFull_ = IsDigit(letter) && currentSection() != section;
}

// A full section leads on to the next one; typing the separator as well would skip that one.
bool DateTimePicker::IsSeparator(QChar letter) const {
  return QString::fromStdString(conventions_.dateSeparator + ' ' + conventions_.timeSeparator)
      .contains(letter);
}

// One letter says it: QDateTimeEdit waits for the M and forgets the letter when none comes.
void DateTimePicker::ChooseHalfOfDay(QChar letter) {
  const bool isPm = letter == QLatin1Char('P');
  if (!isPm && letter != QLatin1Char('A')) return;
  constexpr int kHalf = 12;
  setTime(QTime(time().hour() % kHalf + (isPm ? kHalf : 0), time().minute(), time().second()));
  setSelectedSection(AmPmSection);
}

// A section typed in part counts before a shortcut acts: the focus does not leave the field for it.
bool DateTimePicker::event(QEvent* event) {
  const bool isDone = QDateTimeEdit::event(event);
  if (event->type() == QEvent::ShortcutOverride && !event->isAccepted() &&
      IsCommand(*static_cast<QKeyEvent*>(event)))
    interpretText();
  return isDone;
}

void DateTimePicker::mousePressEvent(QMouseEvent* event) {
  QDateTimeEdit::mousePressEvent(event);
  if (!isBlank_ || !calendarPopup() || !calendarWidget()->isVisible()) return;
  const QSignalBlocker blocker(calendarWidget());  // today is offered, not chosen
  calendarWidget()->setSelectedDate(QDate::currentDate());
}

// No key of QDateTimeEdit opens its calendar, only a press on the arrow does.
void DateTimePicker::OpenCalendar() {
  QStyleOptionComboBox option;
  option.initFrom(this);
  option.editable = true;
  const QPointF arrow =
      style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).center();
  QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  mousePressEvent(&press);
}

// An empty field has no sections for Tab to go through; QDateTimeEdit would never let it out.
bool DateTimePicker::focusNextPrevChild(bool next) {
  return isBlank_ ? QAbstractSpinBox::focusNextPrevChild(next) : QDateTimeEdit::focusNextPrevChild(next);
}

}  // namespace pellorin
