#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "basic/Variant.h"
#include "host/powerpoint.h"

namespace LF2000 {

class clsPresentation;

/// What feeds a linked shape. A Graph is a chart or a table: what takes a connection as a whole.
enum class SourceType : std::int32_t { NotLinked = 0, Clock = 1, DataField = 2, LinkedObject = 3, Graph = 4 };

/// One shape as a linked shape: a short-lived wrapper, attached to a host shape
/// through ShapeItem and reusable for many shapes in turn. The shape's tags are
/// the only lasting state. Changes are assigned to the pending values (New…,
/// SourceType) and written by SetShapeTags; a field whose pending value was not
/// assigned is cleared then.
class clsShape {
 public:
  /// Not owned; must outlive this object. Gives GetValue its connections.
  void ActivePresentation(clsPresentation* presentation) { presentation_ = presentation; }

  [[nodiscard]] const std::shared_ptr<PowerPoint::Shape>& ShapeItem() const { return shape_; }
  /// Resets the object, then reads the shape's tags.
  void ShapeItem(const std::shared_ptr<PowerPoint::Shape>& shape);

  /// Whether the shape carried at least one tag of the system when it was attached.
  [[nodiscard]] bool LumenfoldEnabled() const { return enabled_; }

  /// The pending source type when there is one, else the current one.
  [[nodiscard]] std::int32_t SourceType() const { return newSourceType_ != 0 ? newSourceType_ : sourceType_; }
  void SourceType(std::int32_t type) { newSourceType_ = type; }

  [[nodiscard]] const std::string& ConnectionTagNumber() const { return connectionTagNumber_; }
  [[nodiscard]] const std::string& ColumnName() const { return columnName_; }
  [[nodiscard]] double Row() const { return row_; }
  [[nodiscard]] const std::string& DateFormat() const { return dateFormat_; }
  [[nodiscard]] const std::string& ObjectFolder() const { return objectFolder_; }
  [[nodiscard]] const std::string& ObjectExtension() const { return objectExtension_; }

  void NewConnectionTagNumber(std::string value) { newConnectionTagNumber_ = std::move(value); }
  void NewColumnName(std::string value) { newColumnName_ = std::move(value); }
  void NewRow(double value) { newRow_ = value; }
  void NewDateFormat(std::string value) { newDateFormat_ = std::move(value); }
  void NewObjectFolder(std::string value) { newObjectFolder_ = std::move(value); }
  void NewObjectExtension(std::string value) { newObjectExtension_ = std::move(value); }

  /// Makes the current values pending, for who changes some and keeps the others.
  void KeepCurrent();

  /// Writes the tags from the pending values, which become current.
  void SetShapeTags();

  /// The shape's value from its connection; Empty on any failure.
  [[nodiscard]] basic::Variant GetValue() const;

  /// Deletes the shape's tags; the fields stay. Does not raise.
  void RemoveLumenfold();

 private:
  void Reset();
  void ReadTag(std::string_view name, std::string value);
  void WriteField(PowerPoint::Tags& tags, std::string_view key, std::string& current, std::string& pending);
  void WriteRow(PowerPoint::Tags& tags);

  clsPresentation* presentation_ = nullptr;
  std::shared_ptr<PowerPoint::Shape> shape_;
  std::int32_t sourceType_ = 0;
  std::string connectionTagNumber_;
  std::string columnName_;
  double row_ = 0;
  std::string dateFormat_;
  std::string objectFolder_;
  std::string objectExtension_;
  bool enabled_ = false;
  std::int32_t newSourceType_ = 0;
  std::string newConnectionTagNumber_{NonePending};
  std::string newColumnName_{NonePending};
  double newRow_ = NoRowPending;
  std::string newDateFormat_{NonePending};
  std::string newObjectFolder_{NonePending};
  std::string newObjectExtension_{NonePending};

  static constexpr std::string_view NonePending = "-1";
  /// A second sentinel of the object folder and the object extension.
  static constexpr std::string_view NoObjectPending = "-2";
  static constexpr double NoRowPending = -1.0;
};

}  // namespace LF2000
