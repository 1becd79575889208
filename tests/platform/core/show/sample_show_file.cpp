// The bytes of the sample show's file in each version, one field a line.

#include "tests/platform/core/file/kinds.h"

namespace zuna_test {

namespace {

constexpr const char* kFixedBody =
    "03 00 00 00  48 C3 A4"        // show name "Hä"
    "01 00 00 00"                  // songs
    "02 00 00 00  32 62"           // song number "2b"
    "02 00 00 00  47 6F"           // song name "Go"
    "E0 01"                        // division 480
    "00 1E 00 00"                  // song length 7680
    "02 00 00 00"                  // tempos
    "00 00 00 00"                  //   time 0
    "20 A1 07 00"                  //   microseconds 500000
    "C0 03 00 00"                  //   time 960
    "AF 52 08 00"                  //   microseconds 545455
    "02 00 00 00"                  // bars/beats
    "00 00 00 00"                  //   time 0
    "31 00 00 00 00 00 00 00"      //   bar number "1"
    "00"                           //   tag 0
    "80 07 00 00"                  //   time 1920
    "31 32 61 00 00 00 00 00"      //   bar number "12a"
    "03"                           //   tag 3
    "01 00 00 00"                  // keys
    "00 00 00 00"                  //   time 0
    "FF FF"                        //   key -1
    "01 00"                        //   mode 1
    "01 00 00 00"                  // page numbers
    "E0 01 00 00"                  //   time 480
    "2C 01 00 00"                  //   page 300
    "01 00 00 00"                  // meters
    "00 00 00 00"                  //   time 0
    "06"                           //   numerator
    "08"                           //   denominator
    "24"                           //   clocks per click 36
    "08"                           //   notated 32nds per quarter
    "02 00 00 00"                  // voices
    "01 00"                        //   track number 1
    "05 00 00 00  50 69 61 6E 6F"  //   name "Piano"
    "FF FF"                        //   reserved field 65535
    "03 00 00 00"                  //   messages
    "00 00 00 00  90 3C 64"        //     time 0, status, data 1, data 2
    "E0 01 00 00  90 3C 00"        //     time 480
    "E0 01 00 00  C1 05 00"        //     time 480
    "2C 01"                        //   track number 300
    "00 00 00 00"                  //   name ""
    "07 00"                        //   reserved field 7
    "00 00 00 00";                 //   messages

constexpr const char* kFixedHeader =
    "00 5A 53 48"  // magic
    "AB 00 00 00"  // bytes that follow: 2 + 169
    "01 00";       // version 1.0

constexpr const char* kCheckedHeader =
    "00 5A 53 48"  // magic
    "AF 00 00 00"  // bytes that follow: 2 + 169 + 4
    "01 01";       // version 1.1
constexpr const char* kCheckedChecksum = "89 59 86 1A";

constexpr const char* kCompactFile =
    "00 5A 53 48"         // magic
    "57 00 00 00"         // bytes that follow: 2 + 81 + 4
    "01 02"               // version 1.2
    "03  48 C3 A4"        // show name "Hä"
    "01"                  // songs
    "02  32 62"           // song number "2b"
    "02  47 6F"           // song name "Go"
    "E0 03"               // division 480
    "80 3C"               // song length 7680
    "02"                  // tempos
    "00"                  //   time 0
    "A0 C2 1E"            //   microseconds 500000
    "C0 07"               //   time + 960
    "AF A5 21"            //   microseconds 545455
    "02"                  // bars/beats
    "00"                  //   time 0
    "01  31"              //   bar number "1"
    "00"                  //   tag 0
    "80 0F"               //   time + 1920
    "03  31 32 61"        //   bar number "12a"
    "03"                  //   tag 3
    "01"                  // keys
    "00"                  //   time 0
    "01"                  //   key -1
    "01"                  //   mode 1
    "01"                  // page numbers
    "E0 03"               //   time 480
    "AC 02"               //   page 300
    "01"                  // meters
    "00"                  //   time 0
    "06"                  //   numerator
    "08"                  //   denominator
    "24"                  //   clocks per click 36
    "08"                  //   notated 32nds per quarter
    "02"                  // voices
    "01"                  //   track number 1
    "05  50 69 61 6E 6F"  //   name "Piano"
    "FF FF 03"            //   reserved field 65535
    "03"                  //   messages
    "00  90  3C 64"       //     time + 0, another status, data
    "C1 07  3C 00"        //     time + 480, same status, data
    "00  C1  05 00"       //     time + 0, another status, data
    "AC 02"               //   track number 300
    "00"                  //   name ""
    "07"                  //   reserved field 7
    "00"                  //   messages
    "44 5C D9 6F";        // checksum

constexpr const char* kTextFile = R"({
  "kind": "showdata",
  "fileVersion": "2.0",
  "showName": "Hä",
  "songs": [
    {
      "songNumber": "2b",
      "songName": "Go",
      "division": 480,
      "songLength": 7680,
      "timeline": {
        "tempos": [
          {"time": 0, "microseconds": 500000},
          {"time": 960, "microseconds": 545455}
        ],
        "barsBeats": [
          {"time": 0, "barNumber": "1", "tag": 0},
          {"time": 1920, "barNumber": "12a", "tag": 3}
        ],
        "keys": [
          {"time": 0, "key": -1, "mode": 1}
        ],
        "pageNumbers": [
          {"time": 480, "page": 300}
        ],
        "meters": [
          {"time": 0, "numerator": 6, "denominator": 8, "clocksPerClick": 36, "notated32PerQuarter": 8}
        ]
      },
      "voices": [
        {
          "trackNumber": 1,
          "name": "Piano",
          "reserved": 65535,
          "messages": [
[0,144,60,100],
[480,144,60,0],
[480,193,5,0]
          ]
        },
        {
          "trackNumber": 300,
          "name": "",
          "reserved": 7,
          "messages": []
        }
      ]
    }
  ]
}
)";

}  // namespace

std::string SampleShowFile(cmn::FileVersion version) {
  if (version == cmn::FileVersion{1, 0}) return Hex(kFixedHeader) + Hex(kFixedBody);
  if (version == cmn::FileVersion{1, 1}) return Hex(kCheckedHeader) + Hex(kFixedBody) + Hex(kCheckedChecksum);
  return version == cmn::FileVersion{1, 2} ? Hex(kCompactFile) : kTextFile;
}

}  // namespace zuna_test
