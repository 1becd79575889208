// The work on single inputs of a command that makes one file of each.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/batch/conversions.h"
#include "cli/batch/finished_work.h"
#include "cli/batch/outcome.h"
#include "cli/batch/placing.h"
#include "cli/batch/report.h"

namespace zuna_cli {

/// Works on single inputs. Several threads use it at a time.
class Converter {
 public:
  /// All but `finished` live as long as this object. `is_one_of_many` inputs says less about each. `report`
  /// is null for none.
  Converter(const ConversionOptions& options, const Context& context, const Conversion& conversion,
            const Keys& keys, bool is_one_of_many, FinishedWork finished, Report* report);
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// What it throws is a lack of memory or an interrupt.
  Outcome operator()(const Job& job) const;

  /// As FinishedWork::EarlierStatus().
  std::optional<Status> EarlierStatus(const Job& job) const {
    return finished_.EarlierStatus(job.input.path, conversion_.command);
  }

 private:
  /// What the work on one input has made.
  struct Result {
    Outcome outcome;
    std::optional<std::vector<std::uint8_t>> bytes;  ///< to be written
  };

  bool HasReport() const { return report_ != nullptr; }
  Outcome Convert(const Job& job, ReportLine& line) const;
  /// Reads a document, and lets go of the plaintext.
  zuna_toolkit::Document Read(zuna_toolkit::OpenedFile file) const;
  /// `bytes` are those of the file.
  Result Make(const Job& job, zuna_toolkit::OpenedFile&& file, const CipherKey& key,
              std::vector<std::uint8_t> bytes, ReportLine& line) const;
  /// Passes over an input, and says so where `text` is not empty.
  Outcome Passed(const std::string& name, const std::string& text, const ReportLine& line) const;
  /// Passes over an input whose output exists. Nothing where it is finished work whose losses are refused
  /// now.
  std::optional<Outcome> PassedAsExisting(const Job& job, ReportLine& line) const;
  Outcome PassedAsFinished(const FinishedWork::Piece& piece, const ReportLine& line) const;
  /// Adds what an earlier run of the same command has lost, so that this one ends as a single run would.
  void TellEarlierLosses(const FinishedWork::Piece& piece, const std::string& name, Outcome& outcome) const;
  /// What the report has about this input where it is finished, and what was written then is there with the
  /// companion that was read; null where it is to be done.
  const FinishedWork::Piece* Finished(const Job& job, ReportLine& line) const;
  /// Whether the losses of a piece of finished work may be in this run.
  bool IsAccepted(const FinishedWork::Piece& piece) const;
  /// Adds the marks of work that makes `bytes`.
  void AddMarks(const std::vector<std::uint8_t>& bytes, ReportLine& line) const;
  /// Adds the line of the report about an input that is not passed over. Where it needs nothing because an
  /// earlier run has replaced it, that run's line is the last one, which has the backup and the losses: there
  /// is none where it is there, and it is made of its beginning where that run was killed.
  void AddFinalLine(Outcome& outcome, const ReportLine& line) const;
  /// The companion that is there; empty for none.
  std::string CompanionOf(const Job& job) const;

  const ConversionOptions& options_;
  const Context& context_;
  const Conversion& conversion_;
  const Keys& keys_;
  bool is_one_of_many_;
  FinishedWork finished_;
  Placing placing_;
  Report* report_;
};

}  // namespace zuna_cli
