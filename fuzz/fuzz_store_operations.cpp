#include "model/StoreOperations.h"

#include <cstdio>
#include <cstdlib>

// The store: whatever is done to it in whatever order, also while its disk refuses to be
// written and its state file is replaced by others, it does what the rules say.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nettlecap::StoreOperations operations;
    for (std::size_t n = 0; n + 2 < size && operations.size() < 400; n += 3)
        operations.push_back({.kind = data[n], .a = data[n + 1], .b = data[n + 2]});
    const auto wrong = nettlecap::whatGoesWrong(operations);
    if (!wrong) return 0;
    const auto few = nettlecap::shrunk(operations);
    std::fprintf(stderr, "%s\nthe fewest: %s\n", wrong->c_str(), nettlecap::described(few).c_str());
    std::abort();
}
