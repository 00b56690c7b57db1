import QtQuick
import Anadrome

// What was recorded, to be used or recorded anew.
Item {
    id: review

    required property CameraScreen screen
    required property RecordedClip clip
    property real footHeight: 136

    Pictures {
        anchors { fill: parent; bottomMargin: review.footHeight }
        view: review.clip.pictures
        TapHandler { onTapped: review.clip.player.toggle() }
    }
    Pill {
        anchors { top: parent.top; topMargin: Theme.edge + Theme.touch; horizontalCenter: parent.horizontalCenter }
        room: Math.min(review.width - 2 * Theme.edge, 560)
        visible: text !== ""
        text: review.screen.notice
    }
    Column {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; bottomMargin: Theme.gap }
        spacing: Theme.near
        MovieControls {
            width: parent.width
            movie: review.clip.player
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width - 2 * Theme.edge, 520)
            spacing: 12
            PushButton {
                objectName: "retakeButton"
                width: (parent.width - parent.spacing) / 2
                height: 52
                radius: Theme.cardRadius
                text: Texts.of("Retake")
                fill: Theme.pictureGroove
                hoveredFill: Theme.pictureHovered
                ink: Theme.pictureInk
                onClicked: review.screen.retake()
            }
            PrimaryButton {
                objectName: "useButton"
                width: (parent.width - parent.spacing) / 2
                text: Texts.of("UseClip")
                onClicked: review.screen.use()
            }
        }
    }
}
