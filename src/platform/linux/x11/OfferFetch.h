#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/x11/PasteboardTargets.h"
#include "platform/linux/x11/SelectionReader.h"

#include <deque>
#include <map>

namespace nettlecap {

/// What was got of an offer.
struct FetchedOffer {
    std::vector<PasteboardType> types;
    std::map<PasteboardType, Bytes, std::less<>> data;
    bool isComplete = false;  ///< of everything wanted that is offered, something arrived

    bool operator==(const FetchedOffer&) const = default;
};

/// Gets of one owner's offer what is wanted: first its targets, then whether it is secret,
/// and only then contents, one after the other. A secret's contents are never asked for.
class OfferFetch {
public:
    struct Offer {
        xcb_atom_t selection = XCB_ATOM_NONE;
        xcb_timestamp_t time = XCB_CURRENT_TIME;  ///< when it was made
        PasteboardInterest interest;
    };

    /// The handler is called once, never within this call, and may destroy the fetch.
    OfferFetch(SelectionPorts ports, Offer offer, std::function<void(FetchedOffer)> handler);

    /// Another owner came, or none, at the event of that sequence number. What the old one is
    /// giving is taken, if it hurries; nothing more is asked, since the new one would answer.
    void ownerLeft(unsigned eventSequence);

private:
    using Outcome = SelectionReader::Outcome;
    struct Step {
        PasteboardType type;
        xcb_atom_t target = XCB_ATOM_NONE;
    };

    void read(xcb_atom_t target, std::size_t limit, std::function<void(Outcome)> handler);
    void takeTargets(const Outcome& outcome);
    void takeNames(const std::vector<xcb_atom_t>& atoms, const X11Atoms::Names& names);
    void readNextHint();
    void planContents();
    void readNextContent();
    void takeContent(const Step& step, const Outcome& outcome);
    void finish();

    SelectionPorts ports_;
    Offer offer_;
    std::function<void(FetchedOffer)> handler_;
    FetchedOffer result_;
    pasteboardTargets::Offer understood_;
    std::deque<std::deque<Step>> groups_;  // what is still to be tried, of what is still wanted
    std::unique_ptr<SelectionReader> reader_;
    bool isReadingContents_ = false;
    bool hasOwner_ = true;
    bool isMissingSomething_ = false;
    int stalls_ = 0;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
