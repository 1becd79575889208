// A log: its song logs by number.

#include "CL/change_log.h"

#include <stdexcept>
#include <utility>

#include "kit/format.h"
#include "platform/core/bytes/quote.h"

namespace CL {

namespace {

const std::shared_ptr<SongLog>& Find(const ChangeLog::SongLogs& songs, const std::string& key) {
  const auto found = songs.find(key);
  if (found == songs.end()) {
    throw std::out_of_range(
        kit::format("The log has no song with the number %s", zuna_core::Quote(key).c_str()));
  }
  return found->second;
}

}  // namespace

ChangeLog::ChangeLog() = default;
ChangeLog::ChangeLog(const ChangeLog&) = default;
ChangeLog::ChangeLog(ChangeLog&&) noexcept = default;
ChangeLog& ChangeLog::operator=(const ChangeLog&) = default;
ChangeLog& ChangeLog::operator=(ChangeLog&&) noexcept = default;
ChangeLog::~ChangeLog() = default;

void ChangeLog::AddSongLog(std::shared_ptr<SongLog> song) {
  if (!song) throw std::invalid_argument("ChangeLog::AddSongLog: no song log was given");
  const std::string number = song->song_number;
  song_logs_[number] = std::move(song);
}

std::shared_ptr<SongLog> ChangeLog::GetSongLog(const std::string& key) { return Find(song_logs_, key); }

std::shared_ptr<SongLog> ChangeLog::GetSongLog(const std::string& key) const { return Find(song_logs_, key); }

}  // namespace CL
