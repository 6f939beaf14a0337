// diags_passes: the cost of a publishing and of an applying pass, by the number of diagnostics.
// The engine is a stub, so that the wrapper's part is measured alone.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "bench/stub_engine/stub_engine.h"
#include "common/property_node.h"
#include "webrtc_common/se_wrapper.h"

namespace se = quill::media::se_wrapper;

namespace {

// A tree that a pass over `count` diagnostics has filled, and the number of notifications since then.
class Tree {
  public:
    explicit Tree(int64_t count, int length = 1) : root_(quill::PropertyNode::createRoot()) {
        bench::fillStubCatalogue(static_cast<std::size_t>(count), length);
        publish();
        watch(*root_);
    }
    void publish() { se::readSignalEssenceDiags(root_); }
    void apply() { se::writeSignalEssenceDiags(root_); }
    int64_t changes() const { return changes_; }

  private:
    void watch(quill::PropertyNode& node) {
        node.addListener([this](quill::PropertyNode&, const quill::PropertyChangeInfo&) { ++changes_; });
        for (const quill::PropertyNodePtr& child : node.children()) watch(*child);
    }

    quill::PropertyNodePtr root_;
    int64_t changes_ = 0;
};

void reportSize(benchmark::State& state) {
    state.SetComplexityN(state.range(0));
    state.counters["per_diag"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void report(benchmark::State& state, const Tree& tree) {
    reportSize(state);
    const double diags = static_cast<double>(state.iterations()) * static_cast<double>(state.range(0));
    state.counters["changes/diag"] = static_cast<double>(tree.changes()) / diags;
}

void publishUnchangedScalars(benchmark::State& state) {
    Tree tree(state.range(0));
    for (auto _ : state) tree.publish();
    report(state, tree);
    if (tree.changes() != 0) state.SkipWithError("an unchanged pass notified of changes");
}

void publishChangedScalars(benchmark::State& state) {
    Tree tree(state.range(0));
    for (auto _ : state) {
        ++bench::stubEngine().value;
        tree.publish();
    }
    report(state, tree);
}

void publishArraysOfTen(benchmark::State& state) {
    Tree tree(state.range(0), 10);
    for (auto _ : state) tree.publish();
    report(state, tree);
}

void publishIntoAnEmptyTree(benchmark::State& state) {
    bench::fillStubCatalogue(static_cast<std::size_t>(state.range(0)), 1);
    quill::PropertyNodePtr root;
    for (auto _ : state) {
        root = quill::PropertyNode::createRoot();
        se::readSignalEssenceDiags(root);
        state.PauseTiming();
        root.reset();
        state.ResumeTiming();
    }
    reportSize(state);
}

void applyWithoutEdits(benchmark::State& state) {
    Tree tree(state.range(0));
    for (auto _ : state) tree.apply();
    report(state, tree);
}

void eachSize(benchmark::internal::Benchmark* bench) {
    bench->RangeMultiplier(10)->Range(100, 100'000)->Unit(benchmark::kMicrosecond)->Complexity(benchmark::oN);
}

BENCHMARK(publishUnchangedScalars)->Apply(eachSize);
BENCHMARK(publishChangedScalars)->Apply(eachSize);
BENCHMARK(publishArraysOfTen)->Apply(eachSize);
BENCHMARK(publishIntoAnEmptyTree)->Apply(eachSize);
BENCHMARK(applyWithoutEdits)->Apply(eachSize);

}  // namespace

int main(int argc, char** argv) {
    bench::fillInterfaceTable();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
