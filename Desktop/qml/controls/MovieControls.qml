import QtQuick
import Anadrome

// Play, time, seek and volume of a movie, on black.
Item {
    id: controls

    required property MoviePlayer movie
    // Where it runs backward and where forward, in its order: maps with "end", from 0 to 1, and "backward".
    property var stretches: []
    // The one that is shown.
    readonly property var present: stretches.find(stretch => movie.position <= stretch.end * movie.duration)
    property bool wasPlaying: false
    property bool isFull: false
    readonly property bool isWide: width >= 560
    // Whether there is a full screen to go to.
    property bool canFill: true

    signal fullToggled

    function colour(stretch) {
        return stretch.backward ? Theme.pictureBackward : Theme.pictureForward
    }
    function louder(steps) {
        movie.louder(steps)
        if (!isWide)
            word.restart()
    }
    component MovieButton: IconButton {
        anchors.verticalCenter: parent.verticalCenter
        ink: Theme.pictureInk
        hoveredFill: Theme.pictureHovered
    }
    implicitHeight: Theme.tall

    // In the order in which they are seen, which is that of the tab key.
    MovieButton {
        id: play
        objectName: "playButton"
        anchors { left: parent.left; leftMargin: Theme.near }
        name: Texts.of("PlayOrPause")
        symbol: controls.movie.playing ? "pause" : "play"
        onClicked: controls.movie.toggle()
    }
    SeekBar {
        objectName: "movieSeekBar"
        anchors { left: play.right; right: mute.left; margins: Theme.near
                  verticalCenter: parent.verticalCenter }
        to: controls.movie.duration
        value: controls.movie.position
        fill: controls.present ? controls.colour(controls.present) : Theme.pictureForward
        groove: Theme.pictureGroove
        stretches: controls.stretches.map(stretch => ({ end: stretch.end, color: controls.colour(stretch) }))
        ink: Theme.pictureSecondary
        onStepped: seconds => controls.movie.seek(controls.movie.position + seconds)
        onTaken: {
            controls.wasPlaying = controls.movie.playing
            controls.movie.pause()
        }
        onMoved: value => controls.movie.seek(value)
        onLetGo: if (controls.wasPlaying) controls.movie.toggle()
    }
    MovieButton {
        id: mute
        objectName: "muteButton"
        anchors.right: volume.left
        name: Texts.of(controls.movie.muted ? "Unmute" : "Mute")
        symbol: controls.movie.muted ? "mute" : "volume"
        onClicked: controls.movie.muted = !controls.movie.muted
        WheelHandler {
            onWheel: event => controls.louder(Math.sign(event.angleDelta.y))
        }
    }
    Slide {
        id: volume
        visible: controls.isWide
        width: visible ? 110 : 0
        anchors { right: full.left; verticalCenter: parent.verticalCenter }
        place: controls.movie.volume
        fill: Theme.pictureSecondary
        groove: Theme.pictureGroove
        knob: Theme.hudText
        isWheeled: true
        name: Texts.of("Volume")
        valueText: Math.round(place * 100) + "%"
        onStepped: steps => controls.louder(steps)
        onMoved: value => controls.movie.volume = value
    }
    MovieButton {
        id: full
        visible: controls.canFill
        width: visible ? implicitWidth : Theme.near
        objectName: "fullScreenButton"
        anchors { right: parent.right; rightMargin: Theme.near }
        name: Texts.of(controls.isFull ? "LeaveFullScreen" : "FullScreen")
        symbol: controls.isFull ? "full.leave" : "full"
        onClicked: controls.fullToggled()
    }
    // What was set where there is no room to see it.
    Pill {
        anchors { bottom: parent.top; bottomMargin: Theme.near; horizontalCenter: parent.horizontalCenter }
        visible: word.running
        text: volume.name + " " + volume.valueText
        Timer { id: word; interval: Theme.wordStays }
    }
}
