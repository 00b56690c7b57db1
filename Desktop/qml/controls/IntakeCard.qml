import QtQuick
import Anadrome

// A large way in: an icon, a verb, and what is to be known of it in small type.
PushButton {
    id: card

    property string notice
    property bool isTall: false
    readonly property real discTop: 40

    readonly property real tallHeight: discTop + disc.height + Theme.gap + words.implicitHeight + Theme.edge
    implicitHeight: isTall ? Math.max(220, tallHeight) : Math.max(112, words.implicitHeight + 2 * Theme.gap)
    radius: Theme.cardRadius
    fill: Theme.surface
    edge: Theme.line
    Accessible.description: notice

    contentItem: Item {
        Rectangle {
            id: disc
            width: 56
            height: 56
            radius: 28
            x: card.isTall ? (parent.width - width) / 2 : 20
            y: card.isTall ? card.discTop : (parent.height - height) / 2
            color: Qt.alpha(Theme.backward, 0.14)
            Icon {
                anchors.centerIn: parent
                name: card.symbol
                color: Theme.backward
                size: 28
            }
        }
        Column {
            id: words
            x: card.isTall ? Theme.gap : disc.x + disc.width + Theme.gap
            y: card.isTall ? disc.y + disc.height + Theme.gap : (parent.height - implicitHeight) / 2
            width: parent.width - x - Theme.gap
            spacing: 4
            Label {
                width: parent.width
                text: card.text
                font.pixelSize: Theme.headSize
                font.weight: Font.DemiBold
                horizontalAlignment: card.isTall ? Text.AlignHCenter : Text.AlignLeft
            }
            Label {
                width: parent.width
                visible: text !== ""
                text: card.notice
                color: Theme.secondary
                font.pixelSize: Theme.smallSize
                horizontalAlignment: card.isTall ? Text.AlignHCenter : Text.AlignLeft
            }
        }
    }
}
