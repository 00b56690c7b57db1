import QtQuick
import Anadrome

// An icon and a line of text, as far as there is room for them.
Item {
    id: content

    required property string symbol
    required property string text
    required property color ink
    // For both.
    required property real room

    implicitWidth: row.implicitWidth

    Row {
        id: row
        anchors.centerIn: parent
        spacing: Theme.near
        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: name !== ""
            name: content.symbol
            color: content.ink
            size: 20
        }
        Text {
            readonly property real room: content.room - (content.symbol ? 28 : 0)
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            text: content.text
            width: room > 0 ? Math.min(implicitWidth, room) : implicitWidth
            color: content.ink
            font.pixelSize: Theme.textSize
            font.weight: Font.DemiBold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.smallSize
            elide: Text.ElideRight
            textFormat: Text.PlainText
        }
    }
}
