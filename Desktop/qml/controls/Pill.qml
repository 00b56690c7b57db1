import QtQuick
import Anadrome

// A few words over pictures.
Rectangle {
    id: pill

    property alias text: words.text
    // The text that the pill is wide enough for, so that it doesn't jump as numbers change.
    property string widest: text
    property bool hasDot: false
    property real room: 320

    implicitWidth: words.width + (hasDot ? dot.width + Theme.near : 0) + 2 * Theme.gap
    implicitHeight: words.implicitHeight + 2 * Theme.near
    radius: Math.min(height / 2, 18)
    color: Theme.pictureGroove

    TextMetrics { id: metrics; font: words.font; text: pill.widest }
    Rectangle {
        id: dot
        anchors { left: parent.left; leftMargin: Theme.gap; verticalCenter: parent.verticalCenter }
        visible: pill.hasDot
        width: 10
        height: 10
        radius: 5
        color: Theme.pictureRecord
    }
    Label {
        id: words
        anchors { right: parent.right; rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
        width: Math.min(Math.ceil(metrics.advanceWidth) + 1, pill.room - 2 * Theme.gap)
        horizontalAlignment: Text.AlignHCenter
        color: Theme.pictureInk
    }
}
