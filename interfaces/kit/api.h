// The visibility of what the libraries export, and the C++ that their headers are written in.

#pragma once

#if __cplusplus <= 201703L
#error "The headers of the zuna format converter need C++20: compile with -std=c++20"
#endif

/// Marks a declaration that other libraries may use. Everything is compiled with hidden visibility; a class
/// or function that crosses the boundary of a shared library carries this mark, exception types above all:
/// without it a handler in one library does not recognise what another one throws.
#define ZUNA_API __attribute__((visibility("default")))
