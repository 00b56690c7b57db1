import QtQuick
import Anadrome

// The sign of work: a ring that turns, or beats where nothing is to move; a pie; a tick that draws itself.
Item {
    id: sign

    required property string kind
    // Whether anybody waits.
    property bool isBusy: true
    // How far the pie is.
    property real progress: 0
    property color color
    readonly property bool isWaiting: isBusy && kind === "ring"

    // Of its own, since what turned keeps the angle at which it was stopped.
    HudSign {
        anchors.fill: parent
        visible: sign.kind === "ring"
        kind: "ring"
        color: sign.color
        RotationAnimator on rotation {
            running: sign.isWaiting && !Appearance.reducedMotion
            from: 0
            to: 360
            duration: Theme.turn
            loops: Animation.Infinite
        }
        SequentialAnimation on opacity {
            running: sign.isWaiting && Appearance.reducedMotion
            loops: Animation.Infinite
            NumberAnimation { to: Theme.beatLow; duration: Theme.turn; easing.type: Easing.InOutSine }
            NumberAnimation { to: 1; duration: Theme.turn; easing.type: Easing.InOutSine }
        }
    }
    HudSign {
        id: still
        property real drawn: 1
        anchors.fill: parent
        visible: sign.kind !== "ring"
        kind: sign.kind
        part: kind === "tick" ? drawn : sign.progress
        color: sign.color
        NumberAnimation {
            target: still
            property: "drawn"
            running: sign.isBusy && sign.kind === "tick" && !Appearance.reducedMotion
            from: 0
            to: 1
            duration: Theme.appear
        }
    }
}
