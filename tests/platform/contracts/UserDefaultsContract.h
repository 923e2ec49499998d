#pragma once

#include "platform/UserDefaults.h"

#include <gtest/gtest.h>

namespace nettlecap {

/// User defaults to be tested, empty at first.
class UserDefaultsHarness {
public:
    virtual ~UserDefaultsHarness() = default;

    virtual UserDefaults& defaults() = 0;
    virtual void restart() = 0;                          ///< as when the program starts again
    virtual void whileWritesFail(const Task& task) = 0;  ///< as on a full disk
};

/// What every UserDefaults does. Instantiate it with a function that makes the harness.
class UserDefaultsContract : public testing::TestWithParam<std::unique_ptr<UserDefaultsHarness> (*)()> {
protected:
    void set(std::string_view key, std::string data) {
        harness->defaults().setData(key, Bytes(std::move(data)));
    }
    std::string data(std::string_view key) const {
        const auto found = harness->defaults().data(key);
        return found ? std::string(found->view()) : "(none)";
    }

    std::unique_ptr<UserDefaultsHarness> harness = GetParam()();
};

TEST_P(UserDefaultsContract, HasNothingAtFirst) { EXPECT_EQ(data("Nettlecap.preferences.v1"), "(none)"); }

TEST_P(UserDefaultsContract, ReadsBackWhatItKept) {
    set("Nettlecap.preferences.v1", "{}");

    EXPECT_EQ(data("Nettlecap.preferences.v1"), "{}");
}

TEST_P(UserDefaultsContract, ReplacesWhatTheKeyHad) {
    set("key", "a longer value");
    set("key", "short");

    EXPECT_EQ(data("key"), "short");
}

TEST_P(UserDefaultsContract, KeepsEachKeyApart) {
    set("key", "1");
    set("Key", "2");
    set("key.v1", "3");

    EXPECT_EQ(data("key") + data("Key") + data("key.v1"), "123");
    EXPECT_EQ(data("key.v"), "(none)");
}

TEST_P(UserDefaultsContract, TellsAnEmptyValueFromNone) {
    set("key", "");

    EXPECT_EQ(data("key"), "");
}

TEST_P(UserDefaultsContract, KeepsEveryByte) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);

    set("key", all);

    EXPECT_EQ(data("key"), all);
}

TEST_P(UserDefaultsContract, KeepsALargeValue) {
    const std::string large(1'000'000, 'x');

    set("key", large);

    EXPECT_EQ(data("key"), large);
}

TEST_P(UserDefaultsContract, WhatWasReadOutlivesALaterChange) {
    set("key", "old");
    const auto before = harness->defaults().data("key");

    set("key", "new");

    EXPECT_EQ(before, Bytes("old"));
}

TEST_P(UserDefaultsContract, OutlivesTheProgram) {
    set("key", "value");

    harness->restart();

    EXPECT_EQ(data("key"), "value");
}

TEST_P(UserDefaultsContract, AFailureLeavesTheOldValue) {
    set("key", "old");

    harness->whileWritesFail([&] { set("key", "new"); });

    EXPECT_EQ(data("key"), "old");
}

TEST_P(UserDefaultsContract, AFailureLeavesNothingWhereNothingWas) {
    harness->whileWritesFail([&] { set("key", "new"); });

    EXPECT_EQ(data("key"), "(none)");
}

TEST_P(UserDefaultsContract, WorksAgainAfterAFailure) {
    harness->whileWritesFail([&] { set("key", "first"); });

    set("key", "second");

    EXPECT_EQ(data("key"), "second");
}

}  // namespace nettlecap
