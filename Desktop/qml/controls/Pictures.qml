import QtQuick
import QtMultimedia
import Anadrome

// The pictures of a player or a camera in their own shape, as large as there is room, on black.
Rectangle {
    id: control

    // Width by height of the upright pictures.
    required property real aspect
    // Whether anybody can see them.
    property bool isSeen: true

    // Pictures are to come to the sink, in that many pixels; or none any more.
    signal outputReady(VideoSink sink, size pixels)
    signal outputGone

    function join() {
        if (isSeen && output.width > 0 && output.height > 0)
            outputReady(output.videoSink, Qt.size(output.width * Screen.devicePixelRatio,
                                                    output.height * Screen.devicePixelRatio))
        else
            outputGone()
    }

    color: Theme.stage
    clip: true
    onIsSeenChanged: join()
    Component.onCompleted: join()

    // A window that is dragged by its edge changes its size many times.
    Timer { id: settled; interval: Theme.edgeRests; onTriggered: control.join() }

    VideoOutput {
        id: output
        readonly property real room: control.height > 0 ? control.width / control.height : 1
        anchors.centerIn: parent
        width: Math.round(room > control.aspect ? control.height * control.aspect : control.width)
        height: Math.round(room > control.aspect ? control.height : control.width / control.aspect)
        fillMode: VideoOutput.Stretch
        onWidthChanged: settled.restart()
        onHeightChanged: settled.restart()
    }
}
