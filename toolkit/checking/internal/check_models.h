// Checks of the four models.
#pragma once

#include "CL/change_log.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "toolkit/checking/internal/song_findings.h"
#include "zuna_midi/show_data.h"

namespace zuna_toolkit {

/// Hand what is not sensible to a sink, as Check() does.
///@{
void CheckShow(const version0::ShowData& show, const FindingSink& sink);
void CheckShow(const zuna_midi::ShowData& show, const FindingSink& sink);
void CheckLog(const version0::ChangeLogV0& log, const FindingSink& sink);
void CheckLog(const CL::ChangeLog& log, const FindingSink& sink);
///@}

/// Adds what is wrong with the names and the length that every song and song log has.
inline void CheckSongFields(const std::string& number, const std::string& name, std::uint32_t length,
                            const SongFindings& findings) {
  if (number.empty()) findings.Add(FindingCode::kSongNumberEmpty, "the song number is empty");
  findings.CheckText(number, "the song number");
  findings.CheckText(name, "the song name");
  if (length == 0) findings.Add(FindingCode::kSongLengthZero, "the length of the song is 0");
}

/// Whether a time is after the end of a song. One without a length has no end to be after.
inline bool IsBeyond(std::uint32_t tick, std::uint32_t song_length) {
  return song_length != 0 && tick > song_length;
}

}  // namespace zuna_toolkit
