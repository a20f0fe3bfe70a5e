import QtQuick
import QtQuick.Templates as T
import Velmor.Controls

// A slider: a thin bar, filled up to its knob. Arrow keys move it by `stepSize`.
T.Slider {
    id: slider

    property string hint

    implicitWidth: 120
    implicitHeight: 20
    padding: 2
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: hint

    handle: RoundedBox {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: Math.round((slider.height - height) / 2)
        width: 14
        height: 14
        radius: 7
        color: slider.pressed ? "#F4F2FA" : "#FFFFFF"
        lineWidth: 1
        lineColor: Qt.rgba(0, 0, 0, 0.18)

        FocusRing {
            shown: slider.visualFocus
            parentRadius: 7
            gap: 1
        }
    }

    background: RoundedBox {
        x: slider.leftPadding
        y: Math.round((slider.height - height) / 2)
        width: slider.availableWidth
        height: 4
        radius: 2
        color: Qt.rgba(0, 0, 0, 0.1)

        RoundedBox {
            width: Math.max(4, slider.visualPosition * (parent.width - 14) + 7)
            height: 4
            radius: 2
            color: Theme.accent
        }
    }
}
