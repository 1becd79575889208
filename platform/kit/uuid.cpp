// Identifiers by Boost.UUID.

#include "kit/uuid.h"

#include <algorithm>
#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/string_generator.hpp>
#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_io.hpp>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <system_error>

#include "kit/error.h"

namespace kit {

namespace {

constexpr std::size_t kTextLength = 36;

UUID FromBoost(const boost::uuids::uuid& uuid) {
  UUID::Bytes bytes{};
  std::copy(uuid.begin(), uuid.end(), bytes.begin());
  return UUID(bytes);
}

}  // namespace

UUID::UUID() : bytes_{} {
  try {
    *this = FromBoost(boost::uuids::random_generator()());
  } catch (const boost::uuids::entropy_error& error) {
    const int code = static_cast<int>(error.errcode());
    throw IoError("A new identifier needs random numbers, and the system gives none: " +
                  std::generic_category().message(code) + "; check the system");
  }
}

UUID::UUID(std::istream& is, bool binary) : bytes_{} {
  if (binary) {
    is.read(reinterpret_cast<char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
    return;
  }
  std::string text(kTextLength, '\0');
  if (!is.read(text.data(), static_cast<std::streamsize>(text.size()))) return;
  try {
    *this = FromString(text);
  } catch (const std::invalid_argument&) {
    is.setstate(std::ios_base::failbit);
  }
}

void UUID::WriteBinary(std::ostream& os, bool binary) const {
  if (binary) {
    os.write(reinterpret_cast<const char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
  } else {
    os << ToString();
  }
}

std::string UUID::ToString() const {
  boost::uuids::uuid uuid{};
  std::copy(bytes_.begin(), bytes_.end(), uuid.begin());
  return boost::uuids::to_string(uuid);
}

UUID UUID::FromString(const std::string& text) {
  try {
    // The generator also takes braces and texts without hyphens; here only one form is an identifier.
    if (text.size() == kTextLength && text[8] == '-')
      return FromBoost(boost::uuids::string_generator()(text));
  } catch (const std::runtime_error&) {
    // Falls through to the one message below.
  }
  throw std::invalid_argument("\"" + text +
                              "\" is not an identifier such as 00112233-4455-6677-8899-aabbccddeeff");
}

}  // namespace kit
