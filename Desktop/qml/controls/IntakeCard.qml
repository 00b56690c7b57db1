import QtQuick
import Anadrome

// A large way in: an icon, a verb, and what is to be known of it in small type.
PushButton {
    id: card

    property string notice
    property bool isTall: false

    component Content: Item {
        id: content

        required property string symbol
        required property string text
        required property string notice
        required property bool isTall
        readonly property real discTop: 40
        readonly property real tallHeight: discTop + disc.height + Theme.gap + words.implicitHeight + Theme.edge

        implicitHeight: isTall ? Math.max(220, tallHeight)
                               : Math.max(112, words.implicitHeight + 2 * Theme.gap)

        Rectangle {
            id: disc
            width: 56
            height: 56
            radius: 28
            x: content.isTall ? (parent.width - width) / 2 : 20
            y: content.isTall ? content.discTop : (parent.height - height) / 2
            color: Qt.alpha(Theme.backward, 0.14)
            Icon {
                anchors.centerIn: parent
                name: content.symbol
                color: Theme.backward
                size: 28
            }
        }
        Column {
            id: words
            x: content.isTall ? Theme.gap : disc.x + disc.width + Theme.gap
            y: content.isTall ? disc.y + disc.height + Theme.gap : (parent.height - implicitHeight) / 2
            width: parent.width - x - Theme.gap
            spacing: 4
            Label {
                width: parent.width
                text: content.text
                font.pixelSize: Theme.headSize
                font.weight: Font.DemiBold
                horizontalAlignment: content.isTall ? Text.AlignHCenter : Text.AlignLeft
            }
            Label {
                width: parent.width
                visible: text !== ""
                text: content.notice
                color: Theme.secondary
                font.pixelSize: Theme.smallSize
                horizontalAlignment: content.isTall ? Text.AlignHCenter : Text.AlignLeft
            }
        }
    }

    implicitHeight: implicitContentHeight
    radius: Theme.cardRadius
    fill: Theme.surface
    edge: Theme.line
    Accessible.description: notice
    contentItem: Content {
        symbol: card.symbol
        text: card.text
        notice: card.notice
        isTall: card.isTall
    }
}
