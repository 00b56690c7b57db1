import QtQuick
import QtQuick.Shapes
import Anadrome

Item {
    id: pie

    property real progress: 0

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: "transparent"
        border.width: 3
        border.color: Theme.hudAccent
    }
    Shape {
        anchors.fill: parent
        layer.enabled: true
        layer.samples: 4
        ShapePath {
            strokeWidth: -1
            fillColor: Theme.hudAccent
            startX: pie.width / 2
            startY: pie.height / 2
            PathAngleArc {
                centerX: pie.width / 2
                centerY: pie.height / 2
                radiusX: pie.width / 2 - 7
                radiusY: radiusX
                startAngle: -90
                sweepAngle: 360 * Math.min(1, pie.progress)
                moveToStart: false
            }
        }
    }
}
