// How a row is measured and printed.

#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace zuna_bench {

/// One line of the table: a piece of work beside the limit that it cannot beat, timed in the same run.
struct Row {
  std::string work;
  std::function<void()> run;
  std::function<void()> limit;  ///< empty where the row is a rate of its own
  std::size_t events = 0;  ///< in one run; gives events a second, and nanoseconds an event above the limit
  std::size_t bytes = 0;   ///< of text in one run, or 0
  std::string goals;       ///< the first goal and the aim, for the reader
  std::size_t files = 0;   ///< in one run; gives files a second, in place of events
  std::function<void()> prepare = {};  ///< done before each run, and not measured; may be empty
};

/// Adds a row. Its work and its limit are run in turn.
void AddRow(Row row);

/// All rows so far.
const std::vector<Row>& Rows();

/// Times all rows, each in turn with its limit. Returns the medians in seconds by the names of the work.
std::map<std::string, double> TimeRows(int argc, char** argv);

/// Times all rows and prints the table.
void RunRows(int argc, char** argv);

}  // namespace zuna_bench
