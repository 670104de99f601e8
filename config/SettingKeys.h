// The keys of the settings in the files; docs/file-formats.md says what each means. The service reads the
// same keys, so their spelling is fixed.
#pragma once

namespace pellorin {

// Of a section [MAIL:name].
struct MailKey {
  static constexpr const char* kSendMethod = "SendMethod";  // "1" pickup folder, "2" remote server
  static constexpr const char* kRemoteServerName = "RemoteServerName";
  static constexpr const char* kRemoteServerPort = "RemoteServerPort";
  static constexpr const char* kLocalMailPickupFolder = "LocalMailPickupFolder";
  static constexpr const char* kAuthenticationMethod =
      "AuthenticationMethod";                           // "0" anonymous, "1" basic, "2" NTLM
  static constexpr const char* kUsername = "Username";  // NTLM: domain\user
  static constexpr const char* kPassword = "Password";  // scrambled in the file
  static constexpr const char* kSenderEmail = "SenderEmail";
  static constexpr const char* kDefaultDomain = "DefaultDomain";
  static constexpr const char* kConnectionTimeout = "ConnectionTimeout";  // seconds, 0 = unlimited
};

// Of a section [SQL:instance].
struct SqlKey {
  static constexpr const char* kConnectionType = "ConnectionType";  // "Trusted" or "Sql"
  static constexpr const char* kSqlUsername = "SqlUsername";
  static constexpr const char* kSqlPassword = "SqlPassword";      // scrambled in the file
  static constexpr const char* kTimeout = "Timeout";              // seconds, 0 = unlimited
  static constexpr const char* kWidth = "Width";                  // characters, 0 = unlimited
  static constexpr const char* kDefaultFormat = "DefaultFormat";  // "HTML" or "Text"
  static constexpr const char* kEncodeHTML = "EncodeHTML";        // "1" or "0", like the next three
  static constexpr const char* kAnsiAttachment = "AnsiAttachment";
  static constexpr const char* kEmailWhenQueryEmpty = "EmailWhenQueryEmpty";
  static constexpr const char* kForceSetUser = "ForceSetUser";
  static constexpr const char* kStylesheet = "Stylesheet";
  static constexpr const char* kPrimaryMailServer = "PrimaryMailServer";  // name of a mail server
  static constexpr const char* kSecondaryMailServer = "SecondaryMailServer";
  static constexpr const char* kConfiguredDB = "ConfiguredDB";        // where the procedure is installed
  static constexpr const char* kAccessType = "AccessType";            // "public" or "sysadmin"
  static constexpr const char* kAllowTempTables = "AllowTempTables";  // "1" or "0"
  static constexpr const char* kProhibitedTokens = "ProhibitedTokens";
  static constexpr const char* kRedirectAllEmailTo = "RedirectAllEmailTo";
  static constexpr const char* kExceptionMode = "ExceptionMode";  // "STOP" or "CONTINUE"
  static constexpr const char* kQueues = "Queues";                // names, separated by ","
};

// Of the section [ADMIN:Pellorin].
struct AdminKey {
  static constexpr const char* kSchedulerUsername = "SchedulerUsername";
  static constexpr const char* kSchedulerPassword = "SchedulerPassword";  // scrambled in the file
};

// The attributes of a queue's definition.
struct QueueKey {
  static constexpr const char* kTitle = "title";
  static constexpr const char* kFrequency = "frequency";      // "daily" or "weekly"
  static constexpr const char* kEvery = "every";              // days or weeks
  static constexpr const char* kDays = "days";                // "monday,friday"
  static constexpr const char* kOccursType = "occurstype";    // "once" or "every"
  static constexpr const char* kOccursOnce = "occursonce";    // time of day
  static constexpr const char* kOccursEvery = "occursevery";  // hours or minutes
  static constexpr const char* kSpan = "span";                // "Hour(s)" or "Minute(s)"
  static constexpr const char* kStartTime = "starttime";      // time of day
  static constexpr const char* kEndTime = "endtime";
  static constexpr const char* kStartDate = "startdate";
  static constexpr const char* kEndDate = "enddate";
  static constexpr const char* kHasEndDate = "hasenddate";                        // "1" or "0"
  static constexpr const char* kQueueByDefault = "queuebydefault";                // "none", "all" or "filter"
  static constexpr const char* kQueueByDefaultServers = "queuebydefaultservers";  // names, separated by ","
  static constexpr const char* kQueueByDefaultFilter = "queuebydefaultfilter";    // lines, separated by "###"
};

}  // namespace pellorin
