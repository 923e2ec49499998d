#pragma once

#include "app/AppModel.h"

#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

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
    Q_PROPERTY(bool isKeyboardSelected READ isKeyboardSelected NOTIFY isKeyboardSelectedChanged)

public:
    struct Collaborators {
        AppModel& app;
        const Clock& clock;
    };

    /// Whose "image://" address the thumbnails have.
    static constexpr const char* pictureProvider = "history";

    /// `select` tells the list that this row is the selected one.
    ClipboardEntryRow(Collaborators with, StoredEntry entry, Task select);

    void setEntry(const StoredEntry& entry);
    void setKeyboardSelected(bool selected);
    void refreshAge();         ///< time has passed
    void refreshProtection();  ///< sensitive texts are now masked, or no longer

    /// Every click copies.
    Q_INVOKABLE void handleRowClick();

    QString summary() const;  ///< one line
    QString sourceApplication() const;
    QString age() const;     ///< how long ago it was copied
    QString symbol() const;  ///< the leading element where there is no thumbnail to show
    QUrl thumbnail() const;  ///< empty: the entry has no picture
    bool isFavorite() const { return entry_->isFavorite; }
    bool isKeyboardSelected() const { return isKeyboardSelected_; }

Q_SIGNALS:
    void entryChanged();
    void ageChanged();
    void isKeyboardSelectedChanged();

private:
    bool isProtected() const;

    Collaborators with_;
    StoredEntry entry_;
    Task select_;
    bool isKeyboardSelected_ = false;
};

}  // namespace nettlecap
