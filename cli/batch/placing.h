// The places of outputs, and what may be replaced there.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "cli/batch/conversions.h"
#include "cli/batch/finished_work.h"
#include "cli/shared/output.h"

namespace zuna_cli {

/// Whether there is a file or a folder at `path`, which is not standard input or output.
bool Exists(const std::string& path);

/// Puts the outputs of a command into their places. Several threads use it at a time.
class Placing {
 public:
  /// All of them live as long as this object.
  Placing(const ConversionOptions& options, const Context& context, const Conversion& conversion,
          const FinishedWork& finished);

  /// Finds the place of an output, which is none of what is read. Nothing where nothing is to be written, and
  /// where an earlier run may have written what is there. Throws Failure and kit::IoError.
  std::optional<Destination> Find(const Job& job) const;

  /// Writes `bytes` into the place that was found. Where none was, what is there has to be what an earlier
  /// run wrote for the same input: it is replaced unless it holds the bytes. Throws Failure (kOutputExists),
  /// and what Destination::Write() throws.
  void Write(const Job& job, const std::vector<std::uint8_t>& bytes,
             std::optional<Destination>& destination) const;

  /// `failure` of this work with a remedy that fits the command line, where it is about an output that
  /// exists.
  Failure WithRemedy(const Failure& failure, const Job& job) const;

 private:
  /// Whether an earlier run may have written what is at the place of an output.
  bool MayBeOwn(const Job& job) const;
  void RequireOwn(const Job& job) const;
  /// Whether --resume would find what is at the place of an output in the report, as written for this input.
  bool IsInReport(const Job& job) const;
  /// What is read besides the input itself, and the input unless it is replaced.
  std::vector<std::string> ReadBy(const Job& job) const;
  std::optional<Destination> Open(const Job& job, bool replace) const;

  const ConversionOptions& options_;
  const Context& context_;
  const Conversion& conversion_;
  const FinishedWork& finished_;
  mutable std::once_flag is_reported_read_;
  mutable FinishedWork reported_;  ///< what the report has; read where --resume is not given and may help
};

}  // namespace zuna_cli
