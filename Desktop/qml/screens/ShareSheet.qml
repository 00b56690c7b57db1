import QtQuick
import QtQuick.Dialogs
import Anadrome

// The ways in which a movie or a text goes to other programs.
Sheet {
    id: sheet

    required property ShareScreen screen

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
        visible: !sheet.screen.hasFile
        text: sheet.screen.text
        color: Theme.secondary
    }
    RowGroup {
        enabled: !sheet.screen.busy
        ListRow {
            symbol: "save"; text: Texts.of("ShareSaveCopy"); visible: sheet.screen.hasFile
            onClicked: place.open()
        }
        ListRow {
            symbol: "open"; text: Texts.of("ShareOpenWith"); visible: sheet.screen.hasFile
            onClicked: sheet.screen.openWithOtherProgram()
        }
        ListRow {
            symbol: "folder"; text: Texts.of("ShareShowFolder"); visible: sheet.screen.hasFile
            onClicked: sheet.screen.showInFileManager()
        }
        ListRow {
            symbol: "envelope"; text: Texts.of("ShareMail"); visible: sheet.screen.canMail
            onClicked: sheet.screen.mail()
        }
        ListRow {
            symbol: "copy"; text: Texts.of("ShareCopyFile"); visible: sheet.screen.hasFile
            onClicked: sheet.screen.copyFile()
        }
        ListRow {
            symbol: "copy.text"; text: Texts.of("ShareCopyText"); visible: sheet.screen.text !== ""
            onClicked: sheet.screen.copyText()
        }
    }
}
