import QtQuick
import QtQuick.Shapes
import Anadrome

Shape {
    id: ring

    property bool isTurning: false

    layer.enabled: true
    layer.samples: 4
    ShapePath {
        strokeWidth: 5
        strokeColor: Theme.hudAccent
        fillColor: "transparent"
        capStyle: ShapePath.RoundCap
        PathAngleArc {
            centerX: ring.width / 2
            centerY: ring.height / 2
            radiusX: ring.width / 2 - 4
            radiusY: radiusX
            startAngle: 0
            sweepAngle: 270
        }
    }
    RotationAnimator on rotation {
        running: ring.isTurning
        from: 0
        to: 360
        duration: 1000
        loops: Animation.Infinite
    }
}
