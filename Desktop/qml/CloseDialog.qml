import QtQuick
import Anadrome

// Asks whether a movie that is being made is to be given up with the window. Lies over the busy overlay.
FocusScope {
    id: place

    required property CloseQuestion question

    visible: opacity > 0
    enabled: question.asked
    onEnabledChanged: if (enabled) forceActiveFocus()
    opacity: question.asked ? 1 : 0
    Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
    Keys.onEscapePressed: question.keepGoing()

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }
    Rectangle { anchors.fill: parent; color: Theme.veil }
    DialogCard {
        anchors.fill: parent
        title: Texts.of("MovieIsBeingMade")
        message: Texts.of("CloseLosesMovie")
        choices: [Texts.of("KeepGoing"), Texts.of("StopAndClose")]
        onChosen: index => index === 0 ? place.question.keepGoing() : place.question.close()
    }
}
