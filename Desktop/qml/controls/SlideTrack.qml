pragma ComponentBehavior: Bound
import QtQuick
import Anadrome

// The looks of a slider: a track, filled up to the thumb.
Item {
    id: looks

    property real from: 0
    property real to: 1
    // The value that is shown.
    property real place: 0
    property color fill: Theme.backward
    property color groove: Theme.groove
    property color knob: Theme.knob
    // Parts of the track in colors of their own: maps with "end", from 0 to 1, and "color".
    property var stretches: []
    property bool isMarkedInMiddle: false
    property bool isPressed: false
    property bool hovered: false
    // Focus ring, for keyboard users only.
    property bool visualFocus: false
    readonly property real inset: 11
    readonly property real part: to > from ? Math.min(1, Math.max(0, (place - from) / (to - from))) : 0
    // The middle of the thumb.
    readonly property real thumbAt: inset + part * track.width

    Rectangle {
        id: track
        x: looks.inset
        width: parent.width - 2 * looks.inset
        height: 4
        radius: 2
        anchors.verticalCenter: parent.verticalCenter
        color: looks.groove
        Rectangle {
            width: parent.width * looks.part
            height: parent.height
            radius: 2
            color: looks.fill
            visible: looks.stretches.length === 0
        }
        Repeater {
            model: looks.stretches
            Item {
                id: stretch
                required property int index
                required property var modelData
                readonly property real begin: index > 0 ? looks.stretches[index - 1].end : 0
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
        visible: looks.isMarkedInMiddle
        width: 2
        height: 12
        radius: 1
        anchors.centerIn: parent
        color: looks.part >= 0.5 ? looks.fill : looks.groove
    }
    Rectangle {
        anchors.centerIn: thumb
        width: 34
        height: 34
        radius: height / 2
        color: looks.fill
        opacity: 0.2
        visible: looks.hovered || looks.isPressed
    }
    Rectangle {
        id: thumb
        width: 2 * looks.inset
        height: width
        radius: looks.inset
        x: looks.thumbAt - width / 2
        anchors.verticalCenter: parent.verticalCenter
        color: looks.knob
        border.width: looks.isPressed ? 6 : 4
        border.color: looks.fill
        FocusRing { shown: looks.visualFocus; radius: thumb.radius + reach }
    }
}
