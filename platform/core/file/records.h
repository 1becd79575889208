#pragma once

// How the folders file/, show/ and log/ play together, and what the readers and writers need to know about a
// record besides its fields.
//
// show/fields.h and log/fields.h list the fields of each record once, in VisitFields(fields, record), which
// calls a function of `fields` for each of them. Four visitors in file/ take the place of `fields`:
// BinaryFieldWriter, BinaryFieldReader, TextFieldWriter and TextFieldBinder. A visitor calls VisitFields()
// again for the records inside a record. FieldLister tells where the fields stand that BinaryFieldReader
// reads.
//
// Writing: show/file.cpp checks the show. For a binary version it calls WriteFrame() (file/frame.h), which
// calls EncodeShow() (show/binary.cpp) twice, to count the bytes and to write them. For the text form it
// calls WriteTextShow() (show/text.cpp). Reading: show/file.cpp calls ReadPreamble() (file/preamble.h), and
// by what it finds ReadFields() and DecodeShow(), or ReadTextShow(). The same holds for log/ with its own
// names.

#include <string>

#include "TL/timeline.h"
#include "zuna_json/fields.h"

namespace zuna_core {

using zuna_json::MaybeConst;

/// An entry of a list that is to be filled: numbers 0, texts empty. No entry takes fewer bytes in a file.
template <typename Entry>
struct Blank {
  static Entry Make() { return {}; }
};

/// The records that a Parent holds by number, each of its own:
///   Of(parent)          the map that holds them
///   New()               a shared pointer to a record that is to be filled: numbers 0, texts empty. No
///                       record takes fewer bytes in a file
///   Add(parent, child)  adds a record; returns null, or what is wrong, for a message
///   kKey                the field that is the number
template <typename Parent>
struct ChildRecords;

/// The loops that write and read a list of messages after its count: Put(sink, layout, messages) and
/// Take(in, layout, key, count, messages). SmallestSize(layout) is that of a message, and Place(placer,
/// layout, key, bytes, messages) places the fields of what was taken.
template <typename Messages>
struct BinaryMessages;

/// Put(output, messages) writes a list of messages in the text form; kRowType tells how they are read.
template <typename Messages>
struct TextMessages;

/// Sets the label of a bar or beat, which must fit into its entry unchanged. Returns null, or what is wrong
/// with it, for a message.
inline const char* SetBarNumber(TL::BarsBeats& entry, const std::string& label) {
  if (label.find('\0') != std::string::npos) return "a bar number cannot contain a NUL byte";
  if (label.size() > 7) return "a bar number has at most 7 bytes";
  entry.bar_number(label);
  return nullptr;
}

}  // namespace zuna_core
