import QtQuick

/// A list of rows over its whole area. It scrolls to a row only when it is asked to.
ListView {
    id: root

    function centre(row: int) {
        glide.stop();
        glide.from = contentY;
        positionViewAtIndex(row, ListView.Center);
        glide.to = contentY;
        contentY = glide.from;
        if (glide.to !== glide.from)
            glide.start();
    }
    function openMenuOf(row: int) {
        if (row < 0)
            return;
        glide.complete();
        positionViewAtIndex(row, ListView.Contain);
        const item = itemAtIndex(row) as ListRow;
        item?.openMenu();
    }

    clip: true
    keyNavigationEnabled: false
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    topMargin: Theme.listPadding
    bottomMargin: Theme.listPadding
    spacing: Theme.rowSpacing

    Accessible.role: Accessible.List

    NumberAnimation {
        id: glide
        target: root
        property: "contentY"
        duration: Theme.scrollDuration
        easing.type: Easing.OutQuad
    }
}
