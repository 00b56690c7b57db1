import QtQuick
import Anadrome

// Where a movie stands, with the time that has passed and the whole time at its ends.
Item {
    id: control

    property alias from: slide.from
    property alias to: slide.to
    property alias value: slide.place
    property alias fill: slide.fill
    property alias groove: slide.groove
    property alias stretches: slide.stretches
    property color ink: Theme.secondary

    signal taken
    signal moved(real value)
    signal letGo
    signal lost
    signal stepped(int steps)

    implicitHeight: Theme.touch

    FontMetrics { id: metrics; font: elapsed.font }
    Label {
        id: elapsed
        anchors.verticalCenter: parent.verticalCenter
        width: total.width
        text: Texts.clock(control.value - control.from)
        color: control.ink
        font.pixelSize: Theme.smallSize
    }
    Slide {
        id: slide
        anchors { left: elapsed.right; right: total.left; verticalCenter: parent.verticalCenter }
        isWheeled: true
        name: Texts.of("SeekBar")
        valueText: elapsed.text
        onTaken: control.taken()
        onMoved: value => control.moved(value)
        onLetGo: control.letGo()
        onLost: control.lost()
        onStepped: steps => control.stepped(steps)
    }
    Label {
        id: total
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        width: Math.ceil(Math.max(metrics.advanceWidth("00:00.0"), metrics.advanceWidth(text)))
        color: control.ink
        font.pixelSize: Theme.smallSize
        horizontalAlignment: Text.AlignRight
        text: Texts.clock(control.to - control.from)
    }
}
