// The groups of figures of benchmark-expander. Each function makes its inputs, checks that all peers give the same
// bytes (std::runtime_error if not) and registers its runs as "figure/who".
#pragma once

namespace brindle_benchmark {

void RegisterQueryRuns();
void RegisterPlainRuns();
void RegisterDenseRuns();

} // namespace brindle_benchmark
