// A plugin for any Qt program: prints the time from the launch of the process to the first painted frame of
// its first window, and ends the process. Used with QT_QPA_GENERIC_PLUGINS=firstpaint. The launcher passes
// its start time, in nanoseconds of the monotonic clock, as PELLORIN_BENCH_LAUNCHED. The line printed:
// milliseconds, the window's name, its width and height, and the census of its controls.
#include <QCoreApplication>
#include <QEvent>
#include <QGenericPlugin>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "bench/WidgetCensus.h"

namespace pellorin {
namespace {

double MillisecondsSinceLaunch() {
  const long long launched = qEnvironmentVariable("PELLORIN_BENCH_LAUNCHED").toLongLong();
  const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<double>(now.count() - launched) / 1e6;
}

[[noreturn]] void Report(double milliseconds, const QWidget& window) {
  std::printf("%.3f %s %d %d %s\n", milliseconds, qPrintable(window.objectName()), window.width(),
              window.height(), qPrintable(WidgetCensus(window)));
  std::fflush(stdout);
  std::_Exit(0);
}

class FirstPaintObserver : public QObject {
 public:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() == QEvent::Paint && !painting_ && receiver->isWidgetType()) {
      QWidget* window = static_cast<QWidget*>(receiver);
      if (window->isWindow()) {
        painting_ = true;
        // The window paints its controls and hands the frame over before the event loop comes round again.
        QMetaObject::invokeMethod(
            this, [window] { Report(MillisecondsSinceLaunch(), *window); }, Qt::QueuedConnection);
      }
    }
    return false;
  }

 private:
  bool painting_ = false;
};

}  // namespace

class FirstPaintPlugin : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "FirstPaint.json")

 public:
  QObject* create(const QString& /*key*/, const QString& /*specification*/) override {
    auto* observer = new FirstPaintObserver;
    QCoreApplication::instance()->installEventFilter(observer);
    return observer;
  }
};

}  // namespace pellorin

#include "FirstPaintPlugin.moc"
