import QtQuick
import Anadrome

// A dialog of the program.
DialogCard {
    required property AlertScreen screen

    title: screen.title
    message: screen.message
    choices: screen.actions
    onChosen: index => screen.choose(index)
    Keys.onReturnPressed: screen.close()
    Keys.onEnterPressed: screen.close()
}
