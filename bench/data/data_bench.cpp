// Benchmarks of the data set and its file. Two modes serve compare.sh:
//   walrim_data_bench write-full FILE    writes the standard file of a full data set
//   walrim_data_bench read FILE          prints the milliseconds from the file's bytes to a filled data set
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "full_set.h"
#include "text/Cp932.h"

namespace walrim {
namespace {

void ReadBytes(std::string_view bytes, DataSet& data) {
  LineSource lines(bytes, EncodingOf(bytes));
  (void)FormatOf(FormatId::Standard).read(lines, data, {});
}

void SetRates(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
  state.SetComplexityN(static_cast<std::int64_t>(bytes));
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(8)->Arg(4)->Arg(2)->Arg(1)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
}

void BM_ReadStandardFile(benchmark::State& state) {
  const std::string text = StandardFile(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    DataSet data;
    ReadBytes(text, data);
    benchmark::DoNotOptimize(data.TrackPointCount());
  }
  SetRates(state, text.size());
}
BENCHMARK(BM_ReadStandardFile)->Apply(Sizes);

void BM_ReadShiftJisFile(benchmark::State& state) {
  const std::string bytes = EncodeCp932(StandardFile(static_cast<int>(state.range(0)))).value();
  for (auto _ : state) {
    DataSet data;
    ReadBytes(bytes, data);
    benchmark::DoNotOptimize(data.TrackPointCount());
  }
  SetRates(state, bytes.size());
}
BENCHMARK(BM_ReadShiftJisFile)->Apply(Sizes);

void Write(benchmark::State& state, const WriteSettings& settings) {
  const DataSet data = FullDataSet(static_cast<int>(state.range(0)));
  std::string text;
  for (auto _ : state) {
    text = TextOf(FormatId::Standard, data, settings);
    benchmark::DoNotOptimize(text.data());
  }
  SetRates(state, text.size());
}

void BM_WriteStandardFile(benchmark::State& state) {
  Write(state, {});
}
BENCHMARK(BM_WriteStandardFile)->Apply(Sizes);

void BM_WriteTokyoDms(benchmark::State& state) {
  WriteSettings settings;
  settings.notation = AngleNotation::DMS;
  settings.datum = Datum::Tokyo;
  Write(state, settings);
}
BENCHMARK(BM_WriteTokyoDms)->Arg(8)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_ClearDataSet(benchmark::State& state) {
  const DataSet full = FullDataSet(1);
  for (auto _ : state) {
    state.PauseTiming();
    DataSet data = full;
    state.ResumeTiming();
    for (const DataKind kind : AllDataKinds)
      data.Clear(kind);
  }
}
BENCHMARK(BM_ClearDataSet)->Unit(benchmark::kMillisecond);

void BM_ConvertDatum(benchmark::State& state) {
  GeoPoint point{34.69173611111111, 135.1956, 0};
  for (auto _ : state) {
    benchmark::DoNotOptimize(point);
    benchmark::DoNotOptimize(ConvertDatum(point, Datum::Wgs84, Datum::Tokyo));
  }
}
BENCHMARK(BM_ConvertDatum);

void BenchmarkAngle(std::string_view value, AngleNotation from, AngleNotation to) {
  std::string text;
  AppendConvertedAngle(text, value, from, to);
  benchmark::DoNotOptimize(text);
}

void BM_ConvertAngleToDms(benchmark::State& state) {
  for (auto _ : state)
    BenchmarkAngle("34.69173611111111", AngleNotation::D, AngleNotation::DMS);
}
BENCHMARK(BM_ConvertAngleToDms);

void BM_ConvertAngleFromDms(benchmark::State& state) {
  for (auto _ : state)
    BenchmarkAngle("34.413025", AngleNotation::DMS, AngleNotation::D);
}
BENCHMARK(BM_ConvertAngleFromDms);

int WriteFull(const char* path) {
  std::ofstream out(path, std::ios::binary);
  out << StandardFile(1);
  out.close();
  return out ? 0 : 1;
}

int ReadOnce(const char* path) {
  std::ifstream in(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  DataSet data;
  const auto start = std::chrono::steady_clock::now();
  ReadBytes(bytes, data);
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  const bool whole = data.Waypoints().size() == MaxWaypoints && data.Routes().size() == MaxRoutes &&
                     data.Logs().size() == MaxTrackLogs;
  if (!whole) {
    std::fprintf(stderr, "the file did not fill the data set\n");
    return 1;
  }
  std::printf("%.3f\n", took.count());
  return 0;
}

}  // namespace
}  // namespace walrim

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "write-full") return walrim::WriteFull(argv[2]);
  if (argc == 3 && std::string_view(argv[1]) == "read") return walrim::ReadOnce(argv[2]);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
