// The calls on shows.

#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/showdata.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/temporary_folder.h"
#include "tests/threads/calls.h"
#include "tests/threads/printed_by_thread.h"

namespace zuna_test {

namespace {

std::string Text(const cmn::FileVersion& version) {
  return std::to_string(version.major) + "." + std::to_string(version.minor);
}

}  // namespace

std::vector<Call> VersionCalls() {
  return {
      {"WrapGetShowdataVersion",
       [](const Desk& desk) {
         std::istringstream is(Decrypted(desk.inputs.current_show));
         return Text(WrapGetShowdataVersion(is));
       }},
      {"WrapGetLogdataVersion",
       [](const Desk& desk) {
         std::istringstream is(Decrypted(desk.inputs.current_log));
         return Text(WrapGetLogdataVersion(is));
       }},
      {"GetShowdataFileVersion",
       [](const Desk& desk) { return Text(GetShowdataFileVersion(desk.inputs.listed_show)); }},
      {"print_file_version",
       [](const Desk& desk) {
         print_file_version(desk.inputs.listed_show);
         return PrintedByThread::Take();
       }},
  };
}

std::vector<Call> ShowCalls() {
  return {
      {"showdata_up",
       [](const Desk& desk) {
         const Inputs& in = desk.inputs;
         return Decrypted(showdata_up(in.legacy_show, desk.output, in.plain_legacy_log, {2, 0}, kKey));
       }},
      {"showdata_down",
       [](const Desk& desk) {
         return Decrypted(showdata_down(desk.inputs.current_show, desk.output, kKey));
       }},
      {"showdata_down_vector",
       [](const Desk& desk) {
         return Decrypted(showdata_down_vector(FileBytes(desk.inputs.current_show), kKey.key, kKey.iv));
       }},
      {"showdata_converter",
       [](const Desk& desk) {
         return Decrypted(showdata_converter(desk.inputs.current_show, desk.output, {1, 1}, kKey));
       }},
      {"showdata_converter_vector",
       [](const Desk& desk) {
         const auto bytes = FileBytes(desk.inputs.current_show);
         return Decrypted(showdata_converter_vector(bytes, {2, 0}, kKey.key, kKey.iv));
       }},
      {"showdata_converter of a legacy show",
       [](const Desk& desk) {
         return MessageOf<FormatConverterError>([&] {
           showdata_converter(desk.inputs.legacy_show, desk.output, {1, 1}, kKey);
         });
       }},
  };
}

}  // namespace zuna_test
