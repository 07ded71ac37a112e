// The groups of figures of benchmark-services. Each function makes its inputs, checks that all peers come to the same
// (std::runtime_error if not) and registers its runs as "figure/who".
#pragma once

namespace brindle_benchmark {

void RegisterCsvRuns();
void RegisterStringBucketRuns();
void RegisterDimensionRuns();

} // namespace brindle_benchmark
