#include "ui/help/HelpWindow.h"

#include <QDesktopServices>
#include <QDialog>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace pellorin {
namespace {

constexpr int kAddressRole = Qt::UserRole;

// The item of the address; failing that, the first one of its topic.
QTreeWidgetItem* ItemOf(const QTreeWidget& contents, const QUrl& address) {
  QTreeWidgetItem* sameTopic = nullptr;
  for (QTreeWidgetItemIterator item(const_cast<QTreeWidget*>(&contents)); *item != nullptr; ++item) {
    const QUrl target = (*item)->data(0, kAddressRole).toUrl();
    if (target == address) return *item;
    if (sameTopic == nullptr && target.matches(address, QUrl::RemoveFragment)) sameTopic = *item;
  }
  return sameTopic;
}

}  // namespace

QVariant HelpBrowser::loadResource(int /*type*/, const QUrl& address) {
  const auto bytes = library_.Read(address);
  return bytes ? QVariant(*bytes) : QVariant();
}

HelpWindow::HelpWindow()
    : tools_(new QToolBar),
      search_(new QLineEdit),
      contents_(new QTreeWidget),
      browser_(new HelpBrowser(library_)),
      outcome_(new QLabel) {
  setObjectName(QStringLiteral("frmHelp"));
  setWindowFlag(Qt::Window);
  contents_->setObjectName(QStringLiteral("treeContents"));
  contents_->setAccessibleName(QStringLiteral("Contents"));
  contents_->setHeaderHidden(true);
  browser_->setObjectName(QStringLiteral("txtTopic"));
  browser_->setAccessibleName(QStringLiteral("Topic"));
  browser_->setOpenLinks(false);
  outcome_->setObjectName(QStringLiteral("lblOutcome"));
  outcome_->setTextFormat(Qt::PlainText);
  BuildToolBar();

  auto* halves = new QSplitter;
  halves->addWidget(contents_);
  halves->addWidget(browser_);
  halves->setStretchFactor(1, 1);
  const int letter = fontMetrics().averageCharWidth();
  halves->setSizes({32 * letter, 88 * letter});
  auto* column = new QVBoxLayout(this);
  column->addWidget(tools_);
  column->addWidget(halves, 1);
  column->addWidget(outcome_);
  resize(QSize(124 * letter, 45 * fontMetrics().height()).boundedTo(screen()->availableSize() * 9 / 10));

  connect(contents_, &QTreeWidget::itemActivated, this,
          [this](QTreeWidgetItem* item) { Go(item->data(0, kAddressRole).toUrl()); });
  connect(contents_, &QTreeWidget::itemClicked, this,
          [this](QTreeWidgetItem* item) { Go(item->data(0, kAddressRole).toUrl()); });
  connect(browser_, &QTextBrowser::anchorClicked, this, &HelpWindow::FollowLink);
  connect(browser_, &QTextBrowser::sourceChanged, this, &HelpWindow::ShowContents);
}

QAction* HelpWindow::AddAction(const QString& text, const QKeySequence& keys) {
  QAction* action = tools_->addAction(text);
  action->setShortcut(keys);
  action->setToolTip(text + QStringLiteral(" (") + keys.toString(QKeySequence::NativeText) +
                     QLatin1Char(')'));
  return action;
}

void HelpWindow::BuildToolBar() {
  QAction* back = AddAction(QStringLiteral("Back"), QKeySequence(Qt::ALT | Qt::Key_Left));
  QAction* forward = AddAction(QStringLiteral("Forward"), QKeySequence(Qt::ALT | Qt::Key_Right));
  tools_->addSeparator();
  QAction* larger = AddAction(QStringLiteral("Larger"), QKeySequence(Qt::CTRL | Qt::Key_Plus));
  QAction* smaller = AddAction(QStringLiteral("Smaller"), QKeySequence(Qt::CTRL | Qt::Key_Minus));
  tools_->addSeparator();
  search_->setObjectName(QStringLiteral("txtSearch"));
  search_->setAccessibleName(QStringLiteral("Search"));
  search_->setPlaceholderText(QStringLiteral("Search (Ctrl+F)"));
  search_->setClearButtonEnabled(true);
  tools_->addWidget(search_);
  QAction* find = AddAction(QStringLiteral("Find Next"), QKeySequence(Qt::Key_F3));
  auto *startSearch = new QAction(this), *closing = new QAction(this);
  startSearch->setShortcut(QKeySequence::Find);
  closing->setShortcut(QKeySequence(Qt::Key_Escape));
  addActions({startSearch, closing});

  back->setEnabled(false);
  forward->setEnabled(false);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
  connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
  connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
  connect(larger, &QAction::triggered, browser_, [this] { browser_->zoomIn(); });
  connect(smaller, &QAction::triggered, browser_, [this] { browser_->zoomOut(); });
  connect(find, &QAction::triggered, this, &HelpWindow::Search);
  connect(search_, &QLineEdit::returnPressed, this, &HelpWindow::Search);
  connect(startSearch, &QAction::triggered, search_, [this] {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
  });
  connect(closing, &QAction::triggered, this, &QWidget::close);
}

std::string HelpWindow::Show(const std::string& file, const std::string& topic) {
  if (!library_.Open(file))
    return "The help file cannot be read:\r\n" + file + "\r\nIt is damaged. Please install it again.";
  const QUrl address = library_.Address(file, QString::fromStdString(topic));
  if (!library_.Read(address))
    return "The help file does not have the topic \"" + topic + "\":\r\n" + file +
           "\r\nIt is of another version. Please install it again.";
  Go(address);
  return {};
}

void HelpWindow::PutInFrontOf(QWidget& owner) {
  setParent(&owner, windowFlags());
  if (auto* dialog = qobject_cast<QDialog*>(&owner))
    connect(dialog, &QDialog::finished, this, [this, dialog] {
      const bool isRead = isVisible();
      setParent(dialog->parentWidget(), windowFlags());
      setVisible(isRead);
    });
  showNormal();
  raise();
  activateWindow();
  browser_->setFocus();
}

void HelpWindow::Go(const QUrl& address) {
  outcome_->clear();
  if (!address.isEmpty()) browser_->setSource(address);
}

void HelpWindow::FollowLink(const QUrl& link) {
  const QUrl target = library_.Follow(link, browser_->source());
  if (target.scheme() == QLatin1String("http") || target.scheme() == QLatin1String("https"))
    QDesktopServices::openUrl(target);
  else if (library_.Read(target))
    Go(target);
  else
    outcome_->setText(QStringLiteral("The link leads nowhere: %1").arg(link.toString()));
}

// The browser does not know its new source yet when it announces it.
void HelpWindow::ShowContents(const QUrl& address) {
  setWindowTitle(browser_->documentTitle().isEmpty() ? QStringLiteral("Help") : browser_->documentTitle());
  if (const std::string file = library_.PathOf(address); file != shownFile_) {
    shownFile_ = file;
    contents_->clear();
    std::vector<QTreeWidgetItem*> chapters;  // the last one of each level
    for (const HelpLibrary::Entry& entry : library_.Contents(address)) {
      chapters.resize(std::min(chapters.size(), static_cast<std::size_t>(entry.level)));
      auto* item = chapters.empty() ? new QTreeWidgetItem(contents_) : new QTreeWidgetItem(chapters.back());
      item->setText(0, entry.title);
      item->setToolTip(0, entry.title);
      item->setData(0, kAddressRole, entry.address);
      chapters.push_back(item);
    }
    contents_->expandAll();
  }
  contents_->setCurrentItem(ItemOf(*contents_, address));
}

bool HelpWindow::FindInShownTopic() {
  if (!browser_->find(search_->text())) return false;
  outcome_->clear();
  return true;
}

// The next place in the shown topic, then in the topics after it, and around.
void HelpWindow::Search() {
  if (search_->text().isEmpty() || FindInShownTopic()) return;
  std::vector<QUrl> topics = library_.Topics(browser_->source());
  const auto shown = std::ranges::find(topics, browser_->source().adjusted(QUrl::RemoveFragment));
  if (shown != topics.end()) std::rotate(topics.begin(), shown + 1, topics.end());
  for (const QUrl& topic : topics) {
    QTextDocument text;
    text.setHtml(QString::fromUtf8(library_.Read(topic).value_or(QByteArray())));
    if (text.find(search_->text()).isNull()) continue;
    browser_->setSource(topic);
    browser_->moveCursor(QTextCursor::Start);
    FindInShownTopic();
    return;
  }
  outcome_->setText(tr("This help does not contain \"%1\".").arg(search_->text()));
}

}  // namespace pellorin
