// Measures how soon the window answers its user on the Queues page, with 1,000 queues and 50 instances: from
// the key that chooses another queue, or the click on a server, to the end of the repaint that follows. Keys
// and clicks enter where the windowing system delivers them. The default platform is offscreen.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QLoggingCategory>
#include <QTabWidget>
#include <QTest>
#include <chrono>
#include <cstdio>
#include <stdexcept>

#include "bench/Median.h"
#include "bench/ProgramFolder.h"
#include "config/NameLists.h"
#include "ui/frmMain.h"

namespace pellorin {
namespace {

constexpr int kQueues = 1000;
constexpr int kInstances = 50;
constexpr int kRuns = 200;
constexpr double kFrame = 16;  // milliseconds

void Require(bool isTrue, const std::string& otherwise) {
  if (!isTrue) throw std::runtime_error(otherwise);
}

// Everything around the window. The measured work shows no box: the first one fails the run.
class Surroundings : public UserMessages,
                     public MailComponent,
                     public EventLogRegistration,
                     public HelpViewer,
                     public ProcedureSetup {
 public:
  explicit Surroundings(const std::string& programFolder) : folder_(programFolder) {}
  void RequireSilence() const { Require(box_.empty(), "a box appeared: " + box_); }

  Answer Show(const Message& message) override {
    box_ += message.text;
    return Answer::Cancel;
  }
  std::string AskForText(const std::string& /*title*/, const std::string& prompt,
                         const std::vector<std::string>& /*suggestions*/) override {
    box_ += prompt;
    return {};
  }
  std::string InstallFolder() override { return folder_; }
  std::string Version() override { return {}; }
  void SetWatch(Watch /*watch*/) override {}
  bool Send(const MailArguments& arguments) override {
    box_ += arguments.recipients;
    return false;
  }
  std::vector<ConversationLine> LastConversation() override { return {}; }
  int LastErrorNumber() override { return 0; }
  std::string LastErrorSource() override { return {}; }
  std::string LastErrorDescription() override { return {}; }
  void RegisterSource(const std::string& /*messageFile*/, const std::string& /*reserved*/,
                      const std::string& /*folder*/, const std::string& /*source*/,
                      const std::string& /*logName*/) override {}
  void ShowTopic(QWidget& /*owner*/, const std::string& file, const std::string& /*topic*/) override {
    box_ += file;
  }
  std::optional<std::vector<std::string>> ListDatabases(const SqlLogin& login) override {
    box_ += login.server;
    return std::nullopt;
  }
  std::string SecurityNote() const override { return {}; }
  bool Install(const SqlLogin& login, const Installation& /*installation*/) override {
    box_ += login.server;
    return false;
  }

 private:
  std::string folder_;
  std::string box_;
};

// Counts what is painted anywhere, and in one control.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(const QWidget& control) : control_(control) { qApp->installEventFilter(this); }
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    ++all;
    if (receiver == &control_) ++own;
    return false;
  }

  int all = 0;
  int own = 0;

 private:
  const QWidget& control_;
};

// From the user's input until nothing is left to repaint.
template <typename Input>
double MillisecondsOf(Input input, const QWidget& control) {
  QApplication::processEvents();
  PaintWatch paints(control);
  const auto start = std::chrono::steady_clock::now();
  input();
  for (int painted = -1; painted != paints.all;) {
    painted = paints.all;
    QApplication::processEvents();
  }
  const auto end = std::chrono::steady_clock::now();
  Require(paints.own > 0, "the answer was not painted in " + control.objectName().toStdString());
  return std::chrono::duration<double, std::milli>(end - start).count();
}

void Set(std::string& queueFile, const std::string& name, const std::string& value) {
  const std::size_t start = queueFile.find(" " + name + "=\"") + name.size() + 3;
  queueFile.replace(start, queueFile.find('"', start) - start, value);
}

// Each queue applies to `serversOfQueue` instances; the instances' sections and the queues' files agree.
class Site {
 public:
  Site(int serversOfQueue, const std::string& queueBy)
      : serversOfQueue_(serversOfQueue),
        folder_(InstancesIniFile(kInstances, [this](int instance) { return QueuesOf(instance); }), kQueues,
                [&](int queue) { return FileOf(queue, queueBy); }),
        surroundings_(folder_.Path()),
        window_({SystemFiles(),
                 surroundings_,
                 surroundings_,
                 surroundings_,
                 surroundings_,
                 surroundings_,
                 [] { return std::unique_ptr<SqlConnection>(); },
                 [] { return std::vector<std::string>(); },
                 folder_.Path(),
                 {}}) {
    Require(window_.Form_Load({}), "the window does not start");
    window_.resize(972, 710);  // its size on a usual screen: the queues page is whole
    window_.MakeTabVisible(kQueuesTab);
    window_.activateWindow();
    Require(QTest::qWaitForWindowActive(&window_), "the window does not become active");
    Require(queues_.count() == kQueues && servers_.count() == kInstances, "not everything was loaded");
  }

  void Measure() {
    Print("Choosing another queue", [this](int) { return ChooseNextQueue(); });
    Require(!window_.isWindowModified(), "the sample configuration is not complete");
    Print("Clicking a server", [this](int run) { return ClickServer(run % 3); });
    Require(window_.isWindowModified(), "the clicks changed nothing");
  }

 private:
  bool Applies(int queue, int instance) const { return (queue + instance) % kInstances < serversOfQueue_; }
  std::string QueuesOf(int instance) const {
    std::vector<std::string> names;
    for (int queue = 1; queue <= kQueues; ++queue)
      if (Applies(queue, instance)) names.push_back("Queue" + std::to_string(queue));
    return JoinNames(names);
  }
  // Every other queue has another schedule, so that choosing it switches controls.
  std::string FileOf(int queue, const std::string& queueBy) const {
    std::vector<std::string> servers;
    for (int instance = 1; instance <= kInstances; ++instance)
      if (Applies(queue, instance)) servers.push_back(InstanceName(instance));
    std::string file = QueueFile(queue);
    Set(file, "queuebydefault", queueBy);
    Set(file, "queuebydefaultservers", JoinNames(servers));
    if (queue % 2 == 0) {
      Set(file, "frequency", "daily");
      Set(file, "occurstype", "once");
      Set(file, "hasenddate", "0");
    }
    return file;
  }
  template <typename Control>
  Control& Find(const char* name) const {
    auto* control = window_.findChild<Control*>(QString::fromUtf8(name));
    Require(control != nullptr, std::string("no control ") + name);
    return *control;
  }

  double ChooseNextQueue() {
    const int next = queues_.currentIndex() + 1;
    queues_.setFocus();
    const auto choose = [this] { QTest::keyClick(window_.windowHandle(), Qt::Key_Down); };
    const double time = MillisecondsOf(choose, title_);
    surroundings_.RequireSilence();
    const int number = queues_.itemText(next).mid(5).toInt();  // Queue17 has the title "Report 017"
    Require(queues_.currentIndex() == next && servers_.selectedItems().size() == serversOfQueue_ &&
                title_.text() == QStringLiteral("Report %1").arg(number, 3, 10, QLatin1Char('0')),
            "the chosen queue is not shown");
    return time;
  }

  double ClickServer(int row) {  // counted from the first visible one
    const QListWidgetItem& server = *servers_.item(servers_.indexAt(QPoint(1, 1)).row() + row);
    const bool wasSelected = server.isSelected();
    const QPoint place = servers_.viewport()->mapTo(&window_, servers_.visualItemRect(&server).center());
    const auto click = [&] { QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, {}, place); };
    const double time = MillisecondsOf(click, *servers_.viewport());
    surroundings_.RequireSilence();
    Require(server.isSelected() != wasSelected, "a click did not change the selection");
    return time;
  }

  template <typename Operation>
  void Print(const char* title, Operation operation) const {
    std::vector<double> times;
    for (int run = 0; run < kRuns; ++run) times.push_back(operation(run));
    const double median = MedianOf(times);
    std::printf("%s where queues apply to %d of %d servers: %.1f ms; wanted: at most one frame, %.0f ms%s\n",
                title, serversOfQueue_, kInstances, median, kFrame, median <= kFrame ? "" : "  MISSED");
  }

  int serversOfQueue_;
  ProgramFolder folder_;
  Surroundings surroundings_;
  frmMain window_;
  QComboBox& queues_ = Find<QComboBox>("cmbQueues");
  QLineEdit& title_ = Find<QLineEdit>("txtQueueTitle");
  QListWidget& servers_ = Find<QListWidget>("lstQueueApplServers");
};

}  // namespace
}  // namespace pellorin

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QLoggingCategory::setFilterRules(
      QStringLiteral("default.warning=false"));  // offscreen, Qt warns at each layout
  QApplication::setStyle(QStringLiteral("Fusion"));
  const QApplication application(argc, argv);
  try {
    pellorin::Site(2, "filter").Measure();
    pellorin::Site(pellorin::kInstances, "all").Measure();
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_window: %s\n", failure.what());
    return 1;
  }
}
