#pragma once

#include "model/Records.h"
#include "platform/fake/FakeIdentifiers.h"
#include "platform/fake/FakeTime.h"
#include "platform/linux/PosixFileSystem.h"

namespace nettlecap {

/// The part of the program that keeps things, on real files.
struct Program {
    static constexpr std::int64_t limit = 10;

    explicit Program(Path dataFolder) : folder(std::move(dataFolder)) {}

    ClipboardStore& start(std::int64_t maxItems = limit);
    void copy(const std::string& text, double at);
    ClipboardStoreMutation copyImage(const std::string& png, double at);
    const ClipboardEntry& entry(const std::string& textOrFilename) const;
    std::string error() const { return store->persistenceError()->value_or("none"); }

    Path folder;  ///< of the history
    PosixFileSystem files;
    FakeTime time;
    FakeIdentifiers identifiers;
    std::optional<ClipboardStore> store;
};

/// Something that the program does, and what comes before it.
struct Scenario {
    std::string name;
    std::function<void(const Path& folder)> prepare;  ///< what the last run left
    std::function<void(Program&)> before;
    std::function<void(Program&)> act;
};

void PrintTo(const Scenario& scenario, std::ostream* out);

/// Every kind of change that there is to the history.
std::vector<Scenario> scenarios();

constexpr const char* damagedDocument = "{\"entries\":[{\"id\":\"cortado";

}  // namespace nettlecap
