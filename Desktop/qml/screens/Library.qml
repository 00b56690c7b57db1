import QtQuick
import Anadrome

// A choice from the user's clips.
SheetFrame {
    id: library

    required property LibraryScreen screen

    title: Texts.of("SelectFromLibrary")
    wideWidth: 920
    onClosed: screen.close()

    LibraryGrid {
        objectName: "clips"
        anchors.fill: parent
        focus: true
        lines: library.screen.lines
        onChosen: row => library.screen.choose(row)
    }
    HudSign {
        id: busy
        property bool isOverdue: false
        anchors.centerIn: parent
        width: 48
        height: 48
        kind: "ring"
        color: Theme.backward
        visible: opacity > 0
        opacity: library.screen.searching && isOverdue ? 1 : 0
        Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
        RotationAnimator on rotation {
            running: busy.visible
            from: 0
            to: 360
            duration: 1000
            loops: Animation.Infinite
        }
        Accessible.role: Accessible.Indicator
        Accessible.name: Texts.of("LibrarySearching")
    }
    Timer {
        interval: Theme.patience
        running: library.screen.searching
        onTriggered: busy.isOverdue = true
    }
    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width, 320)
        spacing: Theme.near
        visible: !library.screen.searching && library.screen.lines.current < 0
        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "library"
            color: Theme.secondary
            size: 48
        }
        Label {
            width: parent.width
            text: Texts.of("LibraryEmpty")
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
        }
        Label {
            objectName: "libraryPlace"
            width: parent.width
            text: Texts.of("LibraryPlace").arg(library.screen.folder)
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
