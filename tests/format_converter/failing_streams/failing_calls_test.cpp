// Conversions of shows and logs whose streams fail.

#include "CL/change_log.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "format_converter/version0/containers/show_data.h"
#include "tests/format_converter/failing_streams/failing_call.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/random_legacy_show.h"
#include "zuna_midi/show_data.h"

namespace {

using failing_call::Data;

const std::string kLog = "ZUNA" + zuna_test::Bytes({36, 0, 0, 0}) + std::string(16, '\7') +
                         zuna_test::Bytes({0, 5}) + "Opera" + zuna_test::Bytes({1, 0, 2, 0});

class ShowCalls : public failing_call::FailingCall {
 protected:
  ShowCalls() {
    std::mt19937 random(3);
    const version0::ShowData legacy = zuna_test::RandomLegacyShow(random);
    zuna_midi::ShowData current = legacy.get_version_1_0();
    current.show_name.assign("Opera");
    const std::string log = folder_.Put("log", kLog);
    const std::string old = folder_.Put("old", zuna_test::Written(legacy));
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 0}, {1, 2}, {2, 0}}) {
      AddUp(old, log, version);
      AddDownAndConverter(folder_.Put("current", zuna_test::WrittenAt(current, version)));
    }
  }

 private:
  void AddUp(const std::string& in, const std::string& log, cmn::FileVersion version) {
    AddFile({{"Problem reading the CipherStream"}, true, false, {}, {}},
            [=, this] { return showdata_up(in, out_, log, version, {}); });
  }

  void AddDownAndConverter(const std::string& in) {
    const std::vector<std::string> names = {"Failed reading istream"};
    const Data data = zuna_test::FileBytes(in);
    const std::string path = folder_.Put("current" + std::to_string(data.size()), {data.begin(), data.end()});
    const cmn::FileVersion to{1, 1};
    AddFile({names, false, false, {}, {}}, [=, this] { return showdata_down(path, out_, {}); });
    AddFile({names, false, false, {}, {}}, [=, this] { return showdata_converter(path, out_, to, {}); });
    Add({names, false, false, [=] { return showdata_down_vector(data, {}, {}); }, {}});
    Add({names, false, false, [=] { return showdata_converter_vector(data, to, {}, {}); }, {}});
  }
};

class LogCalls : public failing_call::FailingCall {
 protected:
  LogCalls() {
    const std::string old = folder_.Put("old", zuna_test::Written(zuna_test::SampleLegacyLog()));
    const std::string show = folder_.Put("show", zuna_test::Written(zuna_test::SampleLegacyShow()));
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 1}, {1, 2}, {2, 0}}) {
      AddUp(old, show, version);
      const std::string name = "current" + std::to_string(version.major) + std::to_string(version.minor);
      const std::string in = folder_.Put(name, zuna_test::WrittenAt(zuna_test::SampleCurrentLog(), version));
      AddDownAndConverter(in);
      AddCopy(in);
    }
  }

 private:
  void AddUp(const std::string& in, const std::string& show, cmn::FileVersion version) {
    const std::vector<std::string> names = {"Failed reading istream", "Failed reading version0::ChangeLogV0"};
    const Data data = zuna_test::FileBytes(in);
    const Data show_data = zuna_test::FileBytes(show);
    AddFile({names, true, true, {}, {}}, [=, this] { return logdata_up(in, out_, show, version, {}); });
    Add({names, true, true, [=] { return logdata_up_vector(data, show_data, version, {}, {}); }, {}});
  }

  void AddDownAndConverter(const std::string& in) {
    const Data data = zuna_test::FileBytes(in);
    const cmn::FileVersion to{1, 1};
    const std::vector<std::string> down = {"Failed reading istream", "Failed reading CL::ShowData"};
    const std::vector<std::string> converter = {"Failed reading istream", "Failed reading CL::ChangeLog"};
    AddFile({down, false, false, {}, {}}, [=, this] { return logdata_down(in, out_, {}); });
    AddFile({converter, false, false, {}, {}}, [=, this] { return logdata_converter(in, out_, to, {}); });
    Add({down, false, false, [=] { return logdata_down_vector(data, {}, {}); }, {}});
    Add({converter, false, false, [=] { return logdata_converter_vector(data, to, {}, {}); }, {}});
  }

  void AddCopy(const std::string& in) {
    const Data data = zuna_test::FileBytes(in);
    const std::vector<std::string> names = {"Failed reading istream", "Failed reading source CL::ChangeLog"};
    Add({names, false, false, [=] { return copy_attaccas_and_fermatas_vector(data, data, {}, {}); }, {}});
  }
};

template <typename Calls>
class FailingCalls : public Calls {};

using Kinds = testing::Types<ShowCalls, LogCalls>;
TYPED_TEST_SUITE(FailingCalls, Kinds);

TYPED_TEST(FailingCalls, OfTheInputGivesAnErrorOrTheWholeOutput) {
  this->ExpectThatFailingInputsAreNoticed();
}

TYPED_TEST(FailingCalls, OfTheOutputGivesAnError) { this->ExpectThatFailingOutputsAreNoticed(); }

}  // namespace
