import QtQuick.Dialogs
import Anadrome

// The desktop's own choice of a file.
FileDialog {
    title: Texts.of("SelectFromFiles")
    nameFilters: ClipFiles.nameFilters
}
