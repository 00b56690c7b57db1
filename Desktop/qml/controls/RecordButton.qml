import QtQuick
import QtQuick.Templates as T
import Anadrome

// Round while it would record, and a square while it would stop.
T.AbstractButton {
    id: control

    property bool isRecording: false

    implicitWidth: 76
    implicitHeight: 76
    opacity: enabled ? 1 : 0.4
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    text: Texts.of(isRecording ? "StopRecording" : "Record")
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.name: text
    Behavior on opacity { NumberAnimation { duration: Theme.appear } }

    background: Rectangle {
        radius: width / 2
        color: control.hovered || control.down ? Theme.pictureHovered : "transparent"
        border.width: 4
        border.color: Theme.pictureInk
        FocusRing { of: control; radius: width / 2 }
    }
    contentItem: Item {
        Rectangle {
            anchors.centerIn: parent
            width: control.isRecording ? 30 : 58
            height: width
            radius: control.isRecording ? 6 : width / 2
            color: Theme.pictureRecord
            Behavior on width { NumberAnimation { duration: Theme.move; easing.type: Easing.OutCubic } }
            Behavior on radius { NumberAnimation { duration: Theme.move; easing.type: Easing.OutCubic } }
        }
    }
}
