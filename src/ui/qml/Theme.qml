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
    readonly property int scrollDuration: 120

    readonly property font body: Application.font
    readonly property font caption: Qt.font({
        family: body.family,
        pointSize: Math.max(8.25, body.pointSize * 0.87)
    })
    readonly property font title: Qt.font({
        family: body.family,
        pointSize: body.pointSize * 1.08,
        weight: Font.DemiBold
    })
}
