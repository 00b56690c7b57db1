import QtQuick
import Anadrome

// One speed: what runs at it, the factor, and the slider below.
Item {
    id: control

    required property SliderItem view
    required property LabelItem caption
    required property LabelItem factor
    property color fill: Theme.backward
    property string glyph

    function reset() {
        view.put(SpeedScale.usual)
    }

    implicitHeight: words.height + slide.height + Theme.near

    Item {
        id: words
        width: parent.width
        height: Math.max(name.implicitHeight, number.implicitHeight)
        Text {
            id: sign
            text: control.glyph
            color: control.fill
            opacity: Theme.strength(control.caption)
            font.pixelSize: Theme.textSize
            anchors.baseline: name.baseline
            Accessible.ignored: true
        }
        Label {
            id: name
            view: control.caption
            anchors { left: sign.right; leftMargin: Theme.near; right: number.left; rightMargin: Theme.near }
        }
        Label {
            id: number
            view: control.factor
            anchors { right: parent.right; baseline: name.baseline }
            font.weight: Font.DemiBold
            TapHandler { onDoubleTapped: if (control.view.enabled) control.reset() }
        }
    }
    Slide {
        id: slide
        anchors { top: words.bottom; left: parent.left; right: parent.right }
        from: control.view.from
        to: control.view.to
        place: control.view.value
        fill: control.fill
        opacity: Theme.strength(control.view)
        // As one picture, or the track would be seen through the thumb.
        layer.enabled: opacity < 1
        enabled: control.view.enabled
        isMarkedInMiddle: true
        isDoubleClicked: true
        name: control.caption.text
        valueText: control.factor.text
        onStepped: steps => reach(SpeedScale.after(place, steps))
        onTaken: control.view.press()
        onMoved: value => control.view.moveTo(value)
        onLetGo: control.view.release()
        onLost: control.view.cancel()
        onDoubleClicked: control.reset()
    }
    Label {
        anchors { horizontalCenter: slide.horizontalCenter; bottom: parent.bottom }
        text: "1.0x"
        color: Theme.secondary
        opacity: Theme.strength(control.caption)
        font.pixelSize: Theme.smallSize
        Accessible.ignored: true
    }
}
