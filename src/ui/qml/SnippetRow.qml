pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// One saved message: its title, its text on one line, and the way into the editor.
ListRow {
    id: root

    required property Views.SnippetRow row  // goes a little sooner than what shows it

    isSelected: row?.isKeyboardSelected ?? false
    onPressed: clickCount => {
        if (clickCount === 1)
            root.row.handleClick();
    }
    onVisibleChanged: if (!visible) root.row?.disappear()
    Component.onDestruction: root.row?.disappear()

    Accessible.name: row?.title ?? ""
    Accessible.description: row?.help ?? ""

    Symbol {
        id: symbol
        x: Theme.rowPadding + (Theme.tileSide - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        name: root.row?.symbol ?? ""
        color: root.colors.caption
    }

    Text {
        id: title
        anchors.left: parent.left
        anchors.leftMargin: Theme.rowPadding + Theme.tileSide + Theme.gap
        anchors.right: pencil.left
        anchors.rightMargin: 4
        anchors.bottom: parent.verticalCenter
        anchors.bottomMargin: 1
        text: root.row?.title ?? ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        font: Theme.headline
        color: root.colors.text
        Accessible.ignored: true
    }

    Text {
        anchors.left: title.left
        anchors.right: title.right
        anchors.top: parent.verticalCenter
        anchors.topMargin: 2
        text: root.row?.summary ?? ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        font: Theme.caption
        color: root.colors.caption
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    FlatButton {
        id: pencil
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        activeFocusOnTab: false
        symbol: root.row?.editSymbol ?? ""
        ink: root.colors.caption
        wash: root.colors.pressed
        help: root.row?.editHelp ?? ""
        onPressed: root.row.edit()
    }

    HelpTip {
        control: root
        isHovered: root.isHovered && !pencil.isHovered
        text: root.row?.help ?? ""
    }

    PreviewHost {
        anchor: root
        preview: root.row?.preview ?? null
        isCovered: root.isCovered
        row: root.row
    }
}
