// Every public function that takes a stream where the stream fails at each call in turn, once and for ever,
// by a state and by an exception.

#include <gtest/gtest.h>

#include <iostream>
#include <optional>

#include "tests/faults/in_process/calls.h"
#include "tests/support/failing_streambuf.h"

namespace {

using public_calls::Calls;
using public_calls::Reader;
using public_calls::Writer;
using Faults = zuna_test::FailingStreambuf::Options;

/// Which calls of a stream may fail without an exception.
enum class Silent {
  kAll,
  kNoTelling,  ///< telling the position may not: a list of the legacy format ends there
  kNone,
};

/// Runs `use` on a stream with each fault. It gives what the function has done, or nothing where the function
/// or the stream says that it failed.
void Expect(const std::string& bytes, Silent silent,
            const std::function<std::string(std::iostream&, const zuna_test::FailingStreambuf&)>& use) {
  const auto run = [&](Faults faults) {
    zuna_test::FailingStreambuf buffer(bytes, faults);
    std::iostream stream(&buffer);
    std::optional<std::string> done;
    try {
      done = use(stream, buffer);
      if (stream.fail()) done.reset();
    } catch (const std::exception&) {
      done.reset();
    }
    return std::pair(done, buffer.calls());
  };
  const auto [expected, calls] = run({});
  ASSERT_TRUE(expected);
  for (const bool once : {true, false}) {
    for (const bool by_exception : {true, false}) {
      if (silent == Silent::kNone && !by_exception) continue;
      Faults faults{.once = once,
                    .by_exception = by_exception,
                    .always_tells = silent == Silent::kNoTelling && !by_exception};
      for (faults.fail_at = 1; faults.fail_at <= calls; ++faults.fail_at) {
        const auto done = run(faults).first;
        EXPECT_TRUE(!done || done == expected) << "call " << faults.fail_at << (once ? " only" : " and later")
                                               << (by_exception ? ", by exception" : "") << ": " << *done;
      }
    }
  }
}

void Expect(const Calls& calls, Silent silent = Silent::kAll) {
  for (const Reader& reader : calls.readers) {
    SCOPED_TRACE(reader.name);
    Expect(reader.bytes, reader.takes_any_end ? Silent::kNone : silent,
           [&](std::iostream& is, const auto&) { return reader.run(is); });
  }
  for (const Writer& writer : calls.writers) {
    SCOPED_TRACE(writer.name);
    Expect("", Silent::kAll, [&](std::iostream& os, const zuna_test::FailingStreambuf& buffer) {
      writer.run(os);
      return buffer.bytes();
    });
  }
}

class Streams : public testing::Test {
 protected:
  Streams() : before_(std::cout.rdbuf(&printed_)) {}
  ~Streams() override { std::cout.rdbuf(before_); }

 private:
  public_calls::FixedBuffer printed_;
  std::streambuf* before_;
};

TEST_F(Streams, OfTheKit) { Expect(public_calls::OfTheKit()); }
TEST_F(Streams, OfTheCore) { Expect(public_calls::OfTheCore()); }
TEST_F(Streams, OfVersion0) { Expect(public_calls::OfVersion0(), Silent::kNoTelling); }
TEST_F(Streams, OfTheConverter) { Expect(public_calls::OfTheConverter()); }

}  // namespace
