#include "ui/controls/DateTimePicker.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "tests/ui/WindowUser.h"
#include "ui/controls/ControlTags.h"

namespace pellorin::test {
namespace {

const LocaleConventions kGerman{.dateOrder = DateOrder::DayMonthYear,
                                .dateSeparator = ".",
                                .twelveHourClock = false,
                                .leadingZeros = true};

enum Kind { kTime, kDate, kGermanTime, kGermanDate };

// A picker with the focus, in a window with one more field.
class DateTimePickerTest : public ::testing::Test, protected WindowUser {
 protected:
  void SetUp() override {
    auto* layout = new QVBoxLayout(&window);
    datePicker->setCalendarPopup(true);
    for (DateTimePicker* each : {timePicker, datePicker}) {
      layout->addWidget(each);
      QObject::connect(each, &DateTimePicker::edited, [this] { ++edits; });
    }
    layout->addWidget(other);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  void Give(Kind kind, const std::string& text) {
    other->setFocus();
    picker = kind == kDate || kind == kGermanDate ? datePicker : timePicker;
    picker->SetLocaleConventions(kind == kTime || kind == kDate ? LocaleConventions() : kGerman);
    picker->SetValueText(text);
    picker->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(edits, 0);
  }
  std::string Shown() const { return picker->text().trimmed().toStdString(); }
  std::string Changed() {
    EXPECT_GT(edits, 0);
    edits = 0;
    return picker->ValueText();
  }
  static std::string Today(int daysLater = 0) {
    return QDate::currentDate().addDays(daysLater).toString(QStringLiteral("M/d/yyyy")).toStdString();
  }

  mutable QWidget window;
  DateTimePicker* timePicker = new DateTimePicker(&window);
  DateTimePicker* datePicker = new DateTimePicker(&window);
  DateTimePicker* picker = datePicker;
  QLineEdit* other = new QLineEdit(&window);
  int edits = 0;

 private:
  QWidget& Used() const override { return window; }
};

TEST_F(DateTimePickerTest, KeepsTheTextToTheLetterUntilItsValueChanges) {
  const struct {
    Kind kind;
    const char *text, *shown;
  } rows[] = {{kTime, "11:59:59 PM", "11:59:59 PM"},
              {kTime, "23:05", "11:05 PM"},
              {kGermanTime, "3:04 PM", "15:04"},
              {kTime, "2026-11-22", "11/22/2026 12:00 AM"},
              {kDate, "2026-11-22", "11/22/2026"},
              {kDate, "2026-11-22T23:05:07", "11/22/2026 11:05:07 PM"},
              {kDate, "23:05", "12/30/1899 11:05 PM"},
              {kDate, "abc", ""},
              {kTime, " ", ""}};
  for (const auto& [kind, text, shown] : rows) {
    Give(kind, text);
    Press("Escape Left Right Return F4 Escape Ctrl+C Tab");
    EXPECT_FALSE(picker->hasFocus()) << text;
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(picker->ValueText(), text);
    EXPECT_EQ(edits, 0) << text;
  }
}

TEST_F(DateTimePickerTest, TakesKeys) {
  const struct {
    Kind kind;
    const char *text, *keys, *changed;
  } rows[] = {{kTime, "11:59:59 PM", "2 3 : 0 5", "11:05 PM"},
              {kTime, "23:05", "1 1 : 4 2 Space a m", "11:42 AM"},
              {kTime, "23:05", "1 4 3 0", "1430"},  // never guessed
              {kTime, "23:05", "3 Space P M", "3:00 PM"},
              {kTime, "23:05", "Up", "12:05 AM"},
              {kTime, "11:59:59 PM", "Home Right Right Right Down", "11:58:59 PM"},
              {kTime, "11:59:59 PM", "End Up", "11:59:59 AM"},
              {kGermanTime, "23:05", "0 8 : 3 0", "08:30"},
              {kDate, "2026-11-22", "Up Up", "1/22/2027"},
              {kDate, "2026-11-22", "2 0 2 7 - 0 3 - 0 5", "3/5/2027"},
              {kDate, "2026-11-22", "2 / 3 0 / 2 0 2 7", "2/30/2027"},
              {kDate, "2026-11-20", "1 1 / 2 2 / 2 0 2 6", "11/22/2026"},  // 11/22/20 on the way
              {kGermanDate, "2026-11-22", "3 1 . 1 2 . 3 0 Up", "31.12.2031"},
              {kDate, "2026-11-22", "Delete", ""},
              {kGermanDate, "2026-01-31", "Home Right Right Right Up", "28.02.2026"},
              {kGermanDate, "2026-11-22 23:05", "PgDown", "12.11.2026 23:05"},
              {kDate, "9999-11-30", "PgUp Home Up", "12/30/9999"},
              {kDate, "2026-11-22", "F4 Right Down Return", "11/30/2026"},
              {kDate, "2026-11-22 23:05", "Alt+Down Left Return", "11/21/2026 11:05 PM"}};
  for (const auto& [kind, text, keys, changed] : rows) {
    Give(kind, text);
    Press(keys);
    EXPECT_EQ(Changed(), changed) << keys;
    Press("Tab");
    EXPECT_EQ(Shown(), changed) << keys;
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  }
  Give(kDate, "1/5/30");
  Press("1 / 5 / 3 0");
  EXPECT_EQ(Changed(), "1/5/2030");
  EXPECT_EQ(Shown(), "1/5/30") << "typing must be able to go on";
  Press("Return");
  EXPECT_EQ(Shown(), "1/5/2030");
  Give(kTime, "23:05");
  Press("1 1 : 0 5 Space P M Tab");  // the same moment
  EXPECT_EQ(Changed(), "23:05");
  EXPECT_EQ(Shown(), "11:05 PM");
}

TEST_F(DateTimePickerTest, StartsAtThePresentWhenBlank) {
  for (const char* text : {"abc", ""}) {
    for (const auto& [keys, changed] : {std::pair("F4 Return", Today()), {"F4 Right Return", Today(1)}}) {
      Give(kDate, text);
      Press(keys);
      EXPECT_EQ(Changed(), changed) << keys;
    }
    Give(kTime, text);
    Press("Down");
    EXPECT_TRUE(IsDate(Changed(), LocaleConventions()));
  }
}

TEST_F(DateTimePickerTest, IsSwitchedOffAndEmptiedByItsTag) {
  picker->setProperty("tag", QStringLiteral("Field@Sql"));
  Give(kDate, "2026-11-22");
  const ControlTags tags(window);
  tags.ToggleSection("Sql", false);
  EXPECT_EQ(picker->palette().color(QPalette::Base), other->palette().color(QPalette::Button));
  for (const QPoint place : {QPoint(10, 10), QPoint(picker->width() - 5, 10)})
    ClickAt(picker->mapTo(&window, place));
  for (const Qt::Key key : {Qt::Key_F4, Qt::Key_Up, Qt::Key_1}) QTest::keyClick(picker, key);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(picker->ValueText(), "2026-11-22");
  tags.StartBrandNew("Sql");
  EXPECT_EQ(picker->ValueText(), "");
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(edits, 0);
}

}  // namespace
}  // namespace pellorin::test
