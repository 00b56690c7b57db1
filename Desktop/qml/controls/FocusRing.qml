import QtQuick
import Anadrome

// Where the keyboard is.
Rectangle {
    required property bool shown
    // How far it lies outside: inside, if negative.
    property real reach: 3

    anchors.fill: parent
    anchors.margins: -reach
    radius: Theme.controlRadius + reach
    color: "transparent"
    border.width: 2
    border.color: Theme.forward
    visible: shown
}
