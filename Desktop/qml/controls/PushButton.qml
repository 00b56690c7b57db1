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
    implicitWidth: Math.max(Theme.touch, implicitContentWidth + 2 * Theme.gap)
    onClicked: if (view) view.tap()

    background: Rectangle {
        radius: control.radius
        color: control.down ? Theme.pressed(control.hoveredFill, control.ink)
                            : control.hovered ? control.hoveredFill : control.fill
        border.width: control.edge.a > 0 ? 1 : 0
        border.color: control.edge
        FocusRing {
            shown: control.visualFocus
            reach: control.ringReach
            radius: control.radius + reach
            border.color: control.ringInk
        }
    }
    contentItem: ButtonContent {
        symbol: control.symbol
        text: control.text
        ink: control.ink
        room: control.width - Theme.gap
    }
}
