// Runs handlers of controls' events. A handler that fails shows a box: no exception reaches the event loop.
// No handler runs while a Quiet object lives, so that the program can fill controls.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <functional>

#include "base/UserMessages.h"
#include "ui/boxes/FailureMessage.h"

namespace pellorin {

class GuardedEvents {
 public:
  using Handler = std::function<void()>;

  explicit GuardedEvents(UserMessages& messages) : messages_(messages) {}
  GuardedEvents(const GuardedEvents&) = delete;
  GuardedEvents& operator=(const GuardedEvents&) = delete;

  void OnClick(QAbstractButton* button, Handler handler) {
    On(button, &QAbstractButton::clicked, std::move(handler));
  }
  // Also when the shown entry is chosen again.
  void OnChoice(QComboBox* list, Handler handler) { On(list, &QComboBox::activated, std::move(handler)); }
  void OnEdit(QLineEdit* text, Handler handler) { On(text, &QLineEdit::textChanged, std::move(handler)); }
  void OnSelection(QListWidget* list, Handler handler) {
    On(list, &QListWidget::itemSelectionChanged, std::move(handler));
  }

  template <typename Control, typename Signal>
  void On(Control* control, Signal signal, Handler handler) {
    QObject::connect(control, signal, control, [this, handler = std::move(handler)] {
      if (quietDepth_ == 0) RunGuarded(messages_, handler);
    });
  }

  class Quiet {
   public:
    explicit Quiet(int& depth) : depth_(depth) { ++depth_; }
    ~Quiet() { --depth_; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    int& depth_;
  };
  [[nodiscard]] Quiet KeepQuiet() { return Quiet(quietDepth_); }

 private:
  UserMessages& messages_;
  int quietDepth_ = 0;
};

}  // namespace pellorin
