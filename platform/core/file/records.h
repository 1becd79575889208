#pragma once

// What the writers and readers of fields need to know about a record besides its fields. show/fields.h and
// log/fields.h specialise these for their records.

#include <string>

#include "TL/timeline.h"

namespace zuna_core {

/// An entry of a list that is to be filled: numbers 0, texts empty.
template <typename Entry>
struct Blank {
  static Entry Make() { return {}; }
};

/// The records that a Parent holds by number, each of its own:
///   Of(parent)          the map that holds them
///   New()               a shared pointer to a record that is to be filled: numbers 0, texts empty
///   Add(parent, child)  adds a record; returns null, or what is wrong, for a message
///   kKey                the field that is the number
template <typename Parent>
struct ChildRecords;

/// The loops that write and read a list of messages after its count: Put(sink, layout, messages) and
/// Take(in, layout, key, count, messages).
template <typename Messages>
struct BinaryMessages;

/// Put(output, messages) writes a list of messages in the text form; kRowType tells how they are read.
template <typename Messages>
struct TextMessages;

/// Sets the label of a bar or beat, which must fit into its entry unchanged. Returns null, or what is wrong
/// with it, for a message.
const char* SetBarNumber(TL::BarsBeats& entry, const std::string& label);

}  // namespace zuna_core
