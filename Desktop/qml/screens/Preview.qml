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

    focus: true
    readonly property bool isFull: Window.visibility === Window.FullScreen

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

    Keys.onSpacePressed: movie.toggle()
    Keys.onEscapePressed: event => {
        if (isFull)
            toggleFull()
        else
            event.accepted = false
    }
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_F || event.key === Qt.Key_F11
        if (event.accepted)
            toggleFull()
    }
    Keys.onLeftPressed: movie.seek(movie.position - 1)
    Keys.onRightPressed: movie.seek(movie.position + 1)
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

        Pictures {
            objectName: "moviePlayer"
            anchors { left: parent.left; right: parent.right; top: parent.top; bottom: controls.top }
            view: preview.screen.view("moviePlayer")
            isSeen: preview.isSeen
            TapHandler {
                onTapped: preview.movie.toggle()
                onDoubleTapped: preview.toggleFull()
            }
        }
        MovieControls {
            id: controls
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            movie: preview.movie
            stretches: preview.screen.stretches
            isFull: preview.isFull
            onFullToggled: preview.toggleFull()
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
            width: Math.min(parent.width - 2 * Theme.edge, 520)
            spacing: Theme.gap
            Row {
                width: parent.width
                spacing: 12
                PrimaryButton {
                    objectName: "saveButton"
                    width: (parent.width - parent.spacing) / 2
                    view: preview.screen.view("saveButton")
                    symbol: "save"
                }
                QuietButton {
                    objectName: "shareButton"
                    width: (parent.width - parent.spacing) / 2
                    height: 52
                    radius: Theme.cardRadius
                    view: preview.screen.view("shareButton")
                    symbol: "square.and.arrow.up"
                }
            }
            Row {
                width: parent.width
                spacing: 12
                PushButton {
                    objectName: "selectOtherVideoButton"
                    width: (parent.width - parent.spacing) / 2
                    view: preview.screen.view("selectOtherVideoButton")
                    ink: Theme.secondary
                }
                PushButton {
                    objectName: "shareAppButton"
                    width: (parent.width - parent.spacing) / 2
                    view: preview.screen.view("shareAppButton")
                    ink: Theme.secondary
                }
            }
        }
    }
}
