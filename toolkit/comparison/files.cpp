// Compares what two files hold, down to bytes that differ where no field does.
#include <istream>
#include <iterator>
#include <string>
#include <utility>

#include "kit/format.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/document/text_form.h"

namespace zuna_toolkit {

namespace {

using ByteIterator = std::istreambuf_iterator<char>;

Document ReadEither(OpenedFile& file) { return IsTextForm(file) ? ReadTextForm(file) : ReadDocument(file); }

ByteIterator FirstByteOf(OpenedFile& file) {
  file.stream().clear();
  file.stream().seekg(0);
  return ByteIterator(file.stream());
}

std::string ByteText(ByteIterator byte) {
  if (byte == ByteIterator()) return "the end";
  return kit::format("%02x", static_cast<unsigned>(static_cast<unsigned char>(*byte)));
}

/// The first byte that differs, if any does.
void CompareBytes(OpenedFile& before, OpenedFile& after, const DifferenceSink& sink) {
  ByteIterator a = FirstByteOf(before);
  ByteIterator b = FirstByteOf(after);
  std::size_t offset = 0;
  for (; a != ByteIterator() && b != ByteIterator() && *a == *b; ++a, ++b) ++offset;
  if (a == ByteIterator() && b == ByteIterator()) return;
  Difference difference;
  difference.subject = Subject::kOtherBytes;
  difference.before = ByteText(a) + " at byte " + std::to_string(offset);
  difference.after = ByteText(b);
  sink(difference);
}

}  // namespace

void Compare(OpenedFile& before, OpenedFile& after, const DifferenceSink& sink) {
  const bool same_form = IsTextForm(before) == IsTextForm(after);
  const Document a = ReadEither(before);
  const Document b = ReadEither(after);
  bool same = true;
  Compare(a, b, [&](const Difference& difference) {
    same = false;
    sink(difference);
  });
  if (same && same_form && a.type() == b.type()) CompareBytes(before, after, sink);
}

}  // namespace zuna_toolkit
