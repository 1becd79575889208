// Finds out whether one plaintext holds two documents, one after the other.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace zuna_toolkit {

/// Where the second of two documents begins that `plaintext` holds; none where it does not. `is_document`
/// tells whether its argument is a whole document. Two legacy logs and two legacy shows are not told apart:
/// their songs are found as those of one file.
std::optional<std::size_t> BeginOfSecond(std::string_view plaintext,
                                         const std::function<bool(std::string_view)>& is_document);

/// Whether `tail` is zeros and blanks.
bool IsPadding(std::string_view tail);

/// Where a document begins in `tail`, which follows another document: after padding, or at a mark. None where
/// none does.
std::optional<std::size_t> BeginOfDocument(std::string_view tail,
                                           const std::function<bool(std::string_view)>& is_document);

/// Where the binary documents begin that have the kind and the version of the one at the beginning of
/// `plaintext`: at `second`, and each where the one before it ends as it states. None where the second one is
/// of another kind or version.
std::vector<std::size_t> BeginsOfOneForm(std::string_view plaintext, std::size_t second);

}  // namespace zuna_toolkit
