#pragma once

// A handler for the JSON parser that accepts everything; a base for handlers that look at some of it.

#include <boost/json/error.hpp>
#include <boost/json/string_view.hpp>
#include <cstddef>
#include <cstdint>

namespace zuna_json {

/// Takes the events of Boost.JSON's basic_parser and goes on after each of them. A handler derives from this
/// and hides the functions for the events that it needs; the parser calls them without virtual calls. A
/// function that returns false and sets its error code stops the parser.
class IgnoreEvents {
 public:
  using Code = boost::json::error_code;
  using Part = boost::json::string_view;

  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);

  bool on_document_begin(Code&) { return true; }
  bool on_document_end(Code&) { return true; }
  bool on_object_begin(Code&) { return true; }
  bool on_object_end(std::size_t, Code&) { return true; }
  bool on_array_begin(Code&) { return true; }
  bool on_array_end(std::size_t, Code&) { return true; }
  bool on_key_part(Part, std::size_t, Code&) { return true; }
  bool on_key(Part, std::size_t, Code&) { return true; }
  bool on_string_part(Part, std::size_t, Code&) { return true; }
  bool on_string(Part, std::size_t, Code&) { return true; }
  bool on_number_part(Part, Code&) { return true; }
  bool on_int64(std::int64_t, Part, Code&) { return true; }
  bool on_uint64(std::uint64_t, Part, Code&) { return true; }
  bool on_double(double, Part, Code&) { return true; }
  bool on_bool(bool, Code&) { return true; }
  bool on_null(Code&) { return true; }
  bool on_comment_part(Part, Code&) { return true; }
  bool on_comment(Part, Code&) { return true; }
};

}  // namespace zuna_json
