#pragma once

#include "model/Records.h"

#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeIdentifiers.h"
#include "platform/fake/FakeTime.h"

namespace nettlecap {

/// A store in memory, in the folder /dados. What a test writes there before `open` is what
/// the store finds.
class StoreFixture : public testing::Test {
protected:
    static constexpr std::int64_t limit = 500;

    ClipboardStore& open(std::int64_t maxItems = limit);
    ClipboardStore& open(const PersistedState& saved, std::int64_t maxItems = limit);

    /// What the monitor does with a text: promote it, or insert it, trim and save.
    void capture(std::string text, double at, std::optional<std::string> source = "Notas");

    void putState(const PersistedState& state);
    void putImage(const std::string& filename, std::string png);
    /// What the next start would read. Fails the test when it could not.
    PersistedState saved() const;

    std::vector<std::string> texts() const;  ///< of the history, in order
    std::vector<std::string> images() const { return files.names(imagesFolder); }
    int saves() const { return files.writes(stateFile); }
    std::string error() const { return store->persistenceError()->value_or("none"); }

    const Path folder = "/dados";
    const Path imagesFolder = folder / "Images";
    const Path stateFile = folder / "history.json";
    const Path unreadableFile = folder / "history.unreadable.json";

    FakeFileSystem files;
    FakeTime time;
    FakeIdentifiers identifiers;
    std::optional<ClipboardStore> store;
};

}  // namespace nettlecap
