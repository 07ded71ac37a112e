// The groups of figures of benchmark-catalogue. Each function makes its inputs, checks that all peers come to the same
// (std::runtime_error if not) and registers its runs as "figure/who".
#pragma once

namespace brindle_benchmark {

void RegisterLoadRuns();
void RegisterLookupRuns();

} // namespace brindle_benchmark
