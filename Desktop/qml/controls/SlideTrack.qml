import QtQuick
import Anadrome

// The looks of a Slide: its track, filled up to the thumb.
Item {
    id: looks

    // The slide.
    required property Item of
    property bool isPressed: false
    readonly property real part: of.to > of.from
                                 ? Math.min(1, Math.max(0, (of.place - of.from) / (of.to - of.from))) : 0
    // The middle of the thumb.
    readonly property real thumbAt: of.inset + part * track.width

    Rectangle {
        id: track
        x: looks.of.inset
        width: parent.width - 2 * looks.of.inset
        height: 4
        radius: 2
        anchors.verticalCenter: parent.verticalCenter
        color: looks.of.groove
        Rectangle {
            width: parent.width * looks.part
            height: parent.height
            radius: 2
            color: looks.of.fill
            visible: looks.of.stretches.length === 0
        }
        Repeater {
            model: looks.of.stretches
            Item {
                id: stretch
                required property int index
                required property var modelData
                readonly property real begin: index > 0 ? looks.of.stretches[index - 1].end : 0
                x: track.width * begin
                width: track.width * (modelData.end - begin)
                height: track.height
                Rectangle { anchors.fill: parent; radius: 2; color: stretch.modelData.color; opacity: 0.5 }
                Rectangle {
                    width: Math.min(parent.width, Math.max(0, track.width * looks.part - stretch.x))
                    height: parent.height
                    radius: 2
                    color: stretch.modelData.color
                }
            }
        }
    }
    Rectangle {
        visible: looks.of.isMarkedInMiddle
        width: 2
        height: 12
        radius: 1
        anchors.centerIn: parent
        color: looks.part >= 0.5 ? looks.of.fill : looks.of.groove
    }
    Rectangle {
        anchors.centerIn: thumb
        width: 34
        height: 34
        radius: height / 2
        color: looks.of.fill
        opacity: 0.2
        visible: looks.of.hovered || looks.isPressed
    }
    Rectangle {
        id: thumb
        width: 2 * looks.of.inset
        height: width
        radius: looks.of.inset
        x: looks.thumbAt - width / 2
        anchors.verticalCenter: parent.verticalCenter
        color: looks.of.knob
        border.width: looks.isPressed ? 6 : 4
        border.color: looks.of.fill
        FocusRing { of: looks.of; radius: thumb.radius + reach }
    }
}
