#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/adodb.h"

namespace ado {

class Recordset;

/// Column of a recordset; reads and writes the recordset's current record.
class Field final : public ADODB::Field {
 public:
  Field(Recordset& recordset, std::size_t index, std::string name, std::size_t definedSize)
      : recordset_(recordset), index_(index), name_(std::move(name)), definedSize_(definedSize) {}

  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] basic::Variant Value() const override;
  /// The text of the value, as a field of characters holds it; Null stays.
  void Value(basic::Variant value) override;

 private:
  Recordset& recordset_;
  std::size_t index_;
  std::string name_;
  std::size_t definedSize_;
};

/// The fields of a recordset, found by number or by name in any case.
class Fields final : public ADODB::Fields {
 public:
  explicit Fields(Recordset& recordset) : recordset_(recordset) {}

  [[nodiscard]] std::int32_t Count() const override { return static_cast<std::int32_t>(fields_.size()); }
  [[nodiscard]] ADODB::Field& Item(std::int32_t index) override;
  [[nodiscard]] ADODB::Field& Item(std::string_view name) override;
  void Append(std::string_view name, ADODB::DataType type, std::int32_t definedSize) override;

  /// A field whatever the state of the recordset.
  void add(std::string_view name, std::size_t definedSize);
  /// As the fields that a query has: of those with one name the first is found
  /// by it. Where the names are as before, the fields stay.
  void assign(const std::vector<std::string>& names);
  void clear();

 private:
  struct AnyCaseHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const;
  };
  struct AnyCaseEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
  };

  Recordset& recordset_;
  std::vector<std::unique_ptr<Field>> fields_;
  std::unordered_map<std::string, std::size_t, AnyCaseHash, AnyCaseEqual> byName_;
};

}  // namespace ado
