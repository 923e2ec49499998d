import QtQuick
import Nettlecap.Views as Views

/// The text of an entry that does not fit into its row.
PreviewText {
    required property Views.TextPreviewPopover view

    heading: view.heading
    text: view.text
}
