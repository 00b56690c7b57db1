import QtQuick
import Anadrome

// Where the keyboard is.
Rectangle {
    property Item of: parent
    property bool shown: of.visualFocus

    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.controlRadius + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.forward
    visible: shown
}
