import QtQuick
import Anadrome

// The sign of work: its ring turns, or beats where nothing is to move, and its tick draws itself.
HudSign {
    id: sign

    // Whether anybody waits.
    property bool isBusy: true
    // How far the pie is.
    property real progress: 0
    property real drawn: 1

    readonly property bool isWaiting: isBusy && kind === "ring"

    part: kind === "tick" ? drawn : progress
    onIsWaitingChanged: {
        rotation = 0
        opacity = 1
    }
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
    NumberAnimation on drawn {
        running: sign.isBusy && sign.kind === "tick" && !Appearance.reducedMotion
        from: 0
        to: 1
        duration: Theme.appear
    }
}
