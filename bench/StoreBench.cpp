// Compares the store's times with those of libraries on the same files: loading Pellorin.ini and saving one
// changed section with GLib's GKeyFile, loading queues with a bare parse by libxml2. The files are in a new
// folder below the current one, so its disk is the one that is measured; the page cache is warm. Both sides
// take turns, and their medians are compared. Freeing what was loaded is not timed.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <malloc.h>

#include <chrono>
#include <cstdio>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/KeyFileStore.h"
#include "bench/Median.h"
#include "bench/ProgramFolder.h"
#include "bench/SampleConfiguration.h"
#include "config/Ini.h"
#include "files/FileLookup.h"

namespace pellorin {
namespace {

constexpr int kManySections = 600;
constexpr int kQueues = 5000;
constexpr const char* kChangedKey = "SenderEmail";

std::unique_ptr<Ini> LoadIni(const ProgramFolder& folder) {
  auto ini = std::make_unique<Ini>(SystemFiles(), folder.Path(), LocaleConventions{});
  ini->Load("Pellorin.ini");
  return ini;
}

using XmlDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

// The documents are kept until all are loaded, as the store keeps them.
std::vector<XmlDocument> ParseBare(const ProgramFolder& folder) {
  std::vector<XmlDocument> documents;
  for (const std::string& path : folder.QueuePaths()) {
    documents.emplace_back(xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET), xmlFreeDoc);
    if (documents.back() == nullptr) throw std::runtime_error("cannot parse " + path);
  }
  return documents;
}

// Makes the allocator tidy its heap, as in a program that has just started. Otherwise the next repetition
// would pay for what the last one freed.
void SettleHeap() {
  constexpr std::size_t kLarge = 64 * 1024;  // the allocator first merges its freed pieces
  benchmark::DoNotOptimize(std::make_unique<char[]>(kLarge).get());
}

template <typename Operation>
double MicrosecondsOf(Operation& operation) {
  SettleHeap();
  const auto start = std::chrono::steady_clock::now();
  const auto result = operation();
  const auto end = std::chrono::steady_clock::now();
  benchmark::DoNotOptimize(&result);
  return std::chrono::duration<double, std::micro>(end - start).count();
}

struct Comparison {
  std::string title;
  std::string other;
  double target;  // the largest ratio that is wanted
};

constexpr const char* kOurs = "store_us";
constexpr const char* kTheirs = "other_us";

// Runs ours and theirs in turn, so that other work of the machine and its disk affects both alike.
template <typename Ours, typename Theirs>
Comparison Compare(const Comparison& comparison, Ours ours, Theirs theirs) {
  const auto measure = [ours, theirs](benchmark::State& state) mutable {
    std::vector<double> oursTimes;
    std::vector<double> theirsTimes;
    for (auto iteration : state) {
      static_cast<void>(iteration);
      const bool oursFirst = oursTimes.size() % 2 == 0;
      if (oursFirst) oursTimes.push_back(MicrosecondsOf(ours));
      theirsTimes.push_back(MicrosecondsOf(theirs));
      if (!oursFirst) oursTimes.push_back(MicrosecondsOf(ours));
      state.SetIterationTime((oursTimes.back() + theirsTimes.back()) / 1e6);
    }
    state.counters[kOurs] = MedianOf(oursTimes);
    state.counters[kTheirs] = MedianOf(theirsTimes);
  };
  benchmark::RegisterBenchmark(comparison.title.c_str(), measure)
      ->UseManualTime()
      ->Unit(benchmark::kMicrosecond);
  return comparison;
}

// These two fail unless everything that will be timed is really read or written.
void RequireSections(const ProgramFolder& folder, SectionType type, int count) {
  const std::unique_ptr<Ini> ini = LoadIni(folder);
  const KeyFile keyFile = LoadKeyFile(folder.IniPath(), G_KEY_FILE_NONE);
  gsize groups = 0;
  g_strfreev(g_key_file_get_groups(keyFile.get(), &groups));
  if (ini->NumOfSections(type) != count || (type == SectionType::Mail && groups < static_cast<gsize>(count)))
    throw std::runtime_error("the sections of " + folder.Path() + " were not read whole");
}

template <typename Save>
void RequireChange(const ProgramFolder& folder, Save& save) {
  const std::string before = ReadFile(SystemFiles(), folder.IniPath());
  save();
  if (ReadFile(SystemFiles(), folder.IniPath()) == before) throw std::runtime_error("a save wrote nothing");
}

Comparison CompareLoad(const std::string& title, const ProgramFolder& folder) {
  return Compare(
      {title, "GKeyFile", 1.0}, [&folder] { return LoadIni(folder); },
      [&folder] { return LoadKeyFile(folder.IniPath(), G_KEY_FILE_NONE); });
}

// Gives the two values in turn, so that each save has a change to write.
class Sender {
 public:
  const char* Next() { return ++count_ % 2 == 0 ? "database@example.com" : "reports@example.com"; }

 private:
  int count_ = 0;
};

// Each side has its own file, with the same content at the start, and reads it again before each save.
Comparison CompareSave(const std::string& title, const ProgramFolder& ours, const ProgramFolder& theirs,
                       int sectionNumber) {
  const std::string name = MailSectionName(sectionNumber);
  const std::shared_ptr<Ini> ini = LoadIni(ours);
  auto saveOurs = [=, sender = Sender()]() mutable {
    ini->GetSection(name)->SetValue(kChangedKey, sender.Next());
    ini->Save();
    return true;
  };
  auto saveTheirs = [=, path = theirs.IniPath(), sender = Sender()]() mutable {
    SaveValueWithKeyFile(path, name, kChangedKey, sender.Next());
    return true;
  };
  RequireChange(ours, saveOurs);
  RequireChange(theirs, saveTheirs);
  return Compare({title, "GKeyFile", 1.0}, saveOurs, saveTheirs);
}

Comparison CompareQueueLoad(const std::string& title, const ProgramFolder& folder) {
  return Compare(
      {title, "a bare parse", 1.3}, [&folder] { return LoadIni(folder); },
      [&folder] { return ParseBare(folder); });
}

// Prints what Google Benchmark prints, and remembers the medians.
class MedianReporter : public benchmark::ConsoleReporter {
 public:
  MedianReporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs)
      if (run.aggregate_name == "median") medians_[run.run_name.function_name] = run.counters;
  }

  void PrintRatio(const Comparison& comparison) const {
    const auto found = medians_.find(comparison.title);
    if (found == medians_.end()) return;  // filtered out
    const double ours = found->second.at(kOurs);
    const double theirs = found->second.at(kTheirs);
    const double ratio = ours / theirs;
    std::printf("%s: %.2f of %s (%.0f us, %.0f us); wanted: at most %.2f%s\n", comparison.title.c_str(),
                ratio, comparison.other.c_str(), ours, theirs, comparison.target,
                ratio <= comparison.target ? "" : "  MISSED");
  }

 private:
  std::map<std::string, benchmark::UserCounters> medians_;
};

void Run(int argc, char** argv) {
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());  // both sides keep freed memory
  std::vector<std::string> arguments{argv[0], "--benchmark_repetitions=5", "--benchmark_min_time=0.5",
                                     "--benchmark_report_aggregates_only=true"};
  arguments.insert(arguments.end(), argv + 1, argv + argc);  // a later option overrides an earlier one
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());

  const ProgramFolder usual(UsualIniFile(), 0);
  const ProgramFolder large(LargeIniFile(kManySections, 1000), 0);
  const ProgramFolder usualKeyFile(UsualIniFile(), 0);
  const ProgramFolder largeKeyFile(LargeIniFile(kManySections, 1000), 0);
  const ProgramFolder queues(LargeIniFile(1, 0), kQueues);
  RequireSections(usual, SectionType::Mail, 12);
  RequireSections(large, SectionType::Mail, kManySections);
  RequireSections(queues, SectionType::Queue, kQueues);

  const std::vector<Comparison> comparisons{
      CompareLoad("INI load, 20 sections", usual),
      CompareLoad("INI load, 600 sections of 1 kB", large),
      CompareSave("Saving one of 20 sections", usual, usualKeyFile, 6),
      CompareSave("Saving one of 600 sections", large, largeKeyFile, kManySections / 2),
      CompareQueueLoad("Loading 5,000 queues", queues),
  };
  MedianReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n");
  for (const Comparison& comparison : comparisons) reporter.PrintRatio(comparison);
  benchmark::Shutdown();
}

}  // namespace
}  // namespace pellorin

int main(int argc, char** argv) {
  try {
    pellorin::Run(argc, argv);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_store: %s\n", failure.what());
    return 1;
  }
}
