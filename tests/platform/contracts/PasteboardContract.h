#pragma once

#include "platform/Pasteboard.h"

#include <gtest/gtest.h>

namespace nettlecap {

/// A pasteboard to be tested, and another program that copies.
class PasteboardHarness {
public:
    using Offer = std::vector<std::pair<PasteboardType, std::optional<Bytes>>>;

    virtual ~PasteboardHarness() = default;

    virtual Pasteboard& pasteboard() = 0;
    /// Returns once the pasteboard has told of it. A type whose bytes are absent is offered
    /// and never arrives.
    virtual void copyElsewhere(const Offer& offer) = 0;
    virtual void clearElsewhere() = 0;  ///< returns once the pasteboard has told of it
};

/// What every Pasteboard does. Instantiate it with a function that makes the harness.
class PasteboardContract : public testing::TestWithParam<std::unique_ptr<PasteboardHarness> (*)()> {
protected:
    using Types = std::vector<PasteboardType>;

    PasteboardContract() { pasteboard.setInterest(textAndImages()); }

    static PasteboardInterest textAndImages() {
        return {.groups = {{"public.utf8-plain-text"}, {"public.png", "public.tiff"}},
                .unlessOffered = {"org.nspasteboard.TransientType"}};
    }
    static PasteboardItem::Form form(std::string type, std::string bytes) {
        return {.type = std::move(type), .bytes = [bytes = Bytes(std::move(bytes))] { return bytes; }};
    }
    void copyElsewhere(std::string text) {
        harness->copyElsewhere({{"public.utf8-plain-text", Bytes(std::move(text))}});
    }
    bool write(std::vector<PasteboardItem::Form> forms) {
        pasteboard.clearContents();
        return pasteboard.write({.forms = std::move(forms)});
    }
    std::optional<std::string> text() const { return pasteboard.string("public.utf8-plain-text"); }

    std::unique_ptr<PasteboardHarness> harness = GetParam()();
    Pasteboard& pasteboard = harness->pasteboard();
};

TEST_P(PasteboardContract, ReadsWhatAnotherProgramCopied) {
    const auto before = pasteboard.changeCount();

    copyElsewhere("maçã");

    EXPECT_GT(pasteboard.changeCount(), before);
    EXPECT_EQ(pasteboard.types(), Types{"public.utf8-plain-text"});
    EXPECT_EQ(text(), "maçã");
    EXPECT_EQ(pasteboard.data("public.utf8-plain-text"), Bytes("maçã"));
}

TEST_P(PasteboardContract, RaisesTheChangeCountWithEachCopy) {
    copyElsewhere("first");
    const auto before = pasteboard.changeCount();

    copyElsewhere("second");

    EXPECT_EQ(pasteboard.changeCount(), before + 1);
    EXPECT_EQ(text(), "second");
}

TEST_P(PasteboardContract, HasNothingOfATypeThatIsNotThere) {
    copyElsewhere("text");

    EXPECT_EQ(pasteboard.data("public.png"), std::nullopt);
    EXPECT_EQ(pasteboard.string("com.nettlecap.internal"), std::nullopt);
}

TEST_P(PasteboardContract, TellsEmptyContentsFromAbsentOnes) {
    harness->copyElsewhere({{"public.png", Bytes()}, {"public.utf8-plain-text", Bytes()}});

    EXPECT_EQ(pasteboard.data("public.png"), Bytes());
    EXPECT_EQ(text(), "");
}

TEST_P(PasteboardContract, KeepsEveryByte) {
    const std::string bytes("a\0b\r\n\t\xEF\xBF\xBF", 9);
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);

    harness->copyElsewhere({{"public.utf8-plain-text", Bytes(bytes)}, {"public.png", Bytes(all)}});

    EXPECT_EQ(text(), bytes);
    EXPECT_EQ(pasteboard.data("public.png"), Bytes(all));
}

TEST_P(PasteboardContract, HasTheFirstPictureThatArrivesBesideTheText) {
    harness->copyElsewhere({{"public.png", std::nullopt},
                            {"public.tiff", Bytes("tiff")},
                            {"public.utf8-plain-text", Bytes("text")}});

    EXPECT_EQ(text(), "text");
    EXPECT_EQ(pasteboard.data("public.png"), std::nullopt);
    EXPECT_EQ(pasteboard.data("public.tiff"), Bytes("tiff"));
    EXPECT_EQ(pasteboard.types(), (Types{"public.png", "public.tiff", "public.utf8-plain-text"}));
}

TEST_P(PasteboardContract, ListsTheTypesThatForbidReading) {
    const auto before = pasteboard.changeCount();

    harness->copyElsewhere(
        {{"public.utf8-plain-text", Bytes("text")}, {"org.nspasteboard.TransientType", Bytes()}});

    EXPECT_EQ(pasteboard.changeCount(), before + 1);
    EXPECT_EQ(pasteboard.types(), (Types{"public.utf8-plain-text", "org.nspasteboard.TransientType"}));
}

TEST_P(PasteboardContract, TellsOfCopiesThatNobodyWants) {
    const auto before = pasteboard.changeCount();
    pasteboard.setInterest({});

    copyElsewhere("text");

    EXPECT_EQ(pasteboard.changeCount(), before + 1);
}

TEST_P(PasteboardContract, HintsAtEachChangeMadeElsewhere) {
    std::vector<std::string> read;
    const auto hints = pasteboard.onChange([&] { read.push_back(text().value_or("nothing")); });

    copyElsewhere("first");
    copyElsewhere("second");

    EXPECT_EQ(read, (std::vector<std::string>{"first", "second"}));
}

TEST_P(PasteboardContract, HintsNoMoreOnceTheSubscriptionEnded) {
    int count = 0;
    auto hints = pasteboard.onChange([&] { ++count; });
    copyElsewhere("first");

    hints.reset();
    copyElsewhere("second");

    EXPECT_EQ(count, 1);
}

TEST_P(PasteboardContract, IsEmptyOnceAnotherProgramClearedIt) {
    copyElsewhere("text");
    const auto before = pasteboard.changeCount();

    harness->clearElsewhere();

    EXPECT_EQ(pasteboard.changeCount(), before + 1);
    EXPECT_EQ(pasteboard.types(), std::nullopt);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_P(PasteboardContract, HoldsWhatWasWritten) {
    ASSERT_TRUE(write({form("public.utf8-plain-text", "text"), form("public.png", "png"),
                       form("com.nettlecap.internal", "id")}));

    EXPECT_EQ(pasteboard.types(), (Types{"public.utf8-plain-text", "public.png", "com.nettlecap.internal"}));
    EXPECT_EQ(text(), "text");
    EXPECT_EQ(pasteboard.data("public.png"), Bytes("png"));
    EXPECT_EQ(pasteboard.string("com.nettlecap.internal"), "id");
    EXPECT_EQ(pasteboard.data("public.tiff"), std::nullopt);
}

TEST_P(PasteboardContract, RaisesTheChangeCountByClearingAndNotByWriting) {
    const auto before = pasteboard.changeCount();

    pasteboard.clearContents();
    EXPECT_EQ(pasteboard.changeCount(), before + 1);
    EXPECT_EQ(pasteboard.types(), Types());

    EXPECT_TRUE(pasteboard.write({.forms = {form("public.utf8-plain-text", "text")}}));
    EXPECT_EQ(pasteboard.changeCount(), before + 1);
}

TEST_P(PasteboardContract, HintsAtNoChangeOfItsOwn) {
    int count = 0;
    const auto hints = pasteboard.onChange([&] { ++count; });

    ASSERT_TRUE(write({form("public.utf8-plain-text", "ours")}));
    EXPECT_EQ(count, 0);

    copyElsewhere("theirs");
    EXPECT_EQ(count, 1);
}

TEST_P(PasteboardContract, ListsAFormThatCannotBeHad) {
    ASSERT_TRUE(write({{.type = "public.tiff", .bytes = [] { return std::optional<Bytes>(); }}}));

    EXPECT_EQ(pasteboard.types(), Types{"public.tiff"});
    EXPECT_EQ(pasteboard.data("public.tiff"), std::nullopt);
}

TEST_P(PasteboardContract, ReplacesWhatWasThere) {
    copyElsewhere("theirs");
    ASSERT_TRUE(write({form("public.png", "ours")}));
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_EQ(pasteboard.types(), Types{"public.png"});

    ASSERT_TRUE(write({form("public.utf8-plain-text", "ours again")}));
    EXPECT_EQ(pasteboard.types(), Types{"public.utf8-plain-text"});

    copyElsewhere("theirs again");
    EXPECT_EQ(text(), "theirs again");
    EXPECT_EQ(pasteboard.data("public.png"), std::nullopt);
}

TEST_P(PasteboardContract, MayBeWrittenToWhenItHints) {
    const auto hints =
        pasteboard.onChange([&] { ASSERT_TRUE(write({form("public.utf8-plain-text", "ours")})); });

    copyElsewhere("theirs");

    EXPECT_EQ(text(), "ours");
}

}  // namespace nettlecap
