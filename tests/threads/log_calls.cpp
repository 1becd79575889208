// The calls on logs.

#include "format_converter/attacca_fermata.h"
#include "format_converter/errors.h"
#include "format_converter/logdata.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/temporary_folder.h"
#include "tests/threads/calls.h"

namespace zuna_test {

std::vector<Call> LogCalls() {
  return {
      {"logdata_up",
       [](const Desk& desk) {
         const Inputs& in = desk.inputs;
         return Decrypted(logdata_up(in.legacy_log, desk.output, in.plain_legacy_show, {1, 1}, kKey));
       }},
      {"logdata_up_vector",
       [](const Desk& desk) {
         const auto log = FileBytes(desk.inputs.legacy_log);
         const auto show = FileBytes(desk.inputs.legacy_show);
         return Decrypted(logdata_up_vector(log, show, {2, 0}, kKey.key, kKey.iv));
       }},
      {"logdata_down",
       [](const Desk& desk) { return Decrypted(logdata_down(desk.inputs.current_log, desk.output, kKey)); }},
      {"logdata_down_vector",
       [](const Desk& desk) {
         return Decrypted(logdata_down_vector(FileBytes(desk.inputs.current_log), kKey.key, kKey.iv));
       }},
      {"logdata_converter",
       [](const Desk& desk) {
         return Decrypted(logdata_converter(desk.inputs.current_log, desk.output, {2, 0}, kKey));
       }},
      {"logdata_converter_vector",
       [](const Desk& desk) {
         const auto bytes = FileBytes(desk.inputs.current_log);
         return Decrypted(logdata_converter_vector(bytes, {1, 1}, kKey.key, kKey.iv));
       }},
      {"logdata_converter of a legacy log",
       [](const Desk& desk) {
         return MessageOf<FormatConverterError>([&] {
           logdata_converter(desk.inputs.legacy_log, desk.output, {1, 1}, kKey);
         });
       }},
      {"check_log_size",
       [](const Desk& desk) {
         zuna_sec::TwoFishCipherStream stream(desk.inputs.legacy_log, kKey.key, kKey.iv);
         return std::string(check_log_size(stream) ? "complete" : "incomplete");
       }},
      {"copy_attaccas_and_fermatas",
       [](const Desk& desk) {
         const std::string& source = desk.inputs.current_log;
         logdata_converter(source, desk.output, {1, 1}, kKey);
         copy_attaccas_and_fermatas(source, desk.output, kKey);
         return Decrypted(desk.output);
       }},
      {"copy_attaccas_and_fermatas_vector",
       [](const Desk& desk) {
         const auto bytes = FileBytes(desk.inputs.current_log);
         return Decrypted(copy_attaccas_and_fermatas_vector(bytes, bytes, kKey.key, kKey.iv));
       }},
  };
}

}  // namespace zuna_test
