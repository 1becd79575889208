// The fields of a file with the bytes that they take, as lines for people and as JSON. What is printed of a
// field has to be short: most fields of a compact file have one byte.
#include "cli/commands/offsets_text.h"

#include <unistd.h>

#include <sstream>
#include <type_traits>

#include "cli/shared/json_text.h"
#include "cli/terminal/standard_streams.h"
#include "cli/terminal/text.h"
#include "cmn/file_format.h"
#include "toolkit/words.h"
#include "zuna_json/writer.h"

namespace zuna_cli {

namespace {

using cmn::PlacedField;

/// JSON values in lines, written to standard output piece by piece: the text may be much larger than the
/// file.
class PieceWriter {
 public:
  PieceWriter() { text_.exceptions(std::ios_base::badbit); }  // it would drop what it has no memory for

  void Raw(std::string_view text) { json_.Raw(text); }

  void Value(const cmn::FieldValue& value) {
    std::visit(
        [this](const auto& known) {
          using Known = std::decay_t<decltype(known)>;
          if constexpr (std::is_same_v<Known, std::monostate>) {
            json_.Raw("null");
          } else if constexpr (std::is_same_v<Known, float>) {
            json_.Float(known);
          } else if constexpr (std::is_same_v<Known, std::string_view>) {
            json_.Text(known);
          } else if constexpr (std::is_same_v<Known, cmn::JsonText>) {
            json_.Raw(known.text);
          } else {
            json_.Number(known);
          }
        },
        value);
  }

  /// Ends a line.
  void EndLine() {
    json_.Raw("\n");
    if (++lines_ % kLinesOfAPiece == 0) Finish();
  }

  /// Writes what has not been written yet. To be called at the end.
  void Finish() {
    json_.Flush();
    WriteStandardOutput(is_shown_ ? PrintableJson(text_.str()) : text_.str());
    text_.str("");
  }

 private:
  static constexpr std::size_t kLinesOfAPiece = 1024;

  std::ostringstream text_;
  zuna_json::Writer json_{text_};
  std::size_t lines_ = 0;
  bool is_shown_ = isatty(STDOUT_FILENO) != 0;
};

/// "opera.showdata: a show of version 1.2, 2350 bytes of plaintext; the header of the encryption, 72 bytes,
/// stands before them"
std::string HeadText(const OffsetsInput& input) {
  const zuna_toolkit::FieldSource& source = input.source;
  std::string text = Printable(InputName(input.path)) + ": " + TypeText(source.type) + ", " +
                     zuna_toolkit::Counted(source.plaintext.size(), "byte", "bytes") + " of plaintext; ";
  if (input.header_size == 0) return text + "the file is not encrypted";
  return text + "the header of the encryption, " + std::to_string(input.header_size) +
         " bytes, stands before them";
}

/// A line for each field. The path of a field that is in the same record as the field before begins with ".".
class LinePrinter {
 public:
  explicit LinePrinter(PieceWriter& out) : out_(out) {}

  void Print(const PlacedField& field) {
    out_.Raw(std::to_string(field.begin));
    out_.Raw("..");
    out_.Raw(std::to_string(field.end));
    out_.Raw("  ");
    if (field.record != record_) {
      record_ = field.record;
      out_.Raw(record_);
    }
    if (!record_.empty()) out_.Raw(".");
    out_.Raw(field.key);
    if (!std::holds_alternative<std::monostate>(field.value)) {
      out_.Raw("  ");
      out_.Value(field.value);
    }
    out_.EndLine();
  }

 private:
  PieceWriter& out_;
  std::string record_;
};

/// A line for each record, or each part of one that has other records inside.
class RecordPrinter {
 public:
  explicit RecordPrinter(PieceWriter& out) : out_(out) {}

  void Print(const PlacedField& field) {
    if (is_first_ || field.record != record_) {
      if (!is_first_) Close(",");
      is_first_ = false;
      record_ = field.record;
      out_.Raw(R"({"path":)");
      out_.Value(field.record);
      out_.Raw(R"(,"begin":)");
      out_.Raw(std::to_string(field.begin));
      out_.Raw(R"(,"fields":[)");
    } else {
      out_.Raw(",");
    }
    out_.Raw("[");
    out_.Value(field.key);
    out_.Raw(",");
    out_.Raw(std::to_string(field.end - field.begin));
    out_.Raw(",");
    out_.Value(field.value);
    out_.Raw("]");
  }

  /// Ends the record, and the line with `separator`.
  void Close(std::string_view separator) {
    out_.Raw("]}");
    out_.Raw(separator);
    out_.EndLine();
  }

 private:
  PieceWriter& out_;
  std::string record_;
  bool is_first_ = true;
};

}  // namespace

void PrintOffsets(const OffsetsInput& input) {
  WriteStandardOutput(HeadText(input) + '\n');
  PieceWriter out;
  LinePrinter lines(out);
  zuna_toolkit::ListFields(input.source, [&](const PlacedField& field) { lines.Print(field); });
  out.Finish();
}

void PrintOffsetsJson(const OffsetsInput& input) {
  const zuna_toolkit::FieldSource& source = input.source;
  PieceWriter out;
  RecordPrinter records(out);
  out.Raw("{\"schemaVersion\": 1, " + PathJson("path", input.path) + ", \"kind\": \"" +
          std::string(cmn::KindText(source.type.kind)) + "\", \"fileVersion\": \"" +
          cmn::VersionText(source.type.version) + "\", \"headerSize\": " + std::to_string(input.header_size) +
          ", \"size\": " + std::to_string(source.plaintext.size()) +
          ", \"error\": " + (source.damage ? ErrorJson(*source.damage) : "null") + ", \"records\": [");
  out.EndLine();
  zuna_toolkit::ListFields(source, [&](const PlacedField& field) { records.Print(field); });
  records.Close("");
  out.Raw("]}");
  out.EndLine();
  out.Finish();
}

}  // namespace zuna_cli
