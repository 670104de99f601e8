#include "tests/ui/WindowFixture.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <iterator>
#include <sstream>

namespace pellorin::test {

Names Words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

WindowFixture::WindowFixture() {
  folder.Write("Service/QUEUEDefinitions/defaultQUEUE.xml", kQueueXml);
}

WindowFixture::~WindowFixture() = default;

void WindowFixture::TearDown() {
  messages.ExpectNoMore();
}

bool WindowFixture::Start(const std::string& ini, const std::string& commandLine) {
  if (!ini.empty()) WriteIni(ini);
  window = std::make_unique<frmMain>(
      Components{files, messages, *this, *this, *this, program, LocaleConventions()});
  if (!window->Form_Load(commandLine)) return false;
  window->activateWindow();
  return QTest::qWaitForWindowActive(window.get());
}

void WindowFixture::RegisterSource(const std::string& messageFile, const std::string& reserved,
                                   const std::string& path, const std::string& source,
                                   const std::string& logName) {
  log.push_back(messageFile + "|" + reserved + "|" + path + "|" + source + "|" + logName);
  if (onRegister) onRegister();
}

void WindowFixture::ShowTopic(QWidget& owner, const std::string& file, const std::string& topic) {
  EXPECT_EQ(&owner, window.get());
  log.push_back(file + "|" + topic);
  if (onHelp) onHelp();
}

std::string WindowFixture::Stored(const std::string& section, const std::string& key) const {
  Ini document(SystemFiles(), program, LocaleConventions());
  document.Load("Pellorin.ini");
  const Section* found = document.GetSection(section);
  return found == nullptr ? "no section " + section : found->GetValue(key);
}

std::string WindowFixture::Text(const std::string& name) const {
  QWidget& control = Find(name);
  if (const auto* text = qobject_cast<QLineEdit*>(&control)) return text->text().toStdString();
  if (const auto* list = qobject_cast<QComboBox*>(&control)) return list->currentText().toStdString();
  if (const auto* button = qobject_cast<QAbstractButton*>(&control)) return button->text().toStdString();
  if (const auto* label = qobject_cast<QLabel*>(&control)) return label->text().toStdString();
  throw std::runtime_error(name + " shows no text");
}

std::string WindowFixture::Texts(const std::string& names) const {
  std::string texts;
  for (const std::string& name : Words(names)) texts += (name == Words(names)[0] ? "" : "|") + Text(name);
  return texts;
}

std::string WindowFixture::OnOf(const std::string& names) const {
  std::string on;
  for (const std::string& name : Words(names))
    if (IsOn(name)) on += (on.empty() ? "" : " ") + name;
  return on;
}

std::string WindowFixture::FocusName() const {
  const QWidget* focus = QApplication::focusWidget();
  return focus == nullptr ? "none" : focus->objectName().toStdString();
}

std::string WindowFixture::Page() const {
  const auto& tabs = Find<QTabWidget>("tabMain");
  return tabs.tabText(tabs.currentIndex()).toStdString();
}

Names WindowFixture::Entries(const std::string& list) const {
  const auto& box = Find<QComboBox>(list);
  Names entries;
  for (int index = 0; index < box.count(); ++index) entries.push_back(box.itemText(index).toStdString());
  return entries;
}

void WindowFixture::Click(const std::string& name) const {
  const QWidget& control = Find(name);
  ASSERT_TRUE(control.isVisible()) << name;
  const QPoint place(std::min(10, control.width() / 2), control.height() / 2);  // options: on the button
  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, control.mapTo(window.get(), place));
}

void WindowFixture::ClickTab(int index) const {
  const QTabBar& bar = *Find<QTabWidget>("tabMain").tabBar();
  QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                    bar.mapTo(window.get(), bar.tabRect(index).center()));
}

void WindowFixture::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
  QTest::keyClick(window->windowHandle(), key, modifiers);
}

void WindowFixture::Type(const std::string& keys) const {
  for (const char key : keys) QTest::keyClick(window->windowHandle(), key);
}

void WindowFixture::Replace(const std::string& name, const std::string& keys) const {
  Click(name);
  ASSERT_EQ(FocusName(), name);
  Press(Qt::Key_A, Qt::ControlModifier);
  Press(Qt::Key_Delete);
  Type(keys);
}

void WindowFixture::Paste(const std::string& name, const std::string& text) const {
  QApplication::clipboard()->setText(QString::fromStdString(text));
  Click(name);
  Press(Qt::Key_A, Qt::ControlModifier);
  Press(Qt::Key_V, Qt::ControlModifier);
}

void WindowFixture::Choose(const std::string& list, int index) const {
  auto& box = Find<QComboBox>(list);
  ASSERT_TRUE(box.isVisible() && box.isEnabled()) << list;
  box.setFocus();
  Press(Qt::Key_F4);
  ASSERT_TRUE(box.view()->isVisible());
  QTest::keyClick(box.view(), Qt::Key_Home);
  for (int step = 0; step < index; ++step) QTest::keyClick(box.view(), Qt::Key_Down);
  QTest::keyClick(box.view(), Qt::Key_Return);
}

void WindowFixture::SaveSuccessfully() {
  messages.WillShow(kSaved);
  Click("btnSave");
  EXPECT_FALSE(IsModified());
}

void WindowFixture::Add(const std::string& name) {
  messages.WillAsk("New Mail Server", "Please enter the name of the new mail server", name);
  Click("btnAddNewMailServer");
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t position = text.find(from);
  if (position == std::string::npos) throw std::runtime_error("not there: " + from);
  return text.replace(position, from.size(), to);
}

}  // namespace pellorin::test
