#pragma once

namespace zuna_bench {

void AddFormatRows();

}  // namespace zuna_bench
