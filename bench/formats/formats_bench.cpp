// Benchmarks of WPT+ texts, map-server scripts and GPX. Two more modes, which take the best of some rounds:
//   walrim_formats_bench compare [ROUNDS]    writes a full data set's WPT+ text and its script in turn and prints how
//                                            often the one's time goes into the other's
//   walrim_formats_bench gpx [ROUNDS]        writes a full data set as GPX and as a standard file and reads both again,
//                                            in turn, and prints how often the one's time goes into the other's
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

/// The points of a text's logs.
std::size_t ReadText(FormatId format, std::string_view text) {
  DataSet data;
  LineSource lines(text, TextEncoding::Utf8);
  (void)FormatOf(format).read(lines, data, {});
  return data.TrackPointCount();
}

void Read(benchmark::State& state, FormatId format) {
  const std::string text = TextOf(format, FullDataSet(static_cast<int>(state.range(0))), On(Datum::Wgs84));
  for (auto _ : state)
    benchmark::DoNotOptimize(ReadText(format, text));
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

void BM_WriteGpx(benchmark::State& state) {
  Write(state, FormatId::Gpx, Datum::Wgs84);
}
BENCHMARK(BM_WriteGpx)->Apply(Sizes);

void BM_ReadGpx(benchmark::State& state) {
  Read(state, FormatId::Gpx);
}
BENCHMARK(BM_ReadGpx)->Apply(Sizes);

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

template <typename Work>
double Milliseconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Compare(Datum datum, int rounds) {
  const DataSet data = FullDataSet(1);
  double wpt_ms = std::numeric_limits<double>::max();
  double script_ms = wpt_ms;
  for (int i = 0; i < rounds; ++i) {
    const auto write = [&](FormatId format) { benchmark::DoNotOptimize(TextOf(format, data, On(datum)).data()); };
    wpt_ms = std::min(wpt_ms, Milliseconds([&] { write(FormatId::WptPlus); }));
    script_ms = std::min(script_ms, Milliseconds([&] { write(FormatId::Script); }));
  }
  std::printf("%.*s: script / WPT+ text: %.2f\n", static_cast<int>(DatumName(datum).size()), DatumName(datum).data(),
              script_ms / wpt_ms);
}

void WriteTo(std::string& text, FormatId format, const DataSet& data) {
  TextOutput out([&text](const std::string& lines) { text += lines; });
  (void)FormatOf(format).write(out, data, On(Datum::Wgs84));
  out.Flush();
}

/// The least milliseconds that writing and reading took.
struct ThereAndBack {
  double write_ms = std::numeric_limits<double>::max();
  double read_ms = std::numeric_limits<double>::max();

  /// text has room: what keeps the pieces that are written is not measured.
  void Measure(FormatId format, const DataSet& data, std::string& text) {
    text.clear();
    std::size_t points = 0;
    write_ms = std::min(write_ms, Milliseconds([&] { WriteTo(text, format, data); }));
    read_ms = std::min(read_ms, Milliseconds([&] { points = ReadText(format, text); }));
    if (points != data.TrackPointCount()) std::abort();
  }
};

void CompareGpx(int rounds) {
  const DataSet data = FullDataSet(1);
  ThereAndBack standard;
  ThereAndBack gpx;
  std::string text;
  for (int i = 0; i < rounds; ++i) {
    standard.Measure(FormatId::Standard, data, text);
    gpx.Measure(FormatId::Gpx, data, text);
  }
  std::printf("standard file: written in %.1f ms, read in %.1f ms\n", standard.write_ms, standard.read_ms);
  std::printf("GPX: written in %.1f ms, read in %.1f ms\n", gpx.write_ms, gpx.read_ms);
  std::printf("GPX / standard file: %.2f\n", (gpx.write_ms + gpx.read_ms) / (standard.write_ms + standard.read_ms));
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  const std::string_view mode = argc >= 2 ? argv[1] : "";
  const int rounds = std::max(argc >= 3 ? std::atoi(argv[2]) : 15, 1);
  if (mode == "compare") {
    for (const walrim::Datum datum : {walrim::Datum::Wgs84, walrim::Datum::Tokyo})
      walrim::Compare(datum, rounds);
    return 0;
  }
  if (mode == "gpx") {
    walrim::CompareGpx(rounds);
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
