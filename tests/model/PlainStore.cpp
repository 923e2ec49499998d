#include "model/PlainStore.h"

#include <algorithm>
#include <utility>

namespace nettlecap {

void PlainStore::copyText(const std::string& text, double at) {
    Item item{.text = text, .at = at};
    const auto known = find(text, false);
    const bool isNew = known == lists.items.end();
    if (!isNew) {
        item.isFavorite = known->isFavorite;
        lists.items.erase(known);
    }
    insert(item);
    if (isNew) trim();
    save();
}

void PlainStore::copyImage(const std::string& png, double at) {
    Item item{.text = png, .isImage = true, .at = at};
    const auto known = find(png, true);
    const bool isNew = known == lists.items.end();
    if (!isNew) {
        item.isFavorite = known->isFavorite;
        item.picture = known->picture;
    } else {
        item.picture = lastPicture_ + 1;
    }
    if (!pictures.contains(item.picture)) {
        if (disk == Disk::refusesAll) {
            error = "Não foi possível salvar a imagem: ";
            return;
        }
        pictures[item.picture] = png;
        lastPicture_ = std::max(lastPicture_, item.picture);
    }
    if (!isNew) lists.items.erase(known);
    insert(item);
    if (isNew) trim();
    save();
}

void PlainStore::toggleFavorite(std::size_t index) {
    lists.items[index].isFavorite = !lists.items[index].isFavorite;
    save();
}

void PlainStore::remove(std::size_t index) {
    pictures.erase(lists.items[index].picture);
    lists.items.erase(lists.items.begin() + static_cast<std::ptrdiff_t>(index));
    save();
}

void PlainStore::changeLimit(std::size_t to) {
    limit = to;
    trim();
    save();
}

void PlainStore::purge() {
    for (const Item& item : lists.items)
        if (!item.isFavorite) pictures.erase(item.picture);
    std::erase_if(lists.items, [](const Item& item) { return !item.isFavorite; });
    kept.reset();
    mayOverwrite_ = true;  // the user does not want it back
    save();
}

void PlainStore::addSnippet(const std::string& content, double now) {
    lists.snippets.insert(lists.snippets.begin(), {.content = content, .updatedAt = now});
    save();
}

void PlainStore::updateSnippet(std::size_t index, const std::string& content, double now) {
    lists.snippets[index] = {.content = content, .updatedAt = now};
    save();
}

void PlainStore::removeSnippet(std::size_t index) {
    lists.snippets.erase(lists.snippets.begin() + static_cast<std::ptrdiff_t>(index));
    save();
}

void PlainStore::restart() {
    lists = foreign ? Lists() : saved;
    std::ranges::stable_sort(lists.snippets, std::ranges::greater(), &Snippet::updatedAt);
    mayOverwrite_ = false;
    error = foreign ? "O histórico salvo não pôde ser lido: " : "";
    trim();
}

void PlainStore::beReplaced(const std::string& by) {
    foreign = by;
    mayOverwrite_ = false;
}

std::vector<PlainStore::Item>::iterator PlainStore::find(const std::string& text, bool isImage) {
    return std::ranges::find_if(
        lists.items, [&](const Item& item) { return item.text == text && item.isImage == isImage; });
}

void PlainStore::insert(Item item) {
    const auto place =
        std::ranges::find_if(lists.items, [&](const Item& other) { return other.at < item.at; });
    lists.items.insert(place, std::move(item));
}

void PlainStore::trim() {
    while (lists.items.size() > limit) {
        const auto oldest = std::find_if(lists.items.rbegin(), lists.items.rend(),
                                         [](const Item& item) { return !item.isFavorite; });
        if (oldest == lists.items.rend()) return;
        pictures.erase(oldest->picture);
        lists.items.erase(std::next(oldest).base());
    }
}

void PlainStore::save() {
    if (foreign && !std::exchange(mayOverwrite_, true)) kept = foreign;
    if (disk != Disk::works) {
        error = "Não foi possível salvar o histórico: ";
        return;
    }
    saved = lists;
    foreign.reset();
    error = "";
}

}  // namespace nettlecap
