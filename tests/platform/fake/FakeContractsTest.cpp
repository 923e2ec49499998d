#include "platform/contracts/BackgroundWorkContract.h"
#include "platform/contracts/FileSystemContract.h"
#include "platform/contracts/IdentifiersContract.h"
#include "platform/contracts/ImageCodecContract.h"
#include "platform/contracts/SchedulerContract.h"
#include "platform/contracts/TextMeasureContract.h"
#include "platform/fake/FakePlatform.h"

#include <algorithm>

namespace nettlecap {
namespace {

bool advanceUntil(FakePlatform& fake, const std::function<bool()>& condition) {
    for (int milliseconds = 0; milliseconds < 10'000 && !condition(); ++milliseconds) {
        fake.background.runAll();
        fake.time.advance(Seconds(0.001));
    }
    return condition();
}

class FakeFileSystemHarness final : public FileSystemHarness {
public:
    FakeFileSystemHarness() { (void)files_.createDirectory(root()); }

    FileSystem& files() override { return files_; }
    Path root() const override { return "/home/ana/test"; }
    void leaveLeftover(const Path& folder) override { files_.leaveLeftover(folder); }
    int leftovers(const Path& folder) const override {
        return static_cast<int>(std::ranges::count_if(
            files_.names(folder), [](const auto& name) { return name.starts_with(".nettlecap-"); }));
    }

private:
    FakeFileSystem files_;
};

class FakeSchedulerHarness final : public SchedulerHarness {
public:
    Clock& clock() override { return fake_.time; }
    Scheduler& scheduler() override { return fake_.time; }
    bool runUntil(const std::function<bool()>& condition) override { return advanceUntil(fake_, condition); }

private:
    FakePlatform fake_;
};

class FakeBackgroundWorkHarness final : public BackgroundWorkHarness {
public:
    BackgroundWork& background() override { return fake_.background; }
    bool runUntil(const std::function<bool()>& condition) override { return advanceUntil(fake_, condition); }

private:
    FakePlatform fake_;
};

class FakeImageCodecHarness final : public ImageCodecHarness {
public:
    ImageCodec& codec() override { return fake_.images; }
    Bytes png() const override { return Bytes(std::string(FakeImageCodec::pngSignature) + "blue"); }
    Bytes tiff() const override { return Bytes("TIFF:blue"); }
    Bytes jpeg() const override { return Bytes("JPEG:blue"); }
    Bytes damagedPng() const override { return Bytes(std::string(FakeImageCodec::pngSignature) + "BROKEN"); }
    Path file(const Bytes& contents) override {
        fake_.files.put("/picture", std::string(contents.view()));
        return "/picture";
    }
    Path missingFile() const override { return "/nowhere"; }

private:
    FakePlatform fake_;
};

INSTANTIATE_TEST_SUITE_P(Fake, FileSystemContract,
                         testing::Values([]() -> std::unique_ptr<FileSystemHarness> {
                             return std::make_unique<FakeFileSystemHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, SchedulerContract, testing::Values([]() -> std::unique_ptr<SchedulerHarness> {
                             return std::make_unique<FakeSchedulerHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, BackgroundWorkContract,
                         testing::Values([]() -> std::unique_ptr<BackgroundWorkHarness> {
                             return std::make_unique<FakeBackgroundWorkHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, IdentifiersContract, testing::Values([]() -> std::unique_ptr<Identifiers> {
                             return std::make_unique<FakeIdentifiers>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, ImageCodecContract,
                         testing::Values([]() -> std::unique_ptr<ImageCodecHarness> {
                             return std::make_unique<FakeImageCodecHarness>();
                         }));
INSTANTIATE_TEST_SUITE_P(Fake, TextMeasureContract, testing::Values([]() -> std::unique_ptr<TextMeasure> {
                             return std::make_unique<FakeTextMeasure>();
                         }));

}  // namespace
}  // namespace nettlecap
