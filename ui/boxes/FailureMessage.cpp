#include "ui/boxes/FailureMessage.h"

#include <string>
#include <vector>

#include "base/Utf8.h"

namespace pellorin {
namespace {

constexpr const char* kLineBreak = "\r\n";

std::string NameList(const std::vector<std::string>& names) {
  constexpr std::size_t kMostNames = 12;  // a box must fit the screen
  std::string list;
  for (std::size_t position = 0; position < names.size() && position < kMostNames; ++position)
    list += (position == 0 ? "" : ", ") + names[position];
  if (names.size() > kMostNames) list += " and " + std::to_string(names.size() - kMostNames) + " more";
  return names.empty() ? "nothing" : list;
}

Message Compose(const NumberedError& error, const std::string& state) {
  std::string text = error.Description();
  const std::string path = Escaped(error.Path());
  if (!path.empty() && text.find(path) == std::string::npos) text += kLineBreak + path;
  text += state;
  text += std::string(kLineBreak) + kLineBreak + "Error Number: " + std::to_string(error.Number()) +
          kLineBreak + "Error Source: " + error.Source();
  return {.text = text, .icon = MessageIcon::Critical};
}

}  // namespace

Message FailureMessage(const NumberedError& error) {
  return Compose(error, "");
}

Message SaveFailureMessage(const NumberedError& error, const Ini& document) {
  std::vector<std::string> unsaved;
  for (const auto& section : document.Sections()) {
    if (!section->HasChanges()) continue;
    unsaved.push_back(section->IsDeleted() ? section->NameOnDisk() + " (to be removed)" : section->Name);
  }
  std::vector<std::string> done = document.LastSave().written;
  for (const std::string& name : document.LastSave().removed) done.push_back(name + " (removed)");
  return Compose(error, std::string(kLineBreak) + kLineBreak + "Saved: " + NameList(done) + kLineBreak +
                            "Not saved: " + NameList(unsaved));
}

void ShowFailure(UserMessages& messages, std::exception_ptr failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const NumberedError& error) {
    messages.Show(FailureMessage(error));
  } catch (const std::exception& error) {
    messages.Show(FailureMessage(NumberedError(0, "PellorinConfig.exe", error.what())));
  }
}

void Steps::RaiseFailures() const {
  if (failures_.empty()) return;
  const NumberedError& first = failures_.front();
  if (failures_.size() == 1) throw first;
  std::string all;
  for (const NumberedError& failure : failures_)
    all += (all.empty() ? "" : kLineBreak) + failure.DescriptionAndPath();
  throw NumberedError(first.Number(), first.Source(), all, first.Path());
}

}  // namespace pellorin
