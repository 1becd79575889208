#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <ios>
#include <string>
#include <vector>

#include "kit/error.h"
#include "tests/format_converter/failing_streams/plain_cipher.h"
#include "tests/support/sanitized.h"
#include "tests/support/temporary_folder.h"

namespace failing_call {

using Faults = zuna_test::FailingStreambuf::Options;
using Data = std::vector<std::uint8_t>;

/// A conversion, what its failing inputs are called in messages, and what it should give.
struct Conversion {
  std::vector<std::string> input_names;
  bool from_legacy;     ///< lists end quietly where the position can no longer be told
  bool unguarded_read;  ///< some reads let the stream's failure pass
  std::function<Data()> run;
  Data expected;
};

enum class Kind { kOnce, kForEver, kExceptionOnce, kExceptionForEver };
inline constexpr Kind kKinds[] = {Kind::kOnce, Kind::kForEver, Kind::kExceptionOnce, Kind::kExceptionForEver};

inline Faults FaultsOf(Kind kind) {
  return {.fail_at = 1,
          .once = kind == Kind::kOnce || kind == Kind::kExceptionOnce,
          .by_exception = kind == Kind::kExceptionOnce || kind == Kind::kExceptionForEver};
}

/// Conversions whose input or output streams fail at their 1st, 2nd, ... read, write or seek.
class FailingCall : public testing::Test {
 protected:
  ~FailingCall() override { plain_cipher::SetFaults({}, {}); }

  /// Takes a conversion that writes out_.
  void AddFile(Conversion conversion, const std::function<std::string()>& run) {
    conversion.run = [run] { return zuna_test::FileBytes(run()); };
    Add(std::move(conversion));
  }

  void Add(Conversion conversion) {
    conversion.expected = conversion.run();
    std::filesystem::remove(out_);
    conversions_.push_back(std::move(conversion));
  }

  void ExpectThatFailingInputsAreNoticed() {
    for (const Conversion& conversion : conversions_) {
      for (const Kind kind : kKinds) FailInputs(conversion, FaultsOf(kind));
    }
  }

  void ExpectThatFailingOutputsAreNoticed() {
    for (const Conversion& conversion : conversions_) {
      for (const Kind kind : kKinds) FailOutputs(conversion, FaultsOf(kind));
    }
  }

  zuna_test::TemporaryFolder folder_;
  const std::string out_ = folder_ / "out";

 private:
  void FailInputs(const Conversion& conversion, Faults faults) {
    failed_ = named_ = 0;
    // The legacy readers have always had this rule.
    faults.always_tells = conversion.from_legacy && !faults.by_exception;
    for (;; faults.fail_at = zuna_test::NextCall(faults.fail_at)) {
      SCOPED_TRACE(testing::Message() << conversion.input_names.back() << ", call " << faults.fail_at
                                      << (faults.once ? " only" : " and later")
                                      << (faults.by_exception ? ", by exception" : ""));
      Run(conversion, faults, {});
      if (plain_cipher::InputCalls() < faults.fail_at) break;
    }
    EXPECT_GT(failed_, 1);
    EXPECT_TRUE(faults.by_exception || named_ > 0) << conversion.input_names.back();
  }

  void FailOutputs(const Conversion& conversion, Faults faults) {
    failed_ = 0;
    int calls = 0;
    for (;; faults.fail_at = zuna_test::NextCall(faults.fail_at)) {
      SCOPED_TRACE(testing::Message() << "call " << faults.fail_at);
      Run(conversion, {}, faults);
      if (plain_cipher::OutputCalls() < faults.fail_at) break;
      ++calls;
    }
    EXPECT_EQ(failed_, calls) << "every call that failed was noticed";
  }

  /// Runs a conversion with these faults. Either it fails, or its result is the right one.
  void Run(const Conversion& conversion, const Faults& inputs, const Faults& outputs) {
    std::filesystem::remove(out_);
    plain_cipher::SetFaults(inputs, outputs);
    try {
      EXPECT_TRUE(conversion.run() == conversion.expected) << "a fault went unnoticed";
    } catch (const kit::IoError& error) {
      if (NamesAnInput(conversion, error.what())) ++named_;
      ExpectFailure(error);
    } catch (const std::ios_base::failure& failure) {
      EXPECT_TRUE(inputs.fail_at == 0 || inputs.by_exception || conversion.unguarded_read)
          << "the input is not named: " << failure.what();
      ExpectFailure(failure);
    } catch (const std::exception& error) {
      ExpectFailure(error);
    }
  }

  static bool NamesAnInput(const Conversion& conversion, const std::string& message) {
    for (const std::string& name : conversion.input_names) {
      if (message.find(name) == 0) return true;
    }
    return false;
  }

  void ExpectFailure(const std::exception& error) {
    ++failed_;
    EXPECT_STRNE(error.what(), "");
    EXPECT_FALSE(std::filesystem::exists(out_)) << error.what();
  }

  std::vector<Conversion> conversions_;
  int failed_ = 0;
  int named_ = 0;  ///< failures that name the input
};

}  // namespace failing_call
