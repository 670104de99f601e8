// A SqlConnection over ODBC, with FreeTDS's driver or Microsoft's.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/FileOperations.h"
#include "platform/SqlDrivers.h"
#include "sql/InstancePort.h"
#include "sql/SqlConnection.h"

namespace pellorin {

class OdbcHandle;

class OdbcConnection : public SqlConnection {
 public:
  // `files`: where the system keeps its Kerberos tickets.
  explicit OdbcConnection(FileOperations& files, std::string driver = DefaultSqlDriver(),
                          std::uint16_t browserPort = kBrowserPort);
  ~OdbcConnection() override;

  void Open() override;
  std::string SecurityNote() const override { return securityNote_; }
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

  Session& Opened() const;  // SqlError while closed
  std::unique_ptr<OdbcHandle> Statement() const;
  void FinishResults(const OdbcHandle& statement, const char* operation) const;

  FileOperations& files_;
  std::string driver_;
  std::uint16_t browserPort_;
  std::string securityNote_;
  std::unique_ptr<Session> session_;
};

}  // namespace pellorin
