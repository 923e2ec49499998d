#include "Beside.h"
#include "Grid.h"

// One capture of a text into a full history of such texts, from the poll to the file safely
// on the disk.

namespace nettlecap {
namespace {

/// Floor: the same bytes, safely on the same disk.
void captureToDisk(benchmark::State& state) {
    DiskHistory disk(shapeOf(state));
    FullHistory history(disk.files, disk.folder.path(), shapeOf(state));
    const std::string bytes = disk.document();
    runBeside(
        state, [&] { writeSafely(disk.folder.path(), bytes); }, [&] { history.captureAnother(); });
    state.counters["document_KB"] = static_cast<double>(bytes.size()) / 1000;
}
BENCHMARK(captureToDisk)->Apply(overEveryHistory);

/// Floor: the same with a tenth of the entries. The disk aside.
void captureInto5000Beside500(benchmark::State& state) {
    WeightlessDisk smallDisk({.entries = 500});
    WeightlessDisk largeDisk({.entries = 5000});
    FullHistory small(smallDisk, "/historico", {.entries = 500});
    FullHistory large(largeDisk, "/historico", {.entries = 5000});
    runBeside(
        state, [&] { small.captureAnother(); }, [&] { large.captureAnother(); });
}
BENCHMARK(captureInto5000Beside500)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nettlecap
