import QtQuick
import Anadrome

Operable {
    id: control

    required property SwitchItem view

    implicitWidth: Theme.tall
    implicitHeight: Theme.touch
    enabled: view.enabled
    opacity: Theme.strength(view)
    checkable: true
    checked: view.on
    onClicked: {
        view.tap()
        // A click changes it here as well.
        checked = Qt.binding(() => view.on)
    }

    background: Item {
        Rectangle {
            readonly property color fill: control.view.on ? Theme.forward : Theme.off
            anchors.centerIn: parent
            width: 50
            height: 30
            radius: height / 2
            color: control.hovered || control.down ? Theme.pressed(fill, Theme.text) : fill
            Behavior on color { ColorAnimation { duration: Theme.appear } }
            // Around a switch of the ring's colour too.
            FocusRing { shown: control.visualFocus; reach: 4; radius: parent.radius + reach; border.color: Theme.text }
            Rectangle {
                width: 24
                height: 24
                radius: height / 2
                y: 3
                x: control.view.on ? parent.width - width - y : y
                color: control.view.on ? Theme.onKnob : Theme.knob
                Behavior on x { NumberAnimation { duration: Theme.move; easing.type: Easing.OutCubic } }
            }
        }
    }
}
