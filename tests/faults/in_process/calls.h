// Calls of every public function of the libraries, for tests in which something fails.

#pragma once

#include <functional>
#include <iosfwd>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/bytes.h"
#include "zuna_sec/cipher_key.h"

namespace public_calls {

/// A call with everything prepared, and what it gives as text.
struct Call {
  std::string name;
  std::function<std::string()> run;
};

/// A function that reads a stream.
struct Reader {
  std::string name;
  std::string bytes;
  std::function<std::string(std::istream&)> run;
  bool takes_any_end = false;  ///< data that ends at any place has an answer
};

/// A function that writes to a stream.
struct Writer {
  std::string name;
  std::function<void(std::ostream&)> run;
};

/// The calls of one library.
struct Calls {
  std::vector<Call> calls;
  std::vector<Reader> readers;
  std::vector<Writer> writers;

  void Add(std::string name, std::function<std::string()> run) {
    calls.push_back({std::move(name), std::move(run)});
  }
  void AddReader(std::string name, std::string bytes, std::function<std::string(std::istream&)> run) {
    readers.push_back({std::move(name), std::move(bytes), std::move(run)});
  }
  void AddProbe(std::string name, std::string bytes, std::function<std::string(std::istream&)> run) {
    readers.push_back({std::move(name), std::move(bytes), std::move(run), true});
  }
  void AddWriter(std::string name, std::function<void(std::ostream&)> run) {
    writers.push_back({std::move(name), std::move(run)});
  }
};

Calls OfTheKit();
Calls OfTheCore();
Calls OfSecurity();
Calls OfVersion0();
Calls OfTheConverter();
Calls OfTheToolkit();

/// A plaintext, encrypted with zuna_test::kKey or another key by another process: in this one, the call that
/// is tested is the first.
std::vector<std::uint8_t> EncryptedElsewhere(const std::string& plaintext);
std::vector<std::uint8_t> EncryptedElsewhere(const std::string& plaintext, const CipherKey& key);

/// The text of a file, and the names in its folder: what a failed call has left there is among them. Throws
/// where it cannot be read.
std::string ContentOf(const std::string& path);

/// How many descriptors are open, among those that a few files get.
int OpenDescriptors();

/// What is written to it, in memory that is there from the beginning.
class FixedBuffer : public std::streambuf {
 public:
  FixedBuffer() : bytes_(std::size_t{1} << 16, '\0') { Clear(); }

  void Clear() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }
  std::string_view text() const { return {pbase(), pptr()}; }

 private:
  std::string bytes_;
};

/// A stream whose failures throw: without that, a probe takes what it cannot read for another kind of data.
inline std::istream& Throwing(std::istream& is) {
  is.exceptions(std::ios_base::badbit | std::ios_base::failbit);
  return is;
}

/// What `write` writes to a stream.
template <typename Write>
std::string TextOf(Write write) {
  std::ostringstream os;
  os.exceptions(std::ios_base::badbit | std::ios_base::failbit);
  write(os);
  return os.str();
}

}  // namespace public_calls
