// A panel with a bold caption at its top: the look of every group on the pages. The caption is also the
// panel's accessible name, and is muted while the panel is disabled.
#pragma once

#include <QFrame>
#include <QString>

namespace pellorin {

class CaptionedFrame : public QFrame {
  Q_OBJECT
  Q_PROPERTY(QString title READ title WRITE setTitle)

 public:
  explicit CaptionedFrame(QWidget* parent = nullptr);

  QString title() const { return title_; }  // named like the properties of .ui files
  void setTitle(const QString& title);

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont CaptionFont() const;
  void MakeRoom();

  QString title_;
};

}  // namespace pellorin
