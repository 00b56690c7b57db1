import QtQuick
import Anadrome

Text {
    // Text and looks of a label of the screen, if there is one.
    property LabelItem view: null

    text: view ? view.text : ""
    visible: view ? view.shown && text !== "" : true
    opacity: view ? Theme.strength(view) : 1
    color: Theme.text
    font.pixelSize: Theme.textSize
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
