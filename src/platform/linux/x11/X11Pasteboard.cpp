#include "platform/linux/x11/X11Pasteboard.h"

#include "platform/linux/x11/PropertyText.h"

#include <QEventLoop>
#include <algorithm>
#include <array>
#include <future>

namespace nettlecap {

namespace {

// Programs take the selection several times for one copy: this long an offer must stand.
constexpr Seconds quietTime(0.02);
constexpr std::int32_t quietMilliseconds = 20;  // in the server's time

constexpr std::array<std::string_view, 11> everydayAtoms = {
    "CLIPBOARD",   "CLIPBOARD_MANAGER", "SAVE_TARGETS",       "TARGETS",
    "TIMESTAMP",   "MULTIPLE",          "ATOM_PAIR",          "INCR",
    "UTF8_STRING", "COMPOUND_TEXT",     "NETTLECAP_SELECTION"};

bool isSecret(const FetchedOffer& offer) {
    return std::ranges::count(offer.types, pasteboardTargets::concealedType) > 0;
}

PasteboardItem itemOf(const FetchedOffer& offer) {
    PasteboardItem item;
    for (const auto& [type, bytes] : offer.data)
        item.forms.push_back({.type = type, .bytes = [bytes = bytes] { return bytes; }});
    return item;
}

}  // namespace

/// What another program put on the clipboard, from its arrival on.
struct X11Pasteboard::Offer {
    std::uint32_t client = 0;
    xcb_timestamp_t arrived = XCB_CURRENT_TIME;
    xcb_timestamp_t time = XCB_CURRENT_TIME;  ///< what its owner took the selection with
    bool isEmpty = false;                     ///< the selection was given up
    bool isStanding = false;                  ///< it was there before the program
    bool isQuiet = false;
    bool isReported = false;
    bool isOrphaned = false;
    std::unique_ptr<OfferFetch> fetch = nullptr;
    std::optional<FetchedOffer> result = std::nullopt;
};

Result<std::unique_ptr<X11Pasteboard>> X11Pasteboard::open(SelectionPorts ports) {
    ports.connection.atoms().prefetch(everydayAtoms);
    auto watch = SelectionWatch::open(ports.connection, ports.connection.atoms().of("CLIPBOARD"));
    if (!watch) return Failure{watch.description()};
    return std::unique_ptr<X11Pasteboard>(new X11Pasteboard(ports, std::move(*watch)));
}

X11Pasteboard::X11Pasteboard(SelectionPorts ports, std::unique_ptr<SelectionWatch> watch)
    : ports_(ports), watch_(std::move(watch)), server_(ports, ports.connection.atoms().of("CLIPBOARD")),
      primary_(ports), quiet_(ports.scheduler, ports.clock, [this] { beQuiet(); }),
      ownerChanges_(watch_->onChange([this](const OwnerChange& change) { onOwnerChange(change); })) {
    const xcb_window_t owner = watch_->owner();
    if (owner == XCB_NONE) return;
    current_ =
        std::make_unique<Offer>(Offer{.client = clientOf(ports_.connection, owner),
                                      .time = ports_.connection.serverTime().value_or(XCB_CURRENT_TIME),
                                      .isStanding = true});
}

X11Pasteboard::~X11Pasteboard() = default;

void X11Pasteboard::handOver() {
    X11Atoms& atoms = ports_.connection.atoms();
    const std::vector<xcb_atom_t> targets = server_.targets();
    if (targets.empty() || !server_.isOwner()) return;
    QEventLoop loop;
    const SelectionReader saving(ports_,
                                 {.selection = atoms.of("CLIPBOARD_MANAGER"),
                                  .target = atoms.of("SAVE_TARGETS"),
                                  .time = ports_.connection.serverTime().value_or(XCB_CURRENT_TIME),
                                  .parameter = targets},
                                 [&loop](const SelectionReader::Outcome&) { loop.quit(); });
    loop.exec();
}

bool X11Pasteboard::lendAsPrimary(xcb_window_t reader) {
    auto item = snapshot_ ? itemOf(*snapshot_) : own_.value_or(PasteboardItem());
    const bool isText = std::ranges::count(item.forms, pasteboardType::text, &PasteboardItem::Form::type) > 0;
    return isText && primary_.offer(std::move(item), reader);
}

void X11Pasteboard::clearContents() {
    superseded_.reset();
    current_.reset();
    replaceContents(std::nullopt);
    own_.emplace();
    ++changeCount_;
    if (const auto time = ports_.connection.serverTime()) claim_ = server_.claim(*time);
}

bool X11Pasteboard::write(PasteboardItem item) {
    if (!own_ || !server_.isOwner()) return false;
    own_ = item;
    server_.offer(std::move(item));
    return true;
}

void X11Pasteboard::setInterest(PasteboardInterest interest) {
    interest_ = std::move(interest);
    const bool isUnfetched = current_ && current_->isStanding && !current_->fetch;
    if (isUnfetched && !interest_.groups.empty()) fetch(*current_);
}

std::optional<std::vector<PasteboardType>> X11Pasteboard::types() const {
    if (snapshot_) return snapshot_->types;
    if (!own_) return std::nullopt;
    std::vector<PasteboardType> types;
    for (const auto& form : own_->forms) types.push_back(form.type);
    return types;
}

std::optional<std::string> X11Pasteboard::string(std::string_view type) const {
    const auto bytes = data(type);
    return bytes ? std::optional(propertyText::validUtf8(bytes->view())) : std::nullopt;
}

std::optional<Bytes> X11Pasteboard::data(std::string_view type) const {
    if (snapshot_) {
        const auto found = snapshot_->data.find(type);
        return found == snapshot_->data.end() ? std::nullopt : std::optional(found->second);
    }
    if (!own_) return std::nullopt;
    const auto form = std::ranges::find(own_->forms, type, &PasteboardItem::Form::type);
    if (form == own_->forms.end()) return std::nullopt;
    // A form is made on another thread, though here the main one waits for it.
    return std::async(std::launch::async, form->bytes).get();
}

void X11Pasteboard::onOwnerChange(const OwnerChange& change) {
    const bool isPast = claim_ && static_cast<std::int32_t>(change.sequence - *claim_) < 0;
    if (isPast) return;
    claim_.reset();
    if (change.kind == OwnerChange::Kind::died)
        onOwnerDied(change);
    else if (change.owner == server_.window())
        current_.reset();
    else
        onNewOwner(change);
}

void X11Pasteboard::onNewOwner(const OwnerChange& change) {
    server_.forget();
    supersede(change);
    current_ = std::make_unique<Offer>(Offer{.client = clientOf(ports_.connection, change.owner),
                                             .arrived = change.time,
                                             .time = change.selectionTime,
                                             .isEmpty = change.owner == XCB_NONE});
    if (interest_.groups.empty()) {
        superseded_.reset();
        current_->isReported = true;
        replaceContents(std::nullopt);
        return raise();
    }
    if (current_->isEmpty)
        current_->result.emplace();
    else if (!change.isOvertaken)  // or the newer owner would be asked
        fetch(*current_);
    quiet_.set(quietTime);
}

// The old offer was a copy of its own if it stood for the quiet time: what it is giving is
// still taken. The new one is fetched meanwhile, and waits to be reported after it.
void X11Pasteboard::supersede(const OwnerChange& change) {
    superseded_.reset();
    auto old = std::move(current_);
    if (!old || old->isReported || old->isStanding) return;
    // By the server's time: after a stall of ours both may be told in one go.
    const bool stood = static_cast<std::int32_t>(change.time - old->arrived) >= quietMilliseconds;
    if (!stood && !old->isQuiet) return;
    if (!old->result && !old->fetch) return;
    if (!old->result) old->fetch->ownerLeft(change.sequence);
    superseded_ = std::move(old);
    report();
}

void X11Pasteboard::onOwnerDied(const OwnerChange& change) {
    snapshotClient_.reset();  // the next client may be given the same number
    if (!current_) return;
    if (current_->isReported) return takeOver(change.selectionTime);
    if (!current_->fetch) return current_.reset();
    current_->isOrphaned = true;
    current_->time = change.selectionTime;
    if (!current_->result) current_->fetch->ownerLeft(change.sequence);
}

void X11Pasteboard::fetch(Offer& offer) {
    offer.fetch =
        std::make_unique<OfferFetch>(ports_,
                                     OfferFetch::Offer{.selection = ports_.connection.atoms().of("CLIPBOARD"),
                                                       .time = offer.time,
                                                       .interest = interest_},
                                     [this, &offer](FetchedOffer result) {
                                         offer.result = std::move(result);
                                         report();
                                     });
}

void X11Pasteboard::beQuiet() {
    if (!current_) return;
    current_->isQuiet = true;
    report();
}

void X11Pasteboard::report() {
    if (superseded_) {
        if (!superseded_->result) return;
        const auto old = std::move(superseded_);
        const bool gaveNothing = old->result->data.empty() && !old->isEmpty;
        if (!gaveNothing) publish(*old);
    }
    if (!current_ || !current_->result || current_->isReported) return;
    if (current_->isQuiet || current_->isStanding) publish(*current_);
}

void X11Pasteboard::publish(Offer& offer) {
    offer.isReported = true;
    const bool isKnown = snapshot_ && snapshotClient_ == offer.client && snapshot_->isComplete &&
                         !snapshot_->data.empty() && *snapshot_ == *offer.result;
    const bool isNoChange = isKnown || offer.isStanding;
    replaceContents(offer.isEmpty ? std::nullopt : std::move(offer.result));
    if (!offer.isOrphaned)
        snapshotClient_ = offer.client;
    else if (&offer == current_.get())
        takeOver(offer.time);
    if (!isNoChange) raise();
}

void X11Pasteboard::replaceContents(std::optional<FetchedOffer> contents) {
    snapshot_ = std::move(contents);
    snapshotClient_.reset();
    own_.reset();
}

void X11Pasteboard::raise() {
    ++changeCount_;
    changed_.emit();
}

void X11Pasteboard::takeOver(xcb_timestamp_t time) {
    if (!snapshot_ || !snapshot_->isComplete || snapshot_->data.empty() || isSecret(*snapshot_)) return;
    // With the dead owner's own time: whoever took the selection since has a later one, and
    // the server refuses ours.
    server_.claim(time);
    server_.offer(itemOf(*snapshot_));
}

}  // namespace nettlecap
