#include "ui/mail/TestConversation.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace pellorin {
namespace {

// "21:59:03.250 → EHLO host"; a note has a dot.
QString LineOf(const ConversationLine& line) {
  const auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(line.time.time_since_epoch());
  const QDateTime time = QDateTime::fromMSecsSinceEpoch(sinceEpoch.count());
  const char16_t mark = line.kind == ConversationLine::Kind::Sent       ? u'\u2192'
                        : line.kind == ConversationLine::Kind::Received ? u'\u2190'
                                                                        : u'\u2022';
  return time.toString(QStringLiteral("HH:mm:ss.zzz ")) + mark + QLatin1Char(' ') +
         QString::fromStdString(line.text);
}

}  // namespace

TestConversation::TestConversation(QWidget* parent) : QFrame(parent) {
  setFrameShape(StyledPanel);
  setFrameShadow(Raised);
  hide();
}

void TestConversation::Build(QWidget& before) {
  auto* caption = new QLabel(QStringLiteral("Last Test"));
  QFont bold = caption->font();
  bold.setBold(true);
  caption->setFont(bold);
  text_ = new QPlainTextEdit;
  text_->setObjectName(QStringLiteral("txtConversation"));
  text_->setAccessibleName(QStringLiteral("Conversation of the last test"));
  text_->setToolTip(
      QStringLiteral("What was sent (\u2192) and received (\u2190), and what the program notes (\u2022)"));
  text_->setReadOnly(true);
  text_->setTabChangesFocus(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font().pointSizeF());
  text_->setFont(fixed);
  constexpr int kLinesInSight = 8;
  text_->setMinimumHeight(kLinesInSight * QFontMetrics(fixed).lineSpacing());
  caption->setBuddy(text_);
  auto* copy = new QPushButton(QStringLiteral("Copy"));
  copy->setObjectName(QStringLiteral("btnCopyConversation"));
  copy->setToolTip(QStringLiteral("Copy the conversation"));
  copy->setAccessibleName(QStringLiteral("Copy the conversation"));
  connect(copy, &QPushButton::clicked, this,
          [this] { QApplication::clipboard()->setText(text_->toPlainText()); });
  auto* grid = new QGridLayout(this);
  grid->addWidget(caption, 0, 0);
  grid->addWidget(copy, 0, 1);
  grid->addWidget(text_, 1, 0, 1, 2);
  grid->setColumnStretch(0, 1);
  QWidget::setTabOrder(&before, text_);
  QWidget::setTabOrder(text_, copy);
}

void TestConversation::Show(const std::vector<ConversationLine>& lines, QWidget& before) {
  if (text_ == nullptr) Build(before);
  QStringList shown;
  for (const ConversationLine& line : lines) shown.append(LineOf(line));
  text_->setPlainText(shown.join(QLatin1Char('\n')));
}

}  // namespace pellorin
