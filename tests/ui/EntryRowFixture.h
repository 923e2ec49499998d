#pragma once

#include "ui/ClipboardEntryRow.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace nettlecap {

/// Rows of entries, each on its own.
class EntryRowFixture : public testing::Test {
protected:
    ~EntryRowFixture() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    std::unique_ptr<ClipboardEntryRow> rowOf(const ClipboardEntry& entry) { return rowOf(entry, history); }
    std::unique_ptr<ClipboardEntryRow> rowOf(const ClipboardEntry& entry, HistoryOnFakes& of) {
        return std::make_unique<ClipboardEntryRow>(
            ClipboardEntryRow::Collaborators{.app = of.app,
                                             .clock = of.fake.time,
                                             .scheduler = of.fake.time,
                                             .identifiers = of.fake.identifiers,
                                             .images = of.fake.images,
                                             .text = of.fake.text,
                                             .pointer = pointer},
            StoredEntry(entry),
            ClipboardEntryRow::Actions{
                .select = [this] { ++selections; },
                .requestDelete =
                    [this](const ClipboardEntry& doomed) { deletionRequests.push_back(doomed.id); }},
            false);
    }
    void prefer(const std::function<void(AppPreferences&)>& edit) { history.app.updatePreferences(edit); }
    void putPicture(const std::string& filename) {
        history.fake.files.put(history.app.store().imagesDirectory() / filename,
                               std::string(FakeImageCodec::pngSignature) + "gato");
    }

    HistoryOnFakes history;
    PointerTravel pointer;
    int selections = 0;
    std::vector<Uuid> deletionRequests;
};

}  // namespace nettlecap
