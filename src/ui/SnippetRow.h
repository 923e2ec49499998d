#pragma once

#include "app/AppModel.h"
#include "ui/DeleteLater.h"
#include "ui/RowMenu.h"
#include "ui/RowPreview.h"
#include "ui/SavedSnippetPreviewPopover.h"

namespace nettlecap {

/// One saved message as a row. It stays the same object while its message lives.
class SnippetRow : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the list")
    Q_PROPERTY(QString title READ title NOTIFY snippetChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY snippetChanged)
    Q_PROPERTY(QString symbol READ symbol CONSTANT)
    Q_PROPERTY(QString help READ help CONSTANT)
    Q_PROPERTY(QString editSymbol READ editSymbol CONSTANT)
    Q_PROPERTY(QString editHelp READ editHelp CONSTANT)
    Q_PROPERTY(QVariantList menuItems READ menuItems CONSTANT)
    Q_PROPERTY(bool isKeyboardSelected READ isKeyboardSelected NOTIFY isKeyboardSelectedChanged)
    Q_PROPERTY(bool isShowingKeyboardPreview READ isShowingKeyboardPreview NOTIFY previewChanged)
    Q_PROPERTY(nettlecap::SavedSnippetPreviewPopover* preview READ preview NOTIFY previewChanged)

public:
    struct Collaborators {
        AppModel& app;
        Scheduler& scheduler;
        Identifiers& identifiers;
    };

    using Edit = std::function<void(const SavedSnippet&)>;

    /// `edit` opens the editor.
    SnippetRow(Collaborators with, SavedSnippet snippet, Edit edit, bool isKeyboardSelected);

    void setRecord(const SavedSnippet& snippet);
    void setKeyboardSelected(bool selected);

    Q_INVOKABLE void handleClick();  ///< copies, and pastes where the user wants that
    Q_INVOKABLE void edit() const { edit_(snippet_); }
    Q_INVOKABLE void performMenuItem(int index);
    Q_INVOKABLE void previewDisappeared() { previewState_.dismiss(); }  ///< closed from outside
    Q_INVOKABLE void disappear() { previewState_.rowDisappeared(); }    ///< the row is out of sight

    QString title() const;
    QString summary() const;  ///< one line
    QString symbol() const { return QStringLiteral("text.quote"); }
    QString help() const { return QStringLiteral("Clique para colar esta mensagem"); }
    QString editSymbol() const { return QStringLiteral("pencil"); }
    QString editHelp() const { return QStringLiteral("Editar mensagem"); }
    QVariantList menuItems() const { return menu().items(); }
    bool isKeyboardSelected() const { return isKeyboardSelected_; }
    bool isShowingKeyboardPreview() const { return preview_ != nullptr; }
    SavedSnippetPreviewPopover* preview() const { return preview_.get(); }

Q_SIGNALS:
    void snippetChanged();
    void isKeyboardSelectedChanged();
    void previewChanged();

private:
    RowMenu menu() const;
    void copy(std::optional<bool> pasteImmediately) const;
    void updateKeyboardPreview();

    Collaborators with_;
    SavedSnippet snippet_;
    Edit edit_;
    bool isKeyboardSelected_;
    DeletedLater<SavedSnippetPreviewPopover> preview_;
    RowPreview previewState_;
};

}  // namespace nettlecap
