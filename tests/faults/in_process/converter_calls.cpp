#include <iostream>
#include <memory>

#include "cmn/file_format.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/inspection.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "tests/faults/in_process/calls.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"

namespace public_calls {

namespace {

using zuna_test::kKey;
using zuna_test::WrittenAt;
using Bytes = std::vector<std::uint8_t>;

const std::string kLong = "a text that does not fit into a string object";
constexpr cmn::FileVersion kText{2, 0};
constexpr cmn::FileVersion kBinary{1, 2};

/// Files of every kind, and the place of an output.
struct Files {
  zuna_test::TemporaryFolder folder;
  std::string out = folder / "an output whose path does not fit into a string object";

  std::string Put(const std::string& name, const Bytes& bytes) const {
    return folder.Put(name, std::string(bytes.begin(), bytes.end()));
  }
};

const Bytes& LegacyShow() {
  static const Bytes bytes = EncryptedElsewhere(zuna_test::Written(zuna_test::SampleLegacyShow()));
  return bytes;
}

const Bytes& LegacyLog() {
  static const Bytes bytes = EncryptedElsewhere(zuna_test::Written(zuna_test::SampleLegacyLog()));
  return bytes;
}

Bytes Show(cmn::FileVersion version, const CipherKey& key = kKey) {
  zuna_midi::ShowData show = zuna_test::SampleLegacyShow().get_version_1_0();
  show.show_name = kLong;
  return EncryptedElsewhere(WrittenAt(show, version), key);
}

Bytes Log(cmn::FileVersion version) {
  return EncryptedElsewhere(WrittenAt(zuna_test::SampleCurrentLog(), version));
}

std::string TextOf(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

using SharedFiles = std::shared_ptr<Files>;

void AddShows(Calls& calls, const SharedFiles& files) {
  const std::string legacy = files->Put("legacy show", LegacyShow());
  const std::string plain_log =
      files->folder.Put("plain log", zuna_test::Written(zuna_test::SampleLegacyLog()));
  calls.Add("showdata_up", [=] {
    showdata_up(legacy, files->out, plain_log, kBinary, kKey);
    return ContentOf(files->out);
  });
  const Bytes data = Show(kBinary);
  const std::string in = files->Put("show", Show(kText));
  calls.Add("showdata_down", [=] {
    showdata_down(in, files->out, kKey);
    return ContentOf(files->out);
  });
  calls.Add("showdata_converter", [=] {
    showdata_converter(in, files->out, kBinary, kKey);
    return ContentOf(files->out);
  });
  calls.Add("showdata_down_vector", [=] { return TextOf(showdata_down_vector(data, kKey.key, kKey.iv)); });
  calls.Add("showdata_converter_vector",
            [=] { return TextOf(showdata_converter_vector(data, kText, kKey.key, kKey.iv)); });
}

void AddLogs(Calls& calls, const SharedFiles& files) {
  const std::string legacy = files->Put("legacy log", LegacyLog());
  const std::string show = files->folder.Put("plain show", zuna_test::Written(zuna_test::SampleLegacyShow()));
  calls.Add("logdata_up", [=] {
    logdata_up(legacy, files->out, show, kText, kKey);
    return ContentOf(files->out);
  });
  calls.Add("logdata_up_vector",
            [] { return TextOf(logdata_up_vector(LegacyLog(), LegacyShow(), kBinary, kKey.key, kKey.iv)); });
  const Bytes data = Log(kBinary);
  const std::string in = files->Put("log", Log(kText));
  calls.Add("logdata_down", [=] {
    logdata_down(in, files->out, kKey);
    return ContentOf(files->out);
  });
  calls.Add("logdata_converter", [=] {
    logdata_converter(in, files->out, kBinary, kKey);
    return ContentOf(files->out);
  });
  calls.Add("logdata_down_vector", [=] { return TextOf(logdata_down_vector(data, kKey.key, kKey.iv)); });
  calls.Add("logdata_converter_vector",
            [=] { return TextOf(logdata_converter_vector(data, kText, kKey.key, kKey.iv)); });
  calls.Add("copy_attaccas_and_fermatas_vector",
            [=] { return TextOf(copy_attaccas_and_fermatas_vector(data, data, kKey.key, kKey.iv)); });
  calls.Add("copy_attaccas_and_fermatas", [=] {
    copy_attaccas_and_fermatas(in, in, kKey);
    return ContentOf(in);
  });
}

void AddVersions(Calls& calls) {
  for (const cmn::FileVersion version : {kText, kBinary}) {
    calls.AddProbe("WrapGetShowdataVersion",
                   WrittenAt(zuna_test::SampleLegacyShow().get_version_1_0(), version),
                   [](std::istream& is) { return cmn::VersionText(WrapGetShowdataVersion(Throwing(is))); });
    calls.AddProbe("WrapGetLogdataVersion", WrittenAt(zuna_test::SampleCurrentLog(), version),
                   [](std::istream& is) { return cmn::VersionText(WrapGetLogdataVersion(Throwing(is))); });
  }
  calls.Add("check_log_size", [] {
    zuna_sec::TwoFishCipherStream stream(LegacyLog(), kKey.key, kKey.iv);
    return std::to_string(check_log_size(stream));
  });
}

/// Calls that print to std::cout. They open files with an empty key.
void AddPrinting(Calls& calls, const SharedFiles& files) {
  const std::string in = files->Put("a show.showdata", Show(kBinary, {}));
  const std::string folder = files->folder.path().string();
  calls.Add("GetShowdataFileVersion", [=] { return cmn::VersionText(GetShowdataFileVersion(in)); });
  calls.Add("print_file_version", [=] { return print_file_version(in), std::string(); });
  calls.Add("filter_showdata_by_version", [=] {
    return filter_showdata_by_version(folder, {1, 0}, {2, 0}), std::string();
  });
  zuna_midi::ShowData show = zuna_test::SampleLegacyShow().get_version_1_0();
  const std::string plain = files->folder.Put("plain", WrittenAt(show, kBinary));
  calls.Add("PrintProgramChanges", [=] { return PrintProgramChanges(plain), std::string(); });
  calls.Add("print_string", [] { return print_string(kLong), std::string(); });
  calls.AddReader("print_pos", kLong, [](std::istream& is) { return print_pos(is), std::string(); });
  const auto log = std::make_shared<CL::ChangeLog>(zuna_test::SampleCurrentLog());
  calls.Add("print_songs", [log] { return print_songs(*log), std::string(); });
  calls.Add("print_events_v1", [log] { return print_events_v1(*log, "12a"), std::string(); });
  const auto legacy = std::make_shared<version0::ChangeLogV0>(zuna_test::SampleLegacyLog());
  calls.Add("print_events_v0", [legacy] { return print_events_v0(*legacy), std::string(); });
}

}  // namespace

Calls OfTheConverter() {
  Calls calls;
  const auto files = std::make_shared<Files>();
  AddShows(calls, files);
  AddLogs(calls, files);
  AddVersions(calls);
  AddPrinting(calls, files);
  calls.Add("errors", [] {
    return std::string(FormatConverterError(kLong).what()) + FormatConverterIOError(kLong).what();
  });
  return calls;
}

}  // namespace public_calls
