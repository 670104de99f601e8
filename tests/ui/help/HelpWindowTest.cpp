// The help files that were built, read in the program's own window; and help files that are damaged.
#include "ui/help/HelpWindow.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>

#include "tests/support/RecordingMessages.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/WindowUser.h"
#include "ui/help/ChmHelpViewer.h"

namespace pellorin::test {
namespace {

const std::string kGuide = HELP_FOLDER "/Pellorin.chm";

QString Plain(const QByteArray& html) {
  QTextDocument document;
  document.setHtml(QString::fromUtf8(html));
  return document.toPlainText().simplified();
}

// What the text itself cannot show: the links, pictures and anchors of a topic.
struct Topic {
  std::vector<QUrl> links, pictures;
  QStringList anchors;

  explicit Topic(const QByteArray& html) {
    QTextDocument document;
    document.setHtml(QString::fromUtf8(html));
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        if (!format.anchorHref().isEmpty()) links.emplace_back(format.anchorHref());
        if (format.isImageFormat()) pictures.emplace_back(format.toImageFormat().name());
        anchors += format.anchorNames();
      }
  }
};

TEST(HelpFiles, LinksPicturesAndContentsLeadSomewhere) {
  HelpLibrary library;
  for (const auto& [name, first] : {std::pair("Pellorin", "ConfigurationGuide.htm"),
                                    {"GettingStarted", "GettingStarted.htm"},
                                    {"UpgradeInfo", "UpgradeInfo.htm"}}) {
    const std::string file = std::string(HELP_FOLDER "/") + name + ".chm";
    ASSERT_TRUE(library.Open(file)) << file;
    const QUrl start = library.Address(file, QString::fromLatin1(first));
    const auto expectTarget = [&](const QUrl& target, const QUrl& link) {
      const auto bytes = library.Read(target);
      ASSERT_TRUE(bytes && !bytes->isEmpty())
          << name << " leads nowhere with " << link.toString().toStdString();
      if (target.hasFragment()) {
        EXPECT_TRUE(Topic(*bytes).anchors.contains(target.fragment()))
            << name << " leads to a missing anchor with " << link.toString().toStdString();
      }
    };
    EXPECT_TRUE(library.Read(start)) << first;
    EXPECT_FALSE(library.Contents(start).empty()) << name;
    for (const auto& entry : library.Contents(start)) expectTarget(entry.address, entry.address);
    for (const QUrl& address : library.Topics(start)) {
      const Topic topic(library.Read(address).value_or(QByteArray()));
      for (const QUrl& link : topic.links) expectTarget(library.Follow(link, address), link);
      for (const QUrl& picture : topic.pictures) expectTarget(address.resolved(picture), picture);
    }
  }
}

TEST(HelpFiles, TheGuideNamesEveryCaptionAndAnchor) {
  HelpLibrary library;
  ASSERT_TRUE(library.Open(kGuide));
  const QUrl guide = library.Address(kGuide, QStringLiteral("ConfigurationGuide.htm"));
  QString text;
  for (const QUrl& topic : library.Topics(guide)) text += Plain(*library.Read(topic)) + QLatin1Char('\n');
  static const QRegularExpression kCaption(
      QStringLiteral("<property name=\"(?:text|title|windowTitle)\">\\s*<string[^>]*>([^<]+)<"));
  int captions = 0;
  for (QDirIterator file(QStringLiteral(PROJECT_FOLDER "/ui"), {QStringLiteral("*.ui")}, QDir::Files,
                         QDirIterator::Subdirectories);
       file.hasNext();) {
    QFile form(file.next());
    ASSERT_TRUE(form.open(QIODevice::ReadOnly));
    for (auto found = kCaption.globalMatch(QString::fromUtf8(form.readAll())); found.hasNext(); ++captions) {
      QString shown = found.next().captured(1);
      for (const char* mark : {"&amp;", "[*]"}) shown.remove(QLatin1String(mark));  // key, place of "changed"
      EXPECT_TRUE(text.contains(shown.simplified())) << "the guide does not name " << shown.toStdString();
    }
  }
  EXPECT_GT(captions, 100);
  const Topic topic(*library.Read(guide));
  for (const char* anchor : {"MailServersTab", "SqlServersTab", "QueuesTab", "NewSqlServerInstanceDialog"})
    EXPECT_TRUE(topic.anchors.contains(QString::fromLatin1(anchor))) << anchor;
}

class HelpWindowTest : public testing::Test, protected WindowUser {
 protected:
  HelpWindowTest() : viewer_(SystemFiles(), messages_) {}

  void Show(QWidget& owner, const std::string& file, const std::string& topic) {
    viewer_.ShowTopic(owner, file, topic);
    if (window_ == nullptr) window_ = owner.findChild<HelpWindow*>();
  }
  std::string Shown() const {  // "GettingStarted.htm#First"
    return Find<QTextBrowser>("txtTopic")
        .source()
        .toString(QUrl::RemoveScheme | QUrl::RemoveAuthority)
        .mid(1)
        .toStdString();
  }

  RecordingMessages messages_;
  ChmHelpViewer viewer_;
  QPointer<HelpWindow> window_;

 private:
  QWidget& Used() const override { return *window_; }
};

TEST_F(HelpWindowTest, ReadsTopicsAndGoesBack) {
  QWidget owner;
  Show(owner, kGuide, "ConfigurationGuide.htm#QueuesTab");
  ASSERT_NE(window_, nullptr);
  auto& browser = Find<QTextBrowser>("txtTopic");
  EXPECT_EQ(Shown(), "ConfigurationGuide.htm#QueuesTab");
  EXPECT_GT(browser.verticalScrollBar()->value(), 0) << "the topic is not scrolled to its anchor";
  EXPECT_EQ(Find<QTreeWidget>("treeContents").currentItem()->text(0), QStringLiteral("Queues"));

  emit browser.anchorClicked(QUrl(QStringLiteral("ms-its:GettingStarted.chm::/GettingStarted.htm")));
  EXPECT_EQ(Shown(), "GettingStarted.htm");
  EXPECT_NE(Find<QTreeWidget>("treeContents").topLevelItem(0)->text(0), QStringLiteral("Mail Servers"));
  emit browser.anchorClicked(QUrl(QStringLiteral("ms-its:Missing.chm::/Missing.htm")));
  EXPECT_EQ(Text("lblOutcome"), "The link leads nowhere: ms-its:Missing.chm::/Missing.htm");
  Press("Alt+Left");
  EXPECT_EQ(Shown(), "ConfigurationGuide.htm#QueuesTab");

  const double size = browser.font().pointSizeF();
  Press("Ctrl++");
  EXPECT_GT(browser.font().pointSizeF(), size);
  Press("Escape");
  EXPECT_FALSE(window_->isVisible());
  Show(owner, kGuide, "ConfigurationGuide.htm#SqlServersTab");
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(HelpWindowTest, SearchesAllTopics) {
  QWidget owner;
  Show(owner, kGuide, "ConfigurationGuide.htm");
  Press("Ctrl+F");
  EXPECT_EQ(FocusName(), "txtSearch");
  Type("pickup folder");
  Press("Return");
  const QTextCursor first = Find<QTextBrowser>("txtTopic").textCursor();
  EXPECT_EQ(first.selectedText().toLower(), QStringLiteral("pickup folder"));
  Press("F3");
  EXPECT_NE(Find<QTextBrowser>("txtTopic").textCursor(), first);
  Find<QLineEdit>("txtSearch").setText(QStringLiteral("zebra crossing"));
  Press("F3");
  EXPECT_EQ(Text("lblOutcome"), "This help does not contain \"zebra crossing\".");
}

TEST_F(HelpWindowTest, StaysWithADialogAndOutlivesIt) {
  QWidget owner;
  {
    QDialog dialog(&owner);
    Show(dialog, kGuide, "ConfigurationGuide.htm#QueuesTab");
    ASSERT_NE(window_, nullptr);
    EXPECT_EQ(window_->parentWidget(), &dialog)
        << "another parent would keep clicks away while the dialog is open";
    dialog.accept();
  }
  ASSERT_NE(window_, nullptr);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(window_->parentWidget(), &owner);
}

TEST_F(HelpWindowTest, NamesAFileThatCannotBeRead) {
  const TemporaryFolder folder;
  std::filesystem::copy(kGuide, folder / "cut.chm");
  std::filesystem::resize_file(folder / "cut.chm", std::filesystem::file_size(kGuide) / 2);
  folder.Write("empty.chm", "");
  folder.Write("other.chm", "ITSF is how such a file begins");
  QWidget owner;
  for (const auto& [name, text] :
       {std::pair("gone.chm", "The help file is not installed:\r\n%1"),
        {"empty.chm", "The help file cannot be read:\r\n%1\r\nIt is damaged. Please install it again."},
        {"other.chm", "The help file cannot be read:\r\n%1\r\nIt is damaged. Please install it again."},
        {"cut.chm",
         "The help file does not have the topic \"ConfigurationGuide.htm\":\r\n%1\r\nIt is of another "
         "version. "
         "Please install it again."}}) {
    const std::string file = folder / name;
    messages_.WillShow({.text = QString::fromLatin1(text).arg(QString::fromStdString(file)).toStdString(),
                        .icon = MessageIcon::Information});
    Show(owner, file, "ConfigurationGuide.htm");
    messages_.ExpectNoMore();
    EXPECT_EQ(owner.findChild<HelpWindow*>(), nullptr) << name;
  }
}

}  // namespace
}  // namespace pellorin::test
