// The tabs of the pages, each of which scrolls where the window is too small for it. A tab is marked while
// its page has a notice, so that it is not missed while another page is shown.
#pragma once

#include <QTabWidget>
#include <string>

#include "config/Ini.h"

namespace pellorin {

class PageTabs {
 public:
  explicit PageTabs(QTabWidget& tabs) : tabs_(tabs) {}

  // `kind` is the page's kind of sections, as tags spell it.
  void Add(QWidget& page, const std::string& caption, std::string_view kind, const std::string& tip);
  // Alt+1, 2, … choose a page; Ctrl+Tab and Ctrl+Shift+Tab the next and the last one, wherever the focus is.
  void ChooseByKeys(QWidget& window);
  void Mark(const QWidget& page, bool hasNotice);
  // Lists the document's unusable queues in the tip of this page's tab; null for no document.
  void MarkUnusableQueues(const QWidget& page, const Ini* document);
  void Show(const QWidget& page);
  void MakeVisible(const std::string& caption);
  bool IsShown(const QWidget& page) const { return tabs_.currentIndex() == IndexOf(page); }
  std::string VisibleCaption() const;

 private:
  void Step(int by);
  int IndexOf(const QWidget& page) const;

  QTabWidget& tabs_;
  std::string unusableQueues_;  // as the tip names them
};

}  // namespace pellorin
