import QtQuick
import Anadrome

// A choice of a file for the program's picker.
FocusScope {
    id: files

    required property FilesScreen screen

    focus: true

    ClipDialog {
        id: dialog
        onAccepted: files.screen.accept([selectedFile])
        onRejected: files.screen.close()
    }
    Component.onCompleted: dialog.open()
    Component.onDestruction: dialog.close()
}
