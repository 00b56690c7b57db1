import QtQuick
import QtQuick.Shapes
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

        Item {
            id: sign
            width: 64
            height: 64
            anchors.horizontalCenter: parent.horizontalCenter
            y: words.visible ? 32 : 48
            HudPie {
                anchors.fill: parent
                visible: overlay.hud.kind === "pie"
                progress: overlay.hud.progress
            }
            HudRing {
                anchors.fill: parent
                visible: overlay.hud.kind === "ring"
                isTurning: visible && overlay.hud.visible
            }
            HudTick {
                anchors.fill: parent
                visible: overlay.hud.kind === "tick"
                isDrawn: visible && overlay.hud.visible
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
