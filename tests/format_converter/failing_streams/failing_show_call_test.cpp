// Conversions of shows whose streams fail.

#include "format_converter/showdata.h"
#include "format_converter/version0/containers/show_data.h"
#include "tests/format_converter/failing_streams/failing_call.h"
#include "tests/support/bytes.h"
#include "tests/support/random_legacy_show.h"
#include "zuna_midi/show_data.h"

namespace {

using failing_call::Data;

const std::string kLog = "ZUNA" + zuna_test::Bytes({36, 0, 0, 0}) + std::string(16, '\7') +
                         zuna_test::Bytes({0, 5}) + "Opera" + zuna_test::Bytes({1, 0, 2, 0});

class FailingShowCall : public failing_call::FailingCall {
 protected:
  FailingShowCall() {
    std::mt19937 random(3);
    const version0::ShowData legacy = zuna_test::RandomLegacyShow(random);
    zuna_midi::ShowData current = legacy.get_version_1_0();
    current.show_name.assign("Opera");
    const std::string log = folder_.Put("log", kLog);
    const std::string old = folder_.Put("old", zuna_test::Written(legacy));
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 0}, {1, 2}, {2, 0}}) {
      AddUp(old, log, version);
      std::ostringstream bytes;
      current.WriteBinary(bytes, version);
      AddDownAndConverter(folder_.Put("current", bytes.str()));
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

TEST_F(FailingShowCall, OfTheInputGivesAnErrorOrTheWholeOutput) { ExpectThatFailingInputsAreNoticed(); }

TEST_F(FailingShowCall, OfTheOutputGivesAnError) { ExpectThatFailingOutputsAreNoticed(); }

}  // namespace
