#include "ui/FoldedTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace nettlecap {
namespace {

using Handle = FoldedTexts::Handle;

/// Of so many bytes, the same letter throughout.
std::string textOf(std::size_t size, char letter = 'a') { return std::string(size, letter); }

TEST(FoldedTextsTest, TellsWhichTextsHaveTheQuery) {
    FoldedTexts texts;
    const Handle first = texts.add("um café");
    const Handle second = texts.add("um chá");
    const Handle third = texts.add("dois cafés");

    const std::vector<bool> found = texts.having(FoldedQuery("CAFÉ"));

    EXPECT_TRUE(found[first]);
    EXPECT_FALSE(found[second]);
    EXPECT_TRUE(found[third]);
}

TEST(FoldedTextsTest, FindsNothingThatBeginsInOneTextAndEndsInTheNext) {
    FoldedTexts texts;
    texts.add("ab");
    texts.add("cd");
    const Handle whole = texts.add("bc");

    const std::vector<bool> found = texts.having(FoldedQuery("bc"));

    EXPECT_EQ(std::count(found.begin(), found.end(), true), 1);
    EXPECT_TRUE(found[whole]);
    for (const std::string_view beyond : {std::string_view("b\0c", 3), std::string_view("b\0", 2)})
        EXPECT_EQ(texts.having(FoldedQuery(beyond)), std::vector<bool>(3));
}

TEST(FoldedTextsTest, AQueryThatReachesBeyondATextMayBeginWithinItAgain) {
    FoldedTexts texts;
    const Handle repeated = texts.add("abab");
    texts.add("c");

    EXPECT_TRUE(texts.having(FoldedQuery("ab"))[repeated]);
    EXPECT_EQ(texts.having(FoldedQuery("abc")), std::vector<bool>(2));
}

TEST(FoldedTextsTest, AnEmptyTextHasNothingInItAndBelongsToNobodyElse) {
    FoldedTexts texts;
    const Handle empty = texts.add("");
    const Handle next = texts.add("a");

    EXPECT_FALSE(texts.having(FoldedQuery("a"))[empty]);
    texts.remove(empty);
    EXPECT_TRUE(texts.having(FoldedQuery("a"))[next]);
}

TEST(FoldedTextsTest, ATextAsLongAsABlockAndALongerOneAreFoundToTheirLastLetter) {
    FoldedTexts texts;
    const Handle fits = texts.add(textOf(FoldedTexts::blockSize - 2) + "z");
    const Handle longer = texts.add(textOf(2 * FoldedTexts::blockSize) + "z");
    const Handle behind = texts.add("y");

    const std::vector<bool> found = texts.having(FoldedQuery("z"));

    EXPECT_TRUE(found[fits]);
    EXPECT_TRUE(found[longer]);
    EXPECT_FALSE(found[behind]);
}

TEST(FoldedTextsTest, ARemovedTextIsNotFoundAndItsHandleStandsForAnother) {
    FoldedTexts texts;
    const Handle gone = texts.add("um");
    const Handle kept = texts.add("um e dois e três");
    texts.remove(gone);

    EXPECT_FALSE(texts.having(FoldedQuery("um"))[gone]);
    EXPECT_TRUE(texts.having(FoldedQuery("um"))[kept]);
    EXPECT_EQ(texts.add("quatro"), gone);
    EXPECT_TRUE(texts.having(FoldedQuery("quatro"))[gone]);
}

TEST(FoldedTextsTest, HoldsAtMostTwiceWhatIsLeft) {
    FoldedTexts texts;
    std::vector<Handle> handles;
    for (int count = 0; count < 1000; ++count) handles.push_back(texts.add(textOf(999)));
    ASSERT_EQ(texts.bytes(), 1'000'000U);

    for (std::size_t index = 0; index < handles.size(); ++index)
        if (index % 10 != 0) texts.remove(handles[index]);
    EXPECT_LE(texts.bytes(), 200'000U);

    for (std::size_t index = 0; index < handles.size(); index += 10) texts.remove(handles[index]);
    EXPECT_EQ(texts.bytes(), 0U);
}

TEST(FoldedTextsTest, FindsWhatASearchOfEachTextFindsWhateverCameAndWent) {
    std::mt19937 random(20);
    const auto below = [&](std::size_t bound) { return random() % bound; };
    FoldedTexts texts;
    std::map<Handle, std::string> expected;
    for (int step = 0; step < 3000; ++step) {
        if (below(3) != 0 || expected.empty()) {
            std::string text;
            for (std::size_t size = below(below(50) == 0 ? 100'000 : 12); text.size() < size;)
                text += static_cast<char>('a' + below(3));
            const Handle handle = texts.add(text);
            ASSERT_TRUE(expected.emplace(handle, std::move(text)).second);
        } else {
            const auto gone =
                std::next(expected.begin(), static_cast<std::ptrdiff_t>(below(expected.size())));
            texts.remove(gone->first);
            expected.erase(gone);
        }
        if (step % 50 != 0) continue;
        const FoldedQuery query(std::string_view("abcacbbacabab").substr(below(6), 2 + below(5)));
        const std::vector<bool> found = texts.having(query);
        for (Handle handle = 0; handle < found.size(); ++handle) {
            const auto text = expected.find(handle);
            ASSERT_EQ(found[handle], text != expected.end() && query.isIn(text->second));
        }
    }
}

}  // namespace
}  // namespace nettlecap
