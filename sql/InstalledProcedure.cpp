#include "sql/InstalledProcedure.h"

#include "base/Text.h"
#include "sql/InstallScript.h"

namespace pellorin {

std::string InstalledProcedureNote(SqlConnection& connection, FileOperations& files,
                                   const std::string& programFolder) {
  try {
    const auto definition = connection.QueryColumn(
        "select definition from sys.sql_modules where object_id = object_id('sp_sendPLN')");
    if (definition.empty() || definition.front().empty()) return {};
    const std::string script = ReadScriptFile(files, programFolder, kInstallScript);
    for (const std::string& each : {script, ScriptWithoutBlock(script)})
      for (const std::string& kept :
           {each, AlteringScript(each)})  // after an update servers keep either verb
        if (WithoutOuterBlanks(kept) == WithoutOuterBlanks(definition.front()))
          return "The installed sp_sendPLN is that of the script beside the program.";
    return "The installed sp_sendPLN differs from the script beside the program. Configure installs the "
           "script.";
  } catch (const NumberedError&) {
    return {};
  }
}

}  // namespace pellorin
