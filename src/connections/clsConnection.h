#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "addin/support/modDebug.h"
#include "basic/Date.h"
#include "connections/DataPreview.h"
#include "host/adodb.h"
#include "host/excel.h"
#include "host/graph.h"
#include "host/services.h"
#include "host/text_table.h"

namespace LF2000 {

/// What a connection reads. Any other number is kept and opens nothing.
enum class ConnectionKind : std::int32_t { TextFile = 0, Database = 1, Excel = 2 };

/// One data connection of a linked presentation. Whatever the source, its data is
/// one recordset, read by 1-based row number and column name.
///
/// Errors are raised as ErrorBase + n with the texts of modErrors. Waits let the
/// host process its messages, so a connection may change across such a call.
class clsConnection {
 public:
  clsConnection() = default;
  ~clsConnection();
  clsConnection(const clsConnection&) = delete;
  clsConnection& operator=(const clsConnection&) = delete;

  /// Full name of the presentation that owns the connection, the base of its paths.
  [[nodiscard]] const std::string& ActivePresentationName() const { return activePresentationName_; }
  void ActivePresentationName(std::string name) { activePresentationName_ = std::move(name); }

  /// The persisted description: the fields of the connection's type, each
  /// followed by a TAB (docs/tags.md).
  [[nodiscard]] std::string TagString() const;
  /// Raises SettingConnectionTag; fields before the failing one keep their new values.
  void TagString(std::string_view text);

  [[nodiscard]] const std::string& ConnectionTagNumber() const { return connectionTagNumber_; }
  void ConnectionTagNumber(std::string number) { connectionTagNumber_ = std::move(number); }
  [[nodiscard]] std::int32_t ConnectionType() const { return connectionType_; }
  void ConnectionType(std::int32_t type) { connectionType_ = type; }
  [[nodiscard]] const std::string& ConnectionDescription() const { return connectionDescription_; }
  void ConnectionDescription(std::string text) { connectionDescription_ = std::move(text); }
  /// Text file or workbook, as the author entered it.
  [[nodiscard]] const std::string& ConnectionFileString() const { return connectionFileString_; }
  void ConnectionFileString(std::string path) { connectionFileString_ = std::move(path); }
  [[nodiscard]] const std::string& ConnectionSheet() const { return connectionSheet_; }
  void ConnectionSheet(std::string sheet) { connectionSheet_ = std::move(sheet); }
  [[nodiscard]] const std::string& ConnectionRange() const { return connectionRange_; }
  void ConnectionRange(std::string range) { connectionRange_ = std::move(range); }
  [[nodiscard]] bool ConnectionFirstRowFieldNames() const { return connectionFirstRowFieldNames_; }
  void ConnectionFirstRowFieldNames(bool names) { connectionFirstRowFieldNames_ = names; }
  [[nodiscard]] const std::string& ConnectionString() const { return connectionString_; }
  void ConnectionString(std::string text) { connectionString_ = std::move(text); }
  [[nodiscard]] const std::string& RecordsetSQL() const { return recordsetSQL_; }
  void RecordsetSQL(std::string sql) { recordsetSQL_ = std::move(sql); }
  [[nodiscard]] const std::string& RecordsetColumns() const { return recordsetColumns_; }
  void RecordsetColumns(std::string columns) { recordsetColumns_ = std::move(columns); }
  /// The file that is read, with its path; empty where none is.
  [[nodiscard]] std::string ResolvedFile() const;
  /// Milliseconds between two timed requeries of a database.
  [[nodiscard]] double RecordsetRefreshRate() const { return recordsetRefreshRate_; }
  void RecordsetRefreshRate(double rate) { recordsetRefreshRate_ = rate; }
  /// True while the presentation is edited rather than shown.
  [[nodiscard]] bool DesignMode() const { return designMode_; }
  void DesignMode(bool design) { designMode_ = design; }

  /// 0 when the data is not open.
  [[nodiscard]] double RecordCount() const;
  [[nodiscard]] double ColumnCount() const;

  /// Holds these rows from now on: no source is opened, read anew or stored.
  void HoldSample(host::TextTable rows);
  [[nodiscard]] bool IsSample() const { return isSample_; }

  void OpenConnection();
  void OpenRecordset();
  void CloseFile();
  void CloseConnection();
  void CloseRecordset();
  void CloseExcel();
  /// Ends what waits for the source, if anything does, by an error; what is held stays. For who runs while
  /// the loop is waited in.
  void Cancel();
  /// Reloads the data when it is due or forced: a database when its refresh rate
  /// has passed, a file when its modification time changed. True when what is held is
  /// what the source holds now. False when nothing is known of that: the time of a
  /// database has not come, a file that could not be read has not changed since.
  bool Requery(bool forced);

  /// For who must not wait: this object takes over what `reader`, another one for the same source, reads. As
  /// long as `isReading` says that it does, Requery asks nobody; what it has read then is taken, and the
  /// source is asked as usual from there on.
  void ReadBy(std::shared_ptr<clsConnection> reader, std::function<bool()> isReading);
  /// Takes what the reader has read. False while it reads, and when it could not.
  bool TakeReading();

  /// The text that a shape shows for a row and column under a display type.
  /// `noValue` tells whether there was none; it stays as passed while the data is
  /// not open. Raises RetrievingValue.
  [[nodiscard]] std::string GetValueDatabase(double row, std::string_view column, std::int16_t displayType,
                                             bool showMarkers, bool& noValue);
  /// The file name of a linked object named by the data: folder, "\", value, ".",
  /// extension. A folder that already ends in "\" is not put in front.
  [[nodiscard]] std::string GetValueObject(double row, std::string_view column, std::string_view folder,
                                           std::string_view extension, std::int16_t displayType,
                                           bool showMarkers, bool& noValue);
  /// What shapes see from now on in place of the data, without markers, as in a show; RecordCount and the
  /// others go by it as well. Holds over requeries, and ends when the connection is opened anew. Nothing
  /// while the data is not open.
  void Preview(DataPreview preview);
  [[nodiscard]] DataPreview Preview() const { return preview_; }
  /// Whether the data hold nothing there: Null, or no such row. What is empty to
  /// GetValueDatabase may be an empty text.
  [[nodiscard]] bool IsNull(double row, std::string_view column);
  /// All rows with the field names above them, for a chart. False, and the table
  /// as it was, while the data is not open or has no row.
  [[nodiscard]] bool GetValueGraph(MSGraph::Table& table);
  /// Another number after every reading of the data; 0 before the first.
  [[nodiscard]] std::int64_t DataVersion() const { return dataVersion_; }
  /// The columns that data without which are incomplete: a reading that lacks one of them, in any case
  /// of letters, is no delivery, and Requery raises why. What was read is held all the same, for who
  /// uses other columns.
  void UsedColumns(std::vector<std::string> columns) { usedColumns_ = std::move(columns); }
  /// Raises which of them the last reading lacks.
  void RequireUsedColumns() const;
  /// The field names from index 1; element 0 is empty.
  [[nodiscard]] std::vector<std::string> Columns() const;

  /// How the readings of the source have gone since the object was made.
  struct ReadingRecord {
    /// Those that succeeded. A file that was looked at and has not changed counts if
    /// it was read then: what is held is what there is.
    std::uint64_t Deliveries = 0;
    /// When the last of them came; the zero date before the first.
    basic::Date LastDelivery = {};
    std::uint64_t Failures = 0;
    /// No delivery since the last failure.
    bool IsFailing = false;
    /// Of the last failure, without passwords.
    std::string LastError;
  };
  [[nodiscard]] const ReadingRecord& Readings() const { return readings_; }
  /// What the last reading of a text file noticed in it, a sentence each: titles passed over, text dropped.
  [[nodiscard]] const std::vector<std::string>& Remarks() const { return remarks_; }
  /// Whoever catches the failure of a reading says so.
  void NoteFailure(std::string_view description);

  [[nodiscard]] bool ConnectionReady() const;
  [[nodiscard]] bool ConnectionTimedOut() const;
  [[nodiscard]] bool RecordsetReady() const;
  [[nodiscard]] bool RecordsetTimedOut() const;

 private:
  static void Log(modDebug::DebugKind kind, std::string_view text);

  [[nodiscard]] ConnectionKind Kind() const { return static_cast<ConnectionKind>(connectionType_); }
  [[nodiscard]] bool IsFile() const {
    return Kind() == ConnectionKind::TextFile || Kind() == ConnectionKind::Excel;
  }
  [[nodiscard]] std::string Base() const;

  void OpenDatabase();
  void OpenTextFile();
  void OpenTextFileOnce(const std::string& path);
  void OpenDataFile();
  /// False when there is no Excel to open it with.
  [[nodiscard]] bool OpenWorkbook();
  void OpenWorkbookOnce(const std::string& path);
  void OpenExcelFile();
  void DefineExcelFields(Excel::Range& range, ADODB::Recordset& recordset) const;
  [[nodiscard]] std::int64_t FillExcelRecords(Excel::Range& range, ADODB::Recordset& recordset) const;
  void OpenDatabaseRecordset();
  bool RequeryData(bool forced);
  bool RequeryDatabase(bool forced);
  bool RequeryFile(bool forced);
  void NoteReading();
  void NoteDelivery();
  void ReloadDatabase();
  void FetchAgain();
  /// One turn of the loop while something is waited for; Cancel ends it by an error.
  void Wait();
  /// The loop runs while it is filled, and may put another in its place or none.
  void RequireStillHeld(const std::shared_ptr<ADODB::Recordset>& recordset) const;
  [[nodiscard]] bool HasRow(double row) const;
  void MoveTo(double row);
  void WaitForRows() const;
  [[nodiscard]] std::string FieldText(std::string_view column, bool markers);

  std::string activePresentationName_;
  std::string connectionTagNumber_;
  std::int32_t connectionType_ = 0;
  std::string connectionDescription_;
  std::string connectionFileString_;
  std::string connectionSheet_;
  std::string connectionRange_;
  bool connectionFirstRowFieldNames_ = false;
  std::string connectionString_;
  std::string recordsetSQL_;
  std::string recordsetColumns_;
  double recordsetRefreshRate_ = 0;
  bool designMode_ = false;

  std::shared_ptr<ADODB::Connection> connection_;
  /// Never assigned, so that a source that is not ready counts as timed out at once.
  basic::Date connectionStartTime_;
  std::shared_ptr<ADODB::Recordset> recordset_;
  /// Null once its reading was taken.
  std::shared_ptr<clsConnection> reader_;
  std::function<bool()> isReading_;
  DataPreview preview_ = DataPreview::AsTheyAre;
  /// The data, while what stands in for them lies in their place.
  std::shared_ptr<ADODB::Recordset> previewed_;
  basic::Date recordsetStartTime_;
  std::shared_ptr<Excel::Workbook> workbook_;
  std::shared_ptr<Excel::Worksheet> worksheet_;
  std::shared_ptr<host::InputFile> file_;
  basic::Date lastFileDate_;
  bool dataOpen_ = false;
  std::vector<std::string> usedColumns_;
  /// Of the used ones.
  std::vector<std::string> missingColumns_;
  /// What was opened last has been read as well, with all that is used of it.
  bool isCurrent_ = false;
  bool isCancelled_ = false;
  bool isSample_ = false;
  std::int64_t dataVersion_ = 0;
  float lastRequeryTime_ = 0;
  ReadingRecord readings_;
  std::vector<std::string> remarks_;
};

/// A column number as worksheets letter it, of two letters at most: 1 is A, 27 is
/// AA, 702 is ZZ.
[[nodiscard]] std::string ColumnLetters(std::int32_t number);

}  // namespace LF2000
