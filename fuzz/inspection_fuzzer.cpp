// The input: a decrypted show or log of any version. Everything that prints a file prints it, and not more
// than the input allows.

#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "CL/change_log.h"
#include "format_converter/file_version.h"
#include "format_converter/inspection.h"
#include "format_converter/version0/containers/change_log.h"
#include "fuzz/cost.h"
#include "fuzz/target.h"
#include "tests/support/temporary_folder.h"

namespace {

/// Counts what is printed to standard output while it lives, and prints nothing.
class PrintedBytes : public std::streambuf {
 public:
  PrintedBytes() : before_(std::cout.rdbuf(this)) {}
  PrintedBytes(const PrintedBytes&) = delete;
  PrintedBytes& operator=(const PrintedBytes&) = delete;
  ~PrintedBytes() override { std::cout.rdbuf(before_); }

  std::size_t count() const { return count_; }

 protected:
  int_type overflow(int_type c) override {
    ++count_;
    return traits_type::not_eof(c);
  }
  std::streamsize xsputn(const char* /*from*/, std::streamsize size) override {
    count_ += static_cast<std::size_t>(size);
    return size;
  }

 private:
  std::streambuf* before_;
  std::size_t count_ = 0;
};

/// Calls `print`, which may refuse the input with an exception.
template <typename Print>
void Check(const char* step, std::size_t size, Print print) {
  const PrintedBytes printed;
  try {
    const fuzz::MemoryBound bound(step, fuzz::HeapBound(size));
    print();
  } catch (const std::exception&) {
    std::cout.clear();
  }
  fuzz::RequireShort(printed.count(), size);
}

void PrintStreams(const std::string& bytes) {
  Check("print_string", bytes.size(), [&] { print_string(bytes); });
  std::istringstream is(bytes);
  Check("print_pos", bytes.size(), [&] { print_pos(is); });
}

void PrintLegacyLog(const std::string& bytes) {
  Check("print_events_v0", bytes.size(), [&] {
    std::istringstream is(bytes);
    print_events_v0(version0::ChangeLogV0(is));
  });
}

void PrintCurrentLog(const std::string& bytes) {
  Check("print_songs and print_events_v1", bytes.size(), [&] {
    std::istringstream is(bytes);
    const CL::ChangeLog log(is);
    print_songs(log);
    if (!log.song_logs().empty()) print_events_v1(log, log.song_logs().begin()->first.c_str());
    print_events_v1(log, "no such song");
  });
}

void PrintFile(const std::string& bytes) {
  static const zuna_test::TemporaryFolder folder;
  const std::string path = folder.Put("input.showdata", bytes);
  Check("PrintProgramChanges", bytes.size(), [&] { PrintProgramChanges(path); });
  Check("print_file_version", bytes.size(), [&] { print_file_version(path); });
  Check("filter_showdata_by_version", bytes.size(), [&] {
    filter_showdata_by_version(folder.path(), {0, 0}, {255, 255});
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  PrintStreams(bytes);
  PrintLegacyLog(bytes);
  PrintCurrentLog(bytes);
  PrintFile(bytes);
  return 0;
}
