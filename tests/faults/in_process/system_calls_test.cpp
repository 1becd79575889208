// Every public function where a system call fails: each call that it makes in turn, with several errors, once
// and from then on, in the first call of a process and in later ones.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <set>

#include "cmn/data_error.h"
#include "format_converter/errors.h"
#include "kit/error.h"
#include "kit/file.h"
#include "tests/faults/in_process/calls.h"
#include "tests/faults/shim/plan.h"
#include "tests/support/temporary_folder.h"
#include "toolkit/error.h"

namespace {

using public_calls::Call;
using public_calls::Calls;

constexpr int kErrors[] = {EACCES, EEXIST, EINTR, EINVAL, EIO, EMFILE, ENOENT, ENOSPC};
constexpr int kMostCalls = 2000;
constexpr const char* kFilesInMemory = "/dev/shm";
const std::set<std::string> kMayBeShort{"read", "write", "getrandom"};
const std::set<std::string> kRemoving{"unlink", "unlinkat", "rmdir"};

/// A fault as tests/faults/shim/plan.h writes it.
std::string Fault(const std::string& call, int number, const std::string& action) {
  return call + ':' + std::to_string(number) + ':' + action;
}

/// What can be done to a call. One that is interrupted for ever would be repeated for ever.
std::vector<std::string> Actions(const std::string& call) {
  std::vector<std::string> actions;
  if (kMayBeShort.count(call) != 0) actions = {"short", "short+"};
  for (const int error : kErrors) {
    actions.push_back(std::to_string(error));
    actions.push_back(std::to_string(error) + (error == EINTR ? "x3" : "+"));
  }
  return actions;
}

/// What a call gives and prints, or the message of its failure.
struct Outcome {
  std::optional<std::string> text;
  std::string failure;
  bool is_documented = true;            ///< the failure has a type that says so
  bool failed = false;                  ///< a system call has failed
  std::map<std::string, int> counts{};  ///< of the system calls that were made
};

class SystemCalls : public testing::Test {
 protected:
  SystemCalls() : before_(std::cout.rdbuf(&printed_)) {
    // Where files are in memory, to flush them takes no time.
    if (::access(kFilesInMemory, W_OK) == 0) ::setenv("TMPDIR", kFilesInMemory, 1);
    root_.emplace();
    ::setenv("TMPDIR", root_->path().c_str(), 1);  // for the files of the calls
  }
  ~SystemCalls() override {
    std::cout.rdbuf(before_);
    ::unsetenv("TMPDIR");
  }

  void Expect(const Calls& calls) {
    for (const Call& call : calls.calls) {
      SCOPED_TRACE(call.name);
      ExpectOfFirstCalls(call);
      ExpectOfLaterCalls(call);
    }
  }

 private:
  /// Makes a call with this fault, or with none.
  Outcome Run(const Call& call, const std::string& fault) {
    Outcome outcome;
    printed_.Clear();
    std::cout.clear();
    zuna_faults::Begin(fault.c_str());
    try {
      outcome.text = call.run();
    } catch (const kit::IoError& error) {
      outcome.failure = error.what();
    } catch (const kit::FileExistsError& error) {
      outcome.failure = error.what();
    } catch (const FormatConverterIOError& error) {
      outcome.failure = error.what();
    } catch (const cmn::DataError& error) {
      outcome.failure = error.what();
      outcome.is_documented = error.problem() == "The stream cannot be read";
    } catch (const zuna_toolkit::Error& error) {
      outcome.failure = error.what();
      outcome.is_documented = error.kind() == zuna_toolkit::ErrorKind::kIo;
    } catch (const std::ios_base::failure& error) {
      outcome.failure = error.what();
      // Of a stream that was opened by its path, and could not be closed.
      outcome.is_documented = fault.rfind("fclose", 0) == 0 || fault.rfind("any", 0) == 0;
    } catch (const std::exception& error) {
      outcome.failure = error.what();
      outcome.is_documented = false;
    }
    const zuna_faults::Report& report = zuna_faults::End();
    outcome.failed = report.fired > 0;
    for (const auto& entry : report.entries) {
      const std::string name = entry.name;
      if (entry.count > 0 && name != "memory") outcome.counts[name] = static_cast<int>(entry.count);
    }
    if (outcome.text) *outcome.text += printed_.text();
    return outcome;
  }

  /// What is wrong with an outcome; empty for nothing.
  static std::string ProblemOf(const Outcome& outcome, const std::string& expected) {
    if (outcome.text) return *outcome.text == expected ? "" : "another result: " + *outcome.text;
    if (!outcome.failed) return "fails by itself: " + outcome.failure;
    if (outcome.failure.empty()) return "fails without a message";
    return outcome.is_documented ? "" : "another exception: " + outcome.failure;
  }

  /// Whether some outputs have taken their places and others could not be taken back.
  static bool SaysWhatIsLeft(const Outcome& outcome) {
    return outcome.failure.find("is replaced, but") != std::string::npos ||
           outcome.failure.find("is written, but") != std::string::npos;
  }

  void ExpectOfLaterCalls(const Call& call) {
    const Outcome good = Run(call, "");
    ASSERT_TRUE(good.text) << good.failure;
    const auto files = Files();
    for (const auto& [name, count] : good.counts) {
      for (int number = 1; number <= count; ++number) {
        for (const std::string& action : Actions(name)) {
          SCOPED_TRACE(Fault(name, number, action));
          const int descriptors = public_calls::OpenDescriptors();
          const Outcome outcome = Run(call, Fault(name, number, action));
          EXPECT_EQ(ProblemOf(outcome, *good.text), "");
          EXPECT_EQ(public_calls::OpenDescriptors(), descriptors) << "leaves files open";
          EXPECT_TRUE(RemoveTemporary() == 0 || kRemoving.count(name) != 0 || SaysWhatIsLeft(outcome))
              << "leaves temporary files";
          EXPECT_EQ(Files(), files) << outcome.failure;
        }
      }
    }
    EXPECT_EQ(Run(call, "").text, good.text);
  }

  void ExpectOfFirstCalls(const Call& call) {
    for (const std::string action : {"5", "5+"}) {  // EIO
      int code = 0;
      for (int number = 1; code == 0; ++number) {
        ASSERT_LT(number, kMostCalls) << "does not end";
        const std::string fault = Fault("any", number, action);
        const pid_t child = ::fork();
        if (child == 0) ::_exit(CodeOfFirstCall(call, fault));
        ASSERT_EQ(::waitpid(child, &code, 0), child);
        EXPECT_TRUE(code == 0 || code == kNoneFailed << 8) << "first call, " << fault << ": " << code;
        RemoveTemporary();
      }
    }
  }

  /// The exit code of a process that makes its first call with a fault, and another one.
  int CodeOfFirstCall(const Call& call, const std::string& fault) {
    const Outcome outcome = Run(call, fault);
    RemoveTemporary();
    const Outcome again = Run(call, "");
    const std::string problem =
        again.text ? ProblemOf(outcome, *again.text) : "does not work any more: " + again.failure;
    if (!problem.empty()) std::cerr << problem << '\n';
    return !problem.empty() ? kWrong : outcome.failed ? 0 : kNoneFailed;
  }

  /// The files of all calls with their content.
  std::map<std::string, std::string> Files() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root_->path())) {
      if (entry.is_regular_file()) files[entry.path()] = zuna_test::FileText(entry.path());
    }
    return files;
  }

  /// Removes what writers have left, and returns how many folders that were.
  std::size_t RemoveTemporary() const {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root_->path())) {
      if (entry.path().filename().string().rfind(".zuna-", 0) == 0) found.push_back(entry.path());
    }
    for (const auto& path : found) std::filesystem::remove_all(path);
    return found.size();
  }

  static constexpr int kWrong = 1;
  static constexpr int kNoneFailed = 2;

  std::optional<zuna_test::TemporaryFolder> root_;
  public_calls::FixedBuffer printed_;
  std::streambuf* before_;
};

TEST_F(SystemCalls, OfTheKit) { Expect(public_calls::OfTheKit()); }
TEST_F(SystemCalls, OfTheCore) { Expect(public_calls::OfTheCore()); }
TEST_F(SystemCalls, OfSecurity) { Expect(public_calls::OfSecurity()); }
TEST_F(SystemCalls, OfVersion0) { Expect(public_calls::OfVersion0()); }
TEST_F(SystemCalls, OfTheConverter) { Expect(public_calls::OfTheConverter()); }
TEST_F(SystemCalls, OfTheToolkit) { Expect(public_calls::OfTheToolkit()); }

}  // namespace
