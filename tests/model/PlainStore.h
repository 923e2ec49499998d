#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace nettlecap {

/// What the store is to do, told as plainly as it can be: lists, pictures on a disk, and a
/// disk that may refuse to be written.
class PlainStore {
public:
    struct Item {
        std::string text;  ///< of a picture its bytes
        bool isImage = false;
        double at = 0;
        bool isFavorite = false;
        int picture = 0;  ///< its number on the disk

        bool operator==(const Item&) const = default;
    };
    struct Snippet {
        std::string content;
        double updatedAt = 0;

        bool operator==(const Snippet&) const = default;
    };
    struct Lists {
        std::vector<Item> items;
        std::vector<Snippet> snippets;

        bool operator==(const Lists&) const = default;
    };
    enum class Disk { works, refusesTheDocument, refusesAll };

    void copyText(const std::string& text, double at);
    void copyImage(const std::string& png, double at);
    void toggleFavorite(std::size_t index);
    void remove(std::size_t index);
    void changeLimit(std::size_t to);
    void purge();
    void addSnippet(const std::string& content, double now);
    void updateSnippet(std::size_t index, const std::string& content, double now);
    void removeSnippet(std::size_t index);
    void restart();
    void beReplaced(const std::string& by);  ///< the document, by somebody else

    std::size_t limit = 10;
    Disk disk = Disk::works;
    Lists lists;
    Lists saved;
    std::map<int, std::string> pictures;  ///< on the disk
    std::optional<std::string> foreign;   ///< what stands in place of the document
    std::optional<std::string> kept;      ///< a foreign document, under its other name
    std::string error;                    ///< how it begins; empty: there is none

private:
    std::vector<Item>::iterator find(const std::string& text, bool isImage);
    void insert(Item item);
    void trim();
    void save();

    bool mayOverwrite_ = false;  ///< what is foreign
    int lastPicture_ = 0;
};

}  // namespace nettlecap
