// The window and the installer's dialog in 1024 × 768, in fonts of several sizes.
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSpinBox>

#include "tests/ui/WindowFixture.h"
#include "ui/controls/CaptionedFrame.h"
#include "ui/controls/ScrollingPart.h"

namespace pellorin::test {
namespace {

class Layout : public WindowFixture {
 protected:
  void UseFont(int points) {
    QFont font = usual_;
    font.setPointSize(points);
    QApplication::setFont(font);
  }
  ~Layout() override { QApplication::setFont(usual_); }

  // Every control has the room that it needs, and what scrolls is not wider than its window.
  static void ExpectNothingClipped(const QWidget& window) {
    for (const QWidget* part : window.findChildren<QWidget*>()) {
      const bool isOurs =
          !part->objectName().isEmpty() && !part->objectName().startsWith(QLatin1String("qt_"));
      if (!isOurs || !part->isVisible()) continue;
      const QSize needed = part->minimumSizeHint();
      EXPECT_GE(part->width(), needed.width()) << part->objectName().toStdString() << " is too narrow";
      EXPECT_GE(part->height(), needed.height()) << part->objectName().toStdString() << " is too low";
      const auto* label = qobject_cast<const QLabel*>(part);
      if (label != nullptr && label->wordWrap()) {
        EXPECT_GE(label->height(), label->heightForWidth(label->width()))
            << label->text().toStdString() << " loses lines";
      }
    }
    for (const ScrollingPart* part : window.findChildren<ScrollingPart*>())
      if (part->isVisible()) {
        EXPECT_FALSE(part->horizontalScrollBar()->isVisible()) << "has to be scrolled sideways";
      }
  }
  void ExpectNothingClippedOnThePages() {
    window->resize(1024, 740);
    for (const int tab : {0, 1, 2}) {
      ClickTab(tab);
      QCoreApplication::processEvents();  // lays it out
      SCOPED_TRACE(Page());
      ExpectNothingClipped(*window);
    }
  }

 private:
  const QFont usual_ = QApplication::font();
};

TEST_F(Layout, ClipsNothingInAnyFont) {
  WriteQueue("Q1", kDailyQueue);
  for (const int points : {9, 11, 14, 18}) {
    SCOPED_TRACE(std::to_string(points) + " points");
    UseFont(points);
    ASSERT_TRUE(Start(kUsual));
    EXPECT_EQ(window->size().boundedTo(RoomOnScreen(*window)), window->size()) << "larger than the screen";
    ExpectNothingClippedOnThePages();
    for (const auto* group : window->findChildren<CaptionedFrame*>()) {
      QFont caption = group->font();
      caption.setBold(true);
      EXPECT_GT(group->contentsRect().top(), QFontMetrics(caption).height())
          << group->title().toStdString() << " lies over its first row";
    }
    InDialog([](QDialog& dialog) {
      ExpectNothingClipped(dialog);
      dialog.reject();
    });
    ClickTab(1);
    Click("btnConfigure");
  }
}

TEST_F(Layout, ClipsNothingOnEmptyPages) {
  UseFont(18);
  ASSERT_TRUE(Start(""));
  ExpectNothingClippedOnThePages();
}

TEST_F(Layout, FieldsOfAllGroupsLineUp) {
  WriteQueue("Q1", kDailyQueue);
  UseFont(14);
  ASSERT_TRUE(Start(kUsual));
  const struct {
    int tab;
    std::string fields;
  } columns[] = {{0, "txtSenderEmail txtConnectionTimeout txtRemoteServerName txtMailUsername"},
                 {1, "txtSqlUsername txtTimeout cmbPrimaryMailServer txtLineWidth txtProhibitedTokens"},
                 {2, "txtOccursOnce txtOccursEvery txtStartTime txtStartDate"}};
  for (const auto& [tab, fields] : columns) {
    ClickTab(tab);
    std::set<int> lefts;  // within their groups
    for (const std::string& name : Words(fields)) {
      const QWidget* group = &Find(name);
      while (qobject_cast<const QFrame*>(group) == nullptr) group = group->parentWidget();
      lefts.insert(Find(name).mapTo(group, QPoint()).x());
    }
    EXPECT_EQ(lefts.size(), 1u) << fields;
  }
}

TEST_F(Layout, OnlyANarrowPageStacksItsGroups) {
  UseFont(18);
  ASSERT_TRUE(Start(kUsual));
  for (const auto& [width, isStacked] : {std::pair(1500, false), {900, true}, {1500, false}}) {
    window->resize(width, window->height());
    QCoreApplication::processEvents();  // lays it out
    const QPoint general = PlaceOf("lblGeneral"), connection = PlaceOf("optLocalMailServer");
    EXPECT_EQ(connection.x() < general.x() + 50, isStacked) << "in " << width << " pixels";
    EXPECT_EQ(connection.y() > general.y() + 100, isStacked) << "in " << width << " pixels";
  }
}

}  // namespace
}  // namespace pellorin::test
