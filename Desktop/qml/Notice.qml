import QtQuick
import Anadrome

// Something told in passing. Goes by itself, and takes no touches.
Rectangle {
    id: notice

    function show(text) {
        words.text = text
        opacity = 1
        staying.restart()
    }

    width: Math.min(words.implicitWidth, parent.width - 4 * Theme.edge) + 2 * Theme.edge
    height: words.height + 2 * Theme.gap
    radius: Theme.cardRadius
    color: Theme.hudCard
    opacity: 0
    visible: opacity > 0
    Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
    Accessible.role: Accessible.AlertMessage
    Accessible.name: words.text

    Timer {
        id: staying
        interval: Theme.noticeStays
        onTriggered: notice.opacity = 0
    }
    Text {
        id: words
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.edge
        color: Theme.hudText
        font.pixelSize: Theme.textSize
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
    }
}
