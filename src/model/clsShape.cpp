// How a shape's link is read from its tags and written back into them.

#include "model/clsShape.h"

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "model/clsPresentation.h"
#include "model/modTags.h"

namespace LF2000 {

namespace {

void RemoveColumnTags(PowerPoint::Tags& tags) {
  for (std::int32_t i = tags.Count(); i >= 1; --i) {
    const std::string name = tags.Name(i);
    if (modTags::IsColumnTag(name)) tags.Delete(name);
  }
}

}  // namespace

void clsShape::Reset() {
  clsShape fresh;
  fresh.presentation_ = presentation_;
  *this = std::move(fresh);
}

void clsShape::ShapeItem(const std::shared_ptr<PowerPoint::Shape>& shape) try {
  Reset();
  shape_ = shape;
  const auto tags = shape_->Tags();
  for (std::int32_t i = 1; i <= tags->Count(); ++i) {
    const std::string name = tags->Name(i);
    if (!modTags::IsColumnTag(name)) continue;
    enabled_ = true;
    ReadTag(name, tags->Value(i));
  }
} catch (...) {
  modErrors::CatchError(modErrors::SettingShape);
}

void clsShape::ReadTag(std::string_view name, std::string value) {
  if (modTags::Matches(name, modTags::ColumnType)) {
    sourceType_ = basic::CLng(value);
  } else if (modTags::Matches(name, modTags::ColumnTag)) {
    connectionTagNumber_ = std::move(value);
  } else if (modTags::Matches(name, modTags::ColumnName)) {
    columnName_ = std::move(value);
  } else if (modTags::Matches(name, modTags::ColumnRow)) {
    row_ = basic::CDbl(value);
  } else if (modTags::Matches(name, modTags::ColumnDateFormat)) {
    dateFormat_ = std::move(value);
  } else if (modTags::Matches(name, modTags::ColumnObjectFolder)) {
    objectFolder_ = std::move(value);
  } else {
    objectExtension_ = std::move(value);
  }
}

/// What is empty stays at its sentinel, and unwritten.
void clsShape::KeepCurrent() {
  const auto keep = [](const std::string& current, std::string& pending) {
    if (!current.empty()) pending = current;
  };
  newSourceType_ = sourceType_;
  keep(connectionTagNumber_, newConnectionTagNumber_);
  keep(columnName_, newColumnName_);
  newRow_ = row_;
  keep(dateFormat_, newDateFormat_);
  keep(objectFolder_, newObjectFolder_);
  keep(objectExtension_, newObjectExtension_);
}

void clsShape::SetShapeTags() try {
  if (newSourceType_ == -1) sourceType_ = 0;
  if (newConnectionTagNumber_ == NonePending) connectionTagNumber_.clear();
  if (newColumnName_ == NonePending) columnName_.clear();
  if (newDateFormat_ == NonePending) dateFormat_.clear();
  if (newRow_ == NoRowPending) row_ = 0;
  if (newObjectFolder_ == NonePending || newObjectFolder_ == NoObjectPending) objectFolder_.clear();
  if (newObjectExtension_ == NonePending || newObjectExtension_ == NoObjectPending) objectExtension_.clear();

  const auto tags = shape_->Tags();
  RemoveColumnTags(*tags);

  tags->Add(modTags::ColumnType, basic::CStr(newSourceType_));
  sourceType_ = newSourceType_;
  newSourceType_ = 0;

  switch (static_cast<LF2000::SourceType>(sourceType_)) {
    case LF2000::SourceType::Clock:
      WriteField(*tags, modTags::ColumnDateFormat, dateFormat_, newDateFormat_);
      break;
    case LF2000::SourceType::DataField:
    case LF2000::SourceType::LinkedObject:
      WriteField(*tags, modTags::ColumnTag, connectionTagNumber_, newConnectionTagNumber_);
      WriteField(*tags, modTags::ColumnName, columnName_, newColumnName_);
      WriteRow(*tags);
      if (sourceType_ == static_cast<std::int32_t>(LF2000::SourceType::LinkedObject)) {
        WriteField(*tags, modTags::ColumnObjectFolder, objectFolder_, newObjectFolder_);
        WriteField(*tags, modTags::ColumnObjectExtension, objectExtension_, newObjectExtension_);
      }
      break;
    case LF2000::SourceType::Graph:
      WriteField(*tags, modTags::ColumnTag, connectionTagNumber_, newConnectionTagNumber_);
      break;
    case LF2000::SourceType::NotLinked:
      break;
  }
} catch (...) {
  modErrors::CatchError(modErrors::SavingShapeTags);
}

void clsShape::WriteField(PowerPoint::Tags& tags, std::string_view key, std::string& current,
                          std::string& pending) {
  const bool isObjectField = key == modTags::ColumnObjectFolder || key == modTags::ColumnObjectExtension;
  if (pending != NonePending && !(isObjectField && pending == NoObjectPending)) {
    tags.Add(key, pending);
    current = std::move(pending);
    pending = NonePending;
  } else if (!current.empty()) {
    tags.Add(key, current);
  }
}

void clsShape::WriteRow(PowerPoint::Tags& tags) {
  if (newRow_ != NoRowPending) {
    tags.Add(modTags::ColumnRow, basic::CStr(newRow_));
    row_ = newRow_;
    newRow_ = NoRowPending;
  }
}

basic::Variant clsShape::GetValue() const {
  // The presentation keeps nothing under a connection's number that has an
  // operation of this name, so every call is one of the failures it swallows.
  return basic::Empty{};
}

void clsShape::RemoveLumenfold() {
  modGlobalFunctions::IgnoreErrors([&] {
    const auto tags = shape_->Tags();
    for (std::int32_t i = tags->Count(); i >= 1; --i) {
      modGlobalFunctions::IgnoreErrors([&] {
        const std::string name = tags->Name(i);
        if (modTags::IsColumnTag(name)) tags->Delete(name);
      });
    }
  });
}

}  // namespace LF2000
