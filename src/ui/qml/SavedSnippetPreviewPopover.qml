import QtQuick
import Nettlecap.Views as Views

/// What a saved message says.
PreviewText {
    required property Views.SavedSnippetPreviewPopover view

    heading: view.heading
    text: view.text
}
