// Conversions of logs whose streams fail.

#include "CL/change_log.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/logdata.h"
#include "tests/format_converter/failing_streams/failing_call.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"

namespace {

using failing_call::Data;

class FailingLogCall : public failing_call::FailingCall {
 protected:
  FailingLogCall() {
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

TEST_F(FailingLogCall, OfTheInputGivesAnErrorOrTheWholeOutput) { ExpectThatFailingInputsAreNoticed(); }

TEST_F(FailingLogCall, OfTheOutputGivesAnError) { ExpectThatFailingOutputsAreNoticed(); }

}  // namespace
