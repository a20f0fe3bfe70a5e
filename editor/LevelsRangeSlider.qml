import QtQuick
import Velmor.Controls
import Velmor.Editor

// The black and the white point as two knobs over the histogram of the page.
Item {
    id: slider

    required property PageEditor editor

    implicitHeight: 44

    LevelsTrackItem {
        id: track

        anchors.fill: parent
        low: slider.editor.blackLum
        high: slider.editor.whiteLum
        histogram: slider.editor.displayHistogram
        rangeColor: Qt.alpha(Theme.accent, 0.7)
        barColor: Qt.alpha(Theme.textSecondary, 0.45)
        onLowMoved: value => slider.editor.blackLum = value
        onHighMoved: value => slider.editor.whiteLum = value
    }

    LevelsKnob {
        objectName: "blackKnob"
        x: track.lowPos - track.knobRadius
        y: track.trackY - track.knobRadius
        name: qsTr("Black point")
        level: track.low * 100
        valueText: slider.editor.blackValue
        color: "black"
        ringColor: Qt.rgba(1, 1, 1, 0.35)
        onKeyPressed: event => event.accepted = track.moveLow(event.key, event.modifiers)
        onStepped: key => track.moveLow(key, Qt.NoModifier)
        onLevelAsked: level => slider.editor.blackLum = level / 100
    }

    LevelsKnob {
        objectName: "whiteKnob"
        x: track.highPos - track.knobRadius
        y: track.trackY - track.knobRadius
        name: qsTr("White point")
        level: track.high * 100
        valueText: slider.editor.whiteValue
        color: "white"
        ringColor: Qt.rgba(0, 0, 0, 0.22)
        onKeyPressed: event => event.accepted = track.moveHigh(event.key, event.modifiers)
        onStepped: key => track.moveHigh(key, Qt.NoModifier)
        onLevelAsked: level => slider.editor.whiteLum = level / 100
    }
}
