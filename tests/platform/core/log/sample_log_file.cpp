// The bytes of the sample log's file in each version, one field a line.

#include "tests/platform/core/file/kinds.h"

namespace zuna_test {

namespace {

constexpr const char* kFixedFile =
    "00 5A 4C 47"                                      // magic
    "23 01 00 00"                                      // bytes that follow: 2 + 285 + 4
    "01 01"                                            // version 1.1
    "03 00 00 00  48 C3 A4"                            // show name "Hä"
    "01 00 00 00  41"                                  // log label "A"
    "00 11 22 33 44 55 66 77 88 99 AA BB CC DD EE FF"  // identifier
    "01 00"                                            // tag pair 1,
    "FF FF"                                            // and 65535
    "01 00 00 00"                                      // songs
    "02 00 00 00  32 62"                               // song number "2b"
    "02 00 00 00  47 6F"                               // song name "Go"
    "E0 01"                                            // division 480
    "00 1E 00 00"                                      // song length 7680
    "02"                                               // attacca 2
    "02 00 00 00"                                      // vamps
    "00 00 00 00"                                      //   start 0
    "E0 01 00 00"                                      //   end 480
    "00 00 00 00"                                      //   label ""
    "02 00 00 00"                                      //   value 2
    "C0 03 00 00"                                      //   start 960
    "A0 05 00 00"                                      //   end 1440
    "07 00 00 00  74 69 6C 20 63 75 65"                //   label "til cue"
    "FF FF FF FF"                                      //   value -1
    "01 00 00 00"                                      // repeats
    "E0 01 00 00"                                      //   start 480
    "C0 03 00 00"                                      //   end 960
    "00 00 00 00"                                      //   label ""
    "03 00 00 00"                                      //   value 3
    "01 00 00 00"                                      // cuts
    "80 07 00 00"                                      //   start 1920
    "C0 03 00 00"                                      //   end 960
    "01 00 00 00  FF"                                  //   label, no UTF-8
    "01 00 00 00"                                      //   value 1
    "01 00 00 00"                                      // transposes
    "00 00 00 00"                                      //   start 0
    "00 1E 00 00"                                      //   end 7680
    "00 00 00 00"                                      //   label ""
    "FE FF FF FF"                                      //   value -2
    "02 00 00 00"                                      // tempo scales
    "00 00 00 00"                                      //   start 0
    "E0 01 00 00"                                      //   end 480
    "00 00 00 00"                                      //   label ""
    "00 00 C0 3F"                                      //   value 1.5
    "E0 01 00 00"                                      //   start 480
    "C0 03 00 00"                                      //   end 960
    "00 00 00 00"                                      //   label ""
    "00 00 C0 7F"                                      //   value, not a number
    "01 00 00 00"                                      // clicks
    "00 00 00 00"                                      //   start 0
    "C0 03 00 00"                                      //   end 960
    "00 00 00 00"                                      //   label ""
    "01 00 00 00"                                      //   value 1
    "01 00 00 00"                                      // fermatas
    "20 1C 00 00"                                      //   start 7200
    "00 1E 00 00"                                      //   end 7680
    "00 00 00 00"                                      //   label ""
    "04 00 00 00"                                      //   value 4
    "02 00 00 00"                                      // markers
    "00 00 00 00"                                      //   position 0
    "00 00 00 00"                                      //   label ""
    "01 00 00 00  41"                                  //   text "A"
    "80 07 00 00"                                      //   position 1920
    "01 00 00 00  78"                                  //   label "x"
    "04 00 00 00  42 E2 99 AD"                         //   text "B♭"
    "01 00 00 00"                                      // caesuras
    "80 07 00 00"                                      //   position 1920
    "00 00 00 00"                                      //   label ""
    "2C 01 00 00"                                      //   second word 300
    "65 5D 8A 60";                                     // checksum

constexpr const char* kCompactFile =
    "00 5A 4C 47"                                      // magic
    "8A 00 00 00"                                      // bytes that follow: 2 + 132 + 4
    "01 02"                                            // version 1.2
    "03  48 C3 A4"                                     // show name "Hä"
    "01  41"                                           // log label "A"
    "00 11 22 33 44 55 66 77 88 99 AA BB CC DD EE FF"  // identifier
    "01"                                               // tag pair 1,
    "FF FF 03"                                         // and 65535
    "01"                                               // songs
    "02  32 62"                                        // song number "2b"
    "02  47 6F"                                        // song name "Go"
    "E0 03"                                            // division 480
    "80 3C"                                            // song length 7680
    "02"                                               // attacca 2
    "02"                                               // vamps
    "00"                                               //   start 0
    "E0 03"                                            //   end 480, 480 behind the start
    "00"                                               //   label ""
    "04"                                               //   value 2
    "C0 07"                                            //   start + 960
    "E0 03"                                            //   end 1440, 480 behind the start
    "07  74 69 6C 20 63 75 65"                         //   label "til cue"
    "01"                                               //   value -1
    "01"                                               // repeats
    "E0 03"                                            //   start 480
    "E0 03"                                            //   end 960, 480 behind the start
    "00"                                               //   label ""
    "06"                                               //   value 3
    "01"                                               // cuts
    "80 0F"                                            //   start 1920
    "C0 F8 FF FF 0F"                                   //   end 960, 960 before the start
    "01  FF"                                           //   label, no UTF-8
    "02"                                               //   value 1
    "01"                                               // transposes
    "00"                                               //   start 0
    "80 3C"                                            //   end 7680, 7680 behind the start
    "00"                                               //   label ""
    "03"                                               //   value -2
    "02"                                               // tempo scales
    "00"                                               //   start 0
    "E0 03"                                            //   end 480, 480 behind the start
    "00"                                               //   label ""
    "00 00 C0 3F"                                      //   value 1.5
    "E0 03"                                            //   start + 480
    "E0 03"                                            //   end 960, 480 behind the start
    "00"                                               //   label ""
    "00 00 C0 7F"                                      //   value, not a number
    "01"                                               // clicks
    "00"                                               //   start 0
    "C0 07"                                            //   end 960, 960 behind the start
    "00"                                               //   label ""
    "02"                                               //   value 1
    "01"                                               // fermatas
    "A0 38"                                            //   start 7200
    "E0 03"                                            //   end 7680, 480 behind the start
    "00"                                               //   label ""
    "08"                                               //   value 4
    "02"                                               // markers
    "00"                                               //   position 0
    "00"                                               //   label ""
    "01  41"                                           //   text "A"
    "80 0F"                                            //   position + 1920
    "01  78"                                           //   label "x"
    "04  42 E2 99 AD"                                  //   text "B♭"
    "01"                                               // caesuras
    "80 0F"                                            //   position 1920
    "00"                                               //   label ""
    "AC 02"                                            //   second word 300
    "79 79 EB 1E";                                     // checksum

constexpr const char* kTextFile = R"({
  "kind": "logdata",
  "fileVersion": "2.0",
  "showName": "Hä",
  "logLabel": "A",
  "identifier": "00112233-4455-6677-8899-aabbccddeeff",
  "tagPair": [1, 65535],
  "songLogs": [
    {
      "songNumber": "2b",
      "songName": "Go",
      "division": 480,
      "songLength": 7680,
      "attacca": 2,
      "vamps": [
        {"start": 0, "end": 480, "label": "", "value": 2},
        {"start": 960, "end": 1440, "label": "til cue", "value": -1}
      ],
      "repeats": [
        {"start": 480, "end": 960, "label": "", "value": 3}
      ],
      "cuts": [
        {"start": 1920, "end": 960, "label": {"bytes": "ff"}, "value": 1}
      ],
      "transposes": [
        {"start": 0, "end": 7680, "label": "", "value": -2}
      ],
      "tempoScales": [
        {"start": 0, "end": 480, "label": "", "value": 1.5},
        {"start": 480, "end": 960, "label": "", "value": {"bits": 2143289344}}
      ],
      "clicks": [
        {"start": 0, "end": 960, "label": "", "value": 1}
      ],
      "fermatas": [
        {"start": 7200, "end": 7680, "label": "", "value": 4}
      ],
      "markers": [
        {"position": 0, "label": "", "text": "A"},
        {"position": 1920, "label": "x", "text": "B♭"}
      ],
      "caesuras": [
        {"position": 1920, "label": "", "secondWord": 300}
      ]
    }
  ]
}
)";

}  // namespace

std::string SampleLogFile(cmn::FileVersion version) {
  if (version == cmn::FileVersion{2, 0}) return kTextFile;
  return Hex(version == cmn::FileVersion{1, 1} ? kFixedFile : kCompactFile);
}

}  // namespace zuna_test
