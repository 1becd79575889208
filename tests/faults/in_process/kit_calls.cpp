#include <array>
#include <iostream>
#include <memory>

#include "kit/cout_buffer.h"
#include "kit/file.h"
#include "kit/format.h"
#include "kit/hex.h"
#include "kit/nearest.h"
#include "kit/numeric_string_compare.h"
#include "kit/path.h"
#include "kit/utf8.h"
#include "kit/uuid.h"
#include "tests/faults/in_process/calls.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace public_calls {

namespace {

using zuna_test::TemporaryFolder;

const std::string kLong = "a text that does not fit into a string object";
const std::array<std::uint8_t, 3> kContent{'n', 'e', 'w'};

std::string ListOf(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += name + "\n";
  return text;
}

std::string TextOf(const kit::FileBytes& file) { return {file.bytes().begin(), file.bytes().end()}; }

void AddTexts(Calls& calls) {
  calls.Add("format", [] { return kit::format("%s, %s", kLong.c_str(), kLong.c_str()); });
  calls.Add("HexDigit, DecodeHex", [] {
    return kit::DecodeHex("616263646566676869616263646566676869616263646566676869").value() +
           std::to_string(kit::HexDigit('f'));
  });
  calls.Add("EncodeHex", [] {
    const std::vector<std::uint8_t> bytes(kLong.begin(), kLong.end());
    return kit::EncodeHex(bytes);
  });
  calls.Add("Utf8", [] {
    const char32_t character = kit::CodePoint(kLong.substr(0, 1));
    return std::string(kit::CutUtf8(kLong, 20)) + std::to_string(kit::Utf8Length(kLong)) +
           std::to_string(kit::IsUtf8(kLong)) + std::to_string(kit::IsControl(character)) +
           std::to_string(kit::IsInvisible(character));
  });
  calls.Add("EditDistance, Suggestion", [] {
    return std::to_string(kit::EditDistance(kLong, kLong + "s")) +
           kit::Suggestion(kLong, {kLong + "s", kLong});
  });
  calls.Add("NumericStringCompare",
            [] { return std::to_string(kit::NumericStringCompare()(kLong + "2", kLong + "10")); });
  calls.Add("CoutBuffer", [] {
    kit::CoutBuffer buffer;
    buffer.stream() << kLong << kLong;
    buffer.Flush();
    return std::string();
  });
}

void AddIdentifiers(Calls& calls) {
  const std::string text = "00112233-4455-6677-8899-aabbccddeeff";
  calls.Add("UUID", [text] {
    kit::UUID any;
    return kit::UUID::FromString(text).ToString() + std::to_string(any.ToString().size());
  });
  for (const bool binary : {false, true}) {
    const kit::UUID identifier = kit::UUID::FromString(text);
    const auto write = [=](std::ostream& os) { identifier.WriteBinary(os, binary); };
    calls.AddWriter("UUID::WriteBinary", write);
    calls.AddReader("UUID(istream)", public_calls::TextOf(write),
                    [binary](std::istream& is) { return kit::UUID(is, binary).ToString(); });
  }
}

void AddFiles(Calls& calls) {
  const auto folder = std::make_shared<TemporaryFolder>();
  const std::string in = folder->Put("an input whose path does not fit into a string object", kLong);
  const std::string out = *folder / "an output whose path does not fit into a string object";
  calls.Add("listdir", [folder] { return ListOf(kit::listdir(folder->path().string())); });
  calls.Add("path", [in] { return kit::path::Join(in, kLong) + kit::path::extension(in + "." + kLong); });
  calls.Add("ReadWholeFile", [in, folder] { return TextOf(kit::ReadWholeFile(in, 1000)); });
  calls.Add("ReadRegularFile", [in, folder] { return TextOf(kit::ReadRegularFile(in, 1000).value()); });
  calls.Add("ReadWholeFile of a descriptor", [in, folder] {
    const auto close = [](const int* file) { ::close(*file); };
    int number = ::open(in.c_str(), O_RDONLY | O_CLOEXEC);
    const std::unique_ptr<int, decltype(close)> file(&number, close);
    return TextOf(kit::ReadWholeFile(number, in, 1000));
  });
  calls.Add("FileTooLargeError", [in] { return std::string(kit::FileTooLargeError(in, 1).what()); });
  calls.Add("FileIoError", [in] { return std::string(kit::FileIoError(in, in, in).what()); });
  calls.Add("FileExistsError", [in] { return std::string(kit::FileExistsError(in).what()); });
  calls.Add("WriteFileAtomically", [out, folder] {
    kit::WriteFileAtomically(out, kContent);
    return ContentOf(out);
  });
  calls.Add("OutputFiles", [out, folder] {
    kit::OutputFiles files(kit::Existing::kReplace);
    files.Add(out);
    files.Add(out + "2");
    for (std::size_t i = 0; i < files.size(); ++i) files.Write(i, kContent);
    files.Commit();
    return ContentOf(out) + ContentOf(out + "2");
  });
  calls.Add("BackUp", [in, folder] {
    // Not by unlink(), which may be let fail: each call begins without backups.
    const auto remove = [](const std::string* path) { ::syscall(SYS_unlinkat, AT_FDCWD, path->c_str(), 0); };
    const std::string kept = kit::BackUp(in, 1000);
    const std::unique_ptr<const std::string, decltype(remove)> removed(&kept, remove);
    return TextOf(kit::ReadWholeFile(kept, 1000));
  });
  calls.Add("RemoveLeftovers", [folder] {
    kit::RemoveLeftovers(folder->path().string());
    return std::string();
  });
}

}  // namespace

Calls OfTheKit() {
  Calls calls;
  AddTexts(calls);
  AddIdentifiers(calls);
  AddFiles(calls);
  return calls;
}

}  // namespace public_calls
