#pragma once

#include <cstddef>

#include "tests/support/failing_streambuf.h"

// A security library for tests: nothing is encrypted, and the plaintext streams fail when they are told to.
// Those of inputs throw on every failure. Those of outputs do not by themselves, and an output that is
// encrypted while its stream still throws fails the test. With it the converter shows what becomes of a
// stream's failure, which the real library's streams do not have.

namespace plain_cipher {

/// How the streams that are made from now on fail: those that decrypt, and those that are to be encrypted.
void SetFaults(const zuna_test::FailingStreambuf::Options& inputs,
               const zuna_test::FailingStreambuf::Options& outputs);

/// The most calls that one input stream and one output stream have got since then, up to its destruction.
std::size_t InputCalls();
std::size_t OutputCalls();

}  // namespace plain_cipher
