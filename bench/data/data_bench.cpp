// Benchmarks of the data set and its file. Two modes serve compare.sh:
//   walrim_data_bench write-full FILE    writes the standard file of a full data set
//   walrim_data_bench read FILE          prints the milliseconds from the file's bytes to a filled data set
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "data/GeneralWalrim.h"
#include "data/InternalData.h"
#include "full_set.h"
#include "geo/GeneralLatLon.h"
#include "geo/GeneralLib.h"
#include "text/Cp932.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

constexpr int Utc = 9;

void ReadBytes(std::string_view bytes, InternalData& data) {
  StandardReader reader(data, Utc);
  reader.ReadText(DecodeText(bytes));
}

void SetRates(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
  state.SetComplexityN(static_cast<std::int64_t>(bytes));
}

void BM_ReadStandardFile(benchmark::State& state) {
  const std::string text = StandardFile(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const auto data = std::make_unique<InternalData>();
    ReadBytes(text, *data);
    benchmark::DoNotOptimize(data->tracks.TrackCount);
  }
  SetRates(state, text.size());
}
BENCHMARK(BM_ReadStandardFile)
    ->Arg(8)
    ->Arg(4)
    ->Arg(2)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

void BM_ReadShiftJisFile(benchmark::State& state) {
  const std::string bytes = EncodeCp932(StandardFile(static_cast<int>(state.range(0)))).value();
  for (auto _ : state) {
    const auto data = std::make_unique<InternalData>();
    ReadBytes(bytes, *data);
    benchmark::DoNotOptimize(data->tracks.TrackCount);
  }
  SetRates(state, bytes.size());
}
BENCHMARK(BM_ReadShiftJisFile)
    ->Arg(8)
    ->Arg(4)
    ->Arg(2)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

void BM_WriteStandardFile(benchmark::State& state) {
  InternalData data;
  FillDataSet(data, static_cast<int>(state.range(0)));
  const NameTablesByType names;
  StandardWriter writer(data, names, {});
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const DataKind kind : AllDataKinds)
      writer.AppendKind(text, kind, true);
    benchmark::DoNotOptimize(text.data());
  }
  SetRates(state, text.size());
}
BENCHMARK(BM_WriteStandardFile)
    ->Arg(8)
    ->Arg(4)
    ->Arg(2)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

void BM_WriteTokyoDms(benchmark::State& state) {
  InternalData data;
  FillDataSet(data, static_cast<int>(state.range(0)));
  const NameTablesByType names;
  StandardWriter writer(data, names, {"DMS", "Tokyo", Utc});
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const DataKind kind : AllDataKinds)
      writer.AppendKind(text, kind, true);
    benchmark::DoNotOptimize(text.data());
  }
  SetRates(state, text.size());
}
BENCHMARK(BM_WriteTokyoDms)->Arg(8)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_NewDataSet(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(std::make_unique<InternalData>());
}
BENCHMARK(BM_NewDataSet)->Unit(benchmark::kMillisecond);

void BM_ClearDataSet(benchmark::State& state) {
  InternalData data;
  FillDataSet(data, 1);
  for (auto _ : state) {
    for (const DataKind kind : AllDataKinds)
      data.Clear(kind);
  }
}
BENCHMARK(BM_ClearDataSet)->Unit(benchmark::kMillisecond);

void BM_ConvertDatum(benchmark::State& state) {
  GeoPoint point{34.69173611111111, 135.1956, 0};
  for (auto _ : state) {
    benchmark::DoNotOptimize(point);
    benchmark::DoNotOptimize(ConvertDatum(point, "WGS84", "TOKYO"));
  }
}
BENCHMARK(BM_ConvertDatum);

void BM_ConvertAngleToDms(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(ConvertAngle("34.69173611111111", "D", "DMS"));
}
BENCHMARK(BM_ConvertAngleToDms);

void BM_ConvertAngleFromDms(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(ConvertAngle("34.413025", "DMS", "D"));
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
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  // The data set is there before any file is: it lives as long as the program.
  const auto data = std::make_unique<InternalData>();
  const auto start = std::chrono::steady_clock::now();
  StandardReader reader(*data, Utc);
  reader.ReadText(DecodeOwnedText(std::move(bytes)));
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  const bool whole = data->WaypointCount == MaxWaypoints && data->routes.RouteCount == MaxRoutes &&
                     data->tracks.TrackCount == MaxTrackLogs;
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
