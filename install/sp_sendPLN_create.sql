-- A stand-in for the procedure of the Pellorin service, to try the configuration utility without the service. It sends
-- nothing: it records each message in the table PellorinStandInMail of its own database, where it is to be called. The
-- service's own script has the same name and replaces this file; the configuration utility never replaces it.
--
-- The script is one batch, for SQL Server 2005 and later. The block between its two marker lines refuses queries with
-- temporary tables; the installer leaves it out where such queries are allowed.
CREATE PROCEDURE sp_sendPLN
  @recipients nvarchar(4000),
  @message nvarchar(4000) = N'',
  @query nvarchar(4000) = N'',
  @attachments nvarchar(4000) = N'',
  @copy_recipients nvarchar(4000) = N'',
  @blind_copy_recipients nvarchar(4000) = N'',
  @subject nvarchar(4000) = N'',
  @queue nvarchar(4000) = N''
WITH EXECUTE AS OWNER -- callers may only execute: the table is made and filled with the owner's permissions
AS
BEGIN
  SET NOCOUNT ON;
  IF LTRIM(RTRIM(ISNULL(@recipients, N''))) = N''
  BEGIN
    RAISERROR(N'No recipients were given.', 16, 1);
    RETURN 1;
  END;
--sqlstart
  IF CHARINDEX(N'#', @query) > 0
  BEGIN
    RAISERROR(N'Queries that use temporary tables are not allowed.', 16, 1);
    RETURN 1;
  END;
--sqlend
  IF OBJECT_ID(N'dbo.PellorinStandInMail', N'U') IS NULL
    CREATE TABLE dbo.PellorinStandInMail
    (
      id int IDENTITY(1, 1) PRIMARY KEY,
      received datetime NOT NULL DEFAULT GETDATE(),
      caller nvarchar(256) NOT NULL DEFAULT ORIGINAL_LOGIN(),
      recipients nvarchar(4000) NOT NULL,
      message nvarchar(4000) NULL,
      query nvarchar(4000) NULL,
      attachments nvarchar(4000) NULL,
      copy_recipients nvarchar(4000) NULL,
      blind_copy_recipients nvarchar(4000) NULL,
      subject nvarchar(4000) NULL,
      queue nvarchar(4000) NULL
    );
  INSERT INTO dbo.PellorinStandInMail
    (recipients, message, query, attachments, copy_recipients, blind_copy_recipients, subject, queue)
  VALUES
    (@recipients, @message, @query, @attachments, @copy_recipients, @blind_copy_recipients, @subject, @queue);
  RETURN 0;
END
