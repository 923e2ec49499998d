#pragma once

#include "platform/BundleInfo.h"

#include <gtest/gtest.h>
#include <memory>

namespace nettlecap {

/// A bundle to be tested, whose Info.plist says nothing at first.
class BundleInfoHarness {
public:
    virtual ~BundleInfoHarness() = default;

    virtual const BundleInfo& bundle() = 0;
    virtual void setFlag(const std::string& key, bool isOn) = 0;  ///< beside those that are set
};

/// What every BundleInfo does. Instantiate it with a function that makes the harness.
class BundleInfoContract : public testing::TestWithParam<std::unique_ptr<BundleInfoHarness> (*)()> {
protected:
    std::optional<bool> flag(std::string_view key) { return harness->bundle().flag(key); }

    std::unique_ptr<BundleInfoHarness> harness = GetParam()();
};

TEST_P(BundleInfoContract, IsSomewhere) { EXPECT_TRUE(harness->bundle().path().is_absolute()); }

TEST_P(BundleInfoContract, IsWhereItIsWhateverItSays) {
    const Path before = harness->bundle().path();

    harness->setFlag("Updates", true);

    EXPECT_EQ(harness->bundle().path(), before);
}

TEST_P(BundleInfoContract, SetsNoFlagOfWhichItSaysNothing) {
    EXPECT_EQ(flag("Updates"), std::nullopt);
    EXPECT_EQ(flag(""), std::nullopt);
}

TEST_P(BundleInfoContract, TellsOnFromOff) {
    harness->setFlag("Updates", true);
    harness->setFlag("Other", false);

    EXPECT_EQ(flag("Updates"), true);
    EXPECT_EQ(flag("Other"), false);
}

TEST_P(BundleInfoContract, KnowsAKeyByItsExactNameOnly) {
    harness->setFlag("Updates", true);

    for (const char* key : {"updates", "Update", "UpdatesEnabled", " Updates", ""})
        EXPECT_EQ(flag(key), std::nullopt) << key;
}

TEST_P(BundleInfoContract, TheLastOfTwoValuesCounts) {
    harness->setFlag("Updates", true);
    harness->setFlag("Updates", false);

    EXPECT_EQ(flag("Updates"), false);
}

}  // namespace nettlecap
