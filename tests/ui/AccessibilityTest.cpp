// What a screen reader finds on each page and dialog. Whether it announces a notification cannot be tested
// offscreen.
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>

#include "tests/ui/WindowFixture.h"

namespace pellorin::test {
namespace {

class Accessibility : public WindowFixture {
 protected:
  // Every part of the tree that can be seen.
  static void Walk(QAccessibleInterface* part, const std::function<void(QAccessibleInterface&)>& visit) {
    if (part == nullptr || part->state().invisible) return;
    visit(*part);
    for (int index = 0; index < part->childCount(); ++index) Walk(part->child(index), visit);
  }

  // Each control that takes the focus has a name, and the name holds what a sighted user reads beside it or
  // on it.
  static void ExpectNames(QWidget& window) {
    int controls = 0;
    Walk(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface& part) {
      const auto* control = qobject_cast<QWidget*>(part.object());
      if (control == nullptr || !part.state().focusable) return;
      ++controls;
      // The name of a list is its value on this system; what it is comes from its label.
      const bool isList = qobject_cast<const QComboBox*>(control) != nullptr;
      const QString name = isList ? control->accessibleName() : part.text(QAccessible::Name);
      EXPECT_FALSE(name.isEmpty()) << control->objectName().toStdString() << " has no name";
      QString read = control->property("text").toString().remove(QLatin1Char('&'));
      if (qobject_cast<const QAbstractButton*>(control) == nullptr) read.clear();
      for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->buddy() == control) read = label->text();
      EXPECT_TRUE(name.contains(read, Qt::CaseInsensitive))
          << name.toStdString() << " is the name of " << read.toStdString();
    });
    EXPECT_GT(controls, 3);
    for (const QFrame* group :
         window.findChildren<QFrame*>(QRegularExpression(QStringLiteral("^(fra|Frame)"))))
      EXPECT_FALSE(group->accessibleName().isEmpty()) << group->objectName().toStdString() << " has no name";
  }
};

TEST_F(Accessibility, EveryControlIsNamedAsItIsLabelled) {
  WriteQueue("Q1", kDailyQueue);
  ASSERT_TRUE(Start(kUsual));
  const auto expectNamesInDialog = [this](const std::string& button) {
    InDialog([](QDialog& dialog) {
      ExpectNames(dialog);
      dialog.reject();
    });
    Click(button);
  };
  for (const int tab : {0, 1, 2}) {
    ClickTab(tab);
    SCOPED_TRACE(Page());
    ExpectNames(*window);
    if (tab == 1) expectNamesInDialog("btnConfigure");
    if (tab == 2) Click("optQueueFilter");
    if (tab == 2) expectNamesInDialog("btnAddQueueFilter");
  }
}

TEST_F(Accessibility, NoticesAreNotifications) {
  WriteQueue("Q1", kDailyQueue);
  ASSERT_TRUE(Start(kUsual));
  for (const char* name : {"lblSqlNotice", "lblScheduleSummary"}) {
    QAccessibleInterface* notice = QAccessible::queryAccessibleInterface(&Find(name));
    EXPECT_EQ(notice->role(), QAccessible::Notification) << name;
    EXPECT_EQ(notice->text(QAccessible::Name).toStdString(), Text(name));
  }
}

}  // namespace
}  // namespace pellorin::test
