import QtQuick
import Anadrome

// One clip of the library: its thumbnail, cut to a square, and its length.
Item {
    id: cell

    required property LibraryClip shownClip
    property bool isCurrent: false

    signal chosen

    objectName: "clip" + shownClip.row
    focus: isCurrent
    Accessible.role: Accessible.Button
    Accessible.name: shownClip.name
    Accessible.description: shownClip.broken ? Texts.of("LibraryBroken") : shownClip.length
    Accessible.focusable: true
    Accessible.focused: activeFocus
    // What is covered is out of reach of all hands.
    Accessible.onPressAction: if (enabled) chosen()
    Component.onCompleted: shownClip.see()
    Component.onDestruction: if (shownClip) shownClip.leave()

    Rectangle { anchors.fill: parent; color: Theme.well }
    Image {
        id: picture
        anchors.fill: parent
        source: cell.shownClip.thumbnail
        // Other programs' thumbnails may be much larger.
        sourceSize { width: Theme.thumbnail; height: Theme.thumbnail }
        fillMode: Image.PreserveAspectCrop
        asynchronous: true
        // The file's picture may change under its name.
        cache: false
        opacity: status === Image.Ready ? 1 : 0
        Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
        Accessible.ignored: true
    }
    Column {
        anchors { left: parent.left; right: parent.right; margins: Theme.near
                  verticalCenter: parent.verticalCenter }
        visible: cell.shownClip.broken
        spacing: 4
        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "movie.broken"
            color: Theme.secondary
        }
        Label {
            width: parent.width
            text: cell.shownClip.name
            color: Theme.secondary
            font.pixelSize: Theme.smallSize
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 3
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    Rectangle {
        anchors { right: parent.right; bottom: parent.bottom; margins: 4 }
        visible: length.text !== ""
        width: length.implicitWidth + Theme.near
        height: length.implicitHeight + 2
        radius: height / 2
        color: Theme.badge
        Label {
            id: length
            anchors.centerIn: parent
            text: cell.shownClip.length
            color: Theme.pictureInk
            font.pixelSize: Theme.smallSize
            Accessible.ignored: true
        }
    }
    Rectangle {
        anchors.fill: parent
        color: Theme.pictureHovered
        visible: pointer.hovered
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 4 }
        visible: (pointer.hovered || cell.activeFocus) && !cell.shownClip.broken
        height: name.height + 4
        radius: Theme.controlRadius
        color: Theme.badge
        Label {
            id: name
            anchors.centerIn: parent
            width: parent.width - Theme.near
            text: cell.shownClip.name
            color: Theme.pictureInk
            font.pixelSize: Theme.smallSize
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            maximumLineCount: 2
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
    HoverHandler { id: pointer }
    TapHandler { onTapped: cell.chosen() }
    // On a picture of the ring's colour too.
    FocusRing {
        anchors.margins: 2
        radius: 0
        border.color: Theme.background
        shown: cell.activeFocus
    }
    FocusRing { anchors.margins: 0; radius: 0; border.width: 3; shown: cell.activeFocus }
}
