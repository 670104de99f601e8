// A SqlConnection over ODBC. The driver is the one that the environment variable PELLORIN_ODBC_DRIVER names,
// by its name in odbcinst.ini or the path of its library, else FreeTDS; it may be Microsoft's.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sql/ConnectionString.h"
#include "sql/InstancePort.h"
#include "sql/ServerAddress.h"
#include "sql/SqlConnection.h"

namespace pellorin {

class OdbcHandle;

class OdbcConnection : public SqlConnection {
 public:
  explicit OdbcConnection(std::string driver = DefaultDriver(), std::uint16_t browserPort = kBrowserPort);
  ~OdbcConnection() override;

  static std::string DefaultDriver();
  // What a driver is told; Microsoft's by its own words.
  static std::string DriverText(const std::string& driver, const ConnectionSettings& settings,
                                const std::string& host, std::uint16_t port,
                                std::chrono::seconds commandTimeout);

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

  std::uint16_t PortOf(const ServerAddress& address) const;
  Session& Opened() const;  // SqlError while closed
  std::unique_ptr<OdbcHandle> Statement() const;
  void FinishResults(const OdbcHandle& statement, const char* operation) const;

  std::string driver_;
  std::uint16_t browserPort_;
  std::unique_ptr<Session> session_;
};

}  // namespace pellorin
