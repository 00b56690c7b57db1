import QtQuick
import QtMultimedia
import Anadrome

// The pictures of a player or a camera in their own shape, as large as there is room, on black.
Rectangle {
    id: control

    // What gives them: has their aspect, and the operations showOn and leave.
    required property QtObject view
    // Whether anybody can see them.
    property bool isSeen: true

    function join() {
        if (isSeen && output.width > 0 && output.height > 0)
            view.showOn(output.videoSink, Qt.size(output.width * Screen.devicePixelRatio,
                                                  output.height * Screen.devicePixelRatio))
        else
            view.leave()
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
        width: Math.round(room > control.view.aspect ? control.height * control.view.aspect : control.width)
        height: Math.round(room > control.view.aspect ? control.height : control.width / control.view.aspect)
        fillMode: VideoOutput.Stretch
        onWidthChanged: settled.restart()
        onHeightChanged: settled.restart()
    }
}
