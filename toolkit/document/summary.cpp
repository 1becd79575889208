// What there is to tell about a document: names and counts.
#include "toolkit/document/summary.h"

#include "toolkit/document/internal/complete_songs.h"

namespace zuna_toolkit {

namespace {

std::vector<Count> ShowCounts(std::size_t voices, std::size_t events, std::size_t bars, std::size_t tempos,
                              std::size_t meters) {
  return {{"voices", "voice", "voices", voices},
          {"events", "event", "events", events},
          {"bars", "bar", "bars", bars},
          {"tempos", "tempo", "tempos", tempos},
          {"meters", "meter", "meters", meters}};
}

SongSummary SongOf(const version0::SongData& song) {
  std::size_t events = 0;
  for (const auto& [id, list] : song.events) events += list.size();
  const version0::Timeline& timeline = song.timeline;
  return {song.song_number,
          song.song_name,
          song.division,
          song.song_length,
          std::nullopt,
          ShowCounts(song.tracks.size(), events, timeline.bars_beats.size(), timeline.tempos.size(),
                     timeline.meters.size())};
}

SongSummary SongOf(const zuna_midi::SongData& song) {
  const auto& voices = song.voice_data->tracks();
  std::size_t events = 0;
  for (const auto& [number, voice] : voices) events += voice->messages.size();
  const TL::Timeline& timeline = *song.timeline;
  return {song.song_number,
          song.song_name,
          song.division,
          song.song_length,
          std::nullopt,
          ShowCounts(voices.size(), events, timeline.bars_beats.size(), timeline.tempos.size(),
                     timeline.meters.size())};
}

/// In the order of the text form.
std::vector<Count> EditCounts(std::size_t vamps, std::size_t repeats, std::size_t cuts,
                              std::size_t transposes, std::size_t tempo_scales, std::size_t clicks,
                              std::size_t fermatas, std::size_t markers, std::size_t caesuras) {
  return {{"vamps", "vamp", "vamps", vamps},
          {"repeats", "repeat", "repeats", repeats},
          {"cuts", "cut", "cuts", cuts},
          {"transposes", "transpose", "transposes", transposes},
          {"tempoScales", "tempo scale", "tempo scales", tempo_scales},
          {"clicks", "click", "clicks", clicks},
          {"fermatas", "fermata", "fermatas", fermatas},
          {"markers", "marker", "markers", markers},
          {"caesuras", "caesura", "caesuras", caesuras}};
}

SongSummary SongOf(const version0::SongLogV0& song) {
  constexpr std::size_t kNoFermatas = 0;
  return {song.songNumber_,
          song.songName_,
          std::nullopt,
          song.songLength_,
          std::nullopt,
          EditCounts(song.vamps.size(), song.repeats.size(), song.cuts.size(), song.transposes.size(),
                     song.tempo_scales.size(), song.clicks.size(), kNoFermatas, song.score_markers.size(),
                     song.caesuras.size())};
}

SongSummary SongOf(const CL::SongLog& song) {
  return {
      song.song_number,
      song.song_name,
      song.division,
      song.song_length,
      song.attacca,
      EditCounts(song.vamps->events.size(), song.repeats->events.size(), song.cuts->events.size(),
                 song.transposes->events.size(), song.tempo_scales->events.size(), song.clicks->events.size(),
                 song.fermatas->events.size(), song.markers->events.size(), song.caesuras->events.size())};
}

/// Tells of each of the four models what it says about the whole.
struct WholeSummariser {
  Summary operator()(const LegacyShow&) const { return {}; }
  Summary operator()(const LegacyLog& legacy) const { return OfLog(legacy.log); }
  Summary operator()(const zuna_midi::ShowData& show) const { return {show.show_name, std::nullopt}; }
  Summary operator()(const CL::ChangeLog& log) const { return OfLog(log); }

  template <typename Log>
  static Summary OfLog(const Log& log) {
    return {log.show_name, LogHeader{log.log_label, log.identifier.ToString(), log.log_tag_pair}};
  }
};

/// Hands out the songs of each of the four models.
struct SongSummariser {
  void operator()(const LegacyShow& legacy) const {
    for (const auto& [number, song] : legacy.show.songs) sink(SongOf(song));
  }
  void operator()(const LegacyLog& legacy) const {
    for (const auto& [number, song] : legacy.log.songs) sink(SongOf(song));
  }
  void operator()(const zuna_midi::ShowData& show) const {
    for (const auto& [number, song] : show.songs()) sink(SongOf(*song));
  }
  void operator()(const CL::ChangeLog& log) const {
    for (const auto& [number, song] : log.song_logs()) sink(SongOf(*song));
  }

  const SongSummarySink& sink;
};

}  // namespace

Summary SummariseWhole(const Document& document) { return std::visit(WholeSummariser(), document.model()); }

void SummariseSongs(const Document& document, const SongSummarySink& sink) {
  RequireCompleteSongs(document);
  std::visit(SongSummariser{sink}, document.model());
}

}  // namespace zuna_toolkit
