import QtQuick
import Velmor.Controls

// Delegates use ids of this file: the pragma that says so is newer than Qt 6.4.
// qmllint disable unqualified

// A short readout whose digits are all equally wide, so that it doesn't tremble while a value
// changes.
Item {
    id: readout

    property string text
    property alias font: metrics.font
    property color color: Theme.textSecondary
    // Where the text stands in an item that is wider than it.
    property int horizontalAlignment: Text.AlignLeft

    readonly property real digitWidth: {
        let widest = 0;
        for (let digit = 0; digit < 10; ++digit)
            widest = Math.max(widest, metrics.advanceWidth(String(digit)));
        return widest;
    }

    implicitWidth: row.width
    implicitHeight: Math.ceil(metrics.height)
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    FontMetrics {
        id: metrics

        font.family: Theme.fontFamily
    }

    Row {
        id: row

        x: readout.horizontalAlignment === Text.AlignRight ? readout.width - width : readout.horizontalAlignment === Text.AlignHCenter ? (readout.width - width) / 2 : 0

        Repeater {
            model: readout.text.length

            Text {
                required property int index
                readonly property string character: readout.text.charAt(index)

                width: character >= "0" && character <= "9" ? readout.digitWidth : metrics.advanceWidth(character)
                horizontalAlignment: Text.AlignHCenter
                text: character
                font: metrics.font
                color: readout.color
                Accessible.ignored: true
            }
        }
    }
}
