#include "ui/controls/DateTimePicker.h"

#include <QAction>
#include <QDateTime>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QStyleOptionSpinBox>
#include <QTextCharFormat>
#include <algorithm>
#include <vector>

#include "config/DateTimeWriting.h"
#include "ui/controls/QtDates.h"

namespace pellorin {
namespace {

using std::chrono::days;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::year_month_day;

// The parts that a step can change: first those of a date, then those of a time.
enum class Part { Day, Month, Year, Hour, Minute, Second, HalfOfDay };

std::vector<Part> PartsShown(const DateTime& value, const LocaleConventions& locale) {
  std::vector<Part> parts;
  if (value.date && locale.dateOrder == DateOrder::MonthDayYear) parts = {Part::Month, Part::Day, Part::Year};
  if (value.date && locale.dateOrder == DateOrder::DayMonthYear) parts = {Part::Day, Part::Month, Part::Year};
  if (value.date && locale.dateOrder == DateOrder::YearMonthDay) parts = {Part::Year, Part::Month, Part::Day};
  if (!value.timeOfDay) return parts;
  parts.insert(parts.end(), {Part::Hour, Part::Minute});
  if (value.timeOfDay->count() % 60 != 0) parts.push_back(Part::Second);
  if (locale.twelveHourClock) parts.push_back(Part::HalfOfDay);
  return parts;
}

// The index of the run of letters or digits that the cursor is in or just after.
std::size_t RunAt(const QString& text, int cursor) {
  std::size_t runs = 0;
  for (int i = 0; i < cursor && i < text.size(); ++i)
    if (!text[i].isLetterOrNumber() && i > 0 && text[i - 1].isLetterOrNumber()) ++runs;
  return runs;
}

// The start and the length of that run.
std::pair<int, int> PlaceOfRun(const QString& text, std::size_t run) {
  int start = 0;
  while (start < text.size() && (RunAt(text, start) < run || !text[start].isLetterOrNumber())) ++start;
  int end = start;
  while (end < text.size() && text[end].isLetterOrNumber()) ++end;
  return {start, end - start};
}

year_month_day Stepped(const year_month_day& date, Part part, int steps) {
  if (part == Part::Day) return sys_days(date) + days(steps);
  auto month = date.year() / date.month();
  month += part == Part::Month ? std::chrono::months(steps) : std::chrono::months(12 * steps);
  const auto last = (month / std::chrono::last).day();
  return month / std::min(date.day(), last);
}

seconds Stepped(seconds time, Part part, int steps) {
  constexpr seconds kDay = std::chrono::hours(24);
  seconds step = std::chrono::hours(1);
  if (part == Part::Minute) step = std::chrono::minutes(1);
  if (part == Part::Second) step = seconds(1);
  if (part == Part::HalfOfDay) step = std::chrono::hours(12);
  return ((time + steps * step) % kDay + kDay) % kDay;
}

bool IsYearWritable(const year_month_day& date) {
  return date.year() >= std::chrono::year(100) && date.year() <= std::chrono::year(9999);
}

QIcon ArrowIcon(const QPalette& palette) {
  constexpr int kSize = 16;
  QIcon icon;
  for (const auto& [mode, group] :
       {std::pair(QIcon::Normal, QPalette::Active), {QIcon::Disabled, QPalette::Disabled}}) {
    QPixmap picture(kSize, kSize);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(group, QPalette::ButtonText));
    painter.drawPolygon(QPolygonF({QPointF(4, 6), QPointF(12, 6), QPointF(8, 10.5)}));
    icon.addPixmap(picture, mode);
  }
  return icon;
}

bool AsksForCalendar(const QKeyEvent& key) {
  const auto modifiers = key.modifiers() & ~Qt::KeypadModifier;
  return (key.key() == Qt::Key_F4 && modifiers == Qt::NoModifier) ||
         (key.key() == Qt::Key_Down && modifiers == Qt::AltModifier);
}

}  // namespace

DateTimePicker::DateTimePicker(QWidget* parent) : QAbstractSpinBox(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(lineEdit(), &QLineEdit::textEdited, this,
          [this](const QString& typed) { NoteTyped(typed.toStdString()); });
}

void DateTimePicker::setCalendarPopup(bool wanted) {
  if (!wanted || hasCalendar_) return;
  hasCalendar_ = true;
  setButtonSymbols(NoButtons);
  QAction* open = lineEdit()->addAction(ArrowIcon(palette()), QLineEdit::TrailingPosition);
  open->setText(QStringLiteral("Open the calendar"));
  connect(open, &QAction::triggered, this, [this] { OpenCalendar(); });
}

std::optional<DateTime> DateTimePicker::Read(const std::string& text) const {
  return WithOwnPart(ReadDateTime(text, conventions_));
}

std::optional<DateTime> DateTimePicker::ReadTyped(const std::string& text) const {
  return WithOwnPart(ReadTypedDateTime(text, conventions_, DayOf(QDate::currentDate()).year()));
}

// A text may lack the date of a date picker, or the time of a time picker.
std::optional<DateTime> DateTimePicker::WithOwnPart(std::optional<DateTime> value) const {
  if (!value) return value;
  const auto moment = MomentOf(*value);
  const auto day = std::chrono::floor<days>(moment);
  if (calendarPopup() && !value->date) value->date = day;
  if (!calendarPopup() && !value->timeOfDay) value->timeOfDay = moment - day;
  return value;
}

DateTime DateTimePicker::Present() const {
  const QDateTime now = QDateTime::currentDateTime();
  if (!calendarPopup())
    return {std::nullopt, std::chrono::minutes(now.time().hour() * 60 + now.time().minute())};
  return {DayOf(now.date()), std::nullopt};
}

void DateTimePicker::SetValueText(const std::string& text) {
  given_ = text_ = text;
  ShowValue();
}

void DateTimePicker::ShowValue() {
  const auto value = Read(text_);
  lineEdit()->setText(value ? QString::fromStdString(WriteDateTime(*value, conventions_)) : QString());
  lineEdit()->setCursorPosition(0);  // a step changes the first part, unless the user moves to another
}

void DateTimePicker::NoteTyped(const std::string& typed) {
  const auto value = ReadTyped(typed);
  const bool isGiven = value && value == Read(given_);
  text_ = isGiven ? given_ : value ? WriteDateTime(*value, conventions_) : typed;
  emit edited();
}

void DateTimePicker::Take(const DateTime& value) {
  text_ = WriteDateTime(value, conventions_);
  ShowValue();
  emit edited();
}

void DateTimePicker::stepBy(int steps) {
  const auto shown = ReadTyped(lineEdit()->text().toStdString());
  DateTime value = shown.value_or(Present());
  const auto parts = PartsShown(value, conventions_);
  const bool isAllSelected = lineEdit()->selectedText() == lineEdit()->text();
  const std::size_t atCursor = isAllSelected ? 0 : RunAt(lineEdit()->text(), lineEdit()->cursorPosition());
  const std::size_t run = std::min(atCursor, parts.size() - 1);
  const Part part = shown ? parts[run] : parts.front();
  if (part >= Part::Hour)
    value.timeOfDay = Stepped(*value.timeOfDay, part, steps);
  else if (const auto date = Stepped(*value.date, part, steps); IsYearWritable(date))
    value.date = date;
  Take(value);
  const auto [start, length] = PlaceOfRun(lineEdit()->text(), shown ? run : 0);
  lineEdit()->setSelection(start, length);
}

void DateTimePicker::keyPressEvent(QKeyEvent* event) {
  if (calendarPopup() && AsksForCalendar(*event))
    OpenCalendar();
  else
    QAbstractSpinBox::keyPressEvent(event);
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return;
  ShowTyped();
  selectAll();
}

void DateTimePicker::focusOutEvent(QFocusEvent* event) {
  QAbstractSpinBox::focusOutEvent(event);
  ShowTyped();
}

// Shows the value as the locale writes it. A text that cannot be read stays visible.
void DateTimePicker::ShowTyped() {
  if (Read(text_)) ShowValue();
}

QSize DateTimePicker::sizeHint() const {
  QStyleOptionSpinBox option;
  initStyleOption(&option);
  constexpr int kRoom = 30;  // for the cursor, the margins, and the buttons or the arrow
  const QString longest = calendarPopup() ? QStringLiteral("12/22/2026") : QStringLiteral("12:59:59 PM");
  const QSize content(fontMetrics().horizontalAdvance(longest) + kRoom, lineEdit()->sizeHint().height());
  return style()->sizeFromContents(QStyle::CT_SpinBox, &option, content, this);
}

QCalendarWidget& DateTimePicker::Calendar() {
  if (calendar_ != nullptr) return *calendar_;
  calendar_ = new QCalendarWidget(this);
  calendar_->setWindowFlag(Qt::Popup);
  calendar_->setLocale(QLocale::c());  // English names, but the week of the user's country
  calendar_->setFirstDayOfWeek(QLocale::system().firstDayOfWeek());
  QTextCharFormat likeOtherDays;  // Qt's red is hard to read on a dark palette
  likeOtherDays.setForeground(palette().text());
  for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
    calendar_->setWeekdayTextFormat(day, likeOtherDays);
  calendar_->hide();
  for (const auto chosen : {&QCalendarWidget::clicked, &QCalendarWidget::activated})
    connect(calendar_, chosen, this, [this](const QDate& day) { TakeDay(day); });
  return *calendar_;
}

void DateTimePicker::OpenCalendar() {
  const auto value = Read(text_);
  const year_month_day day = value ? *value->date : *Present().date;
  QCalendarWidget& calendar = Calendar();
  calendar.setSelectedDate(QtDayOf(day));
  const QRect room = screen()->availableGeometry();
  QRect place(mapToGlobal(QPoint(0, height())), calendar.sizeHint());
  if (place.bottom() > room.bottom()) place.moveBottom(mapToGlobal(QPoint()).y() - 1);
  if (place.right() > room.right()) place.moveRight(room.right());
  calendar.move(place.topLeft());
  calendar.show();
  calendar.setFocus();
}

void DateTimePicker::TakeDay(const QDate& day) {
  if (!calendar_->isVisible()) return;  // a click also activates on some systems
  calendar_->hide();
  DateTime value = Read(text_).value_or(DateTime());
  value.date = DayOf(day);
  Take(value);
}

}  // namespace pellorin
