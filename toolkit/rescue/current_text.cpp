// What is left of a damaged text form (docs/format-2.md): its complete songs. Braces tell where a song ends,
// and the reader of text forms whether it is one.
#include <algorithm>
#include <sstream>

#include "cmn/data_error.h"
#include "toolkit/document/text_form.h"
#include "toolkit/error.h"
#include "toolkit/rescue/internal/current_header.h"
#include "toolkit/rescue/internal/current_songs.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

namespace {

constexpr cmn::FileVersion kTextVersion{2, 0};
constexpr std::string_view kBlanks = " \t\r\n";

/// A text form of a show or a log without songs, up to the place of the songs.
template <typename Kind>
constexpr std::string_view kFront;
template <>
constexpr std::string_view kFront<CurrentShows> =
    R"({"kind": "showdata", "fileVersion": "2.0", "showName": "", "songs": [)";
template <>
constexpr std::string_view kFront<CurrentLogs> =
    R"({"kind": "logdata", "fileVersion": "2.0", "showName": "", "logLabel": "", )"
    R"("identifier": "00000000-0000-0000-0000-000000000000", "tagPair": [0, 0], "songLogs": [)";
constexpr std::string_view kBack = "]}";

/// The text form `text`, if it is one.
template <typename Kind>
std::optional<typename Kind::Model> ReadText(const std::string& text) {
  try {
    std::istringstream stream(text);
    return typename Kind::Model(stream);
  } catch (const cmn::DataError&) {
    return std::nullopt;
  }
}

/// Where the next song begins that has its number first, from `at` on; the end where there is none.
std::size_t NextSong(std::string_view text, std::size_t at) {
  for (std::size_t key = at; (key = text.find(kSongKey, key)) != std::string_view::npos; ++key) {
    const std::size_t brace = key == 0 ? key : text.find_last_not_of(kBlanks, key - 1);
    if (brace != std::string_view::npos && brace >= at && text[brace] == '{') return brace;
  }
  return text.size();
}

/// The offset after the bracket that begins the list `key`; none where there is no such list.
std::optional<std::size_t> BeginOfList(std::string_view text, std::string_view key) {
  std::size_t at = text.find(key);
  if (at == std::string_view::npos) return std::nullopt;
  at = text.find_first_not_of(" \t\r\n:", at + key.size());
  if (at == std::string_view::npos || text[at] != '[') return std::nullopt;
  return at + 1;
}

/// What stands after `key` in an object that cannot be read, as it is written there: the text between its
/// quotation marks, or what it has in place of a text.
std::string RawTextOf(std::string_view object, std::string_view key) {
  const std::size_t found = object.find(key);
  if (found == std::string_view::npos) return "";
  std::size_t begin = object.find_first_not_of(" \t\r\n:", found + key.size());
  if (begin == std::string_view::npos) return "";
  const bool is_text = object[begin] == '"';
  begin += is_text ? 1 : 0;
  const std::size_t end = object.find_first_of(is_text ? "\"" : " \t\r\n,]}", begin);
  return end == std::string_view::npos ? "" : std::string(object.substr(begin, end - begin));
}

template <typename Kind>
class TextSalvage {
 public:
  /// `begin` is where the first song may begin.
  TextSalvage(std::string_view text, std::size_t begin) : text_(text), begin_(begin) {}

  Salvage Run() {
    std::size_t at = begin_;
    while (true) {
      const std::size_t begin = text_.find_first_not_of(kSeparators, at);
      AddFraming(at, std::min(begin, text_.size()));
      at = begin;
      if (at == std::string_view::npos) break;
      if (next_ <= at) next_ = NextSong(text_, at + 1);
      if (text_[at] == ']' && next_ == text_.size()) break;
      const auto end = text_[at] == '{' ? EndOfObject(text_, at, next_) : std::nullopt;
      if (!end || !Take(at, *end)) Lose(at, end.value_or(next_));
      at = end.value_or(next_);
    }
    ReadHead(std::min(at, text_.size()));
    AddNumbered<Kind>(model_, report_, songs_);
    return {std::move(model_), version_, std::move(report_)};
  }

 private:
  static constexpr std::string_view kSeparators = " \t\r\n,";

  void AddFraming(std::size_t begin, std::size_t end) { report_.framing.push_back({begin, end}); }

  /// Takes what stands before the songs and, in a text with another order of keys, from `end` on.
  void ReadHead(std::size_t end) {
    if (end == text_.size()) report_.missing.emplace_back("the end of the text");
    const std::string front(text_.substr(0, begin_));
    auto head = ReadHeadOf(front + std::string(text_.substr(end)));
    if (head) AddFraming(end, text_.size());
    if (!head) head = ReadHeadOf(front + std::string(kBack));
    if (!head) {
      report_.missing.emplace_back(Kind::kHead);
      return;
    }
    AddFraming(0, begin_);
    version_ = head->type().version;
    model_ = *head->template As<typename Kind::Model>();
  }

  /// The text form `text` of any current version, if it is one. An unknown version is taken for the text
  /// version.
  static std::optional<Document> ReadHeadOf(std::string text) {
    if (const auto unknown = UnknownVersion(text)) {
      const std::string stated = '"' + cmn::VersionText(*unknown) + '"';
      const std::size_t at = text.find(stated);
      if (at != std::string::npos)
        text.replace(at, stated.size(), '"' + cmn::VersionText(kTextVersion) + '"');
    }
    try {
      Document head = ReadTextForm(text, "");
      if (head.As<typename Kind::Model>() != nullptr) return head;
    } catch (const Error&) {
      // The rest may be read without it.
    }
    return std::nullopt;
  }

  bool Take(std::size_t begin, std::size_t end) {
    const std::string_view object = text_.substr(begin, end - begin);
    if (object.find(kSongKey) == std::string_view::npos) return false;
    const auto alone = ReadText<Kind>(std::string(kFront<Kind>) + std::string(object) + std::string(kBack));
    if (!alone || Kind::Songs(*alone).size() != 1) return false;
    const auto& song = Kind::Songs(*alone).begin()->second;
    RescuedSong told{song->song_number, song->song_name, begin, end};
    songs_.push_back(song);
    report_.songs.push_back(std::move(told));
    return true;
  }

  void Lose(std::size_t begin, std::size_t end) {
    const std::string_view object = text_.substr(begin, end - begin);
    const std::string number = RawTextOf(object, kSongKey);
    if (!IsNumber(number)) return;
    AddLost(report_, {number, RawTextOf(object, "\"songName\""), begin, end},
            "its text is not complete and correct");
  }

  std::string_view text_;
  std::size_t begin_;
  std::size_t next_ =
      0;  ///< where the next song with its number first begins, once it is after the current place
  std::vector<std::shared_ptr<typename Kind::Song>> songs_;  ///< those in the report that are not lost
  typename Kind::Model model_;
  cmn::FileVersion version_ = kTextVersion;
  RescueReport report_;
};

}  // namespace

std::optional<std::size_t> EndOfObject(std::string_view text, std::size_t at, std::size_t end) {
  std::size_t depth = 0;
  bool in_string = false;
  for (; at < end; ++at) {
    const char c = text[at];
    if (in_string) {
      if (c == '\\') ++at;
      in_string = c != '"';
    } else if (c == '"') {
      in_string = true;
    } else if (c == '{') {
      ++depth;
    } else if (c == '}' && --depth == 0) {
      return at + 1;
    }
  }
  return std::nullopt;
}

Salvage SalvageText(std::string_view plaintext) {
  if (const auto songs = BeginOfList(plaintext, "\"songLogs\"")) {
    return TextSalvage<CurrentLogs>(plaintext, *songs).Run();
  }
  if (const auto songs = BeginOfList(plaintext, "\"songs\"")) {
    return TextSalvage<CurrentShows>(plaintext, *songs).Run();
  }
  const std::size_t first = NextSong(plaintext, 0);
  const bool is_log = plaintext.find("\"attacca\"") != std::string_view::npos;
  return is_log ? TextSalvage<CurrentLogs>(plaintext, first).Run()
                : TextSalvage<CurrentShows>(plaintext, first).Run();
}

}  // namespace zuna_toolkit
