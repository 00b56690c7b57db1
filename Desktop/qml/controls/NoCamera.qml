import QtQuick
import Anadrome

// Why there are no pictures, and what else can be done.
Column {
    id: column

    required property CameraScreen screen

    spacing: Theme.gap

    Icon {
        anchors.horizontalCenter: parent.horizontalCenter
        name: "camera"
        size: 56
        color: Theme.pictureSecondary
    }
    Label {
        objectName: "cameraNotice"
        width: parent.width
        text: column.screen.notice
        color: Theme.pictureInk
        horizontalAlignment: Text.AlignHCenter
    }
    Item { width: 1; height: Theme.near }
    PrimaryButton {
        objectName: "openFileButton"
        width: parent.width
        text: Texts.of("SelectFromFiles")
        symbol: "folder"
        onClicked: column.screen.openFile()
    }
    PushButton {
        objectName: "tryAgainButton"
        width: parent.width
        text: Texts.of("TryAgain")
        ink: Theme.pictureInk
        hoveredFill: Theme.pictureHovered
        onClicked: column.screen.retake()
    }
}
