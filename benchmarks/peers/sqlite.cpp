// A database of SQLite in memory, with a row for each message.

#include <sqlite3.h>

#include <stdexcept>

#include "benchmarks/peers/peer.h"

namespace zuna_bench {

namespace {

void Check(bool is_right, sqlite3* database) {
  if (!is_right) throw std::runtime_error(sqlite3_errmsg(database));
}

/// A database in memory, which closes when it goes.
class Database {
 public:
  Database() { Check(sqlite3_open(":memory:", &handle_) == SQLITE_OK, handle_); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database() { sqlite3_close(handle_); }

  void Run(const char* sql) {
    Check(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr) == SQLITE_OK, handle_);
  }
  sqlite3* handle() const { return handle_; }

 private:
  sqlite3* handle_ = nullptr;
};

class Statement {
 public:
  Statement(const Database& database, const char* sql) : database_(database.handle()) {
    Check(sqlite3_prepare_v2(database_, sql, -1, &handle_, nullptr) == SQLITE_OK, database_);
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(handle_); }

  void Bind(int column, std::int64_t value) { sqlite3_bind_int64(handle_, column, value); }
  std::int64_t Number(int column) { return sqlite3_column_int64(handle_, column); }
  /// Whether there is another row.
  bool Step() {
    const int result = sqlite3_step(handle_);
    Check(result == SQLITE_ROW || result == SQLITE_DONE, database_);
    return result == SQLITE_ROW;
  }
  void Reset() { sqlite3_reset(handle_); }

 private:
  sqlite3* database_;
  sqlite3_stmt* handle_ = nullptr;
};

class Sqlite : public Peer {
 public:
  void Take(const zuna_midi::ShowData& show) override { voices_ = VoicesOf(show); }

  std::vector<std::string> Write() override {
    Database database;
    database.Run("CREATE TABLE message(voice INT, time INT, status INT, data1 INT, data2 INT); BEGIN");
    Statement insert(database, "INSERT INTO message VALUES(?, ?, ?, ?, ?)");
    for (std::size_t voice = 0; voice < voices_.size(); ++voice) {
      for (const auto& [time, message] : voices_[voice]) {
        insert.Bind(1, static_cast<std::int64_t>(voice));
        insert.Bind(2, time);
        insert.Bind(3, message.status);
        insert.Bind(4, message.data1);
        insert.Bind(5, message.data2);
        insert.Step();
        insert.Reset();
      }
    }
    database.Run("COMMIT");
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
        sqlite3_serialize(database.handle(), "main", &size, 0), sqlite3_free);
    return {std::string(reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size))};
  }

  void Read(const std::vector<std::string>& files) override {
    std::string bytes = files.front();  // SQLite wants memory that it may write to
    const auto size = static_cast<sqlite3_int64>(bytes.size());
    const Database database;
    Check(sqlite3_deserialize(database.handle(), "main", reinterpret_cast<unsigned char*>(bytes.data()), size,
                              size, SQLITE_DESERIALIZE_READONLY) == SQLITE_OK,
          database.handle());
    voices_.clear();
    Statement select(database, "SELECT voice, time, status, data1, data2 FROM message ORDER BY rowid");
    while (select.Step()) {
      voices_.resize(static_cast<std::size_t>(select.Number(0)) + 1);
      const auto byte = [&](int column) { return static_cast<unsigned char>(select.Number(column)); };
      voices_.back().emplace_back(static_cast<std::uint32_t>(select.Number(1)),
                                  std_midi::VoiceMessage(byte(2), byte(3), byte(4)));
    }
  }

  std::vector<Messages> Voices() const override { return voices_; }

 private:
  std::vector<Messages> voices_;
};

}  // namespace

std::unique_ptr<Peer> MakeSqlite() { return std::make_unique<Sqlite>(); }

}  // namespace zuna_bench
