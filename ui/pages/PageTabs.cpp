#include "ui/pages/PageTabs.h"

#include <QShortcut>
#include <QStyle>
#include <QTabBar>
#include <utility>

#include "ui/controls/StackedGroups.h"

namespace pellorin {
namespace {

// One per line, as many as fit into a tip.
std::string UnusableQueues(const Ini& document) {
  constexpr std::size_t kMostNames = 12;
  std::string names;
  std::size_t count = 0;
  for (const auto& section : document.Sections())
    if (!section->QueueProblem().empty() && !section->IsDeleted() && ++count <= kMostNames)
      names += "\r\n" + section->Name;
  return count > kMostNames ? names + "\r\nand " + std::to_string(count - kMostNames) + " more" : names;
}

}  // namespace

void PageTabs::Add(QWidget& page, const std::string& caption, std::string_view kind, const std::string& tip) {
  auto* scrolling = new ScrollingPart;
  scrolling->setWidget(&page);
  page.setAutoFillBackground(false);  // the tab's own colour shows
  if (auto* groups = page.findChild<QGridLayout*>(QStringLiteral("groupsLayout")))
    StackGroupsWhenNarrow(*scrolling, *groups);
  const int index = tabs_.addTab(scrolling, QString::fromStdString(caption));
  tabs_.tabBar()->setTabData(index, QString::fromStdString(std::string(kind)));
  tabs_.setTabToolTip(index, QString::fromStdString(tip));
}

void PageTabs::ChooseByKeys(QWidget& window) {
  const auto onKeys = [&window](QKeyCombination keys, auto act) {
    QObject::connect(new QShortcut(keys, &window), &QShortcut::activated, &window, act);
  };
  for (int index = 0; index < tabs_.count(); ++index)
    onKeys(Qt::ALT | Qt::Key(Qt::Key_1 + index), [this, index] { tabs_.setCurrentIndex(index); });
  onKeys(Qt::CTRL | Qt::Key_Tab, [this] { Step(1); });
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab})  // systems differ in what Shift makes of Tab
    onKeys(Qt::CTRL | Qt::SHIFT | key, [this] { Step(-1); });
}

void PageTabs::Step(int by) {
  tabs_.setCurrentIndex((tabs_.currentIndex() + by + tabs_.count()) % tabs_.count());
}

void PageTabs::Mark(const QWidget& page, bool hasNotice) {
  const int index = IndexOf(page);
  if (!hasNotice) {
    tabs_.setTabIcon(index, QIcon());
  } else {  // looking it up costs a sixth of the start
    const int line = tabs_.fontMetrics().height();
    tabs_.setIconSize({line, line});  // the tabs must not grow by it
    tabs_.setTabIcon(index, tabs_.style()->standardIcon(QStyle::SP_MessageBoxWarning));
  }
}

void PageTabs::MarkUnusableQueues(const QWidget& page, const Ini* document) {
  const std::string names = document == nullptr ? std::string() : UnusableQueues(*document);
  if (names == unusableQueues_) return;  // marking a tab lays out the window anew
  Mark(page, !names.empty());
  const int index = IndexOf(page);
  const QString notice = QString::fromStdString("\r\nThese queues cannot be used:" + names);
  const QString usualTip = tabs_.tabToolTip(index).section(QStringLiteral("\r\n"), 0, 0);
  const QString tip = names.empty() ? usualTip : usualTip + notice;
  tabs_.setTabToolTip(index, tip);
  tabs_.tabBar()->setAccessibleTabName(
      index, names.empty() ? QString() : tabs_.tabText(index) + QStringLiteral(". ") + tip);
  unusableQueues_ = names;
}

int PageTabs::IndexOf(const QWidget& page) const {
  int index = 0;
  while (!tabs_.widget(index)->isAncestorOf(&page)) ++index;
  return index;
}

void PageTabs::Show(const QWidget& page) {
  tabs_.setCurrentIndex(IndexOf(page));
}

void PageTabs::MakeVisible(const std::string& caption) {
  for (int index = 0; index < tabs_.count(); ++index)
    if (tabs_.tabText(index).toStdString() == caption) tabs_.setCurrentIndex(index);
}

std::string PageTabs::VisibleCaption() const {
  return tabs_.tabText(tabs_.currentIndex()).toStdString();
}

}  // namespace pellorin
