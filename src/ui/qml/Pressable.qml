import QtQuick

/// What all controls that can be pressed have in common: with the mouse, with the keyboard
/// and by assistive technology. How it looks is its user's.
Item {
    id: root

    property bool pressedByReturn: true
    readonly property bool isHeld: tap.pressed
    readonly property bool isHovered: hover.hovered

    signal pressed
    signal pointerMoved(point place)

    activeFocusOnTab: enabled
    opacity: enabled ? 1 : 0.5

    Accessible.role: Accessible.Button
    Accessible.focusable: enabled
    Accessible.readOnly: !enabled  // Qt has no way to say "disabled"
    Accessible.onPressAction: if (root.enabled) root.pressed()
    Accessible.onToggleAction: if (root.enabled) root.pressed()

    Keys.onSpacePressed: root.pressed()
    Keys.onReturnPressed: event => event.accepted = root.returnPressed()
    Keys.onEnterPressed: event => event.accepted = root.returnPressed()

    function returnPressed(): bool {
        if (pressedByReturn)
            pressed();
        return pressedByReturn;
    }

    HoverHandler {
        id: hover
        onHoveredChanged: if (hovered) root.pointerMoved(point.scenePosition)
        onPointChanged: if (hovered) root.pointerMoved(point.scenePosition)
    }

    TapHandler {
        id: tap
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.pressed()
    }
}
