// Writing and reading the current formats.

#include "benchmarks/format_rows.h"

#include <benchmark/benchmark.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <boost/json/basic_parser_impl.hpp>
#include <memory>
#include <sstream>
#include <streambuf>

#include "CL/change_log.h"
#include "benchmarks/fixtures.h"
#include "benchmarks/rows.h"
#include "kit/format.h"
#include "zuna_midi/show_data.h"

namespace zuna_bench {

namespace {

using Show = std::shared_ptr<const zuna_midi::ShowData>;

/// Takes everything into memory that it already has, so that the writer is measured and not the kernel's page
/// faults.
class WarmSink : public std::streambuf {
 public:
  explicit WarmSink(std::size_t size) : memory_(size) { Rewind(); }
  void Rewind() { setp(memory_.data(), memory_.data() + memory_.size()); }
  std::size_t size() const { return static_cast<std::size_t>(pptr() - pbase()); }

 protected:
  std::streamsize xsputn(const char* from, std::streamsize count) override {
    if (count > epptr() - pptr()) return 0;
    std::copy(from, from + count, pptr());
    setp(pptr() + count, epptr());
    return count;
  }

 private:
  std::vector<char> memory_;
};

template <typename Model>
std::string Written(const Model& model, const cmn::FileVersion& version) {
  std::ostringstream os;
  model.WriteBinary(os, version);
  return os.str();
}

template <typename Model>
std::function<void()> Write(const std::shared_ptr<const Model>& model, const cmn::FileVersion& version,
                            std::size_t size) {
  auto sink = std::make_shared<WarmSink>(size);
  return [model, version, sink] {
    sink->Rewind();
    std::ostream os(sink.get());
    model->WriteBinary(os, version);
    benchmark::DoNotOptimize(sink->size());
  };
}

template <typename Model>
std::function<void()> Read(const std::string& bytes) {
  auto is = std::make_shared<std::istringstream>(bytes);
  return [is] {
    is->clear();
    is->seekg(0);
    const Model model(*is);
    benchmark::DoNotOptimize(&model);
  };
}

/// The messages, which are nearly all of the text, through RapidJSON's writer.
std::function<void()> WriteMessagesWithRapidJson(const Show& show, std::size_t size) {
  auto buffer = std::make_shared<rapidjson::StringBuffer>(nullptr, size);
  return [show, buffer] {
    buffer->Clear();
    rapidjson::Writer<rapidjson::StringBuffer> writer(*buffer);
    writer.StartArray();
    for (const auto& [number, song] : show->songs()) {
      for (const auto& [track, voice] : song->voice_data->tracks()) {
        for (const auto& [time, message] : voice->messages) {
          writer.StartArray();
          for (const unsigned value :
               {time, unsigned{message.status}, unsigned{message.data1}, unsigned{message.data2}}) {
            writer.Uint(value);
          }
          writer.EndArray();
        }
      }
    }
    writer.EndArray();
    benchmark::DoNotOptimize(buffer->GetSize());
  };
}

/// Takes every event of the parser and does nothing with it.
struct IgnoreAll {
  static constexpr std::size_t max_object_size = std::size_t(-1);
  static constexpr std::size_t max_array_size = std::size_t(-1);
  static constexpr std::size_t max_key_size = std::size_t(-1);
  static constexpr std::size_t max_string_size = std::size_t(-1);
  using Error = boost::json::error_code&;
  using Text = boost::json::string_view;
  bool on_document_begin(Error) { return true; }
  bool on_document_end(Error) { return true; }
  bool on_object_begin(Error) { return true; }
  bool on_object_end(std::size_t, Error) { return true; }
  bool on_array_begin(Error) { return true; }
  bool on_array_end(std::size_t, Error) { return true; }
  bool on_key_part(Text, std::size_t, Error) { return true; }
  bool on_key(Text, std::size_t, Error) { return true; }
  bool on_string_part(Text, std::size_t, Error) { return true; }
  bool on_string(Text, std::size_t, Error) { return true; }
  bool on_number_part(Text, Error) { return true; }
  bool on_int64(std::int64_t, Text, Error) { return true; }
  bool on_uint64(std::uint64_t, Text, Error) { return true; }
  bool on_double(double, Text, Error) { return true; }
  bool on_bool(bool, Error) { return true; }
  bool on_null(Error) { return true; }
  bool on_comment_part(Text, Error) { return true; }
  bool on_comment(Text, Error) { return true; }
};

std::function<void()> ParseWithBoostAlone(const std::shared_ptr<const std::string>& text) {
  return [text] {
    constexpr std::size_t kPiece = std::size_t{64} * 1024;
    boost::json::basic_parser<IgnoreAll> parser{boost::json::parse_options()};
    boost::json::error_code error;
    for (std::size_t at = 0; at < text->size(); at += kPiece) {
      const std::size_t size = std::min(kPiece, text->size() - at);
      parser.write_some(at + size < text->size(), text->data() + at, size, error);
    }
    benchmark::DoNotOptimize(parser.done());
  };
}

}  // namespace

void AddShowFormatRows(const Size& size) {
  const std::string name = size.name;
  const Show show = std::make_shared<const zuna_midi::ShowData>(LegacyShow(size.count).get_version_1_0());
  const std::string compact = Written(*show, {1, 2});
  const auto text = std::make_shared<const std::string>(Written(*show, {2, 0}));
  AddRow({"write 1.2, " + name,
          Write(show, {1, 2}, compact.size()),
          {},
          size.count,
          compact.size(),
          "aim 300 M events/s"});
  AddRow({"read 1.2, " + name,
          Read<zuna_midi::ShowData>(compact),
          {},
          size.count,
          compact.size(),
          "aim 400 M events/s"});
  AddRow({"write 2.0, " + name, Write(show, {2, 0}, text->size()),
          WriteMessagesWithRapidJson(show, text->size()), size.count, text->size(),
          "limit RapidJSON's writer; aim 0.4"});
  AddRow({"read 2.0, " + name, Read<zuna_midi::ShowData>(*text), ParseWithBoostAlone(text), size.count,
          text->size(), "limit Boost's bare parser; aim 1"});
}

void AddLogFormatRows(const Size& size) {
  const std::string name = size.name;
  const auto log = std::make_shared<const CL::ChangeLog>(LegacyLog(size.count).get_version_1_0());
  for (const cmn::FileVersion& version : {cmn::FileVersion{1, 1}, {1, 2}, {2, 0}}) {
    const std::string bytes = Written(*log, version);
    const std::string file = kit::format("a log in %u.%u, ", version.major, version.minor) + name;
    AddRow({"write " + file, Write(log, version, bytes.size()), {}, size.count, bytes.size(), "no aim"});
    AddRow({"read " + file, Read<CL::ChangeLog>(bytes), {}, size.count, bytes.size(), "no aim"});
  }
}

}  // namespace zuna_bench
