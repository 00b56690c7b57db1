import QtQuick
import Anadrome

// A choice from the user's clips.
SheetFrame {
    id: library

    required property LibraryScreen screen

    title: Texts.of("SelectFromLibrary")
    wideWidth: Theme.wideSheetWidth
    onClosed: screen.close()

    LibraryGrid {
        objectName: "clips"
        anchors.fill: parent
        focus: true
        lines: library.screen.lines
        onChosen: row => library.screen.choose(row)
    }
    BusySign {
        id: busy
        kind: "ring"
        property bool isOverdue: false
        anchors.centerIn: parent
        width: Theme.emptySign
        height: width
        color: Theme.backward
        visible: library.screen.searching && isOverdue
        isBusy: visible
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
            size: Theme.emptySign
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
