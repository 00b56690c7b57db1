import QtQuick
import Anadrome

// The busy overlay: a card over a veil that takes all touches and keys meant for what lies beneath, and a
// button that stops a job.
FocusScope {
    id: overlay

    required property Hud hud
    required property JobWatch job
    readonly property int percent: Math.floor(hud.progress * 100)
    // What a screen reader hears: every ten points.
    readonly property int spokenPercent: percent - percent % 10

    onEnabledChanged: if (enabled) forceActiveFocus()
    Keys.onEscapePressed: event => { if (!event.isAutoRepeat) job.stop() }
    opacity: hud.visible ? 1 : 0
    visible: opacity > 0
    Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
    Accessible.role: hud.kind === "pie" ? Accessible.ProgressBar : Accessible.Indicator
    // All in the name, which is read out as the keyboard comes here and whenever it changes.
    Accessible.name: Texts.of(hud.kind === "tick" ? "Done" : "Working")
                     + (hud.kind === "pie" ? " " + spokenPercent + "%" : "")
    Accessible.focusable: true
    Accessible.focused: activeFocus

    Rectangle { anchors.fill: parent; color: Theme.veil }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        id: card
        readonly property color opaque: overlay.hud.light ? Theme.hudLightCard : Theme.hudCard
        readonly property color ink: overlay.hud.light ? Theme.hudLightText : Theme.hudText
        anchors.centerIn: parent
        width: Theme.hudSide
        height: width
        radius: width / 2
        color: overlay.hud.vibrant ? Qt.alpha(opaque, Theme.vibrant) : opaque

        BusySign {
            id: sign
            width: Theme.hudSign
            height: width
            anchors.horizontalCenter: parent.horizontalCenter
            y: words.visible ? Theme.gap * 2 : Theme.gap * 3
            kind: overlay.hud.kind
            isBusy: overlay.hud.visible
            progress: overlay.hud.progress
            color: overlay.hud.light ? Theme.hudLightAccent : Theme.hudAccent
        }
        Text {
            id: words
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.top: sign.bottom
            anchors.topMargin: Theme.near
            visible: text !== ""
            text: overlay.hud.text + (overlay.hud.text && overlay.hud.detail ? "\n" : "") + overlay.hud.detail
            horizontalAlignment: Text.AlignHCenter
            color: card.ink
            font.pixelSize: Theme.headSize
            font.weight: Font.DemiBold
        }
    }
    PushButton {
        id: stop
        objectName: "stopButton"
        anchors { horizontalCenter: card.horizontalCenter; top: card.bottom; topMargin: Theme.gap }
        enabled: overlay.job.running
        opacity: overlay.job.running ? 1 : 0
        visible: opacity > 0
        Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
        text: Texts.of("Stop")
        radius: height / 2
        fill: card.opaque
        hoveredFill: Theme.pressed(card.opaque, card.ink)
        ink: card.ink
        ringInk: card.ink
        ringReach: -4
        onClicked: overlay.job.stop()
        Connections {
            target: overlay.job
            // A key that is still held from the tap on Create doesn't stop the next job.
            function onRunningChanged() { stop.focus = false }
        }
    }
}
