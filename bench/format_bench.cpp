// Number formats: the calculation rounds values "as shown" through Format thousands of times a
// run, and a report formats every number it prints.

#include "core/formats.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

#include <benchmark/benchmark.h>

namespace {

using namespace quench;

// Flows, pressures, lengths and factors: from hundredths to tens of thousands.
std::array<double, 64> SampleValues() {
    std::array<double, 64> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = std::pow(10.0, static_cast<double>(i % 7) - 2) * (1.0 + 0.1234567 * i);
    }
    return values;
}

void FormatThrough(benchmark::State& state, std::string_view picture) {
    const auto values = SampleValues();
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Format(values[next++ % values.size()], picture));
    }
}
BENCHMARK_CAPTURE(FormatThrough, Decimals, std::string_view("##0.0##"));
BENCHMARK_CAPTURE(FormatThrough, ThreeDecimals, std::string_view("#0.000"));
BENCHMARK_CAPTURE(FormatThrough, Grouped, std::string_view("###,##0.0#"));
BENCHMARK_CAPTURE(FormatThrough, Scientific, std::string_view("0.00E+00"));
BENCHMARK_CAPTURE(FormatThrough, Standard, std::string_view("Standard"));

// A value rounded as shown, as the calculation does between its steps.
void RoundAsShown(benchmark::State& state) {
    const auto values = SampleValues();
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ToNumber(Format(values[next++ % values.size()], "##0.0##")));
    }
}
BENCHMARK(RoundAsShown);

void StrOfDouble(benchmark::State& state) {
    const auto values = SampleValues();
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Str(values[next++ % values.size()]));
    }
}
BENCHMARK(StrOfDouble);

} // namespace
