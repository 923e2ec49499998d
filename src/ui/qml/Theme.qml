pragma Singleton
import QtQuick

/// Sizes, fonts and colours. Light or dark as the desktop's own windows are.
QtObject {
    readonly property SystemPalette desktop: SystemPalette {}
    readonly property bool isDark: desktop.window.hslLightness < 0.5
    readonly property ThemeColors colors: isDark ? dark : light

    readonly property ThemeColors light: ThemeColors {
        background: "#f7f7f8"
        separator: "#dededf"
        text: "#1d1d1f"
        secondaryText: "#5f6066"
        warning: "#a3281c"
        scrollBar: "#8f9096"
        tile: "#dfdfe4"
        tileSymbol: "#5a5c63"
        card: CardColors {
            ground: "#f4f4f6"
            accent: "#1f7048"
            sensitive: "#b86200"
            rim: "#b9bac0"
        }
        controls: LightControls {}
        row: RowColors {
            ground: "#f7f7f8"
            hovered: "#eeeef0"
            pressed: "#e6e6e9"
            text: "#1d1d1f"
            caption: "#5f6066"
            favorite: "#a86400"
        }
        selectedRow: RowColors {
            ground: "#1f7048"
            hovered: "#1f7048"
            pressed: "#19603d"
            text: "#ffffff"
            caption: "#d9eee3"
            favorite: "#ffffff"
        }
        inactiveSelectedRow: RowColors {
            ground: "#d8d9dc"
            hovered: "#d8d9dc"
            pressed: "#cfd0d4"
            text: "#1d1d1f"
            caption: "#505157"
            favorite: "#8f5500"
        }
    }

    readonly property ThemeColors dark: ThemeColors {
        background: "#1f2022"
        separator: "#35363a"
        text: "#f2f2f3"
        secondaryText: "#a8a9b0"
        warning: "#ff9a8d"
        scrollBar: "#85868c"
        tile: "#37383d"
        tileSymbol: "#b4b5bb"
        card: CardColors {
            ground: "#2b2c2f"
            accent: "#4cc38a"
            sensitive: "#ff9f2e"
            rim: "#55565c"
        }
        controls: DarkControls {}
        row: RowColors {
            ground: "#1f2022"
            hovered: "#27282b"
            pressed: "#2d2e32"
            text: "#f2f2f3"
            caption: "#a8a9b0"
            favorite: "#f0b429"
        }
        selectedRow: RowColors {
            ground: "#24784f"
            hovered: "#24784f"
            pressed: "#1d6441"
            text: "#ffffff"
            caption: "#dcf0e6"
            favorite: "#ffffff"
        }
        inactiveSelectedRow: RowColors {
            ground: "#3b3c41"
            hovered: "#3b3c41"
            pressed: "#44454a"
            text: "#f2f2f3"
            caption: "#b9bac0"
            favorite: "#f0b429"
        }
    }

    readonly property int listPadding: 8
    readonly property int rowSpacing: 3
    readonly property int rowPadding: 6
    readonly property int rowRadius: 8
    readonly property int tileSide: 38
    readonly property int tileRadius: 7
    readonly property int gap: 10
    readonly property int headerHeight: 48
    readonly property int headerIconSide: 24
    readonly property int footerHeight: 40
    readonly property int panelMargin: listPadding + rowPadding
    readonly property int flatButtonSide: 28
    readonly property int helpDelay: 700

    readonly property int previewTextHeight: 400
    readonly property int previewPictureRadius: 16
    readonly property int scrollDuration: 120

    readonly property int cardMargin: 4
    readonly property int cardPadding: 18
    readonly property int cardRadius: 16
    readonly property var cardShadow: [0.03, 0.06, 0.1, 0.18]  // from the outside in
    readonly property int cardGap: 14
    readonly property int cardTextSpacing: 4
    readonly property int cardLineSpacing: 2
    readonly property int cardTextHeight: 260 - 2 * (cardMargin + cardPadding)
    readonly property int cardTileSide: 56
    readonly property int cardExpandedTileSide: 48
    readonly property int cardTileRadius: 10
    readonly property int cardSymbolSide: 26
    readonly property int cardPictureHeight: 240
    readonly property int cardPictureRadius: 12
    readonly property int cardPictureSpacing: 10

    readonly property int previewPadding: 14
    readonly property int previewRadius: 12

    readonly property font body: Application.font
    readonly property font headline: Qt.font({
        family: body.family,
        pointSize: body.pointSize,
        weight: Font.DemiBold
    })
    readonly property font caption: Qt.font({
        family: body.family,
        pointSize: Math.max(8.25, body.pointSize * 0.87)
    })
    readonly property font title: Qt.font({
        family: body.family,
        pointSize: body.pointSize * 1.08,
        weight: Font.DemiBold
    })
    readonly property font heading: Qt.font({
        family: body.family,
        pointSize: body.pointSize * 1.3,
        weight: Font.Bold
    })

    readonly property int formMargin: 14
    readonly property int formPadding: 12
    readonly property int formSpacing: 10
    readonly property int groupRadius: 9
    readonly property int controlHeight: 24
    readonly property int controlRadius: 6
    readonly property int navigationButtonSide: 20
}
