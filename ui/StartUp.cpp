#include "ui/StartUp.h"

#include <algorithm>
#include <cstdio>

#include "base/Text.h"
#include "base/TextCase.h"
#include "files/FileLookup.h"
#include "platform/Paths.h"

namespace pellorin {

bool IsInServiceFolder(const Components& components) {
  const std::string folder = components.mail.InstallFolder();
  if (SameFolder(components.files, components.programFolder, folder)) return true;
  components.messages.Show(
      {.text = "While this utility is started in " + components.programFolder +
               ", Pellorin.DLL is installed in " + folder +
               ". This configuration utility must be started in the same directory as the DLL.",
       .title = "Wrong Location",
       .icon = MessageIcon::Critical});
  return false;
}

bool IsInstallMode(const std::string& commandLine) {
  return std::ranges::any_of(SplitAt(",", commandLine), [](const std::string& element) {
    return FoldCase(element).find("installmode") != std::string::npos;
  });
}

void RegisterEventSources(const Components& components) {
  for (const char* source : {"Pellorin Queue", "Pellorin.exe"}) {
    try {
      components.eventLog.RegisterSource("EventMsgs.dll", "", components.programFolder, source, "Pellorin");
    } catch (const NumberedError& error) {
      std::fprintf(stderr, "PellorinConfig: event-log source \"%s\" not registered: %s: %s\n", source,
                   error.Path().c_str(), error.Description().c_str());
      return;
    }
  }
}

std::string WriteProtectionNotice(FileOperations& files, const std::string& iniPath) {
  const std::string target = files.ResolveLinks(iniPath);
  for (const std::string& path : {target, FolderOf(target)})  // saving puts a new file into the folder
    if (files.Status(path).kind != FileKind::Missing && files.IsReadOnly(path))
      return "The configuration can be read, but not changed: " + path + " is write-protected for this user.";
  return {};
}

std::string UnreadNamesMessage(const Ini& document) {
  constexpr std::size_t kMostNames = 20;  // a box must fit the screen
  const std::vector<std::string>& names = document.NamesNotLoaded();
  if (names.empty()) return {};
  std::string message = "This file holds more section names than can be read:\r\n" + document.Path() +
                        "\r\n\r\nNot loaded, and left as they are:";
  for (std::size_t index = 0; index < std::min(names.size(), kMostNames); ++index)
    message += "\r\n- " + names[index];
  if (names.size() > kMostNames) message += "\r\n- " + std::to_string(names.size() - kMostNames) + " more";
  return message;
}

}  // namespace pellorin
