// Mutates files of every format. Most inputs are mended afterwards, so that they get past lengths and
// checksums; the others keep theirs broken.

#include "fuzz/mend/mend.h"
#include "fuzz/mutators/mutators.h"

namespace {

constexpr unsigned kOneIn = 4;       // of this many inputs, one stays broken
constexpr unsigned kGrowOneIn = 32;  // of this many inputs, one grows

/// `bytes` with a part of them repeated until they are large: what costs more than its size allows shows only
/// then.
std::string Grown(const std::string& bytes, std::size_t max_size, std::mt19937& random) {
  if (bytes.size() >= max_size) return bytes;
  const std::size_t begin = random() % bytes.size();
  const std::string part = bytes.substr(begin, 1 + random() % (bytes.size() - begin));
  std::string more;
  for (std::size_t room = random() % (max_size - bytes.size()); room > more.size();) more += part;
  return bytes.substr(0, begin) + more + bytes.substr(begin);
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed) {
  std::mt19937 random(seed);
  if (size > 0 && data[0] == '{' && random() % kOneIn != 0) {
    return fuzz::PutBack(fuzz::MutateJson(std::string(data, data + size), random), data, max_size);
  }
  size = LLVMFuzzerMutate(data, size, max_size);
  std::string bytes(data, data + size);
  if (size > 0 && random() % kGrowOneIn == 0) bytes = Grown(bytes, max_size, random);
  return fuzz::PutBack(random() % kOneIn == 0 ? bytes : fuzz::Mend(bytes), data, max_size);
}
