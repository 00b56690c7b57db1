import QtQuick
import QtQuick.Shapes
import Anadrome

// A tick that draws itself.
Shape {
    id: tick

    property bool isDrawn: false
    property real done: 0

    function along(start, end, from, to) {
        return start + (end - start) * Math.min(1, Math.max(0, (done - from) / (to - from)))
    }

    layer.enabled: true
    layer.samples: 4
    onIsDrawnChanged: if (isDrawn) drawing.restart()
    NumberAnimation { id: drawing; target: tick; property: "done"; from: 0; to: 1; duration: 200 }
    ShapePath {
        strokeWidth: 6
        strokeColor: Theme.hudAccent
        fillColor: "transparent"
        capStyle: ShapePath.RoundCap
        joinStyle: ShapePath.RoundJoin
        startX: 8
        startY: 34
        PathLine { x: tick.along(8, 26, 0, 0.35); y: tick.along(34, 51, 0, 0.35) }
        PathLine {
            x: tick.done < 0.35 ? tick.along(8, 26, 0, 0.35) : tick.along(26, 56, 0.35, 1)
            y: tick.done < 0.35 ? tick.along(34, 51, 0, 0.35) : tick.along(51, 15, 0.35, 1)
        }
    }
}
