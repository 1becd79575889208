// The errors of current shows and logs: how their messages are composed.

#include "cmn/data_error.h"

#include <utility>

#include "kit/format.h"
#include "platform/core/bytes/quote.h"

namespace cmn {

namespace {

std::string Message(const DataError::Parts& parts) {
  std::string place;
  if (parts.song) place = "song " + zuna_core::Quote(*parts.song);
  if (!place.empty() && !parts.field.empty()) place += ", ";
  place += parts.field;
  std::string message = place.empty() ? parts.problem : place + ": " + parts.problem;
  if (parts.offset) {
    message += kit::format(" (at byte %llu)", static_cast<unsigned long long>(*parts.offset));
  }
  if (!parts.remedy.empty()) message += "; " + parts.remedy;
  return message;
}

}  // namespace

DataError::DataError(Parts parts)
    : kit::RuntimeError(Message(parts)), parts_(std::make_shared<const Parts>(std::move(parts))) {}

DataError::DataError(const std::string& problem, const std::string& remedy)
    : DataError(Parts{.problem = problem, .remedy = remedy}) {}

const std::optional<std::string>& DataError::song() const noexcept { return parts_->song; }
const std::string& DataError::field() const noexcept { return parts_->field; }
std::optional<std::uint64_t> DataError::offset() const noexcept { return parts_->offset; }
const std::string& DataError::problem() const noexcept { return parts_->problem; }
const std::string& DataError::remedy() const noexcept { return parts_->remedy; }

}  // namespace cmn
