#include "ui/DateTimePicker.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QKeySequence>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include "ui/ControlTags.h"

using namespace pellorin;

namespace {

const LocaleConventions kAmerican;

LocaleConventions German() {
  LocaleConventions german;
  german.dateOrder = DateOrder::DayMonthYear;
  german.dateSeparator = ".";
  german.leadingZeros = true;
  german.twelveHourClock = false;
  return german;
}

enum Kind { kTime, kDate };

// A picker with the focus, in a window with one more field.
class DateTimePickerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(picker);
    layout->addWidget(other);
    QObject::connect(picker, &DateTimePicker::edited, [this] { ++edits; });
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  void Give(Kind kind, const std::string& text, const LocaleConventions& locale = kAmerican) {
    other->setFocus();
    picker->setCalendarPopup(kind == kDate);
    picker->SetLocaleConventions(locale);
    picker->SetValueText(text);
    picker->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(edits, 0);
  }
  void Press(const char* keys) const {  // "1 Up Ctrl+A", separated by blanks
    for (const QString& key : QString::fromLatin1(keys).split(QLatin1Char(' '))) {
      const QKeyCombination combination = QKeySequence(key)[0];
      QTest::keyClick(window.windowHandle(), combination.key(), combination.keyboardModifiers());
    }
  }
  std::string Shown() const { return picker->text().trimmed().toStdString(); }
  // The text kept, which after a change must be what is shown; only seconds that are zero are shown alone.
  std::string Changed(const LocaleConventions& locale = kAmerican) {
    EXPECT_EQ(ReadDateTime(picker->ValueText(), locale), ReadDateTime(Shown(), locale)) << Shown();
    EXPECT_GT(edits, 0);
    edits = 0;
    return picker->ValueText();
  }
  static std::string Today(int daysLater = 0) {
    return QDate::currentDate().addDays(daysLater).toString(QStringLiteral("M/d/yyyy")).toStdString();
  }

  QWidget window;
  DateTimePicker* picker = new DateTimePicker(&window);
  QLineEdit* other = new QLineEdit(&window);
  int edits = 0;
};

}  // namespace

TEST_F(DateTimePickerTest, KeepsTheTextToTheLetterUntilItsValueChanges) {
  const struct {
    Kind kind;
    LocaleConventions locale;
    const char *text, *shown;
  } rows[] = {{kTime, kAmerican, "11:59:59 PM", "11:59:59 PM"},
              {kTime, kAmerican, "23:05", "11:05 PM"},
              {kTime, German(), "3:04 PM", "15:04"},
              {kTime, kAmerican, "2026-11-22", "11/22/2026 12:00 AM"},
              {kDate, kAmerican, "2026-11-22", "11/22/2026"},
              {kDate, German(), "Nov 2, 2026", "02.11.2026"},
              {kDate, kAmerican, "0100-01-01", "1/1/0100"},
              {kDate, kAmerican, "2026-11-22T23:05:07", "11/22/2026 11:05:07 PM"},
              {kDate, kAmerican, "23:05", "12/30/1899 11:05 PM"},
              {kDate, kAmerican, "abc", ""},
              {kTime, kAmerican, " ", ""},
              {kDate, kAmerican, "", ""}};
  for (const auto& [kind, locale, text, shown] : rows) {
    Give(kind, text, locale);
    for (const char* keys : {"Escape Left Right Return X", "F4 Escape", "Ctrl+A Delete"}) {
      Press(keys);
      EXPECT_EQ(Shown(), shown) << text;
    }
    for (int tabs = 0; tabs < 8 && picker->hasFocus(); ++tabs) Press("Tab");
    EXPECT_FALSE(picker->hasFocus()) << text;
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(picker->ValueText(), text);
    EXPECT_EQ(edits, 0) << text;
  }
}

TEST_F(DateTimePickerTest, TakesKeys) {
  const struct {
    Kind kind;
    LocaleConventions locale;
    const char *text, *keys, *changed;
  } rows[] = {{kTime, kAmerican, "23:05", "7", "7:05 PM"},
              {kTime, kAmerican, "23:05", "Tab 4 Ctrl+S", "11:04 PM"},  // counts before the shortcut acts
              {kTime, kAmerican, "23:05", "1 1 : 4 2 A M", "11:42 AM"},
              {kTime, kAmerican, "11:59:59 PM", "Tab Tab Down", "11:59:58 PM"},
              {kTime, kAmerican, "11:59:59 PM", "Tab Tab 0 0", "11:59 PM"},
              {kTime, German(), "23:05", "0 8 3 0", "08:30"},
              {kDate, kAmerican, "2026-11-22", "Up", "12/22/2026"},
              {kDate, kAmerican, "2026-11-22", "1 2 2 4 2 0 2 7", "12/24/2027"},
              {kDate, kAmerican, "2026-11-22", "Ctrl+A Delete 5 / 6 / 2 0 2 7 Tab", "5/6/2027"},
              {kDate, German(), "2026-01-31", "Tab Up", "28.02.2026"},
              {kDate, German(), "2026-11-22 23:05", "PgDown", "12.11.2026 23:05"},
              {kDate, kAmerican, "2026-11-22", "F4 Right Down Return", "11/30/2026"},
              {kDate, kAmerican, "2026-11-22 23:05", "Alt+Down Left Escape", "11/21/2026 11:05 PM"}};
  for (const auto& [kind, locale, text, keys, changed] : rows) {
    Give(kind, text, locale);
    Press(keys);
    EXPECT_EQ(Changed(locale), changed) << keys;
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  }
}

TEST_F(DateTimePickerTest, StartsAtThePresentWhenBlank) {
  const std::string year = std::to_string(QDate::currentDate().year());
  QApplication::clipboard()->setText(QStringLiteral("12/24/2027"));
  for (const char* text : {"abc", ""}) {
    const std::pair<const char*, std::string> rows[] = {{"F4 Return", Today()},
                                                        {"F4 Right Return", Today(1)},
                                                        {"1 Tab 1", "1/1/" + year},
                                                        {"7 / 4 / 2 0 2 7", "7/4/2027"},
                                                        {"Ctrl+V", "12/24/2027"}};
    for (const auto& [keys, changed] : rows) {
      Give(kDate, text);
      Press(keys);
      EXPECT_EQ(Changed(), changed) << keys;
    }
    for (const char* step : {"Up", "Down", "PgUp", "PgDown"}) {
      Give(kTime, text);
      Press(step);
      Changed();
    }
    Give(kTime, text);
    Press("7 0 9 P");
    EXPECT_EQ(Changed(), "7:09 PM");
  }
}

TEST_F(DateTimePickerTest, IsSwitchedOffAndEmptiedByItsTag) {
  picker->setProperty("tag", QStringLiteral("Field@Sql"));
  Give(kDate, "2026-11-22");
  const ControlTags tags(window);
  tags.ToggleSection("Sql", false);
  EXPECT_EQ(picker->palette().color(QPalette::Base), other->palette().color(QPalette::Button));
  for (const QPoint place : {QPoint(10, 10), QPoint(picker->width() - 5, 10)})
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, picker->mapTo(&window, place));
  for (const Qt::Key key : {Qt::Key_F4, Qt::Key_Up, Qt::Key_1}) QTest::keyClick(picker, key);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(picker->ValueText(), "2026-11-22");
  tags.StartBrandNew("Sql");
  EXPECT_EQ(picker->ValueText() + Shown(), "");
  EXPECT_EQ(edits, 0);
}
