import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Anadrome

// Scrolls what has no room, and shows where the keyboard is.
Flickable {
    id: place

    readonly property Item focused: Window.activeFocusItem

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ScrollBar { }
    onFocusedChanged: {
        let around = focused
        while (around && around !== contentItem)
            around = around.parent
        if (!around)
            return
        const top = focused.mapToItem(contentItem, 0, 0).y
        const bottom = top + focused.height
        const wanted = Math.min(top - Theme.gap, Math.max(contentY, bottom + Theme.gap - height))
        contentY = Math.max(0, Math.min(wanted, contentHeight - height))
    }
}
