import QtQuick
import Anadrome

// Round while it would record, and a square while it would stop.
Operable {
    id: control

    property bool isRecording: false

    implicitWidth: Theme.recordSize
    implicitHeight: Theme.recordSize
    opacity: enabled ? 1 : Theme.recordOff
    text: Texts.of(isRecording ? "StopRecording" : "Record")
    Behavior on opacity { NumberAnimation { duration: Theme.appear } }

    background: Rectangle {
        radius: width / 2
        color: control.hovered || control.down ? Theme.pictureHovered : "transparent"
        border.width: Theme.recordEdge
        border.color: Theme.pictureInk
        FocusRing { shown: control.visualFocus; radius: width / 2 }
    }
    contentItem: Item {
        Rectangle {
            anchors.centerIn: parent
            width: control.isRecording ? Theme.stopSign : Theme.recordSign
            height: width
            radius: control.isRecording ? Theme.stopRadius : width / 2
            color: Theme.pictureRecord
            Behavior on width { NumberAnimation { duration: Theme.move; easing.type: Easing.OutCubic } }
            Behavior on radius { NumberAnimation { duration: Theme.move; easing.type: Easing.OutCubic } }
        }
    }
}
