import QtQuick
import Anadrome

// Rows of a list that belong together, on one card.
Card {
    id: group

    default property alias rows: column.data

    width: parent ? parent.width : implicitWidth
    opacity: enabled ? 1 : Theme.dimmed
    height: column.implicitHeight

    Column {
        id: column
        width: parent.width
    }
}
