// Benchmarks of WPT+ texts and map-server scripts. One more mode:
//   walrim_formats_bench compare [ROUNDS]    writes a full data set's WPT+ text and its script in turn and prints how
//                                            often the one's time goes into the other's
#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "data/InternalData.h"
#include "formats/MpsWpt.h"
#include "formats/ProAtlas.h"
#include "full_set.h"

namespace walrim {
namespace {

constexpr int Utc = 9;
constexpr CivilTime Now{2002, 11, 15, 14, 5, 12};
constexpr std::array<bool, DataKindCount> EveryKind{true, true, true};

WptSettings Settings(std::string_view output_type, std::string_view datum) {
  return {std::string(output_type), {"D", std::string(datum), Utc}, Now};
}

void SetRates(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
  state.SetComplexityN(static_cast<std::int64_t>(bytes));
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(8)->Arg(4)->Arg(2)->Arg(1)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
}

void BM_WriteWpt(benchmark::State& state) {
  InternalData data;
  FillDataSet(data, static_cast<int>(state.range(0)));
  std::string text;
  for (auto _ : state) {
    text = BuildWptText(data, EveryKind, Settings("WPT+", "WGS84"));
    benchmark::DoNotOptimize(text.data());
  }
  SetRates(state, text.size());
}
BENCHMARK(BM_WriteWpt)->Apply(Sizes);

void BM_ReadWpt(benchmark::State& state) {
  InternalData data;
  FillDataSet(data, static_cast<int>(state.range(0)));
  const std::string text = BuildWptText(data, EveryKind, Settings("WPT+", "WGS84"));
  for (auto _ : state) {
    for (const DataKind kind : AllDataKinds)
      data.Clear(kind);
    WptReader reader(data, Utc);
    reader.ReadText(text);
    benchmark::DoNotOptimize(data.tracks.TrackCount);
  }
  SetRates(state, text.size());
}
BENCHMARK(BM_ReadWpt)->Apply(Sizes);

void BM_ConvertToScript(benchmark::State& state) {
  InternalData data;
  FillDataSet(data, static_cast<int>(state.range(0)));
  const std::string text = BuildWptText(data, EveryKind, Settings("MPS", "Tokyo"));
  for (auto _ : state)
    benchmark::DoNotOptimize(ConvertWptToScript(text, {}, Now).text.data());
  SetRates(state, text.size());
}
BENCHMARK(BM_ConvertToScript)->Apply(Sizes);

void BM_ConvertFromScript(benchmark::State& state) {
  InternalData data;
  FillDataSet(data, static_cast<int>(state.range(0)));
  const std::string script = ConvertWptToScript(BuildWptText(data, EveryKind, Settings("MPS", "WGS84")), {}, Now).text;
  for (auto _ : state)
    benchmark::DoNotOptimize(ConvertScriptToWpt(script).text.data());
  SetRates(state, script.size());
}
BENCHMARK(BM_ConvertFromScript)->Apply(Sizes);

/// A log of all points that fit, which is one statement with all their positions.
void BM_OneLongLog(benchmark::State& state) {
  std::string text = "Datum,Tokyo mean,Bessel 1841,739.845,0.10037483,-128,481,664\r\n";
  for (int i = 0; i < MaxTrackPoints; ++i)
    text += "TP,DMS,35.373072,139.143732,11/15/2002,09:00:00,0\r\n";
  for (auto _ : state)
    benchmark::DoNotOptimize(ConvertWptToScript(text, {}, Now).text.data());
}
BENCHMARK(BM_OneLongLog)->Unit(benchmark::kMillisecond);

template <typename Step>
double Milliseconds(const Step& step) {
  const auto start = std::chrono::steady_clock::now();
  step();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Compare(const char* datum, int rounds) {
  InternalData data;
  FillDataSet(data, 1);
  double write_ms = std::numeric_limits<double>::max();
  double convert_ms = write_ms;
  for (int i = 0; i < rounds; ++i) {
    std::string text;
    write_ms = std::min(write_ms, Milliseconds([&] { text = BuildWptText(data, EveryKind, Settings("MPS", datum)); }));
    convert_ms = std::min(
        convert_ms, Milliseconds([&] { benchmark::DoNotOptimize(ConvertWptToScript(text, {}, Now).text.data()); }));
  }
  std::printf("%s: script / WPT+ text: %.2f; both steps / WPT+ text: %.2f\n", datum, convert_ms / write_ms,
              (write_ms + convert_ms) / write_ms);
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  if (argc >= 2 && std::string_view(argv[1]) == "compare") {
    const int rounds = argc >= 3 ? std::atoi(argv[2]) : 15;
    for (const char* datum : {"WGS84", "Tokyo"})
      walrim::Compare(datum, std::max(rounds, 1));
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
