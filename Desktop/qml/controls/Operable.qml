import QtQuick
import QtQuick.Templates as T

// What all that is pressed shares: keys, and the hand of a screen reader, which the template lacks.
T.AbstractButton {
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) clicked() }
    Accessible.name: text
    // Asked for whether or not it is in reach.
    Accessible.onPressAction: if (enabled) clicked()
    Accessible.onToggleAction: if (enabled) clicked()
}
