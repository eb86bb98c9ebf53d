// A full history: load, record, save, and read for the chart. The peer, nlohmann/json,
// decodes and encodes the same samples.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "App/HistoryStore.h"
#include "App/SampleJson.h"
#include "bench/FullHistory.h"
#include "bench/TemporaryFolder.h"
#include "platform/linux/files/XdgFileManager.h"
#include "tests/support/States.h"

namespace vorlane {

// nlohmann/json finds this by argument-dependent lookup.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Sample, t, p, c, a)

namespace {

using bench::fullHistory;

constexpr Date now{1767603600.0};

std::string encoded(const std::vector<Sample>& samples)
{
    std::string json;
    SampleEncoder encoder(samples);
    for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) json += piece;
    return json;
}

// A private data folder with a full history.
class DataFolder {
public:
    DataFolder()
    {
        (void)setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
        HistoryStore store(files, now);
        store.samples = fullHistory(now);
        store.save(now);
    }

    platform::XdgFileManager files;

private:
    bench::TemporaryFolder folder;
};

void Load(benchmark::State& state)
{
    DataFolder data;
    for ([[maybe_unused]] const auto _ : state) {
        const HistoryStore store(data.files, now);
        if (store.samples.size() != bench::fullHistorySize) state.SkipWithError("not loaded");
    }
}
BENCHMARK(Load)->Unit(benchmark::kMillisecond);

void Decode(benchmark::State& state)
{
    const auto json = encoded(fullHistory(now));
    for ([[maybe_unused]] const auto _ : state) benchmark::DoNotOptimize(decodeSamples(json));
}
BENCHMARK(Decode)->Unit(benchmark::kMillisecond);

void DecodeByThePeer(benchmark::State& state)
{
    const auto json = encoded(fullHistory(now));
    for ([[maybe_unused]] const auto _ : state) {
        benchmark::DoNotOptimize(nlohmann::json::parse(json).get<std::vector<Sample>>());
    }
}
BENCHMARK(DecodeByThePeer)->Unit(benchmark::kMillisecond);

void Encode(benchmark::State& state)
{
    const auto samples = fullHistory(now);
    for ([[maybe_unused]] const auto _ : state) {
        SampleEncoder encoder(samples);
        for (auto piece = encoder.next(); !piece.empty(); piece = encoder.next()) {
            benchmark::DoNotOptimize(piece.data());
        }
    }
}
BENCHMARK(Encode)->Unit(benchmark::kMillisecond);

void EncodeByThePeer(benchmark::State& state)
{
    const auto samples = fullHistory(now);
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(nlohmann::json(samples).dump());
}
BENCHMARK(EncodeByThePeer)->Unit(benchmark::kMillisecond);

void Save(benchmark::State& state)
{
    DataFolder data;
    HistoryStore store(data.files, now);
    for ([[maybe_unused]] const auto _ : state) store.save(now);
}
BENCHMARK(Save)->Unit(benchmark::kMillisecond);

void Record(benchmark::State& state)
{
    DataFolder data;
    HistoryStore store(data.files, now);
    const auto reading = onBattery(50);
    Date at = now;
    for ([[maybe_unused]] const auto _ : state) {
        at = at + Seconds{60};
        store.lastSave = at;  // prevents a save, measured elsewhere
        store.record(reading, {.at = at, .force = true});
    }
}
BENCHMARK(Record)->Unit(benchmark::kMicrosecond);

void ReadForTheChart(benchmark::State& state)
{
    DataFolder data;
    const HistoryStore store(data.files, now);
    const Date from = now - Seconds{86400.0 * static_cast<double>(state.range(0))};
    for ([[maybe_unused]] const auto _ : state) benchmark::DoNotOptimize(store.samplesSince(from));
}
BENCHMARK(ReadForTheChart)->ArgName("days")->Arg(1)->Arg(7)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vorlane
