import QtQuick
import Anadrome

// The busy overlay: a card over a veil that takes all touches and keys meant for what lies beneath.
Rectangle {
    id: overlay

    required property Hud hud
    readonly property int percent: Math.floor(hud.progress * 100)
    // What a screen reader hears: every ten points.
    readonly property int spokenPercent: percent - percent % 10

    color: Theme.veil
    opacity: hud.visible ? 1 : 0
    visible: opacity > 0
    Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
    Accessible.role: hud.kind === "pie" ? Accessible.ProgressBar : Accessible.Indicator
    Accessible.name: Texts.of(hud.kind === "tick" ? "Done" : "Working")
    Accessible.description: hud.kind === "pie" ? spokenPercent + "%" : ""

    MouseArea {
        anchors.fill: parent
        enabled: overlay.hud.visible
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        anchors.centerIn: parent
        width: 160
        height: 160
        radius: 80
        color: Theme.hudCard

        HudSign {
            id: sign
            property real drawn: 0
            width: 64
            height: 64
            anchors.horizontalCenter: parent.horizontalCenter
            y: words.visible ? 32 : 48
            kind: overlay.hud.kind
            part: kind === "tick" ? drawn : overlay.hud.progress
            color: Theme.hudAccent
            onKindChanged: rotation = 0
            RotationAnimator on rotation {
                running: sign.kind === "ring" && overlay.hud.visible
                from: 0
                to: 360
                duration: 1000
                loops: Animation.Infinite
            }
            NumberAnimation on drawn {
                running: sign.kind === "tick" && overlay.hud.visible
                from: 0
                to: 1
                duration: 200
            }
        }
        Text {
            id: words
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.top: sign.bottom
            anchors.topMargin: Theme.near
            visible: text !== ""
            text: [overlay.hud.text, overlay.hud.detail].filter(line => line !== "").join("\n")
            horizontalAlignment: Text.AlignHCenter
            color: Theme.hudText
            font.pixelSize: Theme.headSize
            font.weight: Font.DemiBold
        }
    }
}
