import QtQuick
import QtQuick.Templates as T
import Anadrome

T.AbstractButton {
    id: control

    required property SwitchItem view

    implicitWidth: 52
    implicitHeight: Theme.touch
    focusPolicy: Qt.TabFocus
    enabled: view.enabled
    opacity: view.alpha
    onClicked: view.tap()
    Keys.onReturnPressed: clicked()
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: view.on

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: 50
            height: 30
            radius: 15
            color: control.view.on ? Theme.forward : Theme.off
            Behavior on color { ColorAnimation { duration: Theme.appear } }
            FocusRing { of: control; radius: 18 }
            Rectangle {
                width: 24
                height: 24
                radius: 12
                y: 3
                x: control.view.on ? 23 : 3
                color: Theme.pictureInk
                Behavior on x { NumberAnimation { duration: Theme.move; easing.type: Easing.OutCubic } }
            }
        }
    }
}
