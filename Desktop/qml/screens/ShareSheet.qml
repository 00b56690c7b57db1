import QtQuick
import Anadrome

// The ways in which a movie or a text goes to other programs.
Sheet {
    id: sheet

    required property ShareScreen screen
    readonly property bool hasFile: screen.file.toString() !== ""

    title: Texts.of("ShareTitle")
    onClosed: screen.close()

    Label {
        width: parent.width
        leftPadding: Theme.near
        visible: !sheet.hasFile
        text: sheet.screen.text
        color: Theme.secondary
    }
    RowGroup {
        visible: sheet.hasFile
        rows: [
            { text: Texts.of("ShareOpenWith"), symbol: "open", go: () => sheet.screen.openWithOtherProgram() },
            { text: Texts.of("ShareShowFolder"), symbol: "folder", go: () => sheet.screen.showInFileManager() },
            { text: Texts.of("ShareCopyFile"), symbol: "copy", go: () => sheet.screen.copyFile() }
        ]
        onChosen: row => row.go()
    }
    RowGroup {
        visible: sheet.screen.text !== ""
        rows: [{ text: Texts.of("ShareCopyText"), symbol: "copy.text", go: () => sheet.screen.copyText() }]
        onChosen: row => row.go()
    }
}
