#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/x11/Deadline.h"
#include "platform/linux/x11/OfferFetch.h"
#include "platform/linux/x11/PrimaryLoan.h"
#include "platform/linux/x11/SelectionWatch.h"

namespace nettlecap {

/// The CLIPBOARD selection as a pasteboard that keeps its contents and answers at once: of
/// each owner's offer a snapshot is fetched, and only when it is complete does the change
/// count rise. What an owner leaves behind when it dies is offered on in its place; what an
/// owner gave up on purpose is gone.
class X11Pasteboard final : public Pasteboard {
public:
    /// Fails where the server lacks XFixes. What is on the clipboard now is no change; it is
    /// fetched once something is wanted, so that it survives its owner.
    static Result<std::unique_ptr<X11Pasteboard>> open(SelectionPorts ports);
    ~X11Pasteboard() override;

    /// Before the program ends: a clipboard manager, where there is one, gets what we own.
    /// Runs the event loop, for a second and a half at most.
    void handOver();
    /// Offers the text on the clipboard as PRIMARY too, for one paste into the program of this
    /// window. False: there is no text, or the server did not answer.
    bool lendAsPrimary(xcb_window_t reader);

    void clearContents() override;
    bool write(PasteboardItem item) override;
    void setInterest(PasteboardInterest interest) override;

    std::int64_t changeCount() const override { return changeCount_; }
    std::optional<std::vector<PasteboardType>> types() const override;
    std::optional<std::string> string(std::string_view type) const override;
    std::optional<Bytes> data(std::string_view type) const override;
    Subscription onChange(Task hint) override { return changed_.subscribe(std::move(hint)); }

private:
    struct Offer;

    X11Pasteboard(SelectionPorts ports, std::unique_ptr<SelectionWatch> watch);
    void onOwnerChange(const OwnerChange& change);
    void onNewOwner(const OwnerChange& change);
    void onOwnerDied(const OwnerChange& change);
    void supersede(const OwnerChange& change);
    void fetch(Offer& offer);
    void beQuiet();
    void report();
    void publish(Offer& offer);
    void replaceContents(std::optional<FetchedOffer> contents);
    void raise();
    void takeOver(xcb_timestamp_t time);

    SelectionPorts ports_;
    std::unique_ptr<SelectionWatch> watch_;
    SelectionServer server_;
    PrimaryLoan primary_;
    PasteboardInterest interest_;
    std::int64_t changeCount_ = 0;
    // What belongs to the change count. Neither: the pasteboard is empty, or was never read.
    std::optional<FetchedOffer> snapshot_;
    std::optional<PasteboardItem> own_;
    std::optional<std::uint32_t> snapshotClient_;  // whose snapshot it is, while it lives
    std::optional<unsigned> claim_;                // our request for ownership; what was before it is past
    std::unique_ptr<Offer> current_;               // the owner's, reported or not
    std::unique_ptr<Offer> superseded_;            // the one before, still giving what it had begun to
    Deadline quiet_;
    Signal<> changed_;
    Subscription ownerChanges_;
};

}  // namespace nettlecap
