import QtQuick
import QtQuick.Dialogs
import Anadrome

// The desktop's own file dialog.
FocusScope {
    id: files

    required property FilesScreen screen

    focus: true

    FileDialog {
        id: dialog
        title: Texts.of("SelectFromFiles")
        nameFilters: [
            Texts.of("MovieFiles") + " (*.mp4 *.m4v *.mov *.mkv *.webm *.avi *.mpg *.mpeg *.mts *.m2ts *.ts *.3gp *.ogv)",
            Texts.of("AllFiles") + " (*)"
        ]
        onAccepted: files.screen.accept([selectedFile])
        onRejected: files.screen.close()
    }
    Component.onCompleted: dialog.open()
    Component.onDestruction: dialog.close()
}
