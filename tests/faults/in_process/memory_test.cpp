// Every public function where memory runs out at each allocation in turn, once and for ever, in the first
// call of a process and in later ones.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <optional>

#include "format_converter/errors.h"
#include "kit/error.h"
#include "tests/faults/in_process/calls.h"
#include "tests/support/failing_memory.h"

namespace {

using public_calls::Call;
using public_calls::Calls;

constexpr long kMostAllocations = 20000;

/// The calls of a library, those that read and write streams among them.
std::vector<Call> AllOf(const Calls& calls) {
  std::vector<Call> all = calls.calls;
  for (const public_calls::Reader& reader : calls.readers) {
    all.push_back({reader.name, [reader] {
                     std::istringstream is(reader.bytes);
                     return reader.run(is);
                   }});
  }
  const auto buffer = std::make_shared<public_calls::FixedBuffer>();
  for (const public_calls::Writer& writer : calls.writers) {
    all.push_back({writer.name, [writer, buffer] {
                     buffer->Clear();
                     std::ostream os(buffer.get());
                     os.exceptions(std::ios_base::badbit);
                     writer.run(os);
                     return std::string(buffer->text());
                   }});
  }
  return all;
}

/// What a call gives and prints; nothing where it lacks memory, or a system call or stream does.
struct Outcome {
  std::optional<std::string> text;
  std::string problem;  ///< an exception that does not say so
  bool failed = false;  ///< an allocation has failed
};

class Memory : public testing::Test {
 protected:
  Memory() : before_(std::cout.rdbuf(&printed_)) {}
  ~Memory() override { std::cout.rdbuf(before_); }

  void Expect(const Calls& calls) {
    for (const Call& call : AllOf(calls)) {
      SCOPED_TRACE(call.name);
      ExpectOfFirstCalls(call);
      ExpectOfLaterCalls(call);
    }
  }

 private:
  /// Makes a call with this allocation failing; 0 for none.
  Outcome Run(const Call& call, long allocation, bool for_ever) {
    Outcome outcome;
    std::string result;
    printed_.Clear();
    std::cout.clear();
    failing_memory::FailAt(allocation, for_ever);
    try {
      result = call.run();
      outcome.failed = failing_memory::Stop();
      outcome.text = result + std::string(printed_.text());
    } catch (const std::bad_alloc&) {
      outcome.failed = failing_memory::Stop();
    } catch (const kit::IoError&) {
      outcome.failed = failing_memory::Stop();
    } catch (const FormatConverterIOError&) {
      outcome.failed = failing_memory::Stop();
    } catch (const std::exception& error) {
      outcome.failed = failing_memory::Stop();
      outcome.problem = error.what();
    }
    return outcome;
  }

  /// What is wrong with an outcome; empty for nothing.
  static std::string ProblemOf(const Outcome& outcome, const std::string& expected) {
    if (!outcome.problem.empty()) return "another exception: " + outcome.problem;
    if (outcome.text && *outcome.text != expected) return "another result: " + *outcome.text;
    if (!outcome.text && !outcome.failed) return "lacks memory that it has";
    return "";
  }

  void ExpectOfLaterCalls(const Call& call) {
    const std::optional<std::string> expected = Run(call, 0, false).text;
    ASSERT_TRUE(expected);
    for (const bool for_ever : {false, true}) {
      bool failed = true;
      for (long allocation = 1; failed; ++allocation) {
        ASSERT_LT(allocation, kMostAllocations) << "does not end";
        SCOPED_TRACE(testing::Message() << "allocation " << allocation << (for_ever ? " and later" : ""));
        const long live = failing_memory::Live();
        const int descriptors = public_calls::OpenDescriptors();
        {
          const Outcome outcome = Run(call, allocation, for_ever);
          failed = outcome.failed;
          EXPECT_EQ(ProblemOf(outcome, *expected), "");
        }
        EXPECT_EQ(failing_memory::Live(), live) << "leaks";
        EXPECT_EQ(public_calls::OpenDescriptors(), descriptors) << "leaves files open";
      }
    }
    EXPECT_EQ(Run(call, 0, false).text, expected);
  }

  void ExpectOfFirstCalls(const Call& call) {
    for (const bool for_ever : {false, true}) {
      int code = 0;
      for (long allocation = 1; code == 0; ++allocation) {
        ASSERT_LT(allocation, kMostAllocations) << "does not end";
        const pid_t child = ::fork();
        if (child == 0) ::_exit(CodeOfFirstCall(call, allocation, for_ever));
        ASSERT_EQ(::waitpid(child, &code, 0), child);
        EXPECT_TRUE(code == 0 || code == kNoneFailed << 8)
            << "first call, allocation " << allocation << (for_ever ? " and later: " : ": ") << code;
      }
    }
  }

  /// The exit code of a process that makes its first call with a failing allocation, and another one.
  int CodeOfFirstCall(const Call& call, long allocation, bool for_ever) {
    const Outcome outcome = Run(call, allocation, for_ever);
    const std::optional<std::string> again = Run(call, 0, false).text;
    const std::string problem = again ? ProblemOf(outcome, *again) : "does not work any more";
    if (!problem.empty()) std::cerr << problem << '\n';
    return !problem.empty() ? kWrong : outcome.failed ? 0 : kNoneFailed;
  }

  static constexpr int kWrong = 1;
  static constexpr int kNoneFailed = 2;

  public_calls::FixedBuffer printed_;
  std::streambuf* before_;
};

TEST_F(Memory, OfTheKit) { Expect(public_calls::OfTheKit()); }
TEST_F(Memory, OfTheCore) { Expect(public_calls::OfTheCore()); }
TEST_F(Memory, OfSecurity) { Expect(public_calls::OfSecurity()); }
TEST_F(Memory, OfVersion0) { Expect(public_calls::OfVersion0()); }
TEST_F(Memory, OfTheConverter) { Expect(public_calls::OfTheConverter()); }
TEST_F(Memory, OfTheToolkit) { Expect(public_calls::OfTheToolkit()); }

}  // namespace
