// Reads help files beside the other windows: contents, links, back and forward, search through all topics,
// zoom.
#pragma once

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QWidget>
#include <string>

#include "ui/help/HelpLibrary.h"

namespace pellorin {

// Takes topics and pictures from the library.
class HelpBrowser : public QTextBrowser {
 public:
  explicit HelpBrowser(const HelpLibrary& library) : library_(library) {}

 protected:
  QVariant loadResource(int type, const QUrl& address) override;

 private:
  const HelpLibrary& library_;
};

class HelpWindow : public QWidget {
  Q_OBJECT
 public:
  HelpWindow();

  // Shows the topic of a help file. Otherwise says what is wrong and shows nothing.
  std::string Show(const std::string& file, const std::string& topic);
  // In front of the owner, also while the owner is a modal dialog: only its own children take clicks then.
  // When the dialog closes, the window goes on in front of the dialog's parent.
  void PutInFrontOf(QWidget& owner);

 private:
  void BuildToolBar();
  QAction* AddAction(const QString& text, const QKeySequence& keys);
  void Go(const QUrl& address);
  void FollowLink(const QUrl& link);
  void ShowContents(const QUrl& address);
  void Search();
  bool FindInShownTopic();

  HelpLibrary library_;
  QToolBar* tools_;
  QLineEdit* search_;
  QTreeWidget* contents_;
  HelpBrowser* browser_;
  QLabel* outcome_;  // of a search or a link
  std::string shownFile_;
};

}  // namespace pellorin
