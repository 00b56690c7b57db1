import QtQuick
import Anadrome

// What was recorded, to be used or recorded anew.
Item {
    id: review

    required property CameraScreen screen
    required property RecordedClip clip

    PlayerPictures {
        anchors { fill: parent; bottomMargin: Theme.cameraFoot }
        view: review.clip.pictures
        TapHandler { onTapped: review.clip.player.toggle() }
    }
    Pill {
        anchors { top: parent.top; topMargin: Theme.edge + Theme.touch
                  horizontalCenter: parent.horizontalCenter }
        room: Math.min(review.width - 2 * Theme.edge, Theme.reviewWords)
        visible: text !== ""
        text: review.screen.notice
    }
    Column {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; bottomMargin: Theme.gap }
        spacing: Theme.near
        MovieControls {
            width: parent.width
            movie: review.clip.player
            canFill: false
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width - 2 * Theme.edge, Theme.reviewChoices)
            spacing: Theme.gap
            PushButton {
                objectName: "retakeButton"
                width: (parent.width - parent.spacing) / 2
                height: use.height
                radius: Theme.cardRadius
                text: Texts.of("Retake")
                fill: Theme.pictureGroove
                hoveredFill: Theme.pictureHovered
                ink: Theme.pictureInk
                onClicked: review.screen.retake()
            }
            PrimaryButton {
                id: use
                objectName: "useButton"
                width: (parent.width - parent.spacing) / 2
                text: Texts.of("UseClip")
                onClicked: review.screen.use()
            }
        }
    }
}
