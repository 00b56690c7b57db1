import QtQuick
import Anadrome

// The finished movie, and what to do with it.
FocusScope {
    id: preview

    required property PreviewScreen screen
    required property DesktopHost host
    property bool isSeen: true
    readonly property bool isWide: width >= Theme.wideFrom
    readonly property MoviePlayer movie: screen.player

    readonly property bool isFull: Window.visibility === Window.FullScreen
    // Nothing but the movie is of interest.
    readonly property bool isWatched: isFull && movie.playing && !stir.running
    property int visibilityBefore: Window.Windowed

    function toggleFull() {
        const window = preview.Window.window
        if (isFull) {
            window.visibility = visibilityBefore
        } else {
            visibilityBefore = window.visibility
            window.visibility = Window.FullScreen
        }
    }

    focus: true
    onIsFullChanged: stir.restart()
    Keys.onEscapePressed: event => {
        if (isFull)
            toggleFull()
        else
            event.accepted = false
    }
    Keys.onPressed: event => {
        stir.restart()
        const once = deed => { if (!event.isAutoRepeat) deed() }
        const deeds = {
            [Qt.Key_Space]: () => once(() => movie.toggle()),
            [Qt.Key_Left]: () => movie.seek(movie.position - 1),
            [Qt.Key_Right]: () => movie.seek(movie.position + 1),
            [Qt.Key_Up]: () => controls.louder(1),
            [Qt.Key_Down]: () => controls.louder(-1),
            [Qt.Key_F]: () => once(() => toggleFull()),
            [Qt.Key_F11]: () => once(() => toggleFull())
        }
        event.accepted = event.key in deeds && !(event.modifiers & ~Qt.KeypadModifier)
        if (event.accepted)
            deeds[event.key]()
    }
    Connections {
        target: preview.Window.window
        function onActiveFocusItemChanged() { stir.restart() }
    }
    Timer { id: stir; interval: Theme.controlsStay }
    onIsSeenChanged: {
        if (isSeen)
            return
        movie.pause()
        if (isFull)
            toggleFull()
    }

    ScreenBar {
        id: bar
        width: parent.width
        visible: !preview.isFull
        host: preview.host
        title: Texts.of("PreviewTitle")
    }

    Rectangle {
        id: stage
        anchors { left: parent.left; top: preview.isFull ? parent.top : bar.bottom
                  bottom: preview.isWide || preview.isFull ? parent.bottom : doings.top
                  right: preview.isWide && !preview.isFull ? doings.left : parent.right }
        color: Theme.stage

        HoverHandler {
            cursorShape: preview.isWatched ? Qt.BlankCursor : Qt.ArrowCursor
            // The point changes with each new picture as well.
            readonly property point at: point.scenePosition
            onAtChanged: stir.restart()
        }
        PlayerPictures {
            objectName: "moviePlayer"
            anchors { left: parent.left; right: parent.right; top: parent.top
                      bottom: preview.isFull ? parent.bottom : controls.top }
            view: preview.screen.moviePlayer
            isSeen: preview.isSeen
            // The halves of a double tap undo each other.
            TapHandler {
                onTapped: preview.movie.toggle()
                onDoubleTapped: preview.toggleFull()
            }
        }
        Rectangle {
            anchors.fill: controls
            visible: preview.isFull
            opacity: controls.opacity
            color: Theme.badge
        }
        MovieControls {
            id: controls
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            movie: preview.movie
            stretches: preview.screen.stretches
            isFull: preview.isFull
            onFullToggled: preview.toggleFull()
            opacity: preview.isWatched ? 0 : 1
            Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
        }
    }

    Item {
        id: doings
        visible: !preview.isFull
        anchors { right: parent.right; bottom: parent.bottom; top: preview.isWide ? bar.bottom : undefined }
        width: preview.isWide ? Theme.controlColumn : parent.width
        height: preview.isWide ? undefined : ways.implicitHeight + 2 * Theme.edge

        Column {
            id: ways
            x: (parent.width - width) / 2
            y: Theme.edge
            width: Math.min(parent.width - 2 * Theme.edge, Theme.column)
            spacing: Theme.gap
            Row {
                width: parent.width
                spacing: Theme.between
                PrimaryButton {
                    objectName: "saveButton"
                    width: (parent.width - parent.spacing) / 2
                    view: preview.screen.saveButton
                    symbol: "save"
                }
                QuietButton {
                    objectName: "shareButton"
                    width: (parent.width - parent.spacing) / 2
                    height: Theme.tall
                    radius: Theme.cardRadius
                    view: preview.screen.shareButton
                    symbol: "square.and.arrow.up"
                }
            }
            Row {
                width: parent.width
                spacing: Theme.between
                PushButton {
                    objectName: "selectOtherVideoButton"
                    width: (parent.width - parent.spacing) / 2
                    view: preview.screen.selectOtherVideoButton
                    ink: Theme.secondary
                }
                PushButton {
                    objectName: "shareAppButton"
                    width: (parent.width - parent.spacing) / 2
                    view: preview.screen.shareAppButton
                    ink: Theme.secondary
                }
            }
        }
    }
}
