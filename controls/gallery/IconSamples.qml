import QtQuick
import Velmor.Controls

// The whole set of icons, and one of them in all weights and sizes.
Column {
    spacing: 20

    SampleRow {
        title: "Icon: the set, at size 20"

        Icon {
            id: set

            visible: false
        }

        Grid {
            columns: 16
            spacing: 22

            Repeater {
                model: set.names()

                Icon {
                    required property string modelData

                    name: modelData
                    size: 20
                    color: Theme.textPrimary
                }
            }
        }
    }

    SampleRow {
        title: "Icon: weights, and sizes from 10 to 40; BrandPicture"

        Repeater {
            model: [Font.Normal, Font.Medium, Font.DemiBold, Font.Bold, Font.Black]

            Icon {
                required property int modelData

                name: "settings"
                size: 24
                weight: modelData
                color: Theme.accent
            }
        }

        Repeater {
            model: [10, 11, 14, 19, 26, 40]

            Icon {
                required property real modelData

                name: "scan-page"
                size: modelData
                weight: Font.Medium
                color: Theme.textPrimary
            }
        }

        BrandPicture {
            width: 30
            height: 30
        }

        BrandPicture {
            width: 64
            height: 64
        }
    }
}
