#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "fakes/FakeRecordset.h"
#include "host/adodb.h"

namespace fakes {

/// A database of one table (Name, Price) that opens and fetches over several
/// turns of the message loop, can be down, and writes down what is asked of it.
class Database final : public ADODB::Factory {
 public:
  std::vector<ADODB::Provider> Providers() const override { return providers; }
  std::vector<std::string> DataSources() const override { return dataSources; }
  std::shared_ptr<ADODB::Connection> CreateConnection() override { return std::make_shared<Link>(*this); }
  std::shared_ptr<ADODB::Recordset> CreateRecordset() override;

  /// One turn of the message loop.
  void Progress() {
    if (ticksToOpen > 0) --ticksToOpen;
    if (ticksToFetch > 0) --ticksToFetch;
  }

  bool down = false;
  bool tableIsGone = false;
  int ticksToOpen = 0;
  int ticksToFetch = 0;
  /// Turns of the loop that each requery takes.
  int ticksPerRequery = 0;
  std::vector<std::pair<std::string, std::string>> rows;
  /// What OpenSchema lists, all of it tables without a schema: names with their columns.
  std::vector<std::pair<std::string, std::vector<std::string>>> tables;
  std::vector<ADODB::Provider> providers = {{"SQLite", "SQLite", true},
                                            {"PostgreSQL", "PostgreSQL"},
                                            {"MariaDB", "MariaDB and MySQL", false, "It is not installed."}};
  std::vector<std::string> dataSources;
  std::vector<std::string> log;
  /// Runs within Open of a connection.
  std::function<void()> onOpen;
  /// Whether a connection was destroyed by what ran then.
  bool goneInUse = false;

 private:
  class Link final : public ADODB::Connection {
   public:
    explicit Link(Database& database) : database_(database) {}
    ~Link() override { database_.goneInUse = database_.goneInUse || database_.isOpening_; }
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;
    void ConnectionString(std::string_view text) override { text_ = text; }
    std::string ConnectionString() const override { return text_; }
    void Open(std::string_view, std::string_view, std::int32_t options) override {
      if (database_.down) throw basic::Error(basic::AdapterError, "fake database", "server down");
      Database& database = database_;
      database.log.push_back("open " + text_ + " " + std::to_string(options));
      database.isOpening_ = true;
      if (database.onOpen) database.onOpen();
      database.isOpening_ = false;
      if (!database.goneInUse) open_ = true;
    }
    void Close() override {
      database_.log.emplace_back("close");
      open_ = false;
    }
    std::int32_t State() override {
      if (!open_) return ADODB::adStateClosed;
      return database_.ticksToOpen > 0 ? ADODB::adStateConnecting : ADODB::adStateOpen;
    }
    std::int32_t ConnectionTimeout() const override { return 15; }
    std::int32_t CommandTimeout() const override { return 30; }
    std::shared_ptr<ADODB::Recordset> OpenSchema(ADODB::Schema schema, std::string_view table) override {
      database_.log.push_back("schema " + std::to_string(static_cast<int>(schema)) + " " +
                              std::string(table));
      return database_.List(schema, table);
    }

   private:
    Database& database_;
    std::string text_;
    bool open_ = false;
  };

  class Rows final : public fakes::Recordset {
   public:
    explicit Rows(Database& database) : database_(database) {}
    void ActiveConnection(const std::shared_ptr<ADODB::Connection>& connection) override {
      if (!connection) {
        database_.log.emplace_back("detach");
      } else if (Count() != 0) {
        database_.log.emplace_back("attach");
      }
    }
    using fakes::Recordset::Open;
    void Open(std::string_view source, ADODB::CursorType, ADODB::LockType, std::int32_t options) override {
      database_.log.push_back("recordset " + std::string(source) + " " + std::to_string(options));
      Append("Name", ADODB::adVarChar, 50);
      Append("Price", ADODB::adVarChar, 50);
      Fill();
    }
    void Requery(std::int32_t options) override {
      database_.log.push_back("requery " + std::to_string(options));
      if (database_.tableIsGone) throw basic::Error(basic::AdapterError, "fake database", "no such table");
      database_.ticksToFetch = database_.ticksPerRequery;
      Fill();
    }
    std::int32_t State() override {
      return database_.ticksToFetch > 0 ? ADODB::adStateFetching : fakes::Recordset::State();
    }

   private:
    void Fill() {
      Close();
      Open();
      for (const auto& [name, price] : database_.rows) {
        AddNew();
        Item("Name").Value(basic::Variant(name));
        Item("Price").Value(basic::Variant(price));
      }
    }
    Database& database_;
  };

  class Listing final : public fakes::Recordset {
   public:
    explicit Listing(const Database& database) : database_(database) {}
    std::int32_t State() override {
      return database_.ticksToFetch > 0 ? ADODB::adStateFetching : fakes::Recordset::State();
    }

   private:
    const Database& database_;
  };

  std::shared_ptr<ADODB::Recordset> List(ADODB::Schema schema, std::string_view table) const {
    const auto list = std::make_shared<Listing>(*this);
    const bool areTables = schema == ADODB::adSchemaTables;
    for (const char* field : {"TABLE_SCHEMA", "TABLE_NAME", areTables ? "TABLE_TYPE" : "COLUMN_NAME"}) {
      list->Append(field, ADODB::adVarChar, 50);
    }
    const auto add = [&](const std::string& name, const std::string& third) {
      list->AddNew();
      list->Item("TABLE_NAME").Value(basic::Variant(name));
      list->Item(2).Value(basic::Variant(third));
    };
    list->Open();
    for (const auto& [name, columns] : tables) {
      if (!table.empty() && table != name) continue;
      if (areTables) add(name, "TABLE");
      for (const std::string& column : columns) {
        if (!areTables) add(name, column);
      }
    }
    if (list->RecordCount() > 0) list->MoveFirst();
    return list;
  }

  bool isOpening_ = false;
};

inline std::shared_ptr<ADODB::Recordset> Database::CreateRecordset() { return std::make_shared<Rows>(*this); }

}  // namespace fakes
