// One document of several that were joined in one file.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/rescue/rescue.h"

namespace zuna_toolkit {

/// What came back of a document that begins at a byte of the content.
struct JoinedPart {
  std::size_t begin;
  Rescued rescued;
};

/// The songs of `parts`, of which the first one gives the head. All are shows of current versions, or all are
/// logs.
Rescued Merged(std::vector<JoinedPart> parts);

/// "the document that begins at byte 4711"
std::string DocumentText(std::size_t begin);

}  // namespace zuna_toolkit
