// Conversions whose input or output stream fails at its 1st, 2nd, ... read, write or seek.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <ios>

#include "format_converter/showdata.h"
#include "format_converter/version0/show_data.h"
#include "kit/error.h"
#include "tests/converter/failing_streams/plain_cipher.h"
#include "tests/support/bytes.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"

namespace {

using Faults = zuna_test::FailingStreambuf::Options;
using Data = std::vector<std::uint8_t>;

const std::string kLog = "ZUNA" + zuna_test::Bytes({36, 0, 0, 0}) + std::string(16, '\7') +
                         zuna_test::Bytes({0, 5}) + "Opera" + zuna_test::Bytes({1, 0, 2, 0});

/// A conversion, what its failing input is called in messages, and what it should give.
struct Conversion {
  std::string input_name;
  bool from_legacy;
  std::function<Data()> run;
  Data expected;
};

class FailingCall : public testing::Test {
 protected:
  FailingCall() {
    std::mt19937 random(3);
    const version0::ShowData legacy = zuna_test::RandomLegacyShow(random);
    zuna_midi::ShowData current = legacy.get_version_1_0();
    current.show_name = "Opera";
    const std::string log = folder_.Put("log", kLog);
    const std::string old = folder_.Put("old", zuna_test::Written(legacy));
    for (const cmn::FileVersion version : {cmn::FileVersion{1, 0}, {1, 2}, {2, 0}}) {
      AddUp(old, log, version);
      std::ostringstream bytes;
      current.WriteBinary(bytes, version);
      AddDownAndConverter(folder_.Put("current" + std::to_string(conversions_.size()), bytes.str()));
    }
    for (Conversion& conversion : conversions_) conversion.expected = conversion.run();
    std::filesystem::remove(out_);
  }
  ~FailingCall() override { plain_cipher::SetFaults({}, {}); }

  /// Runs a conversion with these faults. Whether it failed; if not, its result is the right one.
  void Run(const Conversion& conversion, const Faults& inputs, const Faults& outputs) {
    std::filesystem::remove(out_);
    plain_cipher::SetFaults(inputs, outputs);
    try {
      EXPECT_TRUE(conversion.run() == conversion.expected) << "a fault went unnoticed";
    } catch (const kit::IoError& error) {
      if (std::string(error.what()).find(conversion.input_name) == 0) ++named_;
      ExpectFailure(error);
    } catch (const std::ios_base::failure& failure) {
      EXPECT_TRUE(inputs.fail_at == 0 || inputs.by_exception) << "the input is not named: " << failure.what();
      ExpectFailure(failure);
    } catch (const std::exception& error) {
      ExpectFailure(error);
    }
  }

  std::vector<Conversion> conversions_;
  int failed_ = 0;
  int named_ = 0;  ///< failures that name the input

 private:
  void ExpectFailure(const std::exception& error) {
    ++failed_;
    EXPECT_STRNE(error.what(), "");
    EXPECT_FALSE(std::filesystem::exists(out_)) << error.what();
  }

  void AddUp(const std::string& in, const std::string& log, cmn::FileVersion version) {
    const auto up = [=, this] { return zuna_test::FileBytes(showdata_up(in, out_, log, version, {})); };
    conversions_.push_back({"Problem reading the CipherStream", true, up, {}});
  }

  void AddDownAndConverter(const std::string& in) {
    const std::string name = "Failed reading istream";
    const Data data = zuna_test::FileBytes(in);
    const cmn::FileVersion to{1, 1};
    const auto file = [](const std::function<std::string()>& run) {
      return [run] { return zuna_test::FileBytes(run()); };
    };
    conversions_.push_back({name, false, file([=, this] { return showdata_down(in, out_, {}); }), {}});
    conversions_.push_back(
        {name, false, file([=, this] { return showdata_converter(in, out_, to, {}); }), {}});
    conversions_.push_back({name, false, [=] { return showdata_down_vector(data, {}, {}); }, {}});
    conversions_.push_back({name, false, [=] { return showdata_converter_vector(data, to, {}, {}); }, {}});
  }

  zuna_test::TemporaryFolder folder_;
  const std::string out_ = folder_ / "out";
};

const Faults kKinds[] = {{.fail_at = 1, .once = true},
                         {.fail_at = 1, .once = false},
                         {.fail_at = 1, .once = true, .by_exception = true},
                         {.fail_at = 1, .once = false, .by_exception = true}};

TEST_F(FailingCall, OfTheInputGivesAnErrorOrTheWholeOutput) {
  for (const Conversion& conversion : conversions_) {
    for (Faults faults : kKinds) {
      failed_ = named_ = 0;
      // In a legacy show, a list ends quietly where the position can no longer be told: the format's readers
      // have always had this rule.
      faults.always_tells = conversion.from_legacy && !faults.once && !faults.by_exception;
      do {
        SCOPED_TRACE(testing::Message() << conversion.input_name << ", call " << faults.fail_at
                                        << (faults.once ? " only" : " and later")
                                        << (faults.by_exception ? ", by exception" : ""));
        Run(conversion, faults, {});
      } while (plain_cipher::InputCalls() >= faults.fail_at++);
      EXPECT_GT(failed_, 1);
      EXPECT_TRUE(faults.by_exception || named_ > 0) << conversion.input_name;
    }
  }
}

TEST_F(FailingCall, OfTheOutputGivesAnError) {
  for (const Conversion& conversion : conversions_) {
    for (Faults faults : kKinds) {
      failed_ = 0;
      do {
        SCOPED_TRACE(testing::Message() << "call " << faults.fail_at);
        Run(conversion, {}, faults);
      } while (plain_cipher::OutputCalls() >= faults.fail_at++);
      EXPECT_EQ(failed_ + 2, static_cast<int>(faults.fail_at)) << "every call that failed was noticed";
    }
  }
}

}  // namespace
