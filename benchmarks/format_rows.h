// The rows of single formats.

#pragma once

namespace zuna_bench {

void AddFormatRows();

}  // namespace zuna_bench
