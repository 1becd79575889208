// What the things in documents are called.
#include "toolkit/comparison/nouns.h"

namespace zuna_toolkit {

Noun NounOf(Subject subject) {
  switch (subject) {
    case Subject::kShowName:
      return {"show name", "show names"};
    case Subject::kLogLabel:
      return {"label of the log", "labels of logs"};
    case Subject::kIdentifier:
      return {"identifier", "identifiers"};
    case Subject::kTagPair:
      return {"tag pair", "tag pairs"};
    case Subject::kTrailingBytes:
      return {"byte after the last song", "bytes after the last song"};
    case Subject::kSequence:
      return {"list of a repeated kind", "lists of repeated kinds"};
    case Subject::kSong:
      return {"song", "songs"};
    case Subject::kSongName:
      return {"name", "names"};
    case Subject::kDivision:
      return {"division", "divisions"};
    case Subject::kSongLength:
      return {"length", "lengths"};
    case Subject::kTimelineName:
      return {"name of a timeline", "names of timelines"};
    case Subject::kTimelineLength:
      return {"length of a timeline", "lengths of timelines"};
    case Subject::kVoice:
      return {"voice", "voices"};
    case Subject::kVoiceNumber:
      return {"voice number", "voice numbers"};
    case Subject::kVoiceName:
      return {"voice name", "voice names"};
    case Subject::kReservedField:
      return {"reserved field", "reserved fields"};
    case Subject::kMessage:
      return {"message", "messages"};
    case Subject::kMessageChannel:
      return {"message channel", "message channels"};
    case Subject::kDeltaTime:
      return {"delta time", "delta times"};
    case Subject::kTempo:
      return {"tempo", "tempos"};
    case Subject::kBarLabel:
      return {"bar label", "bar labels"};
    case Subject::kKey:
      return {"key", "keys"};
    case Subject::kPageNumber:
      return {"page number", "page numbers"};
    case Subject::kMeter:
      return {"meter", "meters"};
    case Subject::kAttacca:
      return {"attacca", "attaccas"};
    case Subject::kVamp:
      return {"vamp", "vamps"};
    case Subject::kRepeat:
      return {"repeat", "repeats"};
    case Subject::kCut:
      return {"cut", "cuts"};
    case Subject::kTranspose:
      return {"transpose", "transposes"};
    case Subject::kTempoScale:
      return {"tempo scale", "tempo scales"};
    case Subject::kClick:
      return {"click", "clicks"};
    case Subject::kFermata:
      return {"fermata", "fermatas"};
    case Subject::kMarker:
      return {"marker", "markers"};
    case Subject::kCaesura:
      return {"caesura", "caesuras"};
    case Subject::kEditLabel:
      return {"label", "labels"};
    case Subject::kEditValue:
      return {"value", "values"};
    case Subject::kSecondWord:
      return {"second word of a caesura", "second words of caesuras"};
    case Subject::kNote:
      return {"note", "notes"};
    case Subject::kOtherBytes:
      return {"byte difference that no field shows", "byte differences that no field shows"};
    case Subject::kSongEdits:
      return {"edits of a song", "edits of songs"};
  }
  return {};
}

}  // namespace zuna_toolkit
