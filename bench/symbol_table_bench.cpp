// Cost of filling the symbol table to capacity and of resolving every name
// in it, the two operations a large source repeats every pass.

#include "symbols/SymbolTable.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace {

constexpr int SymbolCount = 10000;

std::vector<std::string> SymbolNames() {
    std::vector<std::string> names;
    names.reserve(SymbolCount);
    for (int i = 0; i < SymbolCount; ++i) names.push_back("LABEL_" + std::to_string(i));
    return names;
}

void BM_Fill(benchmark::State& state) {
    const std::vector<std::string> names = SymbolNames();
    for (auto _ : state) {
        state.PauseTiming();
        trident::SymbolTable table;
        state.ResumeTiming();
        for (int i = 0; i < SymbolCount; ++i)
            benchmark::DoNotOptimize(table.SetVariable(names[i], std::int32_t{i}));
    }
    state.SetItemsProcessed(state.iterations() * SymbolCount);
}
BENCHMARK(BM_Fill)->Unit(benchmark::kMicrosecond);

void BM_LookUpAll(benchmark::State& state) {
    const std::vector<std::string> names = SymbolNames();
    trident::SymbolTable table;
    table.SetCaseSensitive(state.range(0) != 0);
    for (int i = 0; i < SymbolCount; ++i) table.SetVariable(names[i], std::int32_t{i});
    for (auto _ : state) {
        for (const std::string& name : names) benchmark::DoNotOptimize(table.SlotOf(name));
    }
    state.SetItemsProcessed(state.iterations() * SymbolCount);
}
BENCHMARK(BM_LookUpAll)->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

void BM_FillAndLookUp(benchmark::State& state) {
    const std::vector<std::string> names = SymbolNames();
    for (auto _ : state) {
        state.PauseTiming();
        trident::SymbolTable table;
        state.ResumeTiming();
        for (int i = 0; i < SymbolCount; ++i) table.SetVariable(names[i], std::int32_t{i});
        for (const std::string& name : names) benchmark::DoNotOptimize(table.SlotOf(name));
    }
}
BENCHMARK(BM_FillAndLookUp)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
