pragma ComponentBehavior: Bound
import QtQuick
import Anadrome

// Records a clip, and shows it before it is used.
FocusScope {
    id: camera

    required property CameraScreen screen
    readonly property bool isOn: screen.state === CameraScreen.Live || isRecording
    readonly property bool isRecording: screen.state === CameraScreen.Recording

    focus: true
    Keys.onSpacePressed: screen.shutter()
    Accessible.role: Accessible.Dialog
    Accessible.name: Texts.of("CaptureVideo")

    Rectangle { anchors.fill: parent; color: Theme.stage }
    Pictures {
        objectName: "livePictures"
        anchors { fill: parent; bottomMargin: Theme.cameraFoot }
        aspect: camera.screen.live.aspect
        onOutputReady: (sink, pixels) => camera.screen.live.showOn(sink, pixels)
        onOutputGone: camera.screen.live.leave()
        opacity: camera.isOn ? 1 : 0
        Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
    }
    Label {
        anchors.centerIn: parent
        visible: camera.screen.state === CameraScreen.Waiting
        text: camera.screen.notice
        color: Theme.pictureSecondary
    }
    // A delegate keeps its clip to its end, which comes after the screen has let go of it.
    Repeater {
        model: camera.screen.clip ? [camera.screen.clip] : []
        ClipReview {
            required property RecordedClip modelData
            width: camera.width
            height: camera.height
            screen: camera.screen
            clip: modelData
        }
    }
    NoCamera {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.edge, Theme.cameraWords)
        visible: camera.screen.state === CameraScreen.NoCamera
        screen: camera.screen
    }

    IconButton {
        id: close
        objectName: "closeButton"
        x: Theme.gap
        y: Theme.gap
        name: Texts.of("Close")
        symbol: "close"
        ink: Theme.pictureInk
        fill: Theme.sign
        hoveredFill: Theme.pictureGroove
        radius: width / 2
        onClicked: camera.screen.close()
    }
    Pill {
        anchors { verticalCenter: close.verticalCenter; horizontalCenter: parent.horizontalCenter }
        visible: camera.isRecording
        hasDot: true
        text: Texts.clock(camera.screen.elapsed)
        widest: "00:00.0"
    }
    Item {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: Theme.cameraFoot
        visible: camera.isOn || camera.screen.state === CameraScreen.Waiting

        RecordButton {
            objectName: "recordButton"
            anchors.centerIn: parent
            enabled: camera.isOn
            isRecording: camera.isRecording
            onClicked: camera.screen.shutter()
        }
        IconButton {
            objectName: "switchCameraButton"
            anchors { right: parent.right; rightMargin: Theme.edge; verticalCenter: parent.verticalCenter }
            visible: camera.screen.canSwitch
            name: Texts.of("SwitchCamera")
            symbol: "switch"
            ink: Theme.pictureInk
            hoveredFill: Theme.pictureHovered
            onClicked: camera.screen.switchCamera()
        }
    }
}
