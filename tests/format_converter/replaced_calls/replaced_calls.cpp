#include "tests/format_converter/replaced_calls/replaced_calls.h"

#include <bit>
#include <cstdio>
#include <stdexcept>

#include "CL/change_log.h"
#include "CL/paired_events.h"
#include "CL/point_events.h"
#include "cmn/version_probe.h"
#include "kit/path.h"

#ifdef __linux__
#include <dlfcn.h>
#endif

extern "C" {
/// This program defines functions of a library again, which AddressSanitizer takes for a mistake.
// NOLINTNEXTLINE(clang-diagnostic-reserved-identifier): the sanitizer's name
[[gnu::visibility("default")]] const char* __asan_default_options();
const char* __asan_default_options() { return "detect_odr_violation=0"; }
}

namespace {

replaced_calls::Calls* g_calls = nullptr;

cmn::FileVersion Probe(std::istream& is) {
  return g_calls != nullptr && g_calls->probe ? g_calls->probe(is) : cmn::FileVersion{1, 2};
}

/// `offset` where the accessors of events differ from their members.
std::uint32_t Offset(std::uint32_t offset) {
  return g_calls != nullptr && g_calls->accessors_differ ? offset : 0;
}

}  // namespace

namespace replaced_calls {

Calls::Calls() { g_calls = this; }
Calls::~Calls() { g_calls = nullptr; }

}  // namespace replaced_calls

namespace cmn {

FileVersion get_showdata_version(std::istream& is) { return Probe(is); }
FileVersion get_logdata_version(std::istream& is) { return Probe(is); }

}  // namespace cmn

namespace kit {

std::vector<std::string> listdir(const std::string& /*dir*/) {
  return g_calls != nullptr && g_calls->listdir ? g_calls->listdir() : std::vector<std::string>();
}

}  // namespace kit

namespace CL {

std::uint32_t PairedEvent::StartPosition() const { return start + Offset(replaced_calls::kStartOffset); }
std::uint32_t PairedEvent::EndPosition() const { return end + Offset(replaced_calls::kEndOffset); }
std::int32_t PairedEvent::IntValue() const {
  return static_cast<std::int32_t>(value_bits + Offset(replaced_calls::kIntOffset));
}
float PairedEvent::FloatValue() const {
  return std::bit_cast<float>(value_bits + Offset(replaced_calls::kFloatOffset));
}
std::uint32_t PointEvent::Position() const { return position + Offset(replaced_calls::kPositionOffset); }

std::shared_ptr<SongLog> ChangeLog::GetSongLog(const std::string& key) {
  if (g_calls != nullptr && g_calls->before_song_log) g_calls->before_song_log();
  const auto found = song_logs().find(key);
  if (found == song_logs().end()) throw std::out_of_range(key);
  return found->second;
}

}  // namespace CL

#ifdef __linux__
extern "C" __attribute__((visibility("default"))) int fclose(FILE* file) {
  using Close = int (*)(FILE*);
  static const auto close = reinterpret_cast<Close>(dlsym(RTLD_NEXT, "fclose"));
  const int result = close(file);
  return g_calls != nullptr && g_calls->close_fails ? EOF : result;
}
#endif
