// Mends legacy shows and logs: walks through the bytes as a reader does, and reduces what leads beyond the
// end.

#include <algorithm>

#include "fuzz/mend/mend.h"
#include "fuzz/mend/numbers.h"

namespace fuzz {

namespace {

constexpr std::size_t kEventSize = 12;

/// A place in the bytes of a legacy file. Moving on stops at the end.
class Walk {
 public:
  explicit Walk(std::string& bytes) : bytes_(bytes) {}

  std::size_t ahead() const { return bytes_.size() - at_; }
  void Skip(std::size_t size) { at_ += std::min(size, ahead()); }

  /// Reduces the count of `size` bytes that stands here to how many entries of `entry_size` bytes follow it,
  /// and gives it.
  std::size_t Count(std::size_t size, std::size_t entry_size) {
    if (ahead() < size) {
      Skip(size);
      return 0;
    }
    const std::size_t most = (ahead() - size) / entry_size;
    const std::size_t count = std::min<std::size_t>(NumberAt(bytes_, at_, size), most);
    PutNumber(bytes_, at_, size, count);
    Skip(size);
    return count;
  }

  /// A text: its length and its bytes.
  void Text() { Skip(Count(1, 1)); }

  void Mark(const std::string& mark) {
    if (ahead() >= mark.size()) bytes_.replace(at_, mark.size(), mark);
    Skip(mark.size());
  }

  /// A sequence of records. Gives its size in bytes.
  std::size_t Sequence() {
    const std::size_t before = ahead();
    Skip(1);
    Skip(Count(4, 1));
    return before - ahead();
  }

 private:
  std::string& bytes_;
  std::size_t at_ = 0;
};

/// Sequences of `size` bytes in all, at least one.
void MendSequences(Walk& walk, std::size_t size) {
  do {
    size -= std::min(size, walk.Sequence());
  } while (size > 0 && walk.ahead() > 0);
}

void MendTimeline(Walk& walk) {
  walk.Mark("TLMN");
  walk.Text();
  walk.Skip(4);
  MendSequences(walk, walk.Count(4, 1));
}

void MendSong(Walk& walk) {
  walk.Skip(4);
  walk.Text();
  walk.Text();
  walk.Skip(2 + 4);
  for (std::size_t left = walk.Count(1, 2); left > 0; --left) {
    walk.Skip(1);
    walk.Text();
  }
  walk.Skip(kEventSize * walk.Count(4, kEventSize));
  MendTimeline(walk);
}

void MendSongLog(Walk& walk) {
  const std::size_t size = walk.Count(4, 1);
  walk.Text();
  walk.Text();
  walk.Skip(4);
  MendSequences(walk, size);
}

}  // namespace

std::string MendLegacyShow(std::string bytes) {
  Walk walk(bytes);
  for (std::size_t left = walk.Count(1, 1); left > 0; --left) MendSong(walk);
  return bytes;
}

std::string MendLegacyLog(std::string bytes) {
  if (bytes.size() < 8) return bytes;
  PutNumber(bytes, 4, 4, bytes.size() - 8);
  Walk walk(bytes);
  walk.Skip(8 + 16);
  walk.Text();
  walk.Text();
  walk.Skip(4);
  while (walk.ahead() > 0) MendSongLog(walk);
  return bytes;
}

}  // namespace fuzz
