// Uses a window as its user does: keys and clicks enter where the windowing system delivers them, so that a
// disabled or covered control gets none. Controls are found by name; several names are separated by blanks.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QKeySequence>
#include <QListWidget>
#include <QScrollArea>
#include <QTest>
#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace pellorin::test {

using Names = std::vector<std::string>;

inline Names Words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

inline std::string Joined(const Names& parts, const std::string& separator) {
  std::string joined;
  for (const std::string& part : parts) joined += (&part == &parts.front() ? "" : separator) + part;
  return joined;
}

class WindowUser {
 public:
  virtual ~WindowUser() = default;

  template <typename Control = QWidget>
  Control& Find(const std::string& name) const {
    auto* control = Used().findChild<Control*>(QString::fromStdString(name));
    if (control == nullptr) throw std::runtime_error("no control " + name);
    return *control;
  }
  std::string Text(const std::string& names) const {  // of any controls that show a text
    Names texts;
    for (const std::string& name : Words(names))
      for (const char* property : {"text", "title", "currentText"})
        if (const QVariant text = Find(name).property(property); text.isValid())
          texts.push_back(text.toString().toStdString());
    if (texts.size() != Words(names).size()) throw std::runtime_error("one shows no text: " + names);
    return Joined(texts, "|");
  }
  bool IsOn(const std::string& name) const { return Find(name).isEnabled(); }
  std::string OnOf(const std::string& names) const {  // which of them are enabled
    return Those(names, [this](const std::string& name) { return IsOn(name); });
  }
  std::string Checked(const std::string& names) const {
    return Those(names, [this](const std::string& name) { return Find<QAbstractButton>(name).isChecked(); });
  }
  static std::string FocusName() {
    const QWidget* focus = QApplication::focusWidget();
    return focus == nullptr ? "none" : focus->objectName().toStdString();
  }
  Names Entries(const std::string& list) const {
    const auto& box = Find<QComboBox>(list);
    Names entries;
    for (int index = 0; index < box.count(); ++index) entries.push_back(box.itemText(index).toStdString());
    return entries;
  }
  std::string Lines(const std::string& list, bool onlySelected = false) const {
    const auto& box = Find<QListWidget>(list);
    Names lines;
    for (int row = 0; row < box.count(); ++row)
      if (!onlySelected || box.item(row)->isSelected()) lines.push_back(box.item(row)->text().toStdString());
    return Joined(lines, "|");
  }

  QPoint PlaceOf(const std::string& name) const {  // where a click on it goes; on the button of an option
    const QWidget& control = Find(name);
    return control.mapTo(&Used(), QPoint(std::min(10, control.width() / 2), control.height() / 2));
  }
  void ClickAt(QPoint place) const { QTest::mouseClick(Used().windowHandle(), Qt::LeftButton, {}, place); }
  void ScrollTo(QWidget& control) const {
    for (QWidget* part = &control; part != nullptr; part = part->parentWidget())
      if (auto* scrolling = qobject_cast<QScrollArea*>(part)) scrolling->ensureWidgetVisible(&control);
  }
  void Click(const std::string& names) const {
    for (const std::string& name : Words(names)) {
      ASSERT_TRUE(Find(name).isVisible()) << name;
      ScrollTo(Find(name));
      ClickAt(PlaceOf(name));
    }
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
    QTest::keyClick(Used().windowHandle(), key, modifiers);
  }
  void Press(const std::string& keys) const {  // "1 Up Ctrl+A"
    for (const std::string& key : Words(keys)) {
      const QKeyCombination combination = QKeySequence(QString::fromStdString(key))[0];
      Press(combination.key(), combination.keyboardModifiers());
    }
  }
  void Type(const std::string& keys) const {
    for (const char key : keys) QTest::keyClick(Used().windowHandle(), key);
  }
  void Replace(const std::string& name, const std::string& keys) const {
    Click(name);
    ASSERT_EQ(FocusName(), name);
    Press("Ctrl+A Del");
    Type(keys);
  }
  void Paste(const std::string& name, const std::string& text) const {  // over all; leaves the order of Tab
    Find(name).setFocus();
    QApplication::clipboard()->setText(QString::fromStdString(text));
    Press("Ctrl+A");
    Press(text.empty() ? "Del" : "Ctrl+V");
  }
  void Choose(const std::string& list, int index) const {  // through the opened list
    auto& box = Find<QComboBox>(list);
    ASSERT_TRUE(box.isVisible() && box.isEnabled()) << list;
    box.setFocus();
    Press(Qt::Key_F4);
    ASSERT_TRUE(box.view()->isVisible());
    QTest::keyClick(box.view(), Qt::Key_Home);
    for (int step = 0; step < index; ++step) QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
  }

 private:
  virtual QWidget& Used() const = 0;

  template <typename Condition>
  static std::string Those(const std::string& names, Condition condition) {
    Names those = Words(names);
    std::erase_if(those, [&](const std::string& name) { return !condition(name); });
    return Joined(those, " ");
  }
};

class DialogUser : public WindowUser {
 public:
  DialogUser(QDialog& dialog) : dialog_(dialog) {}

 private:
  QWidget& Used() const override { return dialog_; }

  QDialog& dialog_;
};

}  // namespace pellorin::test
