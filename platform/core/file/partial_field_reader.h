#pragma once

// Reading the fields of a record that is damaged or cut, as far as that is possible.

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "cmn/data_error.h"
#include "platform/core/file/binary_field_reader.h"

namespace zuna_core {

/// Reads what a BinaryFieldWriter wrote. Throws as BinaryFieldReader does; what stands before the damage is
/// in the record then, the entries of a list and a damaged voice with its messages too. A message that is
/// none of MIDI counts as damage: where a count is wrong, other fields are read as messages.
template <Layout kLayout>
class PartialFieldReader : public BinaryFieldReader<kLayout> {
 public:
  using BinaryFieldReader<kLayout>::BinaryFieldReader;

  template <typename Messages>
  void MessageRows(std::string_view key, Messages& messages) {
    using Binary = BinaryMessages<Messages>;
    ByteReader& in = this->in_;
    std::uint32_t count = 0;
    this->U32(key, count);
    const std::size_t fitting = std::min<std::size_t>(count, in.remaining() / Binary::SmallestSize(kLayout));
    const char* const begin = in.next();
    try {
      Binary::Take(in, kLayout, key, static_cast<std::uint32_t>(fitting), messages);
    } catch (const cmn::DataError&) {
      EndAtDamage(begin, messages);
      throw;
    }
    EndAtDamage(begin, messages);
    if (messages.size() < count) in.Fail(key, "the list is damaged or cut off");
  }

  template <typename Record>
  void Object(std::string_view, Record& record) {
    VisitFields(*this, record);
  }

  template <typename Entry>
  void List(std::string_view key, std::vector<Entry>& entries) {
    std::uint32_t count = 0;
    this->U32(key, count);
    this->before_ = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
      Entry entry = Blank<Entry>::Make();
      VisitFields(*this, entry);
      entries.push_back(std::move(entry));
    }
  }
  template <typename Shared>
  void List(std::string_view key, const std::shared_ptr<Shared>& list) {
    List(key, list->events);
  }

  template <typename Parent>
  void Children(std::string_view key, Parent& parent) {
    using Of = ChildRecords<Parent>;
    std::uint32_t count = 0;
    this->U32(key, count);
    for (std::uint32_t i = 0; i < count; ++i) {
      const auto child = Of::New();
      const char* const begin = this->in_.next();
      try {
        VisitFields(*this, *child);
      } catch (const cmn::DataError&) {
        bool is_kept = false;
        if (Of::HoldsSomething(*child)) is_kept = Of::AddUnderFreeNumber(parent, child);
        if (!is_kept) this->in_.MoveTo(begin);
        throw;
      }
      if (!Of::AddUnderFreeNumber(parent, child)) {
        this->in_.MoveTo(begin);
        this->in_.Fail(Of::kKey, "no number is free");
      }
    }
  }

 private:
  /// Gives back everything from the first message on that is none of MIDI, or could not be read.
  template <typename Messages>
  void EndAtDamage(const char* begin, Messages& messages) {
    using Binary = BinaryMessages<Messages>;
    const std::size_t kept = Binary::CountBeforeOthers(messages);
    messages.resize(kept);
    this->in_.MoveTo(Binary::EndOf(begin, this->in_.end(), kLayout, kept));
  }
};

}  // namespace zuna_core
