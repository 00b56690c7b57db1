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
    // Whether there is a full screen to go to.
    property bool canFill: true

    signal fullToggled

    function colour(stretch) {
        return stretch.backward ? Theme.pictureBackward : Theme.pictureForward
    }
    implicitHeight: 52

    IconButton {
        id: play
        objectName: "playButton"
        anchors { left: parent.left; leftMargin: Theme.near; verticalCenter: parent.verticalCenter }
        name: Texts.of("PlayOrPause")
        symbol: controls.movie.playing ? "pause" : "play"
        ink: Theme.pictureInk
        hoveredFill: Theme.pictureHovered
        onClicked: controls.movie.toggle()
    }
    SeekBar {
        objectName: "movieSeekBar"
        anchors { left: play.right; right: mute.left; margins: Theme.near; verticalCenter: parent.verticalCenter }
        to: controls.movie.duration
        value: controls.movie.position
        step: 0.5
        fill: controls.present ? controls.colour(controls.present) : Theme.pictureForward
        groove: Theme.pictureGroove
        stretches: controls.stretches.map(stretch => ({ end: stretch.end, color: controls.colour(stretch) }))
        ink: Theme.pictureSecondary
        onTaken: {
            controls.wasPlaying = controls.movie.playing
            controls.movie.pause()
        }
        onMoved: value => controls.movie.seek(value)
        onLetGo: if (controls.wasPlaying) controls.movie.toggle()
    }
    IconButton {
        id: full
        visible: controls.canFill
        width: visible ? implicitWidth : Theme.near
        objectName: "fullScreenButton"
        anchors { right: parent.right; rightMargin: Theme.near; verticalCenter: parent.verticalCenter }
        name: Texts.of("FullScreen")
        symbol: controls.isFull ? "full.leave" : "full"
        ink: Theme.pictureInk
        hoveredFill: Theme.pictureHovered
        onClicked: controls.fullToggled()
    }
    IconButton {
        id: mute
        anchors { right: volume.left; verticalCenter: parent.verticalCenter }
        name: Texts.of("Sound")
        symbol: controls.movie.muted ? "mute" : "volume"
        ink: Theme.pictureInk
        hoveredFill: Theme.pictureHovered
        onClicked: controls.movie.muted = !controls.movie.muted
    }
    Slide {
        id: volume
        visible: controls.width >= 560
        width: visible ? 110 : 0
        anchors { right: full.left; verticalCenter: parent.verticalCenter }
        value: controls.movie.volume
        fill: Theme.pictureSecondary
        groove: Theme.pictureGroove
        knob: Theme.hudText
        step: 0.05
        name: Texts.of("Volume")
        valueText: Math.round(value * 100) + "%"
        onMoved: value => controls.movie.volume = value
    }
}
