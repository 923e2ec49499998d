#pragma once

#include "platform/fake/FakeFileSystem.h"

namespace nettlecap {

/// A file system one of whose calls goes wrong, or each from that one on.
class FaultyFileSystem final : public FileSystem {
public:
    enum class Fault { none, fails, leavesHalf, succeedsAndSaysItFailed, allFail };

    explicit FaultyFileSystem(FakeFileSystem& real) : real_(real) {}

    /// The call with this number, counted from now; the first is 1.
    void plan(Fault fault, int at) { fault_ = fault, at_ = at, calls_ = 0; }
    int calls() const { return calls_; }  ///< since the last plan

    Result<Done> createDirectory(const Path& path) override {
        return change(path, [&] { return real_.createDirectory(path); });
    }
    Result<Done> writeAtomically(const Path& path, std::span<const std::string_view> pieces,
                                 const Path& temporaryFolder) override {
        return change(temporaryFolder, [&] { return real_.writeAtomically(path, pieces, temporaryFolder); });
    }
    Result<Done> keepCopy(const Path& from, const Path& to) override {
        return change(to.parent_path(), [&] { return real_.keepCopy(from, to); });
    }
    Result<Done> remove(const Path& path) override {
        return change(path.parent_path(), [&] { return real_.remove(path); });
    }
    void removeLeftovers(const Path& temporaryFolder) override {
        if (next() == Fault::none) real_.removeLeftovers(temporaryFolder);
    }

    std::optional<Path> applicationSupportDirectory() const override {
        return real_.applicationSupportDirectory();
    }
    Result<Bytes> read(const Path& path) const override {
        if (next() != Fault::none) return Failure{words};
        return real_.read(path);
    }
    Result<FileReading> open(const Path& path) const override {
        if (next() != Fault::none) return Failure{words};
        return real_.open(path);
    }
    std::optional<std::int64_t> size(const Path& path) const override { return real_.size(path); }
    std::int64_t sizeOfFilesIn(const Path& folder) const override { return real_.sizeOfFilesIn(folder); }

    static constexpr const char* words = "Input/output error";

private:
    Fault next() const {
        ++calls_;
        return calls_ == at_ || (fault_ == Fault::allFail && calls_ > at_) ? fault_ : Fault::none;
    }
    template <class Work>
    Result<Done> change(const Path& folder, Work work) {
        const Fault fault = next();
        if (fault == Fault::none) return work();
        if (fault == Fault::leavesHalf && real_.hasFolder(folder)) real_.leaveLeftover(folder);
        if (fault == Fault::succeedsAndSaysItFailed) (void)work();
        return Failure{words};
    }

    FakeFileSystem& real_;
    Fault fault_ = Fault::none;
    int at_ = 0;
    mutable int calls_ = 0;
};

}  // namespace nettlecap
