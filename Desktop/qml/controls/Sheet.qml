import QtQuick
import Anadrome

// A sheet of things that lie below each other, as high as they need.
SheetFrame {
    id: sheet

    default property alias content: column.data

    wantedHeight: column.implicitHeight

    ScrollPlace {
        anchors.fill: parent
        contentHeight: column.implicitHeight
        clip: true
        Column {
            id: column
            width: parent.width
            spacing: Theme.gap
        }
    }
}
