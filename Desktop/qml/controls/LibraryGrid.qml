pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Anadrome

// The clips of the library in lines of squares, each month under its name. Only what is on the screen exists.
ListView {
    id: grid

    required property LibraryLines lines
    readonly property int currentClip: lines.current
    readonly property int columns: Math.max(3, Math.min(6, Math.floor(width / 140)))
    readonly property real side: (width - (columns - 1) * spacing) / columns

    signal chosen(int row)

    function show() {
        if (lines.current >= 0)
            positionViewAtIndex(lines.lineOf(lines.current), ListView.Contain)
    }
    // The clip that is at the top stays there.
    function layOut() {
        const line = Math.max(indexAt(0, contentY), indexAt(0, contentY + spacing))
        const clip = lines.firstOf(line)
        lines.columns = columns
        if (line > 0)
            positionViewAtIndex(lines.lineOf(clip), ListView.Beginning)
    }

    model: lines
    spacing: 4
    bottomMargin: Theme.gap
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ScrollBar { }
    activeFocusOnTab: true
    // The keyboard is at a clip, not at a line.
    currentIndex: -1
    keyNavigationEnabled: false
    Accessible.role: Accessible.List
    Accessible.name: Texts.of("SelectFromLibrary")
    onColumnsChanged: layOut()
    onCurrentClipChanged: show()
    Component.onCompleted: layOut()

    Keys.onPressed: event => {
        const page = Math.max(1, Math.floor(height / (side + spacing)))
        const moves = {
            [Qt.Key_Left]: () => lines.moveBy(-1),
            [Qt.Key_Right]: () => lines.moveBy(1),
            [Qt.Key_Up]: () => lines.moveByLines(-1),
            [Qt.Key_Down]: () => lines.moveByLines(1),
            [Qt.Key_PageUp]: () => lines.moveByLines(-page),
            [Qt.Key_PageDown]: () => lines.moveByLines(page),
            [Qt.Key_Home]: () => lines.moveTo(0),
            [Qt.Key_End]: () => lines.moveToEnd(),
            [Qt.Key_Return]: () => chosen(lines.current),
            [Qt.Key_Enter]: () => chosen(lines.current),
            [Qt.Key_Space]: () => chosen(lines.current)
        }
        event.accepted = event.key in moves
        if (event.accepted)
            moves[event.key]()
    }

    delegate: Column {
        id: line

        required property string heading
        required property var clips

        width: grid.width
        Label {
            visible: line.heading !== ""
            height: Theme.touch
            leftPadding: Theme.near
            verticalAlignment: Text.AlignVCenter
            text: line.heading
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        Row {
            spacing: grid.spacing
            Repeater {
                model: line.clips
                LibraryCell {
                    required property LibraryClip modelData
                    width: grid.side
                    height: grid.side
                    shownClip: modelData
                    isCurrent: modelData.row === grid.lines.current
                    onChosen: grid.chosen(modelData.row)
                }
            }
        }
    }
}
