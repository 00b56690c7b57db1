import QtQuick
import QtQuick.Dialogs
import Anadrome

// The ways in which a movie or a text goes to other programs.
Sheet {
    id: sheet

    required property ShareScreen screen
    readonly property bool hasFile: screen.file.toString() !== ""
    readonly property bool hasText: screen.text !== ""

    title: Texts.of(screen.busy ? "Working" : "ShareTitle")
    onClosed: screen.close()

    FileDialog {
        id: place
        fileMode: FileDialog.SaveFile
        title: Texts.of("ShareSaveCopy")
        selectedFile: sheet.screen.usualPlace
        onAccepted: sheet.screen.saveCopy(selectedFile)
    }
    Label {
        width: parent.width
        leftPadding: Theme.near
        visible: !sheet.hasFile
        text: sheet.screen.text
        color: Theme.secondary
    }
    RowGroup {
        enabled: !sheet.screen.busy
        rows: [
            { text: Texts.of("ShareSaveCopy"), symbol: "save", offered: sheet.hasFile,
              go: () => place.open() },
            { text: Texts.of("ShareOpenWith"), symbol: "open", offered: sheet.hasFile,
              go: () => sheet.screen.openWithOtherProgram() },
            { text: Texts.of("ShareShowFolder"), symbol: "folder", offered: sheet.hasFile,
              go: () => sheet.screen.showInFileManager() },
            { text: Texts.of("ShareMail"), symbol: "envelope", offered: sheet.screen.canMail,
              go: () => sheet.screen.mail() },
            { text: Texts.of("ShareCopyFile"), symbol: "copy", offered: sheet.hasFile,
              go: () => sheet.screen.copyFile() },
            { text: Texts.of("ShareCopyText"), symbol: "copy.text", offered: sheet.hasText,
              go: () => sheet.screen.copyText() }
        ].filter(row => row.offered)
        onChosen: row => row.go()
    }
}
