import QtQuick
import Anadrome

// Tells that a clip may be let go over the window.
Rectangle {
    color: Theme.veil
    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.near
        radius: Theme.cardRadius
        color: "transparent"
        border.width: 3
        border.color: Theme.primary
    }
    Rectangle {
        anchors.centerIn: parent
        width: words.implicitWidth + 2 * Theme.edge
        height: 52
        radius: 26
        color: Theme.primary
        Text {
            id: words
            anchors.centerIn: parent
            text: Texts.of("DropToReverse")
            color: Theme.primaryInk
            font.pixelSize: Theme.textSize
            font.weight: Font.DemiBold
        }
    }
}
