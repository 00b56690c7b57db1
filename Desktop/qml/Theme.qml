pragma Singleton
import QtQuick
import Anadrome

// The looks of the whole program: backward is amber, forward is teal.
QtObject {
    readonly property bool dark: Appearance.dark

    readonly property color background: dark ? "#101216" : "#F6F6F4"
    readonly property color surface: dark ? "#1A1D23" : "#FFFFFF"
    readonly property color raised: dark ? "#242831" : "#FFFFFF"
    readonly property color well: dark ? "#242831" : "#E9E9E6"
    readonly property color hovered: dark ? "#2E333D" : "#EFEFEC"
    readonly property color text: dark ? "#F2F3F5" : "#17191D"
    readonly property color secondary: dark ? "#A7ADB8" : "#5B616C"
    readonly property color chosen: dark ? "#3A404C" : "#FFFFFF"
    readonly property color chosenEdge: dark ? "#4A5160" : "#E2E3E6"
    readonly property color groove: dark ? "#6B7180" : "#85888F"
    readonly property color off: groove
    readonly property color knob: dark ? "#F2F3F5" : "#FFFFFF"
    // On a switch that is on.
    readonly property color onKnob: dark ? "#101216" : "#FFFFFF"
    readonly property color line: dark ? "#2E333D" : "#E2E3E6"
    readonly property color backward: dark ? "#F5A524" : "#945700"
    readonly property color forward: dark ? "#2CC4B5" : "#00706A"
    readonly property color error: dark ? "#FF6B62" : "#C4302B"
    // The one filled button of a screen is amber in both.
    readonly property color primary: "#F5A524"
    readonly property color primaryInk: "#17191D"
    readonly property color stage: "#000000"
    // Over pictures, and under what covers the screen.
    readonly property color pictureInk: "#FFFFFF"
    readonly property color pictureSecondary: "#C9CDD4"
    readonly property color pictureGroove: "#5C6370"
    readonly property color pictureHovered: "#33FFFFFF"
    readonly property color pictureBackward: "#F5A524"
    readonly property color pictureForward: "#2CC4B5"
    readonly property color pictureRecord: "#FF4B40"
    readonly property color veil: "#66000000"
    readonly property color sign: "#80000000"
    readonly property color badge: "#B3000000"
    readonly property color hudCard: "#F0242831"
    readonly property color hudText: "#F2F3F5"
    readonly property color hudAccent: "#F5A524"
    readonly property color hudLightCard: "#F0FFFFFF"
    readonly property color hudLightText: "#17191D"
    readonly property color hudLightAccent: "#945700"
    // Strength of a card that lets what lies beneath shine through.
    readonly property real vibrant: 0.8

    readonly property int titleSize: 28
    readonly property int headSize: 20
    readonly property int textSize: 16
    readonly property int smallSize: 13

    readonly property int near: 8
    readonly property int between: 12
    readonly property int gap: 16
    readonly property int edge: 24

    readonly property int cardRadius: 14
    readonly property int controlRadius: 10
    readonly property int touch: 44
    // Rows of a list, and what stands out among the buttons.
    readonly property int tall: 52
    readonly property int bar: 56

    readonly property int wideFrom: 840
    readonly property int controlColumn: 380
    // Lines get no longer, however wide the window is.
    readonly property int column: 520
    readonly property int wideColumn: 880

    // What can't be used now is drawn at least so.
    readonly property real dimmed: 0.55

    readonly property int appear: 180
    // What takes no longer needs no sign of being busy.
    readonly property int patience: 400
    // What moves doesn't where the desktop asks for that; what fades still does.
    readonly property int move: Appearance.reducedMotion ? 0 : appear
    // Long enough to be read.
    readonly property int noticeStays: 5000
    readonly property int wordStays: 1000
    // A pause of the keys or the wheel so long is the end of a move.
    readonly property int keysRest: 700
    // A window that is dragged by its edge has come to rest.
    readonly property int edgeRests: 100
    // Nobody seems to need the controls over a movie any more.
    readonly property int controlsStay: 3000

    // How strongly a view is drawn.
    function strength(view) {
        return view.enabled ? view.alpha : Math.max(view.alpha, dimmed)
    }
    // What is held down.
    function pressed(fill, ink) {
        return Qt.tint(fill, Qt.alpha(ink, 0.14))
    }

    // The camera: the foot with its button, the red sign in that, and what lies over the pictures.
    readonly property int cameraFoot: 136
    readonly property int recordSize: 76
    readonly property int recordEdge: 4
    readonly property int recordSign: 58
    readonly property int stopSign: 30
    readonly property int stopRadius: 6
    readonly property real recordOff: 0.4
    readonly property int cameraWords: 360
    readonly property int reviewWords: 560
    readonly property int reviewChoices: 520

    // What lies over the screens.
    readonly property int hudSide: 160
    readonly property int hudSign: 64
    readonly property int emptySign: 48
    readonly property int turn: 1000
    readonly property real beatLow: 0.3
    readonly property int dialogWidth: 360
    readonly property int consentWidth: 420
    // Points a second, of a key that scrolls.
    readonly property int scrollSpeed: 900
    readonly property int bannerMargin: 6
    readonly property int sheetWidth: 480
    readonly property int wideSheetWidth: 920
    readonly property int sheetHead: 60
    readonly property int sheetRise: Appearance.reducedMotion ? 0 : 60
    // Twice as many pixels at most as a cell of the library has.
    readonly property int thumbnail: 256
}
