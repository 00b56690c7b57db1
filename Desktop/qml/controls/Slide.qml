import QtQuick
import Anadrome

// A track with a thumb. It only tells what the hand does: what value holds is said from outside.
Item {
    id: control

    property real from: 0
    property real to: 1
    property real value: 0
    property real step: (to - from) / 100
    property color fill: Theme.backward
    property color groove: Theme.groove
    property color knob: Theme.knob
    // Parts of the track in colours of their own: maps with "end", from 0 to 1, and "color"; none for one colour.
    property var stretches: []
    property bool isMarkedInMiddle: false
    property string name
    property string valueText
    readonly property bool visualFocus: activeFocus && isByKeys
    property bool isByKeys: true

    // The hand takes the thumb, moves it, lets go, loses it.
    signal taken
    signal moved(real value)
    signal letGo
    signal lost
    signal doubleClicked

    readonly property real part: to > from ? Math.min(1, Math.max(0, (value - from) / (to - from))) : 0
    readonly property real inset: 11

    // Several key presses are one move of the hand.
    function nudge(steps) {
        if (!keyHold.running)
            taken()
        keyHold.restart()
        moved(Math.min(to, Math.max(from, value + steps * step)))
    }
    function endNudge() {
        if (!keyHold.running)
            return
        keyHold.stop()
        letGo()
    }

    implicitHeight: Theme.touch
    implicitWidth: 200
    activeFocusOnTab: enabled
    onActiveFocusChanged: if (!activeFocus) endNudge()
    Keys.onLeftPressed: nudge(-1)
    Keys.onRightPressed: nudge(1)
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_PageUp && event.key !== Qt.Key_PageDown)
            return
        nudge(event.key === Qt.Key_PageUp ? 10 : -10)
        event.accepted = true
    }
    Accessible.role: Accessible.Slider
    Accessible.name: valueText ? name + ", " + valueText : name
    Accessible.focusable: true
    Accessible.onIncreaseAction: nudge(1)
    Accessible.onDecreaseAction: nudge(-1)

    Timer { id: keyHold; interval: 700; onTriggered: control.letGo() }

    Rectangle {
        id: track
        x: control.inset
        width: parent.width - 2 * control.inset
        height: 4
        radius: 2
        anchors.verticalCenter: parent.verticalCenter
        color: control.groove
        Rectangle {
            width: parent.width * control.part
            height: parent.height
            radius: 2
            color: control.fill
            visible: control.stretches.length === 0
        }
        Repeater {
            model: control.stretches
            Item {
                id: stretch
                required property int index
                required property var modelData
                readonly property real begin: index > 0 ? control.stretches[index - 1].end : 0
                x: track.width * begin
                width: track.width * (modelData.end - begin)
                height: track.height
                Rectangle { anchors.fill: parent; radius: 2; color: stretch.modelData.color; opacity: 0.4 }
                Rectangle {
                    width: Math.min(parent.width, Math.max(0, track.width * control.part - stretch.x))
                    height: parent.height
                    radius: 2
                    color: stretch.modelData.color
                }
            }
        }
    }
    Rectangle {
        visible: control.isMarkedInMiddle
        width: 2
        height: 12
        radius: 1
        anchors.centerIn: parent
        color: control.part >= 0.5 ? control.fill : control.groove
    }
    Rectangle {
        id: thumb
        width: 22
        height: 22
        radius: 11
        x: control.part * track.width
        anchors.verticalCenter: parent.verticalCenter
        color: control.knob
        border.width: hand.pressed ? 6 : 4
        border.color: control.fill
        FocusRing { of: control; radius: 14 }
    }
    MouseArea {
        id: hand

        property real grip: 0
        property bool isMoving: false

        function valueAt(x) {
            return control.from + Math.min(1, Math.max(0, (x - grip - control.inset) / track.width))
                   * (control.to - control.from)
        }
        function begin() {
            if (isMoving)
                return
            isMoving = true
            control.taken()
        }

        anchors.fill: parent
        preventStealing: true
        onPressed: mouse => {
            const centre = thumb.x + control.inset
            const isOnThumb = Math.abs(mouse.x - centre) <= thumb.width
            grip = isOnThumb ? mouse.x - centre : 0
            if (isOnThumb)
                return
            begin()
            control.moved(valueAt(mouse.x))
        }
        onPositionChanged: mouse => {
            begin()
            control.moved(valueAt(mouse.x))
        }
        onReleased: if (isMoving) { isMoving = false; control.letGo() }
        onCanceled: if (isMoving) { isMoving = false; control.lost() }
        onDoubleClicked: control.doubleClicked()
    }
}
