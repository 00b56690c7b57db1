import QtQuick
import Anadrome

// What all buttons share: their looks, and the view behind them.
Operable {
    id: control

    property ButtonItem view: null
    property color fill: "transparent"
    property color hoveredFill: Theme.hovered
    property color ink: Theme.text
    property color ringInk: Theme.forward
    property color edge: "transparent"
    property string symbol
    property real radius: Theme.controlRadius
    // How far the ring lies outside: inside, if negative, where there is no room for it.
    property real ringReach: 3

    text: view ? view.title : ""
    enabled: view ? view.enabled : true
    opacity: view ? Theme.strength(view) : 1
    visible: view ? view.shown : true
    implicitHeight: Theme.touch
    implicitWidth: Math.max(Theme.touch, content.implicitWidth + 2 * Theme.gap)
    onClicked: if (view) view.tap()

    background: Rectangle {
        radius: control.radius
        color: control.down ? Theme.pressed(control.hoveredFill, control.ink)
                            : control.hovered ? control.hoveredFill : control.fill
        border.width: control.edge.a > 0 ? 1 : 0
        border.color: control.edge
        FocusRing {
            of: control
            reach: control.ringReach
            radius: control.radius + reach
            border.color: control.ringInk
        }
    }
    contentItem: Item {
        Row {
            id: content
            anchors.centerIn: parent
            spacing: Theme.near
            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: name !== ""
                name: control.symbol
                color: control.ink
                size: 20
            }
            Text {
                id: caption
                readonly property real room: control.width - Theme.gap - (control.symbol ? 28 : 0)
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                text: control.text
                width: room > 0 ? Math.min(implicitWidth, room) : implicitWidth
                color: control.ink
                font.pixelSize: Theme.textSize
                font.weight: Font.DemiBold
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.smallSize
                elide: Text.ElideRight
                textFormat: Text.PlainText
            }
        }
    }
}
