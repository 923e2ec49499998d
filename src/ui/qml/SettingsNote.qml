import QtQuick
import Nettlecap

/// An explanation below a setting, or, with a symbol, the state of something.
Item {
    id: root

    required property string text
    property string symbol: ""
    property color symbolColor: Theme.colors.secondaryText
    property color color: Theme.colors.secondaryText

    width: parent ? parent.width : 0
    implicitHeight: label.implicitHeight

    Symbol {
        id: sign
        // On the first line, however many follow.
        y: (metrics.height - height) / 2
        width: 14
        height: 14
        visible: root.symbol !== ""
        name: root.symbol
        color: root.symbolColor
    }

    FontMetrics {
        id: metrics
        font: label.font
    }

    Text {
        id: label
        x: sign.visible ? sign.width + 6 : 0
        width: parent.width - x
        text: root.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: Theme.caption
        lineHeight: 1.1
        color: root.color
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
