// Benchmarks of WPT+ texts and map-server scripts. One more mode:
//   walrim_formats_bench compare [ROUNDS]    writes a full data set's WPT+ text and its script in turn and prints how
//                                            often the one's time goes into the other's
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

#include "full_set.h"

namespace walrim {
namespace {

WriteSettings On(Datum datum) {
  WriteSettings settings;
  settings.datum = datum;
  settings.now = {2002, 11, 15, 14, 5, 12};
  return settings;
}

void SetRates(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
  state.SetComplexityN(static_cast<std::int64_t>(bytes));
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(8)->Arg(4)->Arg(2)->Arg(1)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
}

void Write(benchmark::State& state, FormatId format, Datum datum) {
  const DataSet data = FullDataSet(static_cast<int>(state.range(0)));
  std::string text;
  for (auto _ : state) {
    text = TextOf(format, data, On(datum));
    benchmark::DoNotOptimize(text.data());
  }
  SetRates(state, text.size());
}

void Read(benchmark::State& state, FormatId format) {
  const std::string text = TextOf(format, FullDataSet(static_cast<int>(state.range(0))), On(Datum::Wgs84));
  for (auto _ : state) {
    DataSet data;
    LineSource lines(text, TextEncoding::Utf8);
    (void)FormatOf(format).read(lines, data, {});
    benchmark::DoNotOptimize(data.TrackPointCount());
  }
  SetRates(state, text.size());
}

void BM_WriteWpt(benchmark::State& state) {
  Write(state, FormatId::WptPlus, Datum::Wgs84);
}
BENCHMARK(BM_WriteWpt)->Apply(Sizes);

void BM_ReadWpt(benchmark::State& state) {
  Read(state, FormatId::WptPlus);
}
BENCHMARK(BM_ReadWpt)->Apply(Sizes);

void BM_WriteScript(benchmark::State& state) {
  Write(state, FormatId::Script, Datum::Tokyo);
}
BENCHMARK(BM_WriteScript)->Apply(Sizes);

void BM_ReadScript(benchmark::State& state) {
  Read(state, FormatId::Script);
}
BENCHMARK(BM_ReadScript)->Apply(Sizes);

/// A log of all points that fit, which is one statement with all their positions.
void BM_OneLongLog(benchmark::State& state) {
  DataSet data;
  (void)data.Begin(TrackLog());
  TrackPoint point;
  point.lat_deg = 35.6252;
  point.lon_deg = 139.2437;
  while (data.Add(point) == AddResult::Stored) {
  }
  for (auto _ : state)
    benchmark::DoNotOptimize(TextOf(FormatId::Script, data, On(Datum::Tokyo)).data());
}
BENCHMARK(BM_OneLongLog)->Unit(benchmark::kMillisecond);

double Milliseconds(FormatId format, const DataSet& data, Datum datum) {
  const auto start = std::chrono::steady_clock::now();
  benchmark::DoNotOptimize(TextOf(format, data, On(datum)).data());
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Compare(Datum datum, int rounds) {
  const DataSet data = FullDataSet(1);
  double wpt_ms = std::numeric_limits<double>::max();
  double script_ms = wpt_ms;
  for (int i = 0; i < rounds; ++i) {
    wpt_ms = std::min(wpt_ms, Milliseconds(FormatId::WptPlus, data, datum));
    script_ms = std::min(script_ms, Milliseconds(FormatId::Script, data, datum));
  }
  std::printf("%.*s: script / WPT+ text: %.2f\n", static_cast<int>(DatumName(datum).size()), DatumName(datum).data(),
              script_ms / wpt_ms);
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  if (argc >= 2 && std::string_view(argv[1]) == "compare") {
    const int rounds = argc >= 3 ? std::atoi(argv[2]) : 15;
    for (const walrim::Datum datum : {walrim::Datum::Wgs84, walrim::Datum::Tokyo})
      walrim::Compare(datum, std::max(rounds, 1));
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
