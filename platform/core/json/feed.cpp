#include "platform/core/json/feed.h"

namespace zuna_core {

std::string DescribeJsonError(const boost::json::error_code& code) {
  using boost::json::error;
  if (code == error::incomplete) return "the text ends before the document does";
  if (code == error::extra_data) return "more text follows the document";
  if (code == error::too_deep) return "lists and objects are nested too deeply";
  return "this is not JSON (" + code.message() + ")";
}

}  // namespace zuna_core
