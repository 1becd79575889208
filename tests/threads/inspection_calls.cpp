// The calls that print.

#include <sstream>

#include "format_converter/inspection.h"
#include "tests/threads/calls.h"
#include "tests/threads/printed_by_thread.h"

namespace zuna_test {

namespace {

/// A call that gives what `print` prints.
template <typename Print>
Call Printing(const char* name, Print print) {
  return {name, [print](const Desk& desk) {
            print(desk.inputs);
            return PrintedByThread::Take();
          }};
}

}  // namespace

std::vector<Call> InspectionCalls() {
  return {
      Printing("filter_showdata_by_version",
               [](const Inputs& in) {
                 filter_showdata_by_version(in.folder, {1, 0}, {2, 0});
               }),
      Printing("PrintProgramChanges", [](const Inputs& in) { PrintProgramChanges(in.plain_current_show); }),
      Printing("print_songs", [](const Inputs& in) { print_songs(in.current_log_object); }),
      Printing("print_events_v0", [](const Inputs& in) { print_events_v0(in.legacy_log_object); }),
      Printing("print_events_v1", [](const Inputs& in) { print_events_v1(in.current_log_object, "12a"); }),
      Printing("print_string", [](const Inputs&) { print_string("text"); }),
      Printing("print_pos",
               [](const Inputs&) {
                 std::istringstream is("text");
                 print_pos(is);
               }),
  };
}

}  // namespace zuna_test
