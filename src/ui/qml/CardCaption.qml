import QtQuick

/// Where the entry stands, and what letting the keys go does.
Text {
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignLeft
    elide: Text.ElideRight
    maximumLineCount: 1
    font: Theme.caption
    color: Theme.colors.secondaryText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
