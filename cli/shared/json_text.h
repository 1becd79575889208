// Data of the toolkit as JSON.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "toolkit/comparison/difference.h"
#include "toolkit/error.h"
#include "toolkit/place.h"

namespace zuna_cli {

/// `text` as a JSON string; null where it is empty.
std::string TextOrNull(const std::string& text);

/// A number; null where there is none.
template <typename Number>
std::string NumberOrNull(const std::optional<Number>& number) {
  return number ? std::to_string(*number) : "null";
}

/// `texts` as a list of JSON strings.
std::string JsonStrings(const std::vector<std::string>& texts);

/// The member "KEY": … of an object, null for an empty path. A path that is not UTF-8 has a second member
/// "KEYBytes": all its bytes in hexadecimal digits.
std::string PathJson(const std::string& key, const std::string& path);

/// An object: {"code": …, "message": …, "remedy": …, "song": …, "field": …, "offset": …}
std::string ErrorJson(const zuna_toolkit::Error& error);

/// The members of an object: "list": …, "index": …, "tick": …, "bar": …, "voice": …
std::string PlaceJson(const zuna_toolkit::Place& place);

/// The members of an object: "code": …, "song": …, those of the place, "before": …, "after": …, "count": …
std::string DifferenceJson(const zuna_toolkit::Difference& difference);

/// A member: "afterTick": …
std::string AfterTickJson(const zuna_toolkit::Place& place);

}  // namespace zuna_cli
