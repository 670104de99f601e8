// A SqlConnection over ODBC, with FreeTDS's driver or Microsoft's. Which one: the name or path that the
// environment variable PELLORIN_ODBC_DRIVER gives, else FreeTDS where it is registered or lies in the
// system's library folders.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sql/InstancePort.h"
#include "sql/SqlConnection.h"

namespace pellorin {

class OdbcHandle;

class OdbcConnection : public SqlConnection {
 public:
  explicit OdbcConnection(std::string driver = DefaultDriver(), std::uint16_t browserPort = kBrowserPort);
  ~OdbcConnection() override;

  static std::string DefaultDriver();

  void Open() override;
  void Close() override;
  void BeginTransaction() override;
  void CommitTransaction() override;
  void RollBackTransaction() override;
  void SetDefaultDatabase(const std::string& name) override;
  std::string DefaultDatabase() override;
  std::vector<std::string> QueryColumn(const std::string& statement) override;
  void Execute(const std::string& statement) override;
  void CallProcedure(const std::string& name, const std::vector<NamedText>& parameters) override;

 private:
  struct Session;

  std::string DriverText() const;  // what the driver is told
  Session& Opened() const;         // SqlError while closed
  std::unique_ptr<OdbcHandle> Statement() const;
  void FinishResults(const OdbcHandle& statement, const char* operation) const;

  std::string driver_;
  std::uint16_t browserPort_;
  std::unique_ptr<Session> session_;
};

}  // namespace pellorin
