// The visibility of what the libraries export.

#pragma once

/// Marks a declaration that other libraries may use. Everything is compiled with hidden visibility; a class
/// or function that crosses the boundary of a shared library carries this mark, exception types above all:
/// without it a handler in one library does not recognise what another one throws.
#define ZUNA_API __attribute__((visibility("default")))
