import QtQuick
import Anadrome

// A track with a thumb. It only tells what the hand does: what value holds is said from outside.
SlideTrack {
    id: control

    property real step: (to - from) / 100
    // Whether the wheel moves it: not where the wheel scrolls what it stands on.
    property bool isWheeled: false
    // Whether a double click means something; a click is then a move only when no second one follows.
    property bool isDoubleClicked: false
    property string name
    property string valueText

    // The hand takes the thumb, moves it, lets go, loses it.
    signal taken
    signal moved(real value)
    signal letGo
    signal lost
    signal doubleClicked
    // By keys, the wheel or a screen reader; negative steps lead backward.
    signal stepped(int steps)

    property bool isHeld: false
    property bool isByMouse: false

    function take() {
        pause.stop()
        if (isHeld)
            return
        isHeld = true
        taken()
    }
    function letGoNow() {
        pause.stop()
        if (!isHeld)
            return
        isHeld = false
        letGo()
    }
    function letGoIn(milliseconds) {
        pause.interval = milliseconds
        pause.restart()
    }
    // What comes in short order is one move of the hand.
    function reach(value) {
        take()
        moved(Math.min(to, Math.max(from, value)))
        letGoIn(Theme.keysRest)
    }

    isPressed: hand.pressed
    hovered: hand.containsMouse
    visualFocus: activeFocus && !isByMouse
    implicitHeight: Theme.touch
    implicitWidth: 200
    activeFocusOnTab: true
    onActiveFocusChanged: {
        if (activeFocus)
            return
        isByMouse = false
        letGoNow()
    }
    Keys.onPressed: event => {
        const moves = {
            [Qt.Key_Left]: () => stepped(-1),
            [Qt.Key_Down]: () => stepped(-1),
            [Qt.Key_Right]: () => stepped(1),
            [Qt.Key_Up]: () => stepped(1),
            [Qt.Key_PageDown]: () => stepped(-10),
            [Qt.Key_PageUp]: () => stepped(10),
            [Qt.Key_Home]: () => reach(from),
            [Qt.Key_End]: () => reach(to)
        }
        event.accepted = event.key in moves && !(event.modifiers & ~Qt.KeypadModifier)
        if (event.accepted)
            moves[event.key]()
    }

    // What screen readers ask for, by these names, and write.
    readonly property real minimumValue: from
    readonly property real maximumValue: to
    readonly property real stepSize: step
    property real value: place
    onValueChanged: {
        if (value === place)
            return
        const wanted = value
        value = Qt.binding(() => place)
        if (enabled)
            reach(wanted)
    }
    Accessible.role: Accessible.Slider
    Accessible.name: valueText ? name + ", " + valueText : name
    Accessible.focusable: true
    Accessible.onIncreaseAction: if (enabled) stepped(1)
    Accessible.onDecreaseAction: if (enabled) stepped(-1)

    Timer { id: pause; onTriggered: control.letGoNow() }

    WheelHandler {
        property real turned: 0
        readonly property real notch: 120
        enabled: control.isWheeled
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            turned += event.angleDelta.y || -event.angleDelta.x
            const steps = Math.trunc(turned / notch)
            turned -= steps * notch
            if (steps !== 0)
                control.stepped(steps)
        }
    }
    MouseArea {
        id: hand

        property real pressedAt: 0
        property real grip: 0
        property bool isMoving: false
        property bool isOver: false

        function show(x) {
            const part = (x - grip - control.inset) / (width - 2 * control.inset)
            control.take()
            control.moved(control.from + Math.min(1, Math.max(0, part)) * (control.to - control.from))
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: mouse => {
            control.isByMouse = true
            control.forceActiveFocus(Qt.MouseFocusReason)
            pause.stop()
            isMoving = false
            isOver = false
            pressedAt = mouse.x
            const distance = mouse.x - control.thumbAt
            const isOnThumb = Math.abs(distance) <= 2 * control.inset
            grip = isOnThumb ? distance : 0
            if (isOnThumb)
                control.take()
            else
                show(mouse.x)
        }
        onPositionChanged: mouse => {
            if (!pressed || isOver || !isMoving && Math.abs(mouse.x - pressedAt) < drag.threshold)
                return
            isMoving = true
            show(mouse.x)
        }
        onReleased: {
            if (control.isDoubleClicked && !isMoving)
                control.letGoIn(Application.styleHints.mouseDoubleClickInterval)
            else
                control.letGoNow()
        }
        onCanceled: {
            if (!control.isHeld)
                return
            control.isHeld = false
            control.lost()
        }
        onDoubleClicked: {
            if (!control.isDoubleClicked)
                return
            // What the second click still moves is no drag.
            isOver = true
            control.isHeld = false
            control.doubleClicked()
        }
    }
}
