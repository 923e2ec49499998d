#pragma once

#include "app/AppModel.h"
#include "ui/DeleteLater.h"
#include "ui/EntryPreviewPopover.h"
#include "ui/PointerTravel.h"
#include "ui/RowMenu.h"
#include "ui/RowPreview.h"

#include <QUrl>

namespace nettlecap {

/// One entry as a row of the history. It stays the same object while its entry lives,
/// whatever becomes of the entry's content and place.
class ClipboardEntryRow : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the list")
    Q_PROPERTY(QString summary READ summary NOTIFY entryChanged)
    Q_PROPERTY(QString sourceApplication READ sourceApplication NOTIFY entryChanged)
    Q_PROPERTY(QString age READ age NOTIFY ageChanged)
    Q_PROPERTY(QString symbol READ symbol NOTIFY entryChanged)
    Q_PROPERTY(QUrl thumbnail READ thumbnail NOTIFY entryChanged)
    Q_PROPERTY(bool isFavorite READ isFavorite NOTIFY entryChanged)
    Q_PROPERTY(QString favoriteSymbol READ favoriteSymbol NOTIFY entryChanged)
    Q_PROPERTY(QString favoriteLabel READ favoriteLabel NOTIFY entryChanged)
    Q_PROPERTY(QVariantList menuItems READ menuItems NOTIFY entryChanged)
    Q_PROPERTY(bool isKeyboardSelected READ isKeyboardSelected NOTIFY isKeyboardSelectedChanged)
    Q_PROPERTY(bool isShowingPreview READ isShowingPreview NOTIFY previewChanged)
    Q_PROPERTY(nettlecap::EntryPreviewPopover* preview READ preview NOTIFY previewChanged)

public:
    struct Collaborators {
        AppModel& app;
        const Clock& clock;
        Scheduler& scheduler;
        Identifiers& identifiers;
        const ImageCodec& images;
        const TextMeasure& text;
        PointerTravel& pointer;
    };

    /// What the row asks of the view that lists it.
    struct Actions {
        Task select;
        std::function<void(const ClipboardEntry&)> requestDelete;
    };

    /// Whose "image://" address the thumbnails have.
    static constexpr const char* pictureProvider = "history";
    static constexpr double textWidth = 320;  ///< in points: what a longer text is cut off at

    ClipboardEntryRow(Collaborators with, StoredEntry entry, Actions actions, bool isKeyboardSelected);

    void setRecord(const StoredEntry& entry);
    void setKeyboardSelected(bool selected);
    void refreshAge();         ///< time has passed
    void refreshProtection();  ///< sensitive texts are now masked, or no longer

    /// Every click copies; a double click reports a single one first.
    Q_INVOKABLE void handleRowClick(int clickCount);
    Q_INVOKABLE void toggleFavorite();
    Q_INVOKABLE void performMenuItem(int index);

    /// The pointer is over the row, at a place of the window: to be told when it comes and
    /// may be told whenever it moves. Only coming from elsewhere counts as entering.
    Q_INVOKABLE void pointerAt(QPointF position);
    Q_INVOKABLE void pointerLeft();
    Q_INVOKABLE void handleRowHover(bool inside) { previewState_.handleRowHover(inside); }
    Q_INVOKABLE void previewDisappeared() { previewState_.dismiss(); }  ///< closed from outside
    Q_INVOKABLE void disappear();                                       ///< the row is out of sight

    QString summary() const;  ///< one line
    QString sourceApplication() const;
    QString age() const;     ///< how long ago it was copied
    QString symbol() const;  ///< the leading element where there is no thumbnail to show
    QUrl thumbnail() const;  ///< empty: the entry has no picture
    bool isFavorite() const { return entry_->isFavorite; }
    QString favoriteSymbol() const;
    QString favoriteLabel() const;  ///< what pressing the star does
    QVariantList menuItems() { return menu().items(); }
    bool isKeyboardSelected() const { return isKeyboardSelected_; }
    bool isShowingPreview() const { return preview_ != nullptr; }
    EntryPreviewPopover* preview() const { return preview_.get(); }

    std::optional<std::string> textPreview() const;
    bool shouldShowTextContentPreview() const;  ///< the row can't show the whole text

Q_SIGNALS:
    void entryChanged();
    void ageChanged();
    void isKeyboardSelectedChanged();
    void previewChanged();

private:
    bool isProtecting() const { return with_.app.preferences()->protectSensitiveContent; }
    bool hasImage() const;  ///< a file that reads as one
    RowMenu menu();
    void copy(bool pasteImmediately) const;
    void updatePreview();
    std::unique_ptr<EntryPreviewPopover> makePreview();

    Collaborators with_;
    StoredEntry entry_;
    Actions actions_;
    bool isKeyboardSelected_;
    bool isPointerUnderneath_ = false;  ///< whether it has entered or the row came to it
    DeletedLater<EntryPreviewPopover> preview_;
    RowPreview previewState_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
