#include "model/StoreFixture.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace nettlecap {
namespace {

/// The rules of the history, told as plainly as they can be.
class PlainHistory {
public:
    struct Item {
        std::string content;  ///< of a text without its blanks, of an image its bytes
        std::string text;
        bool isImage = false;
        double at = 0;
        bool isFavorite = false;

        bool operator==(const Item&) const = default;
    };

    void capture(Item item) {
        const auto known = std::ranges::find_if(items, [&](const Item& other) {
            return other.content == item.content && other.isImage == item.isImage;
        });
        const bool isNew = known == items.end();
        if (!isNew) {
            item.isFavorite = known->isFavorite;
            items.erase(known);
        }
        const auto place = std::ranges::find_if(items, [&](const Item& other) { return other.at < item.at; });
        items.insert(place, std::move(item));
        if (isNew) trim();
    }

    void trim() {
        while (items.size() > limit) {
            const auto oldest =
                std::find_if(items.rbegin(), items.rend(), [](const Item& item) { return !item.isFavorite; });
            if (oldest == items.rend()) return;
            items.erase(std::next(oldest).base());
        }
    }

    std::vector<Item> items;
    std::size_t limit = 10;
};

void PrintTo(const PlainHistory::Item& item, std::ostream* out) {
    *out << (item.isImage ? "image " : "text ") << testing::PrintToString(item.text) << " at=" << item.at
         << (item.isFavorite ? " favorite" : "");
}

/// Random operations on a store and on the plain history, side by side.
class ClipboardStoreRulesTest : public StoreFixture, public testing::WithParamInterface<int> {
protected:
    void captureText() {
        const std::string content = "texto " + std::to_string(random() % 20);
        const std::string text = random() % 2 == 0 ? content : content + "\r\n";
        const double at = date();
        capture(text, at);
        plain.capture({.content = content, .text = text, .isImage = false, .at = at});
    }

    void captureImage() {
        const std::string png = "imagem " + std::to_string(random() % 10);
        const double at = date();
        store->captureImage(Bytes(png), "Fotos", {at});
        plain.capture({.content = png, .text = png, .isImage = true, .at = at});
    }

    void actOnOne() {
        if (plain.items.empty()) return;
        const std::size_t place = random() % plain.items.size();
        const ClipboardEntry entry = *(*store->entries())[place];
        const auto item = plain.items.begin() + static_cast<std::ptrdiff_t>(place);
        if (random() % 2 == 0) {
            store->toggleFavorite(entry);
            item->isFavorite = !item->isFavorite;
        } else {
            store->remove(entry);
            plain.items.erase(item);
        }
    }

    void changeLimit() {
        plain.limit = 10 + random() % 15;
        store->setMaxItems(static_cast<std::int64_t>(plain.limit));
        store->trimIfNeeded();
        store->persist();
        plain.trim();
    }

    void purge() {
        store->clearNonFavorites();
        std::erase_if(plain.items, [](const auto& item) { return !item.isFavorite; });
    }

    void restart() { open(static_cast<std::int64_t>(plain.limit)); }

    void act() {
        const auto choice = random() % 100;
        if (choice < 45)
            captureText();
        else if (choice < 65)
            captureImage();
        else if (choice < 92)
            actOnOne();
        else if (choice < 95)
            changeLimit();
        else if (choice < 97)
            purge();
        else
            restart();
    }

    /// Mostly later than all before, sometimes not, sometimes the same.
    double date() {
        const auto choice = random() % 10;
        if (choice == 0) return static_cast<double>(random() % 200);
        if (choice < 8) ++now;
        return now;
    }

    std::vector<PlainHistory::Item> items() const {
        std::vector<PlainHistory::Item> result;
        for (const StoredEntry& entry : *store->entries()) {
            const bool isImage = entry->kind == ClipboardContentKind::image;
            const std::string text = isImage ? files.contents(*store->imageFile(*entry)).value_or("no file")
                                             : entry->text.value_or("");
            result.push_back({.content = text.substr(0, text.find('\r')),
                              .text = text,
                              .isImage = isImage,
                              .at = entry->createdAt.secondsSince2001,
                              .isFavorite = entry->isFavorite});
        }
        return result;
    }

    void expectInvariants() {
        std::set<std::string> fingerprints;
        std::int64_t imageBytes = 0;
        std::size_t imageCount = 0;
        for (const StoredEntry& entry : *store->entries()) {
            EXPECT_TRUE(fingerprints.insert(entry->fingerprint).second);
            if (entry->kind != ClipboardContentKind::image) continue;
            ++imageCount;
            imageBytes += files.size(*store->imageFile(*entry)).value_or(0);
        }
        EXPECT_EQ(images().size(), imageCount);
        EXPECT_EQ(store->storageUsage()->imageBytes, imageBytes);
        EXPECT_EQ(store->storageUsage()->databaseBytes, files.size(stateFile).value_or(0));
        EXPECT_EQ(store->storageUsage()->itemCount, static_cast<std::int64_t>(store->entries()->size()));
        EXPECT_EQ(error(), "none");
    }

    PlainHistory plain;
    std::mt19937 random{static_cast<unsigned>(GetParam())};
    double now = 100;
};

TEST_P(ClipboardStoreRulesTest, HoldThroughAnySequenceOfOperations) {
    open(10);
    for (int step = 0; step < 400; ++step) {
        act();

        ASSERT_EQ(items(), plain.items) << "after step " << step;
        expectInvariants();
        ASSERT_FALSE(HasFailure()) << "after step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Random, ClipboardStoreRulesTest, testing::Range(1, 26));

}  // namespace
}  // namespace nettlecap
